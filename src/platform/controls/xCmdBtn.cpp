#include "platform/controls/xCmdBtn.h"

#include <QShortcut>

xCmdBtn::xCmdBtn(QWidget* parent) : QPushButton(parent) {
    setAutoDefault(false);
    connect(this, &QPushButton::clicked, this, [this] {
        if (!caption_.isEmpty())
            emit triggered();
    });
}

xCmdBtn::xCmdBtn(Qt::Key hotKey, const QString& caption, QWidget* parent) : xCmdBtn(parent) {
    setHotKey(hotKey);
    setCaption(caption);
}

void xCmdBtn::setHotKey(Qt::Key key) {
    hotKey_ = key;
    delete shortcut_;
    shortcut_ = new QShortcut(QKeySequence(key), this, this, &xCmdBtn::press, Qt::WindowShortcut);
    shortcut_->setAutoRepeat(false);
    refreshText();
}

void xCmdBtn::setCaption(const QString& caption) {
    caption_ = caption;
    refreshText();
}

void xCmdBtn::setKeyShown(bool shown) {
    keyShown_ = shown;
    refreshText();
}

void xCmdBtn::press() {
    if (caption_.isEmpty() || !isEnabled() || !isVisible())
        return;
    // The key takes the focus as a click would, so the field being left runs its leave rule
    // before the key acts.
    setFocus(Qt::ShortcutFocusReason);
    click();
}

void xCmdBtn::refreshText() {
    QString key;
    if (!keyShown_)
        key.clear();
    else if (hotKey_ == Qt::Key_Escape)
        key = QStringLiteral("Esc");
    else if (hotKey_ != Qt::Key_unknown)
        key = QKeySequence(hotKey_).toString(QKeySequence::NativeText);
    setText(caption_.isEmpty() ? key
            : key.isEmpty()    ? caption_
                               : key + QLatin1Char(' ') + caption_);
}
