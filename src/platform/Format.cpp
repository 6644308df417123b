#include "platform/Format.h"

#include <cmath>

namespace {

long double scaledMagnitude(double value, int decimals) {
    long double scaled = std::fabs(static_cast<long double>(value)) * std::pow(10.0L, decimals);
    // Clean the binary representation error before deciding on a half.
    return std::round(scaled * 1e6L) / 1e6L;
}

QString groupThousands(const QString& digits) {
    QString grouped;
    for (int i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0)
            grouped += QLatin1Char(',');
        grouped += digits[i];
    }
    return grouped;
}

} // namespace

double RoundHalfAwayFromZero(double value, int decimals) {
    const long double magnitude = std::floor(scaledMagnitude(value, decimals) + 0.5L);
    const long double rounded = magnitude / std::pow(10.0L, decimals);
    return static_cast<double>(value < 0 ? -rounded : rounded);
}

QString FormatNumber(double value, const QString& pattern) {
    QString body = pattern;
    const bool plusSign = body.startsWith(QLatin1Char('+'));
    if (plusSign)
        body.remove(0, 1);
    const int point = body.indexOf(QLatin1Char('.'));
    const QString integerPattern = point < 0 ? body : body.left(point);
    const int decimals = point < 0 ? 0 : int(body.size() - point - 1);
    const int minimumDigits = int(integerPattern.count(QLatin1Char('0')));
    const bool grouping = integerPattern.contains(QLatin1Char(','));

    const long double magnitude = std::floor(scaledMagnitude(value, decimals) + 0.5L);
    QString digits = QString::number(static_cast<qulonglong>(magnitude));
    if (digits.size() <= decimals)
        digits = QString(decimals - digits.size() + 1, QLatin1Char('0')) + digits;
    QString integerPart = digits.left(digits.size() - decimals);
    const QString fraction = digits.right(decimals);
    qsizetype zeros = 0;
    while (zeros < integerPart.size() && integerPart[zeros] == QLatin1Char('0'))
        ++zeros;
    integerPart.remove(0, zeros);
    if (integerPart.size() < minimumDigits)
        integerPart = QString(minimumDigits - integerPart.size(), QLatin1Char('0')) + integerPart;
    if (grouping)
        integerPart = groupThousands(integerPart);

    QString text = integerPart;
    if (decimals > 0)
        text += QLatin1Char('.') + fraction;
    if (value < 0)
        return QLatin1Char('-') + text;
    return plusSign ? QLatin1Char('+') + text : text;
}

QString PlainDecimal(double value) {
    QString text = QString::number(value, 'f', 10);
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    if (text == QLatin1String("-0"))
        text = QStringLiteral("0");
    return text;
}

QString FormatYen(qint64 amount) {
    return FormatNumber(double(amount), QStringLiteral("###,###,##0"));
}

QString FormatYmd(qint64 ymd) {
    if (ymd <= 0)
        return {};
    const QString digits = QString::number(ymd);
    if (digits.size() <= 4)
        return QStringLiteral("//") + digits;
    return digits.left(digits.size() - 4) + QLatin1Char('/') + digits.mid(digits.size() - 4, 2) +
           QLatin1Char('/') + digits.right(2);
}
