#include "platform/controls/xNum.h"

#include "platform/Format.h"
#include "platform/NumberText.h"
#include "platform/controls/NumericInput.h"

xNum::xNum(QWidget* parent) : xInput(parent) {
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    applySettings(-999999999, 999999999);
}

double xNum::Value() const {
    return plainText().toDouble();
}

void xNum::setValue(double value) {
    setText(FormatNumber(value, format_));
}

bool xNum::isEmpty() const {
    return plainText().isEmpty();
}

void xNum::clearValue() {
    clear();
}

void xNum::setDisplayFormat(const QString& format) {
    const bool wasEmpty = isEmpty();
    const double value = Value();
    format_ = format;
    applySettings(lowest(), highest());
    if (!wasEmpty)
        setValue(value);
}

void xNum::setRange(double lowest, double highest) {
    applySettings(lowest, highest);
}

double xNum::lowest() const {
    return numeric_->lowest();
}

double xNum::highest() const {
    return numeric_->highest();
}

void xNum::applySettings(double lowest, double highest) {
    // While typing, the grouping commas are not needed; the validator accepts them anyway.
    auto* replaced = numeric_;
    numeric_ = new NumericInput(format_, lowest, highest, this);
    setInputRule(numeric_);
    delete replaced;
}

QString xNum::plainText() const {
    return HalfWidthNumber(text()).trimmed().remove(QLatin1Char(','));
}

void xNum::focusInEvent(QFocusEvent* event) {
    if (!isEmpty() && !isReadOnly())
        setText(plainText());
    xInput::focusInEvent(event);
}

void xNum::focusOutEvent(QFocusEvent* event) {
    if (!isEmpty())
        setValue(Value());
    xInput::focusOutEvent(event);
}
