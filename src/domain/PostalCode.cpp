#include "domain/PostalCode.h"

#include "platform/NumberText.h"

#include <QRegularExpression>

std::optional<QString> PostalCodeOf(const QString& typed) {
    QString text = HalfWidthNumber(typed.trimmed());
    static const QRegularExpression dashes(QStringLiteral("[ー−‐―]"));
    text.replace(dashes, QStringLiteral("-"));
    if (text.isEmpty())
        return QString();
    static const QRegularExpression code(QStringLiteral("^(\\d{3})-?(\\d{4})$"));
    const QRegularExpressionMatch match = code.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    return match.captured(1) + QLatin1Char('-') + match.captured(2);
}
