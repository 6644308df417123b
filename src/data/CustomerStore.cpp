#include "data/CustomerStore.h"

#include "domain/Prescription.h"
#include "frame/BasCmnSubFun.h"
#include "frame/Globals.h"
#include "platform/Failure.h"
#include "platform/db/SqlText.h"
#include "platform/db/Transaction.h"

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
    RecordSet rows = gCon.execute(QStringLiteral("select max(User_No) from San_User"));
    return rows.field(0).isNull() ? 1 : rows.field(0).toLongLong() + 1;
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

QString UpdateSql(const Customer& c, const QDate& today) {
    const std::pair<const char*, QString> assignments[] = {
        {"User_Name", SqlStr(c.name)},
        {"User_Kana", SqlStr(c.kana)},
        {"User_Yubin", SqlStr(c.yubin)},
        {"User_Jusyo1", SqlStr(c.jusyo1)},
        {"User_Jusyo2", SqlStr(c.jusyo2)},
        {"User_Tel", SqlStr(c.tel)},
        {"User_Kinmu", SqlStr(c.kinmu)},
        {"User_KinmuTel", SqlStr(c.kinmuTel)},
        {"User_Syokai", SqlStr(c.syokai)},
        {"User_SyokaiTel", SqlStr(c.syokaiTel)},
        {"User_Sex", SqlNum(c.sex)},
        {"User_Kazok_F", SqlNum(c.kazok)},
        {"User_Tanjo_Go", SqlNum(c.birth.era)},
        {"User_Tanjo_Nen", SqlNum(c.birth.year)},
        {"User_Tanjo_Mon", SqlNum(c.birth.month)},
        {"User_Tanjo_Day", SqlNum(c.birth.day)},
        {"User_Entry1", SqlQuote(DateText(c.entry1))},
        {"User_Entry2", SqlQuote(DateText(today))}};
    QStringList set;
    for (const auto& [column, value] : assignments)
        set << QString::fromLatin1(column) + QStringLiteral(" = ") + value;
    return QStringLiteral("update San_User set ") + set.join(QLatin1Char(',')) +
           QStringLiteral(" where User_No = ") + SqlNum(c.no);
}

QStringList DeleteSql(qint64 customerNo) {
    return {QStringLiteral("delete from San_User where User_No = ") + SqlNum(customerNo),
            QStringLiteral("delete from San_Uriage where Uri_UserNo = ") + SqlNum(customerNo)};
}

void Insert(const Customer& customer, const QDate& today) {
    gCon.execute(InsertSql(customer, today));
}

void Update(const Customer& customer, const QDate& today) {
    long changed = 0;
    gCon.execute(UpdateSql(customer, today), &changed);
    if (changed == 0)
        throw Failure(ErrorNumber::RowNotFound,
                      QStringLiteral("顧客番号 %1 の顧客は存在しません。").arg(customer.no));
}

void Remove(qint64 customerNo) {
    for (const QString& statement : DeleteSql(customerNo))
        gCon.execute(statement);
}

QString QuickSearchSql(const QString& kana, const QString& tel) {
    QStringList conditions;
    if (!kana.trimmed().isEmpty())
        conditions << QStringLiteral("User_Kana Like ") + SqlContains(kana);
    if (!tel.trimmed().isEmpty())
        conditions << QStringLiteral("User_Tel Like ") + SqlContains(tel);
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

QString ListedUpdateSql(const ListRow& row, const QDate& today) {
    const ListedCustomer& now = row.now;
    const ListedCustomer& read = row.read;
    QStringList set;
    const auto change = [&](bool changed, const char* column, const QString& value) {
        if (changed)
            set << QString::fromLatin1(column) + QStringLiteral(" = ") + value;
    };
    change(now.name != read.name, "user_Name", SqlStr(now.name));
    change(now.kana != read.kana, "user_Kana", SqlStr(now.kana));
    change(now.yubin != read.yubin, "user_Yubin", SqlStr(now.yubin));
    change(now.jusyo1 != read.jusyo1, "user_Jusyo1", SqlQuote(now.jusyo1));
    change(now.jusyo2 != read.jusyo2, "user_Jusyo2", SqlStr(now.jusyo2));
    change(now.tel != read.tel, "user_Tel", SqlStr(now.tel));
    change(now.kazok != read.kazok, "user_kazok_f", SqlNum(now.kazok));
    set << QStringLiteral("user_entry2 = ") + SqlQuote(DateText(today));
    return QStringLiteral("update San_user set ") + set.join(QLatin1Char(',')) +
           QStringLiteral(" where user_No = ") + SqlNum(now.no);
}

void UpdateListed(const ListRow& row, const QDate& today) {
    Transaction transaction(gCon);
    gCon.execute(ListedUpdateSql(row, today));
    transaction.commit();
}

void RemoveAlone(qint64 customerNo) {
    Transaction transaction(gCon);
    Remove(customerNo);
    transaction.commit();
}

} // namespace CustomerStore
