#include "platform/db/SqlText.h"

namespace {
QString doubledQuotes(QString text) {
    return text.replace(QLatin1Char('\''), QLatin1String("''"));
}
} // namespace

QString SqlStr(const QString& value) {
    return SqlQuote(value.trimmed());
}

QString SqlQuote(const QString& value) {
    return QLatin1Char('\'') + doubledQuotes(value) + QLatin1Char('\'');
}

QString SqlContains(const QString& value) {
    return QStringLiteral("'%") + doubledQuotes(value) + QStringLiteral("%'");
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
