#include "data/AnalysisStore.h"

#include "frame/Globals.h"
#include "platform/FieldValues.h"
#include "platform/db/SqlText.h"

#include <cmath>

// Both engines take these statements as they are: integer division of the stored date gives
// its month number, sums are made whole-number safe with coalesce (an empty sum is Null, and
// PostgreSQL would sort a Null first), and a limit ends the top list.

namespace {

qint64 whole(const RecordSet& row, int position) {
    return qint64(std::llround(CmnNvl(row.field(position), 0).toDouble()));
}

QString inPeriod(const AnalysisPeriod& period) {
    return QStringLiteral("Uri_Date between ") + SqlNum(period.fromYmd()) +
           QStringLiteral(" and ") + SqlNum(period.toYmd());
}

QString periodWhere(const AnalysisPeriod& period) {
    return QStringLiteral(" from San_Uriage where ") + inPeriod(period);
}

// The sum of an amount and the count of the purchases that meet a condition.
QString sumsWhen(const QString& condition, const QString& amount, const QString& prefix) {
    return QStringLiteral("sum(case when ") + condition + QStringLiteral(" then coalesce(") +
           amount + QStringLiteral(", 0) else 0 end) as ") + prefix +
           QStringLiteral("_Amount, sum(case when ") + condition +
           QStringLiteral(" then 1 else 0 end) as ") + prefix + QStringLiteral("_Sales");
}

} // namespace

namespace AnalysisStore {

QString MonthsSql(const AnalysisPeriod& period) {
    const QString current = inPeriod(period);
    const QString before = inPeriod(YearBefore(period));
    return QStringLiteral("select Uri_Date / 100 as Ym, ") +
           sumsWhen(current, QStringLiteral("Uri_KingaKei"), QStringLiteral("Cur")) +
           QStringLiteral(", ") +
           sumsWhen(before, QStringLiteral("Uri_KingaKei"), QStringLiteral("Prev")) +
           QStringLiteral(" from San_Uriage where ") + current + QStringLiteral(" or ") + before +
           QStringLiteral(" group by Uri_Date / 100");
}

std::vector<MonthGroup> Months(const AnalysisPeriod& period) {
    std::vector<MonthGroup> groups;
    for (RecordSet rows = gCon.execute(MonthsSql(period)); !rows.eof(); rows.moveNext())
        groups.push_back({.ym = whole(rows, 0),
                          .current = {whole(rows, 1), whole(rows, 2)},
                          .yearBefore = {whole(rows, 3), whole(rows, 4)}});
    return groups;
}

QString BreakdownSql(Breakdown by, const AnalysisPeriod& period) {
    static const char* const columns[][2] = {{"Uri_ItemNo", "Uri_KingaKei"},
                                             {"Uri_YoutoNo", "Uri_KingaKei"},
                                             {"Uri_Fm_MekaNo", "Uri_Fm_Kinga"},
                                             {"Uri_Lz_MekaNo", "Uri_Lz_Kinga"}};
    const QString code = QString::fromLatin1(columns[int(by)][0]);
    const QString amount = QString::fromLatin1(columns[int(by)][1]);
    return QStringLiteral("select ") + code + QStringLiteral(", coalesce(sum(") + amount +
           QStringLiteral("), 0), count(*)") + periodWhere(period) + QStringLiteral(" group by ") +
           code;
}

std::vector<CodeSales> ByCode(Breakdown by, const AnalysisPeriod& period) {
    std::vector<CodeSales> groups;
    for (RecordSet rows = gCon.execute(BreakdownSql(by, period)); !rows.eof(); rows.moveNext())
        groups.push_back(
            {CmnNvl(rows.field(0), QString()).toString(), {whole(rows, 1), whole(rows, 2)}});
    return groups;
}

QString ServedSql(const AnalysisPeriod& period) {
    // Each customer of the period with his first purchase ever (one on or before the period's
    // end), and whether his birthday of the year had come by the period's last day.
    const QString month = QStringLiteral("coalesce(u.User_Tanjo_Mon, 0)");
    const QString firsts =
        QStringLiteral("select Uri_UserNo, min(Uri_Date) as First_Date from San_Uriage where "
                       "Uri_Date <= ") +
        SqlNum(period.toYmd()) + QStringLiteral(" group by Uri_UserNo having max(Uri_Date) >= ") +
        SqlNum(period.fromYmd());
    return QStringLiteral("select Sex, Era, Nen, Had, New, count(*) from (select "
                          "coalesce(u.User_Sex, 0) as Sex, coalesce(u.User_Tanjo_Go, 1) as Era, "
                          "coalesce(u.User_Tanjo_Nen, 0) as Nen, case when ") +
           month + QStringLiteral(" < ") + SqlNum(period.to.month()) + QStringLiteral(" or (") +
           month + QStringLiteral(" = ") + SqlNum(period.to.month()) +
           QStringLiteral(" and coalesce(u.User_Tanjo_Day, 0) <= ") + SqlNum(period.to.day()) +
           QStringLiteral(") then 1 else 0 end as Had, case when f.First_Date >= ") +
           SqlNum(period.fromYmd()) + QStringLiteral(" then 1 else 0 end as New from (") + firsts +
           QStringLiteral(") f left join San_User u on u.User_No = f.Uri_UserNo) g group by Sex, "
                          "Era, Nen, Had, New");
}

std::vector<ServedGroup> Served(const AnalysisPeriod& period) {
    std::vector<ServedGroup> groups;
    for (RecordSet rows = gCon.execute(ServedSql(period)); !rows.eof(); rows.moveNext())
        groups.push_back({.sex = int(whole(rows, 0)),
                          .era = int(whole(rows, 1)),
                          .year = int(whole(rows, 2)),
                          .hadBirthday = whole(rows, 3) == 1,
                          .isNew = whole(rows, 4) == 1,
                          .customers = whole(rows, 5)});
    return groups;
}

QString SummarySql(const AnalysisPeriod& period) {
    return QStringLiteral("select coalesce(sum(Uri_KingaKei), 0), count(*), count(distinct "
                          "Uri_UserNo)") +
           periodWhere(period);
}

SalesSummary Summary(const AnalysisPeriod& period) {
    const RecordSet row = gCon.execute(SummarySql(period));
    return {.sales = {whole(row, 0), whole(row, 1)}, .customers = whole(row, 2)};
}

QString TopCustomersSql(const AnalysisPeriod& period, int count) {
    return QStringLiteral(
               "select t.Uri_UserNo, u.User_Name, t.Sales, t.Amount from (select "
               "Uri_UserNo, count(*) as Sales, coalesce(sum(Uri_KingaKei), 0) as Amount") +
           periodWhere(period) +
           QStringLiteral(" group by Uri_UserNo order by Amount desc, Uri_UserNo limit ") +
           SqlNum(count) +
           QStringLiteral(") t left join San_User u on u.User_No = t.Uri_UserNo order by t.Amount "
                          "desc, t.Uri_UserNo");
}

std::vector<TopCustomer> TopCustomers(const AnalysisPeriod& period, int count) {
    std::vector<TopCustomer> top;
    for (RecordSet rows = gCon.execute(TopCustomersSql(period, count)); !rows.eof();
         rows.moveNext())
        top.push_back({.no = whole(rows, 0),
                       .name = CmnNvl(rows.field(1), QString()).toString(),
                       .sales = {whole(rows, 3), whole(rows, 2)}});
    return top;
}

} // namespace AnalysisStore
