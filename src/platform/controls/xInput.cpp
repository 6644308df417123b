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
