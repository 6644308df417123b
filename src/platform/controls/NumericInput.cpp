#include "platform/controls/NumericInput.h"

#include "platform/NumberText.h"

NumericInput::NumericInput(const QString& pattern, double lowest, double highest, QObject* parent)
    : QValidator(parent), pattern_(pattern), lowest_(lowest), highest_(highest) {
    const int point = pattern.indexOf(QLatin1Char('.'));
    decimals_ = point < 0 ? 0 : int(pattern.size() - point - 1);
    grouping_ = pattern.contains(QLatin1Char(','));
    // A field that never holds a negative number takes a plus sign only when its pattern
    // shows one: a lone "+" in a whole-number field would not read as a number.
    const QString sign = lowest < 0                             ? QStringLiteral("[+-]?")
                         : pattern.startsWith(QLatin1Char('+')) ? QStringLiteral("[+]?")
                                                                : QString();
    const QString fraction =
        decimals_ > 0 ? QStringLiteral("(\\.\\d{0,%1})?").arg(decimals_) : QString();
    // Compiled once: every text set into the field passes here.
    shape_.setPattern(QStringLiteral("^") + sign + QStringLiteral("\\d*") + fraction +
                      QStringLiteral("$"));
    shape_.optimize();
}

QValidator::State NumericInput::validate(QString& input, int&) const {
    // Full-width digits and signs are taken as typed and shown in ASCII from then on.
    input = HalfWidthNumber(input);
    QString text = input.trimmed();
    if (grouping_)
        text.remove(QLatin1Char(','));
    if (text.isEmpty())
        return Intermediate;
    if (!shape_.match(text).hasMatch())
        return Invalid;
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    if (!isNumber)
        return Intermediate; // a lone sign or point, on its way to a number
    if (value > highest_ || value < lowest_)
        return Invalid;
    return Acceptable;
}

QValidator::State HalfWidthDigits::validate(QString& input, int&) const {
    input = HalfWidthNumber(input);
    return Acceptable;
}
