#pragma once

#include <QDate>
#include <QString>

// The era of a birth date as it is stored. Before 令和 was added, 3 (no era) was how a year
// after 平成 had to be entered: as a Western year.
enum BirthEra { Taisho = 0, Showa = 1, Heisei = 2, NoEra = 3, Reiwa = 4 };

// The Western year of a birth year given within an era; without an era (or with a code this
// program does not know) the year is already a Western year.
int WesternYear(int era, int year);

// The first and the last day of an era; 令和 has no last day yet (an invalid date).
QDate EraFirstDay(int era);
QDate EraLastDay(int era);

// The era and year within it of a Western date. With the day (or the month) unknown, the
// middle of the month (or of the year) decides: 1989 is 平成元年, 2019 令和元年.
struct EraYear {
    int era;
    int year;
};
EraYear EraYearOf(int westernYear, int month, int day);

// Whether a birth date can be real: the year within its era (or a Western year from 1900),
// a month of 1-12 and a day that exists in it, on or before today. A year, month or day of 0
// is not known and fits every value; a year of 0 fits with any real month and day.
bool BirthDateFits(int era, int year, int month, int day, const QDate& today);

// Whether the register takes a birth date: it fits (above), and a date named in an era has its
// year: 昭和 with a month or a day but no year is refused. Nothing entered at all is taken.
bool BirthDateTaken(int era, int year, int month, int day, const QDate& today);

// Age in whole years on the given day. A year of 0 (not entered) gives 0; a month of 0
// (unknown) counts as having had the birthday already this year.
int AgeOn(int era, int year, int month, int day, const QDate& today);

// A birth date as text in its era: "昭和45年5月3日", "平成元年" for an era's first year, a year
// without an era as a Western year ("1960年5月4日"); the month and the day only when known.
// Empty text without a year.
QString BirthDateText(int era, int year, int month, int day);
