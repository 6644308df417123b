#include "platform/controls/Kana.h"

namespace {
constexpr char16_t KatakanaFirst = 0x30A1; // ァ
constexpr char16_t KatakanaLast = 0x30F6;  // ヶ
constexpr char16_t KatakanaToHiragana = 0x60;
} // namespace

QString ToHiragana(const QString& text) {
    QString result = text;
    for (QChar& c : result)
        if (c.unicode() >= KatakanaFirst && c.unicode() <= KatakanaLast)
            c = QChar(char16_t(c.unicode() - KatakanaToHiragana));
    return result;
}

bool IsKanaReading(const QString& text) {
    if (text.trimmed().isEmpty())
        return false;
    for (QChar c : text) {
        const char16_t u = c.unicode();
        const bool hiragana = u >= 0x3041 && u <= 0x3096;
        const bool katakana = u >= 0x30A1 && u <= 0x30FA;
        const bool mark = u == 0x30FC || u == 0x309B || u == 0x309C; // ー ゛ ゜
        const bool blank = u == 0x20 || u == 0x3000;
        if (!hiragana && !katakana && !mark && !blank)
            return false;
    }
    return true;
}
