#pragma once

#include <QObject>
#include <QString>

// A control given the name it is known by ("txtName"; with an index "optSex(1)"), so that
// logs, style rules and the tests find it.
template <class Control> Control* Named(Control* control, const QString& name, int index = -1) {
    control->setObjectName(index < 0 ? name : name + QStringLiteral("(%1)").arg(index));
    return control;
}
