#pragma once

#include <QObject>
#include <QString>
#include <QtGlobal>

// A control given the name it is known by ("txtName"; with an index "optSex(1)"), so that
// logs, style rules and the tests find it.
template <class Control> Control* Named(Control* control, const QString& name, int index = -1) {
    control->setObjectName(index < 0 ? name : name + QStringLiteral("(%1)").arg(index));
    return control;
}

// The one control of that name and kind under the parent (see Named); null when there is none
// or more than one. For what drives a screen from outside: the benchmark, the gallery, tests.
template <class Control>
Control* NamedChild(const QObject& parent, const QString& name, int index = -1) {
    const QList<Control*> found =
        parent.findChildren<Control*>(index < 0 ? name : name + QStringLiteral("(%1)").arg(index));
    return found.size() == 1 ? found.front() : nullptr;
}

// The same, for a driver that cannot go on without it: stops the program naming what is
// missing.
template <class Control>
Control& RequireNamedChild(const QObject& parent, const QString& name, int index = -1) {
    Control* found = NamedChild<Control>(parent, name, index);
    if (!found)
        qFatal("no single control named %s (%d) under %s", qPrintable(name), index,
               qPrintable(parent.objectName()));
    return *found;
}
