#pragma once

#include <QString>

// What a prescription field's text becomes when the field is left. No rule shows a message:
// what is not accepted is emptied (or, in an integer field, left as typed).

// The numeric test: an optional sign, digits and one decimal point; surrounding blanks ignored.
bool IsPrescriptionNumber(const QString& text);

// Ax, Gai, Tama: a number becomes a whole number (12.6 -> 13); anything else stays.
QString LeaveInteger(const QString& text);

// Sph, S (upper 99.99) and Cyl (upper 9.99): 0 and the upper limit empty the field, a positive
// value gets "+" and two decimals, a negative one two decimals; a non-number empties.
QString LeaveSigned(const QString& text, double upper);

// P1, P2, Ragan, Kyosei (upper 9.99, "0.00") and Pd (upper 99.9, "0.0"): a positive value is
// written with the pattern; 0, the upper limit, negatives and non-numbers empty the field.
QString LeaveUnsigned(const QString& text, double upper, const QString& pattern);

// The register's hundredths entry for Sph and S, before the signed rule: a number above 99 is
// taken as hundredths (125 -> 1.25), rounded to a whole number first, a half to the even side.
QString HundredthsEntry(const QString& text);

// The whole rule of one value (index in table order) as the register or the history applies it.
QString ApplyLeaveRule(int index, const QString& text, bool hundredthsEntry);

// Rounds to a whole number, a half going to the even neighbour (100.5 -> 100, 101.5 -> 102).
double RoundHalfEven(double value);
