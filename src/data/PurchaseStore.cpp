#include "data/PurchaseStore.h"

#include "data/CustomerQueries.h"
#include "data/GuardedWrite.h"
#include "data/Numbering.h"
#include "data/OrderStore.h"
#include "domain/Ymd.h"
#include "frame/Globals.h"
#include "platform/FieldValues.h"
#include "platform/Format.h"
#include "platform/db/SqlText.h"
#include "platform/ui/Clock.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace {

QString text(const RecordSet& row, const QString& column) {
    return CmnNvl(row.field(column), QString()).toString();
}

qint64 amount(const RecordSet& row, const QString& column) {
    return qint64(std::llround(CmnNvl(row.field(column), 0).toDouble()));
}

Purchase purchaseOf(const RecordSet& row) {
    Purchase p;
    p.seq = row.field(QStringLiteral("Uri_Seq")).toInt();
    p.storedYmd = row.field(QStringLiteral("Uri_Date")).toLongLong();
    p.date = DateOfYmd(p.storedYmd);
    p.itemNo = text(row, QStringLiteral("Uri_ItemNo"));
    p.youtoNo = text(row, QStringLiteral("Uri_YoutoNo"));
    p.fmMekaNo = text(row, QStringLiteral("Uri_Fm_MekaNo"));
    p.lzMekaNo = text(row, QStringLiteral("Uri_Lz_MekaNo"));
    p.fmName = text(row, QStringLiteral("Uri_Fm_Name"));
    p.fmSize = text(row, QStringLiteral("Uri_Fm_Size"));
    p.fmColor = text(row, QStringLiteral("Uri_Fm_Color"));
    p.lzName = text(row, QStringLiteral("Uri_Lz_Name"));
    p.fmKinga = amount(row, QStringLiteral("Uri_Fm_Kinga"));
    p.lzKinga = amount(row, QStringLiteral("Uri_Lz_Kinga"));
    p.total = amount(row, QStringLiteral("Uri_KingaKei"));
    for (int eye = 0; eye < 2; ++eye)
        for (int i = 0; i < int(PrescriptionColumns.size()); ++i) {
            const QString column = PurchaseStore::PrescriptionColumn(i, eye);
            if (IsPrescriptionText(i))
                p.eyes[eye].base(i) = text(row, column);
            else
                p.eyes[eye].numbers[i] = CmnNvl(row.field(column), 0).toDouble();
        }
    p.syohou = text(row, QStringLiteral("Uri_Syohou"));
    p.memo = text(row, QStringLiteral("Uri_Memo"));
    return p;
}

QString prescriptionValue(const Purchase& p, int eye, int index) {
    return IsPrescriptionText(index) ? SqlStr(p.eyes[eye].base(index))
                                     : SqlReal(p.eyes[eye].numbers[index]);
}

// The register writes texts and codes trimmed; the history writes them as they are, and
// leaves the note and the memo alone.
enum class WrittenBy { Register, History };

std::vector<GuardedColumn> compare(WrittenBy by, const Purchase& shown, const Purchase& now,
                                   const Purchase& stored) {
    std::vector<GuardedColumn> columns;
    const auto add = [&](const QString& name, const QString& caption, const auto& literal) {
        columns.push_back({name, caption, literal(shown), literal(now), literal(stored)});
    };
    const auto text = [by](QString Purchase::*field) {
        return [by, field](const Purchase& p) {
            return by == WrittenBy::Register ? SqlStr(p.*field) : SqlQuote(p.*field);
        };
    };
    const auto number = [](qint64 Purchase::*field) {
        return [field](const Purchase& p) {
            return SqlNum(p.*field);
        };
    };
    add(QStringLiteral("Uri_Date"), QStringLiteral("売上日"),
        [](const Purchase& p) { return SqlNum(YmdOf(p.date)); });
    add(QStringLiteral("Uri_ItemNo"), QStringLiteral("ｱｲﾃﾑ"), text(&Purchase::itemNo));
    add(QStringLiteral("Uri_YoutoNo"), QStringLiteral("用途"), text(&Purchase::youtoNo));
    add(QStringLiteral("Uri_Fm_MekaNo"), QStringLiteral("ﾌﾚｰﾑのﾒｰｶｰ"), text(&Purchase::fmMekaNo));
    add(QStringLiteral("Uri_Fm_Name"), QStringLiteral("ﾌﾚｰﾑ品名"), text(&Purchase::fmName));
    add(QStringLiteral("Uri_Fm_Kinga"), QStringLiteral("ﾌﾚｰﾑの金額"), number(&Purchase::fmKinga));
    add(QStringLiteral("Uri_Fm_Size"), QStringLiteral("ｻｲｽﾞ"), text(&Purchase::fmSize));
    add(QStringLiteral("Uri_Fm_Color"), QStringLiteral("ｶﾗｰ"), text(&Purchase::fmColor));
    add(QStringLiteral("Uri_Lz_MekaNo"), QStringLiteral("ﾚﾝｽﾞのﾒｰｶｰ"), text(&Purchase::lzMekaNo));
    add(QStringLiteral("Uri_Lz_Name"), QStringLiteral("ﾚﾝｽﾞ品名"), text(&Purchase::lzName));
    add(QStringLiteral("Uri_Lz_Kinga"), QStringLiteral("ﾚﾝｽﾞの金額"), number(&Purchase::lzKinga));
    add(QStringLiteral("Uri_KingaKei"), QStringLiteral("売上合計"), number(&Purchase::total));
    for (int eye = 0; eye < 2; ++eye)
        for (int i = 0; i < int(PrescriptionColumns.size()); ++i)
            add(PurchaseStore::PrescriptionColumn(i, eye),
                QString::fromUtf8(PrescriptionColumns[i].heading) +
                    (eye == 0 ? QStringLiteral("(R)") : QStringLiteral("(L)")),
                [eye, i](const Purchase& p) { return prescriptionValue(p, eye, i); });
    if (by == WrittenBy::Register) {
        add(QStringLiteral("Uri_Syohou"), QStringLiteral("眼処方"), text(&Purchase::syohou));
        add(QStringLiteral("Uri_Memo"), QStringLiteral("メモ"), text(&Purchase::memo));
    }
    return columns;
}

QString updateSql(qint64 customerNo, int seq, const QStringList& assignments) {
    return QStringLiteral("update San_Uriage set ") + assignments.join(QStringLiteral(", ")) +
           QStringLiteral(" where Uri_UserNo = ") + SqlNum(customerNo) +
           QStringLiteral(" and Uri_Seq = ") + SqlNum(seq);
}

// The purchase as stored now; fails when it is gone, or (whole: for a deletion) no longer
// as shown.
const Purchase& storedAsShown(const std::map<int, Purchase>& stored, const Purchase& shown,
                              const QString& record, bool whole) {
    const auto found = stored.find(shown.seq);
    if (found == stored.end())
        throw RowDeletedMeanwhile(record);
    if (whole && found->second != shown)
        throw RowChangedMeanwhile(record);
    return found->second;
}

// Writes what the screen changed of one purchase, unless another terminal changed it too.
void writeChanges(WrittenBy by, qint64 customerNo, const Purchase& shown, const Purchase& now,
                  const Purchase& stored) {
    const QString record = PurchaseStore::RecordName(customerNo, shown);
    const GuardedWrite write = PlanWrite(compare(by, shown, now, stored));
    if (!write.collisions.isEmpty())
        throw RowChangedMeanwhile(record, write.collisions);
    if (!write.assignments.isEmpty())
        ExecuteOnCheckedRow(updateSql(customerNo, shown.seq, write.assignments), record);
}

} // namespace

namespace PurchaseStore {

QString PrescriptionColumn(int index, int eye) {
    return QStringLiteral("Uri_") + (eye == 0 ? QLatin1Char('R') : QLatin1Char('L')) +
           QLatin1Char('_') + QString::fromLatin1(PrescriptionColumns[index].suffix);
}

std::vector<Purchase> OfCustomer(qint64 customerNo) {
    RecordSet rows =
        gCon.execute(QStringLiteral("select * from San_Uriage where Uri_UserNo = ") +
                     SqlNum(customerNo) + QStringLiteral(" Order By Uri_Date desc,Uri_seq"));
    std::vector<Purchase> purchases;
    for (; !rows.eof(); rows.moveNext())
        purchases.push_back(purchaseOf(rows));
    return purchases;
}

QString RecordName(qint64 customerNo, const Purchase& purchase) {
    return QStringLiteral("顧客番号 %1 の %2 の売上（No.%3）")
        .arg(customerNo)
        .arg(PurchaseDateText(purchase))
        .arg(purchase.seq);
}

QString InsertSql(qint64 customerNo, const Purchase& p) {
    QStringList values{SqlNum(customerNo), SqlNum(p.seq),      SqlNum(YmdOf(p.date)),
                       SqlStr(p.itemNo),   SqlStr(p.youtoNo),  SqlStr(p.fmMekaNo),
                       SqlStr(p.fmName),   SqlNum(p.fmKinga),  SqlStr(p.fmSize),
                       SqlStr(p.fmColor),  SqlStr(p.lzMekaNo), SqlStr(p.lzName),
                       SqlNum(p.lzKinga),  SqlNum(p.total)};
    for (int eye = 0; eye < 2; ++eye)
        for (int i = 0; i < int(PrescriptionColumns.size()); ++i)
            values << prescriptionValue(p, eye, i);
    values << SqlStr(p.syohou) << SqlStr(p.memo);
    return QStringLiteral("insert into San_Uriage Values(") + values.join(QLatin1Char(',')) +
           QStringLiteral(",'' )");
}

QString UpdateSql(qint64 customerNo, const Purchase& shown, const Purchase& now) {
    return updateSql(customerNo, now.seq,
                     PlanWrite(compare(WrittenBy::Register, shown, now, shown)).assignments);
}

QString DeleteSql(qint64 customerNo, int seq) {
    return QStringLiteral("delete from San_Uriage where Uri_UserNo = ") + SqlNum(customerNo) +
           QStringLiteral(" and Uri_Seq = ") + SqlNum(seq);
}

void SaveLines(qint64 customerNo, const std::vector<PurchaseLine>& lines) {
    const auto waiting = [&](LineState state) {
        return std::count_if(lines.begin(), lines.end(),
                             [state](const PurchaseLine& l) { return l.state == state; });
    };
    std::map<int, Purchase> stored;
    if (waiting(LineState::Changed) + waiting(LineState::Deleted) > 0)
        for (Purchase& p : OfCustomer(customerNo))
            stored.emplace(p.seq, std::move(p));
    int nextSeq = 0;
    if (const auto count = waiting(LineState::New); count > 0)
        nextSeq = Numbering::TakePurchaseSeqs(customerNo, int(count));
    for (const PurchaseLine& line : lines) {
        const QString record = RecordName(customerNo, line.read);
        switch (line.state) {
        case LineState::New: {
            Purchase inserted = line.purchase;
            inserted.seq = nextSeq++;
            gCon.execute(InsertSql(customerNo, inserted));
            if (line.order)
                OrderStore::Create(customerNo, inserted.seq, inserted.total, *line.order,
                                   line.payments, Now());
            break;
        }
        case LineState::Changed:
            writeChanges(WrittenBy::Register, customerNo, line.read, line.purchase,
                         storedAsShown(stored, line.read, record, false));
            break;
        case LineState::Deleted:
            storedAsShown(stored, line.read, record, true);
            ExecuteOnCheckedRow(DeleteSql(customerNo, line.read.seq), record);
            Numbering::KeepPurchaseSeq(customerNo, line.read.seq);
            OrderStore::ForgetPurchase(customerNo, line.read.seq);
            break;
        case LineState::Stored:
            break;
        }
    }
}

HistoryPage ReadHistoryPage(qint64 customerNo, qint64 ymd, int page) {
    RecordSet rows = gCon.execute(
        QStringLiteral("select San3.*,San1.User_Name,San2.* from V_San_User as San3,San_User as "
                       "San1,San_Uriage as San2 where San1.User_No = ") +
        SqlNum(customerNo) +
        QStringLiteral(" and San1.User_No = San2.Uri_UserNo  and San2.Uri_UserNo = "
                       "San3.User_No and san2.Uri_date <= ") +
        SqlNum(ymd) + QStringLiteral(" order by San2.Uri_Date desc,san2.Uri_Seq "));
    HistoryPage shown;
    const int first = 3 * page - 2;
    // The previous prescription of one shown may be above it among those of its day (a day's
    // purchases are listed in the order they were made) or on a later page: the purchases are
    // read until a day older than the last shown that has one, and that day to its end.
    std::vector<Purchase> all;
    std::optional<QDate> previousDay;
    for (int count = 1; !rows.eof(); ++count, rows.moveNext()) {
        all.push_back(purchaseOf(rows));
        const Purchase& read = all.back();
        if (count < first)
            continue;
        if (shown.purchases.size() < 3) {
            if (!shown.shown) {
                shown.shown = true;
                shown.customerNo = rows.field(QStringLiteral("Uri_UserNo")).toLongLong();
                shown.name = text(rows, QStringLiteral("User_Name"));
                shown.total = qint64(std::llround(CmnNvl(rows.field(1), 0).toDouble()));
            }
            shown.purchases.push_back(read);
            continue;
        }
        if (previousDay && read.date < *previousDay)
            break;
        if (!previousDay && read.date < shown.purchases.back().date && HasPrescription(read))
            previousDay = read.date;
    }
    for (const Purchase& p : shown.purchases) {
        const Purchase* previous = PreviousPrescription(all, p.date, p.seq);
        shown.previous.push_back(previous ? std::optional(*previous) : std::nullopt);
    }
    return shown;
}

QString HistoryUpdateSql(qint64 customerNo, const Purchase& shown, const Purchase& now) {
    return updateSql(customerNo, now.seq,
                     PlanWrite(compare(WrittenBy::History, shown, now, shown)).assignments);
}

void SaveFromHistory(qint64 customerNo, const Purchase& shown, const Purchase& now) {
    const QString record = RecordName(customerNo, shown);
    if (gCon.execute(QStringLiteral("select User_No from San_User where User_No = ") +
                     SqlNum(customerNo) + gCon.lockRows())
            .eof())
        throw RowDeletedMeanwhile(record);
    RecordSet row =
        gCon.execute(QStringLiteral("select * from San_Uriage where Uri_UserNo = ") +
                     SqlNum(customerNo) + QStringLiteral(" and Uri_Seq = ") + SqlNum(shown.seq));
    if (row.eof())
        throw RowDeletedMeanwhile(record);
    writeChanges(WrittenBy::History, customerNo, shown, now, purchaseOf(row));
}

qint64 SalesForAmountCheck(const SearchConditions& c, qint64 customerNo) {
    return CmnNvl(gCon.execute(AmountQuery(c, customerNo)).field(0), 0).toLongLong();
}

std::vector<Purchase> ForInquiry(const SearchConditions& c, qint64 customerNo) {
    RecordSet rows = gCon.execute(InquiryQuery(c, customerNo));
    std::vector<Purchase> purchases;
    for (; !rows.eof(); rows.moveNext())
        purchases.push_back(purchaseOf(rows));
    return purchases;
}

} // namespace PurchaseStore
