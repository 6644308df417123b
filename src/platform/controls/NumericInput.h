#pragma once

#include <QRegularExpression>
#include <QValidator>

// Input settings of a numeric field: a pattern ("+00.00", "0.0", "000", "###,###,##0"),
// a lowest and a highest value. A keystroke that cannot lead to a number of the pattern's
// decimals inside the range is refused; what reaches the field is left to its leave rule.
// Full-width digits, signs and decimal point (from an input method or pasted) become ASCII.
class NumericInput : public QValidator {
    Q_OBJECT
public:
    NumericInput(const QString& pattern, double lowest, double highest, QObject* parent = nullptr);

    State validate(QString& input, int& position) const override;

    const QString& pattern() const { return pattern_; }
    double lowest() const { return lowest_; }
    double highest() const { return highest_; }

private:
    QString pattern_;
    double lowest_;
    double highest_;
    int decimals_;
    bool grouping_;
    QRegularExpression shape_; // what the text may look like on its way to a number
};

// For fields whose mask already keeps out what is not a digit (dates, postal codes): digits
// typed or pasted in full width become ASCII digits.
class HalfWidthDigits : public QValidator {
    Q_OBJECT
public:
    using QValidator::QValidator;

    State validate(QString& input, int& position) const override;
};
