#include "support/ModalScript.h"

#include <QApplication>
#include <QPointer>

int ModalScript::run(QDialog& screen) {
    const QString className = QString::fromLatin1(screen.metaObject()->className());
    if (expected_.isEmpty()) {
        failures_ << QStringLiteral("unexpected screen %1").arg(className);
        return QDialog::Rejected;
    }
    const Expected next = expected_.takeFirst();
    if (next.className != className) {
        failures_ << QStringLiteral("expected screen %1, opened %2").arg(next.className, className);
        return QDialog::Rejected;
    }
    // As the window system does: the new screen becomes active, and when it closes the screen
    // below it is active again.
    QPointer<QWidget> below = QApplication::activeWindow();
    screen.setResult(QDialog::Rejected);
    screen.show();
    QApplication::setActiveWindow(&screen);
    next.drive(screen);
    if (screen.isVisible())
        screen.done(QDialog::Rejected);
    if (below && below->isVisible())
        QApplication::setActiveWindow(below);
    return screen.result();
}

QStringList ModalScript::failures() const {
    QStringList all = failures_;
    for (const Expected& missing : expected_)
        all << QStringLiteral("screen never opened: %1").arg(missing.className);
    return all;
}
