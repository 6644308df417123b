#include "data/OrderStore.h"

#include "data/GuardedWrite.h"
#include "domain/Ymd.h"
#include "frame/Globals.h"
#include "platform/FieldValues.h"
#include "platform/db/SqlText.h"
#include "platform/db/Transaction.h"

#include <algorithm>

namespace {

const QString TimeFormat = QStringLiteral("yyyy/MM/dd HH:mm:ss");
// The statuses of open orders, written out so that an index on the status serves the board.
const QString OpenStatuses = QStringLiteral("(0,1,2,3,4,7)");

QString key(const QString& prefix, qint64 customerNo, int seq) {
    return QStringLiteral(" where %1_UserNo = %2 and %1_Seq = %3")
        .arg(prefix, SqlNum(customerNo), SqlNum(seq));
}

QString recordName(qint64 customerNo, int seq) {
    return QStringLiteral("顧客番号 %1 の売上（No.%2）の受注").arg(customerNo).arg(seq);
}

QString text(const RecordSet& row, const QString& column) {
    return CmnNvl(row.field(column), QString()).toString();
}

QDate dateOf(const QVariant& ymd) {
    const qint64 number = CmnNvl(ymd, 0).toLongLong();
    return number > 0 ? DateOfYmd(number) : QDate();
}

QString ymdLiteral(const QDate& date) {
    return SqlNum(date.isValid() ? YmdOf(date) : 0);
}

Order orderOf(const RecordSet& row) {
    Order order;
    order.status =
        OrderStatusOf(row.field(QStringLiteral("Ord_Status")).toInt()).value_or(OrderStatus::Taken);
    order.due = dateOf(row.field(QStringLiteral("Ord_DueDate")));
    order.supplierNo = text(row, QStringLiteral("Ord_MekaNo"));
    order.supplierOrderNo = text(row, QStringLiteral("Ord_SupplierNo"));
    order.note = text(row, QStringLiteral("Ord_Note"));
    order.remakeOf = CmnNvl(row.field(QStringLiteral("Ord_RemakeSeq")), 0).toInt();
    return order;
}

Payment paymentOf(const RecordSet& row) {
    Payment payment;
    payment.no = row.field(QStringLiteral("Pay_No")).toInt();
    payment.date = dateOf(row.field(QStringLiteral("Pay_Date")));
    payment.amount = row.field(QStringLiteral("Pay_Amount")).toLongLong();
    payment.method = PaymentMethod(
        std::clamp(row.field(QStringLiteral("Pay_Method")).toInt(), 0, int(PaymentMethod::Other)));
    payment.kind = PaymentKind(
        std::clamp(row.field(QStringLiteral("Pay_Kind")).toInt(), 0, int(PaymentKind::Refund)));
    return payment;
}

void insertStep(qint64 customerNo, int seq, int no, OrderStatus status, const QDateTime& at) {
    gCon.execute(QStringLiteral("insert into San_OrderLog values(%1,%2,%3,%4,%5)")
                     .arg(SqlNum(customerNo), SqlNum(seq), SqlNum(no), SqlNum(int(status)),
                          SqlStr(at.toString(TimeFormat))));
}

void insertPayment(qint64 customerNo, int seq, int no, const Payment& p) {
    gCon.execute(QStringLiteral("insert into San_Payment values(%1,%2,%3,%4,%5,%6,%7)")
                     .arg(SqlNum(customerNo), SqlNum(seq), SqlNum(no), ymdLiteral(p.date),
                          SqlNum(p.amount), SqlNum(int(p.method)), SqlNum(int(p.kind))));
}

std::vector<Payment> paymentsOf(qint64 customerNo, int seq) {
    std::vector<Payment> payments;
    for (RecordSet rows = gCon.execute(QStringLiteral("select * from San_Payment") +
                                       key(QStringLiteral("Pay"), customerNo, seq) +
                                       QStringLiteral(" order by Pay_No"));
         !rows.eof(); rows.moveNext())
        payments.push_back(paymentOf(rows));
    return payments;
}

// The stored order, its row locked until the transaction ends; RowDeleted when it is gone.
Order lockedOrder(qint64 customerNo, int seq) {
    RecordSet row = gCon.execute(QStringLiteral("select * from San_Order") +
                                 key(QStringLiteral("Ord"), customerNo, seq) + gCon.lockRows());
    if (row.eof())
        throw RowDeletedMeanwhile(recordName(customerNo, seq));
    return orderOf(row);
}

qint64 purchaseTotal(qint64 customerNo, int seq) {
    RecordSet row = gCon.execute(QStringLiteral("select Uri_KingaKei from San_Uriage") +
                                 key(QStringLiteral("Uri"), customerNo, seq));
    if (row.eof())
        throw RowDeletedMeanwhile(recordName(customerNo, seq));
    return CmnNvl(row.field(0), 0).toLongLong();
}

void refuseUnless(qint64 total, OrderStatus status, const std::vector<Payment>& payments,
                  const Payment& payment) {
    const QString refusal = PaymentRefusal(total, status, payments, payment);
    if (!refusal.isEmpty())
        throw Failure(ErrorNumber::PaymentRefused, refusal);
}

QString dueLiteral(const Order& o) {
    return ymdLiteral(o.due);
}
QString supplierLiteral(const Order& o) {
    return SqlStr(o.supplierNo);
}

const std::vector<ColumnOf<Order>>& editableColumns() {
    static const std::vector<ColumnOf<Order>> columns{
        {"Ord_DueDate", "お渡し予定日", &dueLiteral},
        {"Ord_MekaNo", "発注先", &supplierLiteral},
        {"Ord_SupplierNo", "発注番号", &TrimmedText<Order, &Order::supplierOrderNo>},
        {"Ord_Note", "メモ", &TextAsTyped<Order, &Order::note>},
    };
    return columns;
}

} // namespace

namespace OrderStore {

QStringList TableStatements() {
    return {
        QStringLiteral("CREATE TABLE IF NOT EXISTS San_Order (Ord_UserNo INTEGER NOT NULL, "
                       "Ord_Seq SMALLINT NOT NULL, Ord_Status INTEGER NOT NULL, Ord_DueDate "
                       "INTEGER NOT NULL, Ord_MekaNo TEXT, Ord_SupplierNo TEXT, Ord_Note TEXT, "
                       "Ord_RemakeSeq SMALLINT NOT NULL, PRIMARY KEY (Ord_UserNo, Ord_Seq))"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS IX_San_Order_Status ON San_Order "
                       "(Ord_Status, Ord_DueDate)"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS San_OrderLog (OLog_UserNo INTEGER NOT NULL, "
                       "OLog_Seq SMALLINT NOT NULL, OLog_No INTEGER NOT NULL, OLog_Status "
                       "INTEGER NOT NULL, OLog_At TEXT NOT NULL, PRIMARY KEY (OLog_UserNo, "
                       "OLog_Seq, OLog_No))"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS San_Payment (Pay_UserNo INTEGER NOT NULL, "
                       "Pay_Seq SMALLINT NOT NULL, Pay_No INTEGER NOT NULL, Pay_Date INTEGER NOT "
                       "NULL, Pay_Amount BIGINT NOT NULL, Pay_Method INTEGER NOT NULL, Pay_Kind "
                       "INTEGER NOT NULL, PRIMARY KEY (Pay_UserNo, Pay_Seq, Pay_No))"),
    };
}

QStringList Tables() {
    return {QStringLiteral("San_Order"), QStringLiteral("San_OrderLog"),
            QStringLiteral("San_Payment")};
}

std::map<int, OrderState> OfCustomer(qint64 customerNo) {
    std::map<int, OrderState> states;
    const QString no = SqlNum(customerNo);
    for (RecordSet rows =
             gCon.execute(QStringLiteral("select * from San_Order where Ord_UserNo = ") + no);
         !rows.eof(); rows.moveNext())
        states[rows.field(QStringLiteral("Ord_Seq")).toInt()].order = orderOf(rows);
    // Most customers never had an order: their purchases are read with one statement more.
    if (states.empty())
        return states;
    for (RecordSet rows =
             gCon.execute(QStringLiteral("select * from San_OrderLog where OLog_UserNo = ") + no +
                          QStringLiteral(" order by OLog_Seq, OLog_No"));
         !rows.eof(); rows.moveNext()) {
        const auto state = states.find(rows.field(QStringLiteral("OLog_Seq")).toInt());
        if (state != states.end() && state->second.order)
            state->second.order->steps.push_back(
                {OrderStatusOf(rows.field(QStringLiteral("OLog_Status")).toInt())
                     .value_or(OrderStatus::Taken),
                 QDateTime::fromString(text(rows, QStringLiteral("OLog_At")), TimeFormat)});
    }
    for (RecordSet rows =
             gCon.execute(QStringLiteral("select * from San_Payment where Pay_UserNo = ") + no +
                          QStringLiteral(" order by Pay_Seq, Pay_No"));
         !rows.eof(); rows.moveNext()) {
        const auto state = states.find(rows.field(QStringLiteral("Pay_Seq")).toInt());
        if (state != states.end())
            state->second.payments.push_back(paymentOf(rows));
    }
    return states;
}

OrderState OfPurchase(qint64 customerNo, int seq) {
    std::map<int, OrderState> states = OfCustomer(customerNo);
    const auto state = states.find(seq);
    return state == states.end() ? OrderState{} : state->second;
}

void Create(qint64 customerNo, int seq, qint64 total, const Order& o,
            const std::vector<Payment>& payments, const QDateTime& at) {
    gCon.execute(QStringLiteral("insert into San_Order values(%1,%2,%3,%4,%5,%6,%7,%8)")
                     .arg(SqlNum(customerNo), SqlNum(seq), SqlNum(int(o.status)), dueLiteral(o),
                          supplierLiteral(o), SqlStr(o.supplierOrderNo), SqlQuote(o.note),
                          SqlNum(o.remakeOf)));
    insertStep(customerNo, seq, 1, o.status, at);
    std::vector<Payment> stored;
    for (const Payment& payment : payments) {
        refuseUnless(total, o.status, stored, payment);
        stored.push_back(payment);
        insertPayment(customerNo, seq, int(stored.size()), payment);
    }
}

void Start(qint64 customerNo, int seq, const Order& order, const QDateTime& at) {
    Transaction transaction(gCon);
    const QString record = recordName(customerNo, seq);
    RecordSet purchase =
        gCon.execute(QStringLiteral("select Uri_KingaKei from San_Uriage") +
                     key(QStringLiteral("Uri"), customerNo, seq) + gCon.lockRows());
    if (purchase.eof())
        throw RowDeletedMeanwhile(record);
    const qint64 total = CmnNvl(purchase.field(0), 0).toLongLong();
    purchase.close();
    if (!gCon.execute(QStringLiteral("select Ord_Status from San_Order") +
                      key(QStringLiteral("Ord"), customerNo, seq))
             .eof())
        throw RowChangedMeanwhile(record, {QStringLiteral("状態")});
    Create(customerNo, seq, total, order, {}, at);
    transaction.commit();
}

void SetStatus(qint64 customerNo, int seq, const Order& shown, OrderStatus next,
               const QDateTime& at) {
    Transaction transaction(gCon);
    const Order stored = lockedOrder(customerNo, seq);
    if (stored.status != shown.status)
        throw RowChangedMeanwhile(recordName(customerNo, seq), {QStringLiteral("状態")});
    gCon.execute(QStringLiteral("update San_Order set Ord_Status = ") + SqlNum(int(next)) +
                 key(QStringLiteral("Ord"), customerNo, seq));
    const qint64 steps = CmnNvl(gCon.execute(QStringLiteral("select max(OLog_No) from "
                                                            "San_OrderLog") +
                                             key(QStringLiteral("OLog"), customerNo, seq))
                                    .field(0),
                                0)
                             .toLongLong();
    insertStep(customerNo, seq, int(steps) + 1, next, at);
    transaction.commit();
}

void Update(qint64 customerNo, int seq, const Order& shown, const Order& now) {
    Transaction transaction(gCon);
    const QString record = recordName(customerNo, seq);
    const GuardedWrite write =
        PlanWrite(Compare(editableColumns(), shown, now, lockedOrder(customerNo, seq)));
    if (!write.collisions.isEmpty())
        throw RowChangedMeanwhile(record, write.collisions);
    if (!write.assignments.isEmpty())
        ExecuteOnCheckedRow(QStringLiteral("update San_Order set ") +
                                write.assignments.join(QStringLiteral(", ")) +
                                key(QStringLiteral("Ord"), customerNo, seq),
                            record);
    transaction.commit();
}

void AddPayment(qint64 customerNo, int seq, const Payment& payment) {
    Transaction transaction(gCon);
    const Order stored = lockedOrder(customerNo, seq);
    const std::vector<Payment> payments = paymentsOf(customerNo, seq);
    refuseUnless(purchaseTotal(customerNo, seq), stored.status, payments, payment);
    int last = 0;
    for (const Payment& p : payments)
        last = std::max(last, p.no);
    insertPayment(customerNo, seq, last + 1, payment);
    transaction.commit();
}

void ForgetPurchase(qint64 customerNo, int seq) {
    for (const auto& [table, prefix] :
         {std::pair{"San_Order", "Ord"}, std::pair{"San_OrderLog", "OLog"},
          std::pair{"San_Payment", "Pay"}})
        gCon.execute(QStringLiteral("delete from ") + QString::fromLatin1(table) +
                     key(QString::fromLatin1(prefix), customerNo, seq));
}

void ForgetCustomer(qint64 customerNo) {
    for (const auto& [table, prefix] :
         {std::pair{"San_Order", "Ord"}, std::pair{"San_OrderLog", "OLog"},
          std::pair{"San_Payment", "Pay"}})
        gCon.execute(
            QStringLiteral("delete from %1 where %2_UserNo = %3")
                .arg(QString::fromLatin1(table), QString::fromLatin1(prefix), SqlNum(customerNo)));
}

std::vector<BoardLine> OpenOrders() {
    RecordSet rows = gCon.execute(
        QStringLiteral(
            "select o.*, u.Uri_ItemNo, u.Uri_Fm_Name, u.Uri_Lz_Name, u.Uri_KingaKei, "
            "c.User_Name, c.User_Tel, (select sum(case when p.Pay_Kind = 2 then -p.Pay_Amount "
            "else p.Pay_Amount end) from San_Payment p where p.Pay_UserNo = o.Ord_UserNo and "
            "p.Pay_Seq = o.Ord_Seq) as Paid from San_Order o join San_Uriage u on u.Uri_UserNo "
            "= o.Ord_UserNo and u.Uri_Seq = o.Ord_Seq join San_User c on c.User_No = "
            "o.Ord_UserNo where o.Ord_Status in ") +
        OpenStatuses +
        QStringLiteral(" order by case when o.Ord_DueDate = 0 then 1 else 0 end, o.Ord_DueDate, "
                       "o.Ord_UserNo, o.Ord_Seq"));
    std::vector<BoardLine> lines;
    for (; !rows.eof(); rows.moveNext()) {
        BoardLine line;
        line.customerNo = rows.field(QStringLiteral("Ord_UserNo")).toLongLong();
        line.seq = rows.field(QStringLiteral("Ord_Seq")).toInt();
        line.name = text(rows, QStringLiteral("User_Name"));
        line.tel = text(rows, QStringLiteral("User_Tel"));
        line.itemNo = text(rows, QStringLiteral("Uri_ItemNo"));
        line.fmName = text(rows, QStringLiteral("Uri_Fm_Name"));
        line.lzName = text(rows, QStringLiteral("Uri_Lz_Name"));
        line.total = CmnNvl(rows.field(QStringLiteral("Uri_KingaKei")), 0).toLongLong();
        line.order = orderOf(rows);
        const qint64 paid =
            std::max<qint64>(CmnNvl(rows.field(QStringLiteral("Paid")), 0).toLongLong(), 0);
        line.outstanding = std::max<qint64>(line.total - paid, 0);
        lines.push_back(std::move(line));
    }
    return lines;
}

BoardCounts CountOpenOrders(const QDate& today) {
    RecordSet row = gCon.execute(
        QStringLiteral("select sum(case when o.Ord_DueDate > 0 and o.Ord_DueDate < %1 then 1 "
                       "else 0 end), sum(case when o.Ord_Status in (2,3) then 1 else 0 end) from "
                       "San_Order o join San_Uriage u on u.Uri_UserNo = o.Ord_UserNo and "
                       "u.Uri_Seq = o.Ord_Seq where o.Ord_Status in ")
            .arg(SqlNum(YmdOf(today))) +
        OpenStatuses);
    return {int(CmnNvl(row.field(0), 0).toLongLong()), int(CmnNvl(row.field(1), 0).toLongLong())};
}

} // namespace OrderStore
