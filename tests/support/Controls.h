#pragma once

#include "platform/ui/Named.h"

// A control of a screen found by its name, as the screen names it ("txtName"; with an index,
// "cmdFnuc(4)"). Exactly one control of that name and kind must be under the screen: anything
// else is a mistake in the test, which stops the run saying which name.
template <class Control> Control& Find(const QObject& screen, const QString& name, int index = -1) {
    return RequireNamedChild<Control>(screen, name, index);
}
