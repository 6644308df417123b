#pragma once

#include "platform/controls/xInput.h"

#include <QPointer>

// A kana reading field. Linked to a name field, it catches the reading the user types through
// a Japanese input method before converting it, and appends it in hiragana when the name is
// committed. It stays an ordinary field the user can correct.
class xKana : public xInput {
    Q_OBJECT
public:
    explicit xKana(QWidget* parent = nullptr);

    void linkTo(QLineEdit* nameField);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void nameInputMethod(const QString& preedit, const QString& commit);

    QPointer<QLineEdit> nameField_;
    QString reading_;
};
