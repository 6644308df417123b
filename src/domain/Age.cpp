#include "domain/Age.h"

namespace {

const int lastWesternYearBeforeEra[] = {1911, 1925, 1988, 0, 2018};

bool KnownEra(int era) {
    return era >= Taisho && era <= Reiwa && era != NoEra;
}

// The earliest and latest day a birth date with unknown parts can be.
struct Span {
    QDate first, last;
};

Span SpanOf(int westernYear, int month, int day) {
    if (month == 0)
        return {QDate(westernYear, 1, 1), QDate(westernYear, 12, 31)};
    const QDate firstOfMonth(westernYear, month, 1);
    if (day == 0)
        return {firstOfMonth, firstOfMonth.addMonths(1).addDays(-1)};
    const QDate date(westernYear, month, day);
    return {date, date};
}

} // namespace

int WesternYear(int era, int year) {
    return KnownEra(era) ? year + lastWesternYearBeforeEra[era] : year;
}

QDate EraFirstDay(int era) {
    switch (era) {
    case Taisho:
        return {1912, 7, 30};
    case Showa:
        return {1926, 12, 25};
    case Heisei:
        return {1989, 1, 8};
    case Reiwa:
        return {2019, 5, 1};
    default:
        return {};
    }
}

QDate EraLastDay(int era) {
    // An era ends the day before the next one begins.
    switch (era) {
    case Taisho:
    case Showa:
        return EraFirstDay(era + 1).addDays(-1);
    case Heisei:
        return EraFirstDay(Reiwa).addDays(-1);
    default:
        return {};
    }
}

EraYear EraYearOf(int westernYear, int month, int day) {
    const QDate date(westernYear, month == 0 ? 7 : month, day == 0 ? (month == 0 ? 1 : 15) : day);
    for (int era : {Reiwa, Heisei, Showa, Taisho}) {
        if (date >= EraFirstDay(era))
            return {era, westernYear - lastWesternYearBeforeEra[era]};
    }
    return {NoEra, westernYear};
}

bool BirthDateFits(int era, int year, int month, int day, const QDate& today) {
    if (month < 0 || month > 12 || day < 0 || day > 31 || year < 0)
        return false;
    if (year == 0)
        return month == 0 || day == 0 || QDate(2000, month, day).isValid();
    if (month != 0 && day != 0 && !QDate(WesternYear(era, year), month, day).isValid())
        return false;
    const int western = WesternYear(era, year);
    if (western < 1900 || western > today.year())
        return false;
    const Span span = SpanOf(western, month, day);
    if (span.first > today)
        return false;
    if (!KnownEra(era))
        return true;
    const QDate last = EraLastDay(era);
    return span.last >= EraFirstDay(era) && (!last.isValid() || span.first <= last);
}

bool BirthDateTaken(int era, int year, int month, int day, const QDate& today) {
    if (year == 0 && era != NoEra && (month != 0 || day != 0))
        return false;
    return BirthDateFits(era, year, month, day, today);
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

QString BirthDateText(int era, int year, int month, int day) {
    if (year <= 0)
        return {};
    static const QString names[] = {QStringLiteral("大正"), QStringLiteral("昭和"),
                                    QStringLiteral("平成"), QString(), QStringLiteral("令和")};
    const QString name = KnownEra(era) ? names[era] : QString();
    QString text =
        name.isEmpty() || year > 1 ? name + QString::number(year) : name + QStringLiteral("元");
    text += QStringLiteral("年");
    if (month > 0) {
        text += QString::number(month) + QStringLiteral("月");
        if (day > 0)
            text += QString::number(day) + QStringLiteral("日");
    }
    return text;
}
