#pragma once

#include <QString>

// Values written into SQL text. Every typed text goes through SqlStr, so a single quote in a
// name is stored as typed and never ends the literal early.

// A text value: trimmed of leading and trailing blanks, quoted, inner quotes doubled.
QString SqlStr(const QString& value);

// A text value exactly as typed (not trimmed), quoted, inner quotes doubled.
QString SqlQuote(const QString& value);

// What of a text reaches the database: tabs and line breaks stay as typed or pasted; NUL,
// which no statement can carry, and the other control characters, which nobody can see on a
// screen and a later reader (a CSV, a printed page) stumbles over, are left out. Every quoted
// value goes through it.
QString StorableText(const QString& value);

// A LIKE pattern that finds the text, as typed, anywhere: '%text%'. A backslash, % or _ in the
// text stands for itself: it is escaped with a backslash and the pattern ends in
// " escape '\'", the same on both engines.
QString SqlContains(const QString& value);

// A whole number in plain decimal.
QString SqlNum(qint64 value);

// A real number in plain decimal, never with an exponent: 1.25, -0.5, 0.
QString SqlReal(double value);
