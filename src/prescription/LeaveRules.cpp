#include "prescription/LeaveRules.h"

#include "domain/Prescription.h"
#include "platform/Format.h"
#include "platform/NumberText.h"

#include <QRegularExpression>
#include <cmath>

namespace {
constexpr double SignedUpper = 99.99;
constexpr double CylUpper = 9.99;
constexpr double FineUpper = 9.99;
constexpr double PdUpper = 99.9;

double numberOf(const QString& text) {
    return NumberFromText(text);
}
} // namespace

bool IsPrescriptionNumber(const QString& text) {
    static const QRegularExpression number(QStringLiteral("^[+-]?(\\d+\\.?\\d*|\\.\\d+)$"));
    return number.match(HalfWidthNumber(text).trimmed()).hasMatch();
}

QString LeaveInteger(const QString& text) {
    if (!IsPrescriptionNumber(text))
        return text;
    return FormatNumber(numberOf(text), QStringLiteral("0"));
}

QString LeaveSigned(const QString& text, double upper) {
    if (!IsPrescriptionNumber(text))
        return {};
    const double value = numberOf(text);
    if (value == 0 || value == upper)
        return {};
    if (value > 0)
        return QLatin1Char('+') + FormatNumber(value, QStringLiteral("0.00"));
    return FormatNumber(value, QStringLiteral("0.00"));
}

QString LeaveUnsigned(const QString& text, double upper, const QString& pattern) {
    if (!IsPrescriptionNumber(text))
        return {};
    const double value = numberOf(text);
    if (value == 0 || value == upper || value < 0)
        return {};
    return FormatNumber(value, pattern);
}

double RoundHalfEven(double value) {
    // The typed number is decimal: clean the binary representation before deciding on a half.
    const double cleaned = std::round(value * 1e6) / 1e6;
    const double floor = std::floor(cleaned);
    const double fraction = cleaned - floor;
    if (fraction > 0.5)
        return floor + 1;
    if (fraction < 0.5)
        return floor;
    return std::fmod(floor, 2.0) == 0 ? floor : floor + 1;
}

QString HundredthsEntry(const QString& text) {
    if (!IsPrescriptionNumber(text))
        return text;
    const double value = numberOf(text);
    if (value <= 99)
        return text;
    return PlainDecimal(RoundHalfEven(value) / 100);
}

QString ApplyLeaveRule(int index, const QString& text, bool hundredthsEntry) {
    const QString suffix = QString::fromLatin1(PrescriptionColumns[index].suffix);
    if (suffix == QLatin1String("Sph") || suffix == QLatin1String("S"))
        return LeaveSigned(hundredthsEntry ? HundredthsEntry(text) : text, SignedUpper);
    if (suffix == QLatin1String("Cyl"))
        return LeaveSigned(text, CylUpper);
    if (suffix == QLatin1String("Pd"))
        return LeaveUnsigned(text, PdUpper, QStringLiteral("0.0"));
    switch (PrescriptionColumns[index].kind) {
    case PrescriptionKind::Integer:
        return LeaveInteger(text);
    case PrescriptionKind::Unsigned:
        return LeaveUnsigned(text, FineUpper, QStringLiteral("0.00"));
    default:
        return text;
    }
}
