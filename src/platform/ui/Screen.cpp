#include "platform/ui/Screen.h"

#include <QKeyEvent>

Screen::Screen(QWidget* parent) : QDialog(parent) {
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
}

void Screen::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}
