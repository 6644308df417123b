#include "data/ShopStore.h"

#include "data/GuardedWrite.h"
#include "data/ReceiptStore.h"
#include "domain/Ymd.h"
#include "frame/Globals.h"
#include "platform/FieldValues.h"
#include "platform/db/SqlText.h"
#include "platform/db/Transaction.h"

#include <vector>

namespace {

const QString Record = QStringLiteral("店舗設定");

// One detail: its key in the table, its caption on screen, how its stored text is read into
// the details and the literal a save writes for it.
struct Detail {
    const char* key;
    const char* caption;
    void (*read)(ShopDetails&, const QString&);
    QString (*literal)(const ShopDetails&);
};

template <QString ShopDetails::*member> Detail detail(const char* key, const char* caption) {
    return {key, caption, [](ShopDetails& d, const QString& text) { d.*member = text; },
            &TrimmedText<ShopDetails, member>};
}

QString roundingLiteral(const ShopDetails& d) {
    return SqlStr(QString::number(int(d.rounding)));
}

void readRounding(ShopDetails& d, const QString& text) {
    const int code = text.toInt();
    d.rounding = code == int(TaxRounding::HalfUp) || code == int(TaxRounding::Up)
                     ? TaxRounding(code)
                     : TaxRounding::Down;
}

const std::vector<Detail>& details() {
    static const std::vector<Detail> all{
        detail<&ShopDetails::name>("Name", "店名"),
        detail<&ShopDetails::address>("Address", "住所"),
        detail<&ShopDetails::tel>("Tel", "電話番号"),
        detail<&ShopDetails::invoiceNo>("InvoiceNo", "登録番号"),
        {"TaxRounding", "端数処理", &readRounding, &roundingLiteral},
    };
    return all;
}

QString keyOf(const Detail& d) {
    return QString::fromLatin1(d.key);
}

ShopDetails readDetails(const QString& lock) {
    ShopDetails read;
    for (RecordSet rows =
             gCon.execute(QStringLiteral("select Shop_Key, Shop_Value from San_Shop") + lock);
         !rows.eof(); rows.moveNext())
        for (const Detail& d : details())
            if (rows.field(0).toString() == keyOf(d))
                d.read(read, CmnNvl(rows.field(1), QString()).toString());
    return read;
}

// Each detail has its row before a save locks them: a value never set is an empty row. Another
// terminal adding the same row first is no failure.
void addMissingRows() {
    for (const Detail& d : details()) {
        try {
            gCon.execute(QStringLiteral("insert into San_Shop select %1, NULL where not exists "
                                        "(select 1 from San_Shop where Shop_Key = %1)")
                             .arg(SqlStr(keyOf(d))));
        } catch (const Failure& failure) {
            if (failure.number() != ErrorNumber::DatabaseFailed)
                throw;
        }
    }
}

Failure rateAddedMeanwhile(const QDate& from, const QString& stored) {
    return Failure(ErrorNumber::RowChanged,
                   QStringLiteral("%1 からの消費税率は、この画面に表示した後で他の端末が登録しま"
                                  "した%2。")
                       .arg(from.toString(QStringLiteral("yyyy/MM/dd")), stored));
}

} // namespace

namespace ShopStore {

QString TableStatement() {
    return QStringLiteral("CREATE TABLE IF NOT EXISTS San_Shop (Shop_Key TEXT NOT NULL PRIMARY "
                          "KEY, Shop_Value TEXT)");
}

QString Table() {
    return QStringLiteral("San_Shop");
}

QStringList TaxRateStatements() {
    return {QStringLiteral("CREATE TABLE IF NOT EXISTS San_TaxRate (Tax_From INTEGER NOT NULL "
                           "PRIMARY KEY, Tax_Percent INTEGER NOT NULL)"),
            QStringLiteral("insert into San_TaxRate select 20191001, 10 where not exists (select "
                           "1 from San_TaxRate)")};
}

std::vector<TaxRate> TaxRates() {
    std::vector<TaxRate> rates;
    for (RecordSet rows = gCon.execute(
             QStringLiteral("select Tax_From, Tax_Percent from San_TaxRate order by Tax_From"));
         !rows.eof(); rows.moveNext())
        rates.push_back({DateOfYmd(rows.field(0).toLongLong()), rows.field(1).toInt()});
    return rates;
}

void AddTaxRate(const TaxRate& rate) {
    Transaction transaction(gCon);
    const QString refusal = TaxRateRefusal(rate, ReceiptStore::LastIssueDay());
    if (!refusal.isEmpty())
        throw Failure(ErrorNumber::TaxRateRefused, refusal);
    const QString from = SqlNum(YmdOf(rate.from));
    {
        RecordSet stored = gCon.execute(
            QStringLiteral("select Tax_Percent from San_TaxRate where Tax_From = ") + from);
        if (!stored.eof())
            throw rateAddedMeanwhile(rate.from,
                                     QStringLiteral("（%1%）").arg(stored.field(0).toInt()));
    }
    try {
        gCon.execute(QStringLiteral("insert into San_TaxRate values(%1,%2)")
                         .arg(from, SqlNum(rate.percent)));
    } catch (const Failure& failure) {
        // On the server another terminal's rate of the same day, added after the check above
        // read, holds the key: the insert waits for it and then breaks the key.
        if (failure.number() == ErrorNumber::DatabaseFailed)
            throw rateAddedMeanwhile(rate.from, QString());
        throw;
    }
    transaction.commit();
}

ShopDetails Read() {
    return readDetails(QString());
}

void Write(const ShopDetails& shown, const ShopDetails& now) {
    if (shown == now)
        return;
    addMissingRows();
    Transaction transaction(gCon);
    std::vector<ColumnOf<ShopDetails>> columns;
    for (const Detail& d : details())
        columns.push_back({d.key, d.caption, d.literal});
    const std::vector<GuardedColumn> compared =
        Compare(columns, shown, now, readDetails(gCon.lockRows()));
    const GuardedWrite write = PlanWrite(compared);
    if (!write.collisions.isEmpty())
        throw RowChangedMeanwhile(Record, write.collisions);
    for (const GuardedColumn& column : compared)
        if (column.now != column.shown)
            ExecuteOnCheckedRow(QStringLiteral("update San_Shop set Shop_Value = ") + column.now +
                                    QStringLiteral(" where Shop_Key = ") + SqlStr(column.name),
                                Record);
    transaction.commit();
}

} // namespace ShopStore
