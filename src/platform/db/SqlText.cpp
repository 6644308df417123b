#include "platform/db/SqlText.h"

#include "platform/Format.h"

#include <algorithm>

namespace {
QString doubledQuotes(QString text) {
    return text.replace(QLatin1Char('\''), QLatin1String("''"));
}
} // namespace

QString SqlStr(const QString& value) {
    return SqlQuote(value.trimmed());
}

QString SqlQuote(const QString& value) {
    return QLatin1Char('\'') + doubledQuotes(StorableText(value)) + QLatin1Char('\'');
}

QString StorableText(const QString& value) {
    const auto unstorable = [](QChar c) {
        return (c.unicode() < 0x20 && c != QLatin1Char('\t') && c != QLatin1Char('\n') &&
                c != QLatin1Char('\r')) ||
               c.unicode() == 0x7F;
    };
    if (std::none_of(value.begin(), value.end(), unstorable))
        return value;
    QString kept = value;
    kept.removeIf(unstorable);
    return kept;
}

QString SqlContains(const QString& value) {
    QString pattern = value;
    pattern.replace(QLatin1Char('\\'), QLatin1String("\\\\"))
        .replace(QLatin1Char('%'), QLatin1String("\\%"))
        .replace(QLatin1Char('_'), QLatin1String("\\_"));
    QString like = QStringLiteral("'%") + doubledQuotes(pattern) + QStringLiteral("%'");
    // The escape is named only when the text needs it, so ordinary patterns read as written.
    if (pattern != value)
        like += QStringLiteral(" escape '\\'");
    return like;
}

QString SqlNum(qint64 value) {
    return QString::number(value);
}

QString SqlReal(double value) {
    return PlainDecimal(value);
}
