#include "platform/controls/CharacterLimit.h"

#include <algorithm>

namespace {

// The units of the character that ends just before position, 1 or 2.
int unitsBefore(const QString& text, int position) {
    return position >= 2 && text[position - 1].isLowSurrogate() &&
                   text[position - 2].isHighSurrogate()
               ? 2
               : 1;
}

} // namespace

int CharacterCount(const QString& text) {
    int count = 0;
    for (int i = 0; i < text.size(); ++i, ++count)
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            ++i;
    return count;
}

void FitToCharacters(QString& text, int& cursor, int limit) {
    cursor = std::clamp(cursor, 0, int(text.size()));
    for (int i = 0; i < text.size();) {
        const bool pair =
            text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        if (pair) {
            i += 2;
        } else if (text[i].isSurrogate()) {
            text.remove(i, 1);
            if (cursor > i)
                --cursor;
        } else {
            ++i;
        }
    }
    if (cursor > 0 && cursor < text.size() && text[cursor].isLowSurrogate())
        ++cursor; // never between the halves of a pair
    for (int excess = CharacterCount(text) - limit; excess > 0; --excess) {
        if (cursor > 0) {
            const int units = unitsBefore(text, cursor);
            text.remove(cursor - units, units);
            cursor -= units;
        } else {
            text.chop(unitsBefore(text, int(text.size())));
        }
    }
}

QValidator::State CharacterLimit::validate(QString& input, int& position) const {
    FitToCharacters(input, position, std::max(limit_, held_));
    held_ = CharacterCount(input);
    return rule_ ? rule_->validate(input, position) : Acceptable;
}

void CharacterLimit::fixup(QString& input) const {
    if (rule_)
        rule_->fixup(input);
}
