#include "data/CustomerStore.h"

#include "data/CustomerSearch.h"
#include "data/Numbering.h"
#include "data/OrderStore.h"
#include "data/PurchaseStore.h"
#include "domain/Prescription.h"
#include "frame/Globals.h"
#include "platform/Failure.h"
#include "platform/FieldValues.h"
#include "platform/db/SqlText.h"
#include "platform/db/Transaction.h"

#include <algorithm>
#include <cmath>

namespace {

QString text(const RecordSet& row, const char* column) {
    return CmnNvl(row.field(QString::fromLatin1(column)), QString()).toString();
}

int number(const RecordSet& row, const char* column, int whenEmpty) {
    return CmnNvl(row.field(QString::fromLatin1(column)), whenEmpty).toInt();
}

QDate date(const RecordSet& row, const char* column) {
    return QDate::fromString(text(row, column).trimmed().left(10), QStringLiteral("yyyy/MM/dd"));
}

Customer customerOf(const RecordSet& row) {
    Customer c;
    c.no = row.field(QStringLiteral("User_No")).toLongLong();
    c.name = text(row, "User_Name");
    c.kana = text(row, "User_Kana");
    c.yubin = text(row, "User_Yubin");
    c.jusyo1 = text(row, "User_Jusyo1");
    c.jusyo2 = text(row, "User_Jusyo2");
    c.tel = text(row, "User_Tel");
    c.kinmu = text(row, "User_Kinmu");
    c.kinmuTel = text(row, "User_KinmuTel");
    c.syokai = text(row, "User_Syokai");
    c.syokaiTel = text(row, "User_SyokaiTel");
    c.sex = number(row, "User_Sex", 0);
    c.kazok = number(row, "User_Kazok_F", 2);
    c.birth = {number(row, "User_Tanjo_Go", 1), number(row, "User_Tanjo_Nen", 0),
               number(row, "User_Tanjo_Mon", 0), number(row, "User_Tanjo_Day", 0)};
    c.entry1 = date(row, "User_Entry1");
    c.entry2 = date(row, "User_Entry2");
    return c;
}

std::vector<Customer> customers(const QString& sql) {
    std::vector<Customer> found;
    RecordSet rows = gCon.execute(sql);
    for (; !rows.eof(); rows.moveNext())
        found.push_back(customerOf(rows));
    return found;
}

QString dateLiteral(const QDate& date) {
    return SqlQuote(CustomerStore::DateText(date));
}

// The columns the register writes, as it writes them.
const std::vector<ColumnOf<Customer>>& registerColumns() {
    using C = Customer;
    static const std::vector<ColumnOf<C>> columns{
        {"User_Name", "氏名", TrimmedText<C, &C::name>},
        {"User_Kana", "かな名", TrimmedText<C, &C::kana>},
        {"User_Yubin", "郵便番号", TrimmedText<C, &C::yubin>},
        {"User_Jusyo1", "住所１", TrimmedText<C, &C::jusyo1>},
        {"User_Jusyo2", "住所２", TrimmedText<C, &C::jusyo2>},
        {"User_Tel", "ＴＥＬ", TrimmedText<C, &C::tel>},
        {"User_Kinmu", "勤務先", TrimmedText<C, &C::kinmu>},
        {"User_KinmuTel", "勤務先のＴＥＬ", TrimmedText<C, &C::kinmuTel>},
        {"User_Syokai", "紹介者", TrimmedText<C, &C::syokai>},
        {"User_SyokaiTel", "紹介者のＴＥＬ", TrimmedText<C, &C::syokaiTel>},
        {"User_Sex", "性別", WholeNumber<C, &C::sex>},
        {"User_Kazok_F", "家族区分", WholeNumber<C, &C::kazok>},
        {"User_Tanjo_Go", "誕生日",
         [](const C& c) {
             return SqlNum(c.birth.era);
         }},
        {"User_Tanjo_Nen", "誕生日",
         [](const C& c) {
             return SqlNum(c.birth.year);
         }},
        {"User_Tanjo_Mon", "誕生日",
         [](const C& c) {
             return SqlNum(c.birth.month);
         }},
        {"User_Tanjo_Day", "誕生日",
         [](const C& c) {
             return SqlNum(c.birth.day);
         }},
        {"User_Entry1", "登録日", [](const C& c) {
             return dateLiteral(c.entry1);
         }}};
    return columns;
}

// The columns the customer list corrects, as it writes them.
const std::vector<ColumnOf<ListedCustomer>>& listColumns() {
    using L = ListedCustomer;
    static const std::vector<ColumnOf<L>> columns{
        {"user_Name", "氏名", TrimmedText<L, &L::name>},
        {"user_Kana", "かな名", TrimmedText<L, &L::kana>},
        {"user_Yubin", "郵便番号", TrimmedText<L, &L::yubin>},
        {"user_Jusyo1", "住所１", TextAsTyped<L, &L::jusyo1>},
        {"user_Jusyo2", "住所２", TrimmedText<L, &L::jusyo2>},
        {"user_Tel", "ＴＥＬ", TrimmedText<L, &L::tel>},
        {"user_kazok_f", "家族", WholeNumber<L, &L::kazok>}};
    return columns;
}

// Every update names the last change; the columns changed come before it.
QString updateSql(qint64 customerNo, const QStringList& assignments, const QDate& today) {
    return QStringLiteral("update San_User set ") +
           (assignments + QStringList{QStringLiteral("User_Entry2 = ") + dateLiteral(today)})
               .join(QLatin1Char(',')) +
           QStringLiteral(" where User_No = ") + SqlNum(customerNo);
}

// Locks the customer's row for the rest of the transaction.
bool lockCustomer(qint64 customerNo) {
    return !gCon.execute(QStringLiteral("select User_No from San_User where User_No = ") +
                         SqlNum(customerNo) + gCon.lockRows())
                .eof();
}

// The customer as stored now, read as `find` reads him, with his row locked; RowDeleted when
// he is gone (or, for the register, marked deleted).
template <class Row>
Row locked(qint64 customerNo, const QString& record, std::optional<Row> (*find)(qint64)) {
    std::optional<Row> stored;
    if (lockCustomer(customerNo))
        stored = find(customerNo);
    if (!stored)
        throw RowDeletedMeanwhile(record);
    return *stored;
}

} // namespace

namespace CustomerStore {

std::optional<Customer> Find(qint64 customerNo) {
    RecordSet row = gCon.execute(
        QStringLiteral("select * from San_User where User_No = ") + SqlNum(customerNo) +
        QStringLiteral(" and ( User_Dlt_F <> '1' Or User_Dlt_F Is Null ) Order By User_No"));
    if (row.eof())
        return std::nullopt;
    return customerOf(row);
}

qint64 NextNo() {
    return Numbering::TakeCustomerNo();
}

QString DateText(const QDate& date) {
    return date.toString(QStringLiteral("yyyy/MM/dd"));
}

QString InsertSql(const Customer& c, const QDate& today) {
    const QString todayText = SqlQuote(DateText(today));
    const QStringList values{SqlNum(c.no),
                             SqlStr(c.name),
                             SqlStr(c.kana),
                             SqlStr(c.yubin),
                             SqlStr(c.jusyo1),
                             SqlStr(c.jusyo2),
                             SqlStr(c.tel),
                             SqlStr(c.kinmu),
                             SqlStr(c.kinmuTel),
                             SqlStr(c.syokai),
                             SqlStr(c.syokaiTel),
                             SqlNum(c.sex),
                             SqlNum(c.kazok),
                             SqlNum(c.birth.era),
                             SqlNum(c.birth.year),
                             SqlNum(c.birth.month),
                             SqlNum(c.birth.day),
                             todayText,
                             todayText};
    return QStringLiteral("insert into San_User Values(") + values.join(QLatin1Char(',')) +
           QStringLiteral(",'' )");
}

QString RecordName(qint64 customerNo, const QString& name) {
    return QStringLiteral("顧客番号 %1「%2」").arg(customerNo).arg(name.trimmed());
}

QString UpdateSql(const Customer& shown, const Customer& now, const QDate& today) {
    return updateSql(now.no, PlanWrite(Compare(registerColumns(), shown, now, shown)).assignments,
                     today);
}

QStringList DeleteSql(qint64 customerNo) {
    return {QStringLiteral("delete from San_User where User_No = ") + SqlNum(customerNo),
            QStringLiteral("delete from San_Uriage where Uri_UserNo = ") + SqlNum(customerNo)};
}

void Insert(const Customer& customer, const QDate& today) {
    gCon.execute(InsertSql(customer, today));
}

void Update(const Customer& shown, const Customer& now, const QDate& today) {
    const QString record = RecordName(shown.no, shown.name);
    const Customer stored = locked(shown.no, record, &CustomerStore::Find);
    const GuardedWrite write = PlanWrite(Compare(registerColumns(), shown, now, stored));
    if (!write.collisions.isEmpty())
        throw RowChangedMeanwhile(record, write.collisions);
    ExecuteOnCheckedRow(updateSql(shown.no, write.assignments, today), record);
}

void Remove(const Customer& shown, const std::vector<Purchase>& shownPurchases) {
    const QString record = RecordName(shown.no, shown.name);
    if (locked(shown.no, record, &CustomerStore::Find) != shown)
        throw RowChangedMeanwhile(record);
    std::vector<Purchase> stored = PurchaseStore::OfCustomer(shown.no);
    std::vector<Purchase> expected = shownPurchases;
    const auto bySeq = [](const Purchase& a, const Purchase& b) {
        return a.seq < b.seq;
    };
    std::sort(stored.begin(), stored.end(), bySeq);
    std::sort(expected.begin(), expected.end(), bySeq);
    if (stored != expected)
        throw RowChangedMeanwhile(record, {QStringLiteral("売上")});
    for (const QString& statement : DeleteSql(shown.no))
        gCon.execute(statement);
    Numbering::ForgetCustomer(shown.no);
    OrderStore::ForgetCustomer(shown.no);
}

QString QuickSearchSql(const QString& kana, const QString& tel) {
    QStringList conditions;
    if (!kana.trimmed().isEmpty())
        conditions << QStringLiteral("User_Kana") + gCon.contains(kana);
    if (!tel.trimmed().isEmpty())
        conditions << QStringLiteral("User_Tel") + gCon.contains(tel);
    QString sql = QStringLiteral("select * from San_User");
    if (!conditions.isEmpty())
        sql += QStringLiteral(" where ") + conditions.join(QStringLiteral(" and "));
    return sql + QStringLiteral(" Order By User_Kana");
}

std::vector<Customer> QuickSearch(const QString& kana, const QString& tel) {
    return customers(QuickSearchSql(kana, tel));
}

std::vector<Customer> WithTel(const QString& tel) {
    return customers(QStringLiteral("select * from San_User where User_Tel = ") + SqlQuote(tel) +
                     QStringLiteral(" Order By User_Kana"));
}

GuardedWrite PlanListedUpdate(const ListRow& row, const ListedCustomer& stored) {
    return PlanWrite(Compare(listColumns(), row.read, row.now, stored));
}

QString ListedUpdateSql(qint64 customerNo, const QStringList& assignments, const QDate& today) {
    return QStringLiteral("update San_user set ") +
           (assignments + QStringList{QStringLiteral("user_entry2 = ") + SqlQuote(DateText(today))})
               .join(QLatin1Char(',')) +
           QStringLiteral(" where user_No = ") + SqlNum(customerNo);
}

void UpdateListed(const ListRow& row, const QDate& today) {
    Transaction transaction(gCon);
    const QString record = RecordName(row.read.no, row.read.name);
    const GuardedWrite write =
        PlanListedUpdate(row, locked(row.read.no, record, &FindListedCustomer));
    if (!write.collisions.isEmpty())
        throw RowChangedMeanwhile(record, write.collisions);
    ExecuteOnCheckedRow(ListedUpdateSql(row.read.no, write.assignments, today), record);
    transaction.commit();
}

void RemoveListed(const ListRow& row) {
    Transaction transaction(gCon);
    const QString record = RecordName(row.read.no, row.read.name);
    // His sales total and last visit stand for his purchases: one added or changed meanwhile
    // shows in them.
    if (locked(row.read.no, record, &FindListedCustomer) != row.read)
        throw RowChangedMeanwhile(record);
    for (const QString& statement : DeleteSql(row.read.no))
        gCon.execute(statement);
    Numbering::ForgetCustomer(row.read.no);
    OrderStore::ForgetCustomer(row.read.no);
    transaction.commit();
}

} // namespace CustomerStore
