#pragma once

#include <QColor>
#include <QLineEdit>

// The common ground of the input controls: a one-line field with an input-area colour and
// two notifications, leave (the field lost the focus) and key-down (before the field handles
// the key; a receiver that sets *handled to true keeps the key from the field).
class xInput : public QLineEdit {
    Q_OBJECT
public:
    explicit xInput(QWidget* parent = nullptr);

    QColor InputAreaColor() const;
    void setInputAreaColor(const QColor& color);

signals:
    void leave();
    void keyDown(int key, Qt::KeyboardModifiers modifiers, bool* handled);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};
