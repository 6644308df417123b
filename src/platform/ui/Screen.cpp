#include "platform/ui/Screen.h"

#include <QKeyEvent>

Screen::Screen(QWidget* parent) : QDialog(parent) {
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
}

void Screen::keyPressEvent(QKeyEvent* event) {
    if (event->modifiers() == Qt::NoModifier || event->modifiers() == Qt::KeypadModifier) {
        if (event->key() == Qt::Key_Escape) {
            event->accept();
            return;
        }
        if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) &&
            enterPressed(focusWidget())) {
            event->accept();
            return;
        }
    }
    QDialog::keyPressEvent(event);
}

bool Screen::enterPressed(QWidget*) {
    if (!enterMovesFocus_)
        return false;
    focusNextChild();
    return true;
}
