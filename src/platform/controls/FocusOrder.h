#pragma once

#include <QList>

class QAbstractButton;
class QButtonGroup;
class QWidget;

// Tab runs through the controls in the order given, Shift+Tab back.
void SetTabChain(const QList<QWidget*>& order);

// Tab enters the option group on its checked option (on the first when none is checked) and
// goes on to the control after the group; the arrow keys move within the group.
void TabToCheckedOption(QButtonGroup* group);

// The button's mnemonic (Alt and the letter after "&" in its caption) presses it as a click
// does: the button takes the focus first, so the field being left runs its leave rule, and it
// acts at once rather than after Qt's short press animation.
void PressOnMnemonic(QAbstractButton* button);
