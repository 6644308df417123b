#pragma once

#include "platform/controls/xInput.h"

class NumericInput;

// A text field with a length limit. Given numeric input settings (pattern, lowest, highest)
// it takes only what can become such a number.
class xField : public xInput {
    Q_OBJECT
public:
    explicit xField(QWidget* parent = nullptr, int maxLength = 32767);

    void setNumericInput(const QString& pattern, double lowest, double highest);
    const NumericInput* numericInput() const { return numeric_; }

private:
    NumericInput* numeric_ = nullptr;
};
