#include "platform/NumberText.h"

namespace {

constexpr char16_t FullWidthZero = u'０';

QChar halfWidth(QChar c) {
    const char16_t code = c.unicode();
    if (code >= FullWidthZero && code <= FullWidthZero + 9)
        return QLatin1Char(char('0' + (code - FullWidthZero)));
    switch (code) {
    case u'－':
        return QLatin1Char('-');
    case u'＋':
        return QLatin1Char('+');
    case u'．':
        return QLatin1Char('.');
    case u'，':
        return QLatin1Char(',');
    default:
        return c;
    }
}

} // namespace

QString HalfWidthNumber(const QString& text) {
    QString ascii = text;
    for (QChar& c : ascii)
        c = halfWidth(c);
    return ascii;
}

double NumberFromText(const QString& text, bool* ok) {
    return HalfWidthNumber(text).trimmed().toDouble(ok);
}
