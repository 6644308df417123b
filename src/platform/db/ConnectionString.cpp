#include "platform/db/ConnectionString.h"

#include <QStringList>
#include <algorithm>

ConnectionSettings ParseConnectionString(const QString& text) {
    ConnectionSettings settings;
    qsizetype i = 0;
    const auto skipBlanks = [&] {
        while (i < text.size() && text[i].isSpace())
            ++i;
    };
    while (true) {
        skipBlanks();
        const qsizetype equals = text.indexOf(QLatin1Char('='), i);
        if (i >= text.size() || equals < 0)
            break;
        const QString key = text.mid(i, equals - i).trimmed();
        i = equals + 1;
        skipBlanks();
        QString value;
        if (i < text.size() && text[i] == QLatin1Char('\'')) {
            for (++i; i < text.size() && text[i] != QLatin1Char('\''); ++i)
                value += text[i] == QLatin1Char('\\') && i + 1 < text.size() ? text[++i] : text[i];
            ++i;
        } else {
            while (i < text.size() && !text[i].isSpace())
                value += text[i++];
        }
        settings.append({key, value});
    }
    return settings;
}

QString ConnectionStringText(const ConnectionSettings& settings) {
    QStringList parts;
    for (const auto& [key, value] : settings) {
        const bool plain =
            !value.isEmpty() && std::none_of(value.cbegin(), value.cend(), [](QChar c) {
                return c.isSpace() || c == QLatin1Char('\'') || c == QLatin1Char('\\');
            });
        if (plain) {
            parts << key + QLatin1Char('=') + value;
            continue;
        }
        QString quoted = value;
        quoted.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
        quoted.replace(QLatin1Char('\''), QLatin1String("\\'"));
        parts << key + QStringLiteral("='") + quoted + QLatin1Char('\'');
    }
    return parts.join(QLatin1Char(' '));
}
