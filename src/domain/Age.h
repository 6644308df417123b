#pragma once

#include <QDate>

// The Western year of a birth year given within an era: 0 大正, 1 昭和, 2 平成; any other era
// means the year is already a Western year.
int WesternYear(int era, int year);

// Age in whole years on the given day. A year of 0 (not entered) gives 0; a month of 0
// (unknown) counts as having had the birthday already this year.
int AgeOn(int era, int year, int month, int day, const QDate& today);
