#pragma once

#include <QString>

// Number and date texts as the screens show them.

// Rounds to the given number of decimals, a half going away from zero (2.5 -> 3, -2.5 -> -3).
// A tiny representation error of the binary value (1.005 held as 1.00499...) is not allowed
// to turn a written half into a lower value.
double RoundHalfAwayFromZero(double value, int decimals);

// Formats a number with a display pattern: "0" a whole number, "0.00" two decimals, "000"
// zero-padded to three digits, "###,###,##0" grouped in thousands with at least one digit,
// a leading "+" puts a plus sign before positive numbers. Rounds half away from zero; the sign
// follows the value, so -0.004 with "0.00" is "-0.00".
QString FormatNumber(double value, const QString& pattern);

// An amount of whole yen as the screens and papers show it, grouped in thousands: "28,000".
QString FormatYen(qint64 amount);

// A number in plain decimal, never with an exponent, without trailing zeros: 1.25, -0.5, 0.
QString PlainDecimal(double value);

// A purchase date held as the number yyyymmdd, shown through the mask "####/##/##"; empty when
// the number is not greater than 0.
QString FormatYmd(qint64 ymd);
