#include "domain/Age.h"

int WesternYear(int era, int year) {
    switch (era) {
    case 0:
        return year + 1911;
    case 1:
        return year + 1925;
    case 2:
        return year + 1988;
    default:
        return year;
    }
}

int AgeOn(int era, int year, int month, int day, const QDate& today) {
    if (year == 0)
        return 0;
    int age = today.year() - WesternYear(era, year);
    if (today.month() > month)
        return age;
    if (today.month() < month)
        return age - 1;
    if (today.day() < day)
        --age;
    return age;
}
