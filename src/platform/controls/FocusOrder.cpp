#include "platform/controls/FocusOrder.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QEvent>

namespace {

// Only the checked option of the group takes the focus by Tab. Qt's buttons give that place to
// the option that last had the focus, checked or not; so it is set again each time the choice
// changes and each time the focus leaves an option.
class CheckedOptionTab : public QObject {
public:
    explicit CheckedOptionTab(QButtonGroup* group) : QObject(group), group_(group) {
        for (QAbstractButton* option : group->buttons())
            option->installEventFilter(this);
        connect(group, &QButtonGroup::buttonToggled, this, &CheckedOptionTab::apply);
        apply();
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::FocusOut)
            apply();
        return false;
    }

private:
    void apply() {
        const QList<QAbstractButton*> options = group_->buttons();
        QAbstractButton* entry = group_->checkedButton();
        if (!entry && !options.isEmpty())
            entry = options.first();
        for (QAbstractButton* option : options) {
            const Qt::FocusPolicy policy = option->focusPolicy();
            option->setFocusPolicy(option == entry ? Qt::FocusPolicy(policy | Qt::TabFocus)
                                                   : Qt::FocusPolicy(policy & ~Qt::TabFocus));
        }
    }

    QButtonGroup* group_;
};

class MnemonicPress : public QObject {
public:
    explicit MnemonicPress(QAbstractButton* button) : QObject(button), button_(button) {
        button->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::Shortcut || !button_->isEnabled())
            return false;
        button_->setFocus(Qt::ShortcutFocusReason);
        button_->click();
        return true;
    }

private:
    QAbstractButton* button_;
};

} // namespace

void SetTabChain(const QList<QWidget*>& order) {
    for (qsizetype i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order[i - 1], order[i]);
}

void TabToCheckedOption(QButtonGroup* group) {
    new CheckedOptionTab(group);
}

void PressOnMnemonic(QAbstractButton* button) {
    new MnemonicPress(button);
}
