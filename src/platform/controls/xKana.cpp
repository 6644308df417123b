#include "platform/controls/xKana.h"

#include "platform/controls/Kana.h"

#include <QInputMethodEvent>

xKana::xKana(QWidget* parent) : xInput(parent) {}

void xKana::linkTo(QLineEdit* nameField) {
    if (nameField_)
        nameField_->removeEventFilter(this);
    nameField_ = nameField;
    reading_.clear();
    if (nameField_)
        nameField_->installEventFilter(this);
}

bool xKana::eventFilter(QObject* watched, QEvent* event) {
    // The type first: the name field may be half destroyed when its last events come.
    if (event->type() == QEvent::InputMethod && watched == nameField_) {
        const auto* input = static_cast<QInputMethodEvent*>(event);
        nameInputMethod(input->preeditString(), input->commitString());
    }
    return xInput::eventFilter(watched, event);
}

void xKana::nameInputMethod(const QString& preedit, const QString& commit) {
    // The last composition made of kana alone is the reading; once converted, the composition
    // shows kanji and the reading stays what it was.
    if (IsKanaReading(preedit))
        reading_ = preedit;
    if (commit.isEmpty())
        return;
    const QString reading = IsKanaReading(commit) ? commit : reading_;
    reading_.clear();
    if (!reading.isEmpty())
        setText(text() + ToHiragana(reading));
}
