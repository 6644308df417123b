#include "data/Numbering.h"

#include "frame/Globals.h"
#include "platform/Failure.h"
#include "platform/db/Connection.h"
#include "platform/db/SqlText.h"

#include <algorithm>

namespace {

constexpr qint64 CustomerNumbering = 0;
// Receipts are numbered in the row no customer can have.
constexpr qint64 ReceiptNumbering = -1;

// The last number given under the key (locked until the transaction ends), the highest in
// use, and the next one recorded as given.
qint64 take(qint64 key, const QString& highestInUse, qint64 count) {
    RecordSet given =
        gCon.execute(QStringLiteral("select Saiban_No from San_Saiban where Saiban_UserNo = ") +
                     SqlNum(key) + gCon.lockRows());
    const bool recorded = !given.eof();
    const qint64 last = recorded ? given.field(0).toLongLong() : 0;
    RecordSet highest = gCon.execute(highestInUse);
    const qint64 next =
        std::max(last, highest.field(0).isNull() ? 0 : highest.field(0).toLongLong()) + 1;
    const qint64 lastTaken = next + count - 1;
    gCon.execute(recorded
                     ? QStringLiteral("update San_Saiban set Saiban_No = ") + SqlNum(lastTaken) +
                           QStringLiteral(" where Saiban_UserNo = ") + SqlNum(key)
                     : QStringLiteral("insert into San_Saiban values(") + SqlNum(key) +
                           QLatin1Char(',') + SqlNum(lastTaken) + QLatin1Char(')'));
    return next;
}

// Records a number as given under the key, unless a higher one is.
void keep(qint64 key, qint64 number) {
    RecordSet given =
        gCon.execute(QStringLiteral("select Saiban_No from San_Saiban where Saiban_UserNo = ") +
                     SqlNum(key) + gCon.lockRows());
    if (given.eof())
        gCon.execute(QStringLiteral("insert into San_Saiban values(") + SqlNum(key) +
                     QLatin1Char(',') + SqlNum(number) + QLatin1Char(')'));
    else if (given.field(0).toLongLong() < number)
        gCon.execute(QStringLiteral("update San_Saiban set Saiban_No = ") + SqlNum(number) +
                     QStringLiteral(" where Saiban_UserNo = ") + SqlNum(key));
}

} // namespace

namespace Numbering {

QString TableStatement() {
    return QStringLiteral("CREATE TABLE IF NOT EXISTS San_Saiban (Saiban_UserNo INTEGER NOT NULL "
                          "PRIMARY KEY, Saiban_No INTEGER NOT NULL)");
}

void Upgrade(Connection& connection) {
    connection.execute(TableStatement());
    try {
        connection.execute(
            QStringLiteral("insert into San_Saiban select 0, coalesce(max(User_No), 0) from "
                           "San_User where not exists (select 1 from San_Saiban where "
                           "Saiban_UserNo = 0)"));
    } catch (const Failure& failure) {
        // Another terminal opening the same database added the row first.
        if (failure.number() != ErrorNumber::DatabaseFailed)
            throw;
    }
}

qint64 TakeCustomerNo() {
    return take(CustomerNumbering, QStringLiteral("select max(User_No) from San_User"), 1);
}

int TakePurchaseSeqs(qint64 customerNo, int count) {
    return int(take(customerNo,
                    QStringLiteral("select max(Uri_Seq) from San_Uriage where Uri_UserNo = ") +
                        SqlNum(customerNo),
                    count));
}

void ForgetCustomer(qint64 customerNo) {
    if (customerNo == CustomerNumbering)
        return;
    keep(CustomerNumbering, customerNo);
    gCon.execute(QStringLiteral("delete from San_Saiban where Saiban_UserNo = ") +
                 SqlNum(customerNo));
}

qint64 TakeReceiptNo() {
    return take(ReceiptNumbering, QStringLiteral("select max(Rcp_No) from San_Receipt"), 1);
}

void KeepPurchaseSeq(qint64 customerNo, int seq) {
    keep(customerNo, seq);
}

} // namespace Numbering
