#include "data/DailyClosingStore.h"

#include "domain/Ymd.h"
#include "frame/Globals.h"
#include "platform/FieldValues.h"
#include "platform/db/SqlText.h"
#include "platform/db/Transaction.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace {

// The date and time texts of the order log and the receipts: "yyyy/MM/dd HH:mm:ss".
const QString DayFormat = QStringLiteral("yyyy/MM/dd");
constexpr int CancelledStatus = int(OrderStatus::Cancelled);

// A whole number of a field; sums come back as decimals on the server.
qint64 whole(const RecordSet& row, int position) {
    return qint64(std::llround(CmnNvl(row.field(position), 0).toDouble()));
}

Tally tallyOf(const RecordSet& row, int countAt, int amountAt) {
    return {int(whole(row, countAt)), whole(row, amountAt)};
}

// The day part of a stored time, compared as text: the same on both engines whatever their
// collation.
QString onDay(const QString& column, const QDate& day) {
    return QStringLiteral("substr(%1,1,10) = %2").arg(column, SqlStr(day.toString(DayFormat)));
}

void readSales(DailyClosing& c, qint64 ymd) {
    RecordSet row = gCon.execute(
        QStringLiteral("select count(*), sum(u.Uri_KingaKei), count(o.Ord_UserNo), sum(case when "
                       "o.Ord_UserNo is null then 0 else u.Uri_KingaKei end) from San_Uriage u "
                       "left join San_Order o on o.Ord_UserNo = u.Uri_UserNo and o.Ord_Seq = "
                       "u.Uri_Seq where u.Uri_Date = ") +
        SqlNum(ymd));
    c.sales = tallyOf(row, 0, 1);
    c.salesWithOrder = tallyOf(row, 2, 3);
    c.salesWithoutOrder = {c.sales.count - c.salesWithOrder.count,
                           c.sales.amount - c.salesWithOrder.amount};
}

void readPayments(DailyClosing& c, qint64 ymd) {
    for (RecordSet rows = gCon.execute(
             QStringLiteral("select Pay_Kind, Pay_Method, count(*), sum(Pay_Amount) from "
                            "San_Payment where Pay_Date = %1 group by Pay_Kind, Pay_Method")
                 .arg(SqlNum(ymd)));
         !rows.eof(); rows.moveNext()) {
        const int method = std::clamp(int(whole(rows, 1)), 0, PaymentMethodCount - 1);
        const Tally tally = tallyOf(rows, 2, 3);
        Tally& into =
            whole(rows, 0) == int(PaymentKind::Refund) ? c.refunded[method] : c.received[method];
        into.add(tally.count, tally.amount);
    }
}

void readReceipts(DailyClosing& c, const QDate& day) {
    const QString issued = onDay(QStringLiteral("Rcp_IssuedAt"), day);
    const QString cancelled =
        QStringLiteral("Rcp_Cancelled <> 0 and ") + onDay(QStringLiteral("Rcp_CancelledAt"), day);
    RecordSet row = gCon.execute(
        QStringLiteral("select sum(case when %1 then 1 else 0 end), sum(case when %1 then "
                       "Rcp_Received else 0 end), sum(case when %2 then 1 else 0 end), sum(case "
                       "when %2 then Rcp_Received else 0 end) from San_Receipt where %1 or (%2)")
            .arg(issued, cancelled));
    c.receiptsIssued = tallyOf(row, 0, 1);
    c.receiptsCancelled = tallyOf(row, 2, 3);
}

using SaleKey = std::pair<qint64, int>;

SaleKey keyOf(const RecordSet& row) {
    return {whole(row, 0), int(whole(row, 1))};
}

// The purchases with an order dated on or before the day, with the day each was cancelled and
// their payments up to the day.
std::vector<OrderedSale> readOrderedSales(qint64 ymd) {
    std::map<SaleKey, OrderedSale> sales;
    for (RecordSet rows = gCon.execute(
             QStringLiteral("select o.Ord_UserNo, o.Ord_Seq, u.Uri_Date, u.Uri_KingaKei from "
                            "San_Order o join San_Uriage u on u.Uri_UserNo = o.Ord_UserNo and "
                            "u.Uri_Seq = o.Ord_Seq where u.Uri_Date <= ") +
             SqlNum(ymd));
         !rows.eof(); rows.moveNext())
        sales[keyOf(rows)] = {DateOfYmd(whole(rows, 2)), whole(rows, 3), {}, {}};
    for (RecordSet rows = gCon.execute(
             QStringLiteral("select OLog_UserNo, OLog_Seq, OLog_At from San_OrderLog where "
                            "OLog_Status = ") +
             SqlNum(CancelledStatus));
         !rows.eof(); rows.moveNext()) {
        const auto sale = sales.find(keyOf(rows));
        const QDate on =
            QDate::fromString(CmnNvl(rows.field(2), QString()).toString().left(10), DayFormat);
        if (sale == sales.end() || !on.isValid())
            continue;
        QDate& cancelled = sale->second.cancelledOn;
        if (!cancelled.isValid() || on < cancelled)
            cancelled = on;
    }
    for (RecordSet rows = gCon.execute(
             QStringLiteral("select Pay_UserNo, Pay_Seq, Pay_Date, Pay_Amount, Pay_Kind from "
                            "San_Payment where Pay_Date <= ") +
             SqlNum(ymd));
         !rows.eof(); rows.moveNext()) {
        const auto sale = sales.find(keyOf(rows));
        if (sale == sales.end())
            continue;
        Payment payment;
        payment.date = DateOfYmd(whole(rows, 2));
        payment.amount = whole(rows, 3);
        payment.kind = PaymentKind(std::clamp(int(whole(rows, 4)), 0, int(PaymentKind::Refund)));
        sale->second.payments.push_back(payment);
    }
    std::vector<OrderedSale> list;
    list.reserve(sales.size());
    for (auto& [key, sale] : sales)
        list.push_back(std::move(sale));
    return list;
}

} // namespace

namespace DailyClosingStore {

DailyClosing Read(const QDate& day) {
    // One moment of the shop for every figure, so that the day's payments and the balances
    // agree even while another terminal records a payment.
    Transaction snapshot(gCon, Transaction::Kind::Snapshot);
    DailyClosing c;
    c.day = day;
    const qint64 ymd = YmdOf(day);
    readSales(c, ymd);
    readPayments(c, ymd);
    readReceipts(c, day);
    const std::vector<OrderedSale> sales = readOrderedSales(ymd);
    c.owedBefore = OutstandingAt(sales, day.addDays(-1));
    c.owedAfter = OutstandingAt(sales, day);
    snapshot.commit();
    return c;
}

} // namespace DailyClosingStore
