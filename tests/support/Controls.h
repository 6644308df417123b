#pragma once

#include <QObject>
#include <QString>
#include <QtGlobal>

// A control of a screen found by its name, as the screen names it ("txtName", "cmdFnuc(4)",
// "optSex(1)"). Exactly one control of that name and kind must be under the screen: anything
// else is a mistake in the test, which stops the run saying which name.
template <class Control> Control& Find(const QObject& screen, const QString& name) {
    const QList<Control*> found = screen.findChildren<Control*>(name);
    if (found.size() != 1)
        qFatal("%d controls named %s under %s", int(found.size()), qPrintable(name),
               qPrintable(screen.objectName()));
    return *found.front();
}

// A control of an indexed set ("cmdFnuc", 4 is "cmdFnuc(4)").
template <class Control> Control& Find(const QObject& screen, const QString& name, int index) {
    return Find<Control>(screen, name + QStringLiteral("(%1)").arg(index));
}
