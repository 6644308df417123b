#pragma once

#include <QDate>

// Purchase dates are kept as whole numbers yyyymmdd.
inline qint64 YmdOf(const QDate& date) {
    return qint64(date.year()) * 10000 + date.month() * 100 + date.day();
}

// The date of a yyyymmdd number; an invalid date when the number is not one.
inline QDate DateOfYmd(qint64 ymd) {
    return QDate(int(ymd / 10000), int(ymd / 100 % 100), int(ymd % 100));
}
