#pragma once

#include <QKeySequence>
#include <QPushButton>

class QShortcut;

// A command button with a hot key (F1 ... F12 or Esc) that presses it from anywhere in its
// window. It shows its key before its caption ("F5 登録"); a button without caption does
// nothing, by click or by key.
class xCmdBtn : public QPushButton {
    Q_OBJECT
public:
    explicit xCmdBtn(QWidget* parent = nullptr);
    xCmdBtn(Qt::Key hotKey, const QString& caption, QWidget* parent = nullptr);

    Qt::Key hotKey() const { return hotKey_; }
    void setHotKey(Qt::Key key);
    const QString& caption() const { return caption_; }
    void setCaption(const QString& caption);
    // Whether the key is shown before the caption (a caption that names its key leaves it out).
    void setKeyShown(bool shown);

    // Presses the button as its key does: only when it has a caption and is enabled.
    void press();

signals:
    // The button was pressed, by click or by its key, and has a caption.
    void triggered();

private:
    void refreshText();

    Qt::Key hotKey_ = Qt::Key_unknown;
    QString caption_;
    bool keyShown_ = true;
    QShortcut* shortcut_ = nullptr;
};
