#include "platform/controls/xField.h"

#include "platform/controls/NumericInput.h"

xField::xField(QWidget* parent, int maxLength) : xInput(parent) {
    setMaxLength(maxLength);
}

void xField::setNumericInput(const QString& pattern, double lowest, double highest) {
    delete numeric_;
    numeric_ = new NumericInput(pattern, lowest, highest, this);
    setInputRule(numeric_);
}
