#include "domain/Prescription.h"

#include "platform/Failure.h"
#include "platform/FieldValues.h"
#include "platform/Format.h"
#include "platform/NumberText.h"

#include <QRegularExpression>
#include <cmath>

namespace {
enum { Sph, Cyl, Ax, S };
}

bool HasOpticalValues(const Prescription& eye) {
    return eye.numbers[Sph] != 0 || eye.numbers[Cyl] != 0 || eye.numbers[Ax] != 0 ||
           eye.numbers[S] != 0;
}

PowerMove PowerChange(const Prescription& now, const Prescription& before, int index) {
    if (now.numbers[index] == 0 || !HasOpticalValues(before))
        return PowerMove::None;
    const long long hundredths =
        std::llround(now.numbers[index] * 100) - std::llround(before.numbers[index] * 100);
    if (hundredths >= 50)
        return PowerMove::Up;
    return hundredths <= -50 ? PowerMove::Down : PowerMove::None;
}

QString PrescriptionText(const Prescription& eye, int index) {
    const PrescriptionValue& value = PrescriptionColumns[index];
    if (value.kind == PrescriptionKind::Text)
        return eye.base(index);
    const double number = eye.numbers[index];
    if (number == 0)
        return {};
    if (value.kind == PrescriptionKind::Integer)
        return PlainDecimal(number);
    return CmnFmtNum(number, QString::fromLatin1(value.displayKind));
}

void SetPrescriptionText(Prescription& eye, int index, const QString& text) {
    if (IsPrescriptionText(index))
        eye.base(index) = text;
    else
        eye.numbers[index] = ReadNumber(text);
}

double ReadNumber(const QString& text, bool emptyIsZero) {
    const QString trimmed = HalfWidthNumber(text).trimmed();
    if (trimmed.isEmpty() && emptyIsZero)
        return 0;
    static const QRegularExpression number(QStringLiteral("^[+-]?(\\d+\\.?\\d*|\\.\\d+)$"));
    if (!number.match(trimmed).hasMatch())
        throw Failure(13, QStringLiteral("型が一致しません。"));
    return trimmed.toDouble();
}
