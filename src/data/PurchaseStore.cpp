#include "data/PurchaseStore.h"

#include "data/CustomerQueries.h"
#include "domain/Ymd.h"
#include "frame/BasCmnSubFun.h"
#include "frame/Globals.h"
#include "platform/Format.h"
#include "platform/db/SqlText.h"

#include <cmath>

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
    p.date = DateOfYmd(row.field(QStringLiteral("Uri_Date")).toLongLong());
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

// The code of a master list as the history writes it: quoted as it is, not trimmed.
QString code(const QString& value) {
    return SqlQuote(value);
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

int NextSeq(qint64 customerNo) {
    RecordSet rows =
        gCon.execute(QStringLiteral("select max(Uri_Seq) from San_Uriage where Uri_UserNo = ") +
                     SqlNum(customerNo));
    return rows.field(0).isNull() ? 1 : rows.field(0).toInt() + 1;
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

QString UpdateSql(qint64 customerNo, const Purchase& p) {
    QStringList set{QStringLiteral("Uri_Date = ") + SqlNum(YmdOf(p.date)),
                    QStringLiteral(" Uri_ItemNo = ") + SqlStr(p.itemNo),
                    QStringLiteral(" Uri_YoutoNo = ") + SqlStr(p.youtoNo),
                    QStringLiteral(" Uri_Fm_MekaNo = ") + SqlStr(p.fmMekaNo),
                    QStringLiteral(" Uri_Fm_Name = ") + SqlStr(p.fmName),
                    QStringLiteral(" Uri_Fm_Kinga = ") + SqlNum(p.fmKinga),
                    QStringLiteral(" Uri_Fm_Size = ") + SqlStr(p.fmSize),
                    QStringLiteral(" Uri_Fm_Color = ") + SqlStr(p.fmColor),
                    QStringLiteral(" Uri_Lz_MekaNo = ") + SqlStr(p.lzMekaNo),
                    QStringLiteral(" Uri_Lz_Name = ") + SqlStr(p.lzName),
                    QStringLiteral(" Uri_Lz_Kinga = ") + SqlNum(p.lzKinga),
                    QStringLiteral(" Uri_KingaKei = ") + SqlNum(p.total)};
    for (int eye = 0; eye < 2; ++eye)
        for (int i = 0; i < int(PrescriptionColumns.size()); ++i)
            set << QLatin1Char(' ') + PrescriptionColumn(i, eye) + QStringLiteral(" = ") +
                       prescriptionValue(p, eye, i);
    set << QStringLiteral(" Uri_Syohou = ") + SqlStr(p.syohou)
        << QStringLiteral(" Uri_Memo = ") + SqlStr(p.memo);
    return QStringLiteral("update San_Uriage set ") + set.join(QLatin1Char(',')) +
           QStringLiteral(" where Uri_UserNo = ") + SqlNum(customerNo) +
           QStringLiteral(" and Uri_Seq = ") + SqlNum(p.seq);
}

QString DeleteSql(qint64 customerNo, int seq) {
    return QStringLiteral("delete from San_Uriage where Uri_UserNo = ") + SqlNum(customerNo) +
           QStringLiteral(" and Uri_Seq = ") + SqlNum(seq);
}

void SaveLines(qint64 customerNo, const std::vector<PurchaseLine>& lines) {
    int nextSeq = 0;
    for (const PurchaseLine& line : lines) {
        switch (line.state) {
        case LineState::New: {
            if (nextSeq == 0)
                nextSeq = NextSeq(customerNo);
            Purchase inserted = line.purchase;
            inserted.seq = nextSeq++;
            gCon.execute(InsertSql(customerNo, inserted));
            break;
        }
        case LineState::Changed:
            gCon.execute(UpdateSql(customerNo, line.purchase));
            break;
        case LineState::Deleted:
            gCon.execute(DeleteSql(customerNo, line.purchase.seq));
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

QString HistoryUpdateSql(qint64 customerNo, const Purchase& p) {
    enum { Sph, Cyl, Ax, S, P1, B1, P2, B2, Gai, Tama, Pd, Ragan, Kyosei };
    // Each value right then left, in this order; the column names as the history writes them.
    constexpr int order[] = {Sph, Cyl, Ax, S, P1, P2, B1, B2, Gai, Tama, Pd, Ragan, Kyosei};
    QStringList set{QStringLiteral(" Uri_Date = ") + SqlNum(YmdOf(p.date)),
                    QStringLiteral(" Uri_ItemNo = ") + code(p.itemNo),
                    QStringLiteral(" Uri_YoutoNo = ") + code(p.youtoNo),
                    QStringLiteral(" Uri_Fm_MekaNo = ") + code(p.fmMekaNo),
                    QStringLiteral(" Uri_Lz_MekaNo = ") + code(p.lzMekaNo),
                    QStringLiteral(" Uri_Fm_Name = ") + SqlQuote(p.fmName),
                    QStringLiteral(" Uri_Lz_Name = ") + SqlQuote(p.lzName),
                    QStringLiteral(" Uri_Fm_Size = ") + SqlQuote(p.fmSize),
                    QStringLiteral(" Uri_Fm_Color = ") + SqlQuote(p.fmColor),
                    QStringLiteral(" Uri_Fm_Kinga = ") + SqlNum(p.fmKinga),
                    QStringLiteral(" Uri_Lz_Kinga = ") + SqlNum(p.lzKinga),
                    QStringLiteral(" Uri_KingaKei = ") + SqlNum(p.total)};
    for (int index : order)
        for (int eye = 0; eye < 2; ++eye) {
            const QString suffix = QString::fromLatin1(PrescriptionColumns[index].suffix);
            set << QStringLiteral(" Uri_") + (eye == 0 ? QLatin1Char('R') : QLatin1Char('L')) +
                       QLatin1Char('_') + (index == Kyosei ? suffix : suffix.toUpper()) +
                       QStringLiteral(" = ") + prescriptionValue(p, eye, index);
        }
    return QStringLiteral("update San_Uriage set ") + set.join(QLatin1Char(',')) +
           QStringLiteral(" where Uri_UserNo = ") + SqlNum(customerNo) +
           QStringLiteral(" and Uri_Seq = ") + SqlNum(p.seq);
}

void SaveFromHistory(qint64 customerNo, const Purchase& purchase) {
    gCon.execute(HistoryUpdateSql(customerNo, purchase));
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
