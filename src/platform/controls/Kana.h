#pragma once

#include <QString>

// Katakana turned into hiragana; every other character as it is.
QString ToHiragana(const QString& text);

// Whether the text is a kana reading: hiragana, katakana, the long-vowel mark and blanks only.
bool IsKanaReading(const QString& text);
