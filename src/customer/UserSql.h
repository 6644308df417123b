#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

// A customer's record as typed on the register.
struct UserRecord {
    QString name, kana, yubin, jusyo1, jusyo2, tel, kinmu, kinmuTel, syokai, syokaiTel;
    int sex = 0;
    int kazok = 2;
    int tanjoGo = 1;
    QString tanjoNen, tanjoMon, tanjoDay; // as typed; empty means 0
    QDate entry1;                         // the registration date shown on the screen
};

// The date text written into the customer's date columns.
QString UserDateText(const QDate& date);

// "insert into San_User Values(...)": both dates today, the deletion mark empty.
QString UserInsertSql(qint64 userNo, const UserRecord& user, const QDate& today);

// "update San_User set User_Name = ...": the registration date from the screen, the last
// change today; the deletion mark is left alone.
QString UserUpdateSql(qint64 userNo, const UserRecord& user, const QDate& today);

// The customer and every one of his purchases.
QStringList UserDeleteSql(qint64 userNo);
