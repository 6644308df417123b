#include "prescription/PrescriptionValues.h"

#include "frame/BasCmnSubFun.h"
#include "platform/Failure.h"
#include "platform/db/SqlText.h"

#include <QRegularExpression>

QString PrescriptionColumn(int index, char eye) {
    return QStringLiteral("Uri_") + QLatin1Char(eye) + QLatin1Char('_') +
           QString::fromLatin1(PrescriptionColumns[index].suffix);
}

QString PrescriptionDisplay(int index, const QVariant& stored) {
    const PrescriptionValue& value = PrescriptionColumns[index];
    if (value.kind == PrescriptionKind::Text)
        return stored.isNull() ? QString() : stored.toString();
    if (stored.isNull())
        return {};
    const double number = stored.toDouble();
    if (number == 0)
        return {};
    if (value.kind == PrescriptionKind::Integer)
        return stored.toString();
    return CmnFmtNum(number, QString::fromLatin1(value.displayKind));
}

QString PrescriptionStorage(int index, const QString& text) {
    if (PrescriptionColumns[index].kind == PrescriptionKind::Text)
        return SqlStr(text);
    return SqlReal(ReadNumber(text));
}

double ReadNumber(const QString& text, bool emptyIsZero) {
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty() && emptyIsZero)
        return 0;
    static const QRegularExpression number(QStringLiteral("^[+-]?(\\d+\\.?\\d*|\\.\\d+)$"));
    if (!number.match(trimmed).hasMatch())
        throw Failure(13, QStringLiteral("型が一致しません。"));
    return trimmed.toDouble();
}
