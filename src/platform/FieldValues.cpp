#include "platform/FieldValues.h"

#include "platform/Format.h"

QVariant CmnNvl(const QVariant& value, const QVariant& defaultValue) {
    if (value.isNull() || (value.typeId() == QMetaType::QString && value.toString().isEmpty()))
        return defaultValue;
    return value;
}

QString CmnFmtNum(double value, const QString& kind) {
    if (value == 0)
        return {};
    if (kind == QLatin1String("+"))
        return FormatNumber(value, QStringLiteral("+0.00"));
    if (kind == QLatin1String("1"))
        return FormatNumber(value, QStringLiteral("0.0"));
    return FormatNumber(value, QStringLiteral("0.00"));
}
