#pragma once

#include <QString>

// Numbers as people type them. A Japanese input method in full-width mode gives ０-９ and
// － ＋ ． ，; they mean the same as 0-9 and - + . , and are read so wherever a number is typed.

// The text with full-width digits, signs, decimal point and comma written in ASCII; every
// other character is left as it is.
QString HalfWidthNumber(const QString& text);

// The text read as a number after HalfWidthNumber, blanks around it ignored: ok tells whether
// it is one (as QString::toDouble reads it); 0 when it is not.
double NumberFromText(const QString& text, bool* ok = nullptr);
