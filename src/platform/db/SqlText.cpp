#include "platform/db/SqlText.h"

QString SqlStr(const QString& value) {
    QString text = value.trimmed();
    text.replace(QLatin1Char('\''), QLatin1String("''"));
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

QString SqlNum(qint64 value) {
    return QString::number(value);
}

QString SqlReal(double value) {
    QString text = QString::number(value, 'f', 10);
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    if (text == QLatin1String("-0"))
        text = QStringLiteral("0");
    return text;
}
