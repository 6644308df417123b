#include "data/ReceiptStore.h"

#include "data/GuardedWrite.h"
#include "data/Numbering.h"
#include "data/OrderStore.h"
#include "domain/Ymd.h"
#include "frame/Globals.h"
#include "platform/FieldValues.h"
#include "platform/db/SqlText.h"
#include "platform/db/Transaction.h"

#include <algorithm>

namespace {

const QString TimeFormat = QStringLiteral("yyyy/MM/dd HH:mm:ss");

QString recordName(qint64 no) {
    return QStringLiteral("領収書 No.%1").arg(no);
}

QString text(const RecordSet& row, const char* column) {
    return CmnNvl(row.field(QString::fromLatin1(column)), QString()).toString();
}

qint64 number(const RecordSet& row, const char* column) {
    return CmnNvl(row.field(QString::fromLatin1(column)), 0).toLongLong();
}

QString ymd(const QDate& date) {
    return SqlNum(date.isValid() ? YmdOf(date) : 0);
}

QDate dateOf(qint64 ymd) {
    return ymd > 0 ? DateOfYmd(ymd) : QDate();
}

Receipt receiptOf(const RecordSet& row) {
    Receipt r;
    r.no = number(row, "Rcp_No");
    r.issuedAt = QDateTime::fromString(text(row, "Rcp_IssuedAt"), TimeFormat);
    r.customerNo = number(row, "Rcp_UserNo");
    r.seq = int(number(row, "Rcp_Seq"));
    r.paymentNo = int(number(row, "Rcp_PayNo"));
    r.kind = number(row, "Rcp_Kind") == 1 ? ReceiptKind::Medical : ReceiptKind::Ordinary;
    r.addressee = text(row, "Rcp_Atena");
    r.total = number(row, "Rcp_Total");
    r.received = number(row, "Rcp_Received");
    r.method = PaymentMethod(
        std::clamp<qint64>(number(row, "Rcp_Method"), 0, qint64(PaymentMethod::Other)));
    r.stamp = number(row, "Rcp_Stamp") != 0;
    r.purchaseDate = dateOf(number(row, "Rcp_PurchaseDate"));
    r.prescriptionDate = dateOf(number(row, "Rcp_PrescDate"));
    r.shopName = text(row, "Rcp_ShopName");
    r.shopAddress = text(row, "Rcp_ShopAddress");
    r.shopTel = text(row, "Rcp_ShopTel");
    r.invoiceNo = text(row, "Rcp_InvoiceNo");
    r.cancelled = number(row, "Rcp_Cancelled") != 0;
    r.cancelledAt = QDateTime::fromString(text(row, "Rcp_CancelledAt"), TimeFormat);
    r.reprints = int(number(row, "Rcp_Reprints"));
    return r;
}

// The receipts the condition selects, with their lines and taxes, by number.
std::vector<Receipt> receiptsWhere(const QString& condition) {
    std::vector<Receipt> receipts;
    for (RecordSet rows = gCon.execute(QStringLiteral("select * from San_Receipt where ") +
                                       condition + QStringLiteral(" order by Rcp_No"));
         !rows.eof(); rows.moveNext())
        receipts.push_back(receiptOf(rows));
    for (Receipt& r : receipts) {
        for (RecordSet rows =
                 gCon.execute(QStringLiteral("select * from San_ReceiptLine where Rln_No = ") +
                              SqlNum(r.no) + QStringLiteral(" order by Rln_Line"));
             !rows.eof(); rows.moveNext())
            r.lines.push_back({text(rows, "Rln_Caption"), number(rows, "Rln_Amount"),
                               int(number(rows, "Rln_Percent"))});
        for (RecordSet rows =
                 gCon.execute(QStringLiteral("select * from San_ReceiptTax where Rtx_No = ") +
                              SqlNum(r.no) + QStringLiteral(" order by Rtx_Percent desc"));
             !rows.eof(); rows.moveNext())
            r.taxes.push_back({int(number(rows, "Rtx_Percent")), number(rows, "Rtx_Total"),
                               number(rows, "Rtx_Tax")});
    }
    return receipts;
}

// Inside the issuing transaction: the purchase and its money are still what the receipt was
// made from (the purchase's row locked, so no terminal changes them before it is stored), and
// no receipt not cancelled covers the same money.
void checkStillAsMade(const Receipt& r) {
    const QString record =
        QStringLiteral("顧客番号 %1 の売上（No.%2）").arg(r.customerNo).arg(r.seq);
    RecordSet row = gCon.execute(
        QStringLiteral("select Uri_KingaKei, Uri_Fm_Kinga, Uri_Lz_Kinga from San_Uriage where "
                       "Uri_UserNo = %1 and Uri_Seq = %2")
            .arg(SqlNum(r.customerNo), SqlNum(r.seq)) +
        gCon.lockRows());
    if (row.eof())
        throw RowDeletedMeanwhile(record);
    Purchase stored;
    stored.seq = r.seq;
    stored.date = r.purchaseDate;
    stored.total = CmnNvl(row.field(0), 0).toLongLong();
    stored.fmKinga = CmnNvl(row.field(1), 0).toLongLong();
    stored.lzKinga = CmnNvl(row.field(2), 0).toLongLong();
    row.close();
    const Receipt asStored = ReceiptFor(stored, r.received, r.method, 0, TaxRounding::Down);
    const auto amounts = [](const std::vector<ReceiptLine>& lines) {
        std::vector<qint64> a;
        for (const ReceiptLine& line : lines)
            a.push_back(line.amount);
        return a;
    };
    if (stored.total != r.total || amounts(asStored.lines) != amounts(r.lines))
        throw RowChangedMeanwhile(record, {QStringLiteral("金額")});
    const OrderStore::OrderState state = OrderStore::OfPurchase(r.customerNo, r.seq);
    const std::vector<ReceiptTarget> targets =
        ReceiptTargets(stored.total, state.order.has_value(), state.payments);
    const auto target = std::find_if(targets.begin(), targets.end(), [&](const ReceiptTarget& t) {
        return t.paymentNo == r.paymentNo;
    });
    if (target == targets.end() || target->amount != r.received ||
        (r.paymentNo != 0 && target->method != r.method))
        throw RowChangedMeanwhile(record, {QStringLiteral("入金")});
    if (const qint64 covering =
            ReceiptCovering(ReceiptStore::OfPurchase(r.customerNo, r.seq), r.paymentNo))
        throw Failure(ErrorNumber::ReceiptRefused,
                      QStringLiteral("この%1には領収書 No.%2 を発行済みです。同じ入金の領収書は"
                                     "二重に発行できません。再発行するか、取り消してから発行し"
                                     "てください。")
                          .arg(r.paymentNo == 0 ? QStringLiteral("売上") : QStringLiteral("入金"))
                          .arg(covering));
}

} // namespace

namespace ReceiptStore {

QStringList TableStatements() {
    return {
        QStringLiteral(
            "CREATE TABLE IF NOT EXISTS San_Receipt (Rcp_No INTEGER NOT NULL PRIMARY KEY, "
            "Rcp_Date INTEGER NOT NULL, Rcp_IssuedAt TEXT NOT NULL, Rcp_UserNo INTEGER NOT NULL, "
            "Rcp_Seq SMALLINT NOT NULL, Rcp_PayNo INTEGER NOT NULL, Rcp_Kind INTEGER NOT NULL, "
            "Rcp_Atena TEXT, Rcp_Total BIGINT NOT NULL, Rcp_Received BIGINT NOT NULL, "
            "Rcp_Method INTEGER NOT NULL, Rcp_Stamp INTEGER NOT NULL, Rcp_PurchaseDate INTEGER "
            "NOT NULL, Rcp_PrescDate INTEGER NOT NULL, Rcp_ShopName TEXT, Rcp_ShopAddress TEXT, "
            "Rcp_ShopTel TEXT, Rcp_InvoiceNo TEXT, Rcp_Cancelled INTEGER NOT NULL, "
            "Rcp_CancelledAt TEXT, Rcp_Reprints INTEGER NOT NULL)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS IX_San_Receipt_Purchase ON San_Receipt "
                       "(Rcp_UserNo, Rcp_Seq)"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS San_ReceiptLine (Rln_No INTEGER NOT NULL, "
                       "Rln_Line INTEGER NOT NULL, Rln_Caption TEXT, Rln_Amount BIGINT NOT NULL, "
                       "Rln_Percent INTEGER NOT NULL, PRIMARY KEY (Rln_No, Rln_Line))"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS San_ReceiptTax (Rtx_No INTEGER NOT NULL, "
                       "Rtx_Percent INTEGER NOT NULL, Rtx_Total BIGINT NOT NULL, Rtx_Tax BIGINT "
                       "NOT NULL, PRIMARY KEY (Rtx_No, Rtx_Percent))"),
    };
}

QStringList Tables() {
    return {QStringLiteral("San_Receipt"), QStringLiteral("San_ReceiptLine"),
            QStringLiteral("San_ReceiptTax")};
}

Receipt Issue(Receipt r, const QDateTime& at) {
    Transaction transaction(gCon);
    // The numbering row, locked first, also keeps two terminals from receipting one payment.
    r.no = Numbering::TakeReceiptNo();
    checkStillAsMade(r);
    r.issuedAt = at;
    gCon.execute(QStringLiteral("insert into San_Receipt values(") +
                 QStringList{SqlNum(r.no),
                             ymd(at.date()),
                             SqlStr(at.toString(TimeFormat)),
                             SqlNum(r.customerNo),
                             SqlNum(r.seq),
                             SqlNum(r.paymentNo),
                             SqlNum(int(r.kind)),
                             SqlQuote(r.addressee),
                             SqlNum(r.total),
                             SqlNum(r.received),
                             SqlNum(int(r.method)),
                             SqlNum(r.stamp ? 1 : 0),
                             ymd(r.purchaseDate),
                             ymd(r.prescriptionDate),
                             SqlQuote(r.shopName),
                             SqlQuote(r.shopAddress),
                             SqlQuote(r.shopTel),
                             SqlQuote(r.invoiceNo),
                             SqlNum(0),
                             QStringLiteral("NULL"),
                             SqlNum(0)}
                     .join(QLatin1Char(',')) +
                 QLatin1Char(')'));
    for (std::size_t i = 0; i < r.lines.size(); ++i)
        gCon.execute(QStringLiteral("insert into San_ReceiptLine values(%1,%2,%3,%4,%5)")
                         .arg(SqlNum(r.no), SqlNum(qint64(i) + 1), SqlQuote(r.lines[i].caption),
                              SqlNum(r.lines[i].amount), SqlNum(r.lines[i].percent)));
    for (const RateTotal& rate : r.taxes)
        gCon.execute(
            QStringLiteral("insert into San_ReceiptTax values(%1,%2,%3,%4)")
                .arg(SqlNum(r.no), SqlNum(rate.percent), SqlNum(rate.total), SqlNum(rate.tax)));
    transaction.commit();
    return r;
}

std::optional<Receipt> Find(qint64 no) {
    std::vector<Receipt> found = receiptsWhere(QStringLiteral("Rcp_No = ") + SqlNum(no));
    return found.empty() ? std::nullopt : std::optional<Receipt>(found.front());
}

std::vector<Receipt> OfPurchase(qint64 customerNo, int seq) {
    return receiptsWhere(
        QStringLiteral("Rcp_UserNo = %1 and Rcp_Seq = %2").arg(SqlNum(customerNo), SqlNum(seq)));
}

QDate LastIssueDay() {
    return dateOf(
        CmnNvl(gCon.execute(QStringLiteral("select max(Rcp_Date) from San_Receipt")).field(0), 0)
            .toLongLong());
}

Receipt Reprint(qint64 no) {
    Transaction transaction(gCon);
    ExecuteOnCheckedRow(
        QStringLiteral("update San_Receipt set Rcp_Reprints = Rcp_Reprints + 1 where Rcp_No = ") +
            SqlNum(no),
        recordName(no));
    transaction.commit();
    return *Find(no);
}

void Cancel(qint64 no, const QDateTime& at) {
    Transaction transaction(gCon);
    RecordSet row =
        gCon.execute(QStringLiteral("select Rcp_Cancelled from San_Receipt where Rcp_No = ") +
                     SqlNum(no) + gCon.lockRows());
    if (row.eof())
        throw RowDeletedMeanwhile(recordName(no));
    if (row.field(0).toInt() != 0)
        throw RowChangedMeanwhile(recordName(no), {QStringLiteral("取消")});
    row.close();
    ExecuteOnCheckedRow(QStringLiteral("update San_Receipt set Rcp_Cancelled = 1, "
                                       "Rcp_CancelledAt = ") +
                            SqlStr(at.toString(TimeFormat)) + QStringLiteral(" where Rcp_No = ") +
                            SqlNum(no),
                        recordName(no));
    transaction.commit();
}

} // namespace ReceiptStore
