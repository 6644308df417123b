#include "platform/controls/xInput.h"

#include "platform/controls/CharacterLimit.h"

#include <QKeyEvent>

void KeepTextReadableWhenDisabled(QWidget* control) {
    QPalette colors = control->palette();
    for (QPalette::ColorRole role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText})
        colors.setColor(QPalette::Disabled, role, DisabledTextColor);
    control->setPalette(colors);
}

xInput::xInput(QWidget* parent) : QLineEdit(parent) {
    setInputAreaColor(Qt::white);
    KeepTextReadableWhenDisabled(this);
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

void xInput::setMaxLength(int characters) {
    limit()->setLimit(characters);
    QString fitted = text();
    int cursor = cursorPosition();
    FitToCharacters(fitted, cursor, characters);
    if (fitted != text()) {
        setText(fitted);
        setCursorPosition(cursor);
    }
}

void xInput::setText(const QString& text) {
    if (limit_)
        limit_->keepWhole(text);
    QLineEdit::setText(text);
}

void xInput::clear() {
    if (limit_)
        limit_->keepWhole({});
    QLineEdit::clear();
}

int xInput::maxLength() const {
    return limit_ ? limit_->limit() : QLineEdit::maxLength();
}

void xInput::setInputRule(QValidator* rule) {
    limit()->setRule(rule);
}

CharacterLimit* xInput::limit() {
    // Installed on first use: a field with a mask and no limit keeps the line edit's own rules.
    if (!limit_) {
        limit_ = new CharacterLimit(this);
        setValidator(limit_);
    }
    return limit_;
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
