#pragma once

#include <QDate>
#include <QString>

// A birth date as the shop records it: the era (0 大正, 1 昭和, 2 平成, 3 none: the year is a
// Western year), the year within the era, month and day; 0 where nothing was entered.
struct BirthDate {
    int era = 1;
    int year = 0, month = 0, day = 0;
    bool operator==(const BirthDate&) const = default;
};

// One customer of the shop. The postal code is empty text when none was entered.
struct Customer {
    qint64 no = 0;
    QString name, kana, yubin, jusyo1, jusyo2, tel, kinmu, kinmuTel, syokai, syokaiTel;
    int sex = 0;   // 0 男, 1 女
    int kazok = 2; // 0 代表, 1 家族, 2 個人, 3 DM不要
    BirthDate birth;
    QDate entry1; // registration date
    QDate entry2; // last change
    bool operator==(const Customer&) const = default;
};

// One customer as the customer list shows him: the fields the list corrects in place, with
// his sales total and last visit, and his birth date for what is written out of the list.
struct ListedCustomer {
    qint64 no = 0;
    QString name, kana, yubin, jusyo1, jusyo2, tel;
    int kazok = 0;
    qint64 total = 0;     // sales total
    qint64 lastVisit = 0; // yyyymmdd, 0 when none
    BirthDate birth;
    bool operator==(const ListedCustomer&) const = default;
};
