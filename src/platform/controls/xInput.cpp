#include "platform/controls/xInput.h"

#include <QKeyEvent>

xInput::xInput(QWidget* parent) : QLineEdit(parent) {
    setInputAreaColor(Qt::white);
}

QColor xInput::InputAreaColor() const {
    return palette().color(QPalette::Active, QPalette::Base);
}

void xInput::setInputAreaColor(const QColor& color) {
    QPalette colors = palette();
    for (QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        colors.setColor(group, QPalette::Base, color);
    setPalette(colors);
}

bool xInput::event(QEvent* event) {
    // Tab moves the focus before a key press is delivered; the key-down receivers see it first.
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Tab && key->modifiers() == Qt::NoModifier) {
            bool handled = false;
            emit keyDown(key->key(), key->modifiers(), &handled);
            if (handled)
                return true;
        }
    }
    return QLineEdit::event(event);
}

void xInput::keyPressEvent(QKeyEvent* event) {
    bool handled = false;
    emit keyDown(event->key(), event->modifiers(), &handled);
    if (handled) {
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void xInput::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    emit leave();
}
