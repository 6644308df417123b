#include "support/ShopData.h"

#include "frame/Globals.h"
#include "platform/db/SqlText.h"

void InsertCustomer(const CustomerRow& r) {
    const QString dlt = r.dltF.isNull() ? QStringLiteral("NULL") : SqlQuote(r.dltF);
    const QStringList values{
        SqlNum(r.no),         SqlQuote(r.name),     SqlQuote(r.kana),     SqlQuote(r.yubin),
        SqlQuote(r.jusyo1),   SqlQuote(r.jusyo2),   SqlQuote(r.tel),      QStringLiteral("''"),
        QStringLiteral("''"), QStringLiteral("''"), QStringLiteral("''"), SqlNum(r.sex),
        SqlNum(r.kazok),      SqlNum(r.tanjoGo),    SqlNum(r.nen),        SqlNum(r.mon),
        SqlNum(r.day),        SqlQuote(r.entry1),   SqlQuote(r.entry1),   dlt};
    gCon.execute(QStringLiteral("insert into San_User values(") + values.join(QLatin1Char(',')) +
                 QLatin1Char(')'));
}

void InsertPurchase(const PurchaseRow& r) {
    QStringList values{SqlNum(r.user),          SqlNum(r.seq),         SqlNum(r.ymd),
                       SqlQuote(r.item),        SqlQuote(r.youto),     SqlQuote(r.frameMaker),
                       QStringLiteral("'F-1'"), SqlNum(r.frame),       QStringLiteral("'52'"),
                       QStringLiteral("'黒'"),  SqlQuote(r.lensMaker), QStringLiteral("'L-1'"),
                       SqlNum(r.lens),          SqlNum(r.total)};
    // Each eye: the sphere as given, the two base directions empty, every other value 0.
    for (double sph : {r.rightSph, r.leftSph})
        for (int i = 0; i < 13; ++i)
            values << (i == 0             ? SqlReal(sph)
                       : i == 5 || i == 7 ? QStringLiteral("''")
                                          : QStringLiteral("0"));
    values << SqlQuote(r.syohou) << SqlQuote(r.memo) << QStringLiteral("''");
    gCon.execute(QStringLiteral("insert into San_Uriage values(") + values.join(QLatin1Char(',')) +
                 QLatin1Char(')'));
}

void InsertReceipt(const ReceiptRow& r) {
    const QString values =
        QStringList{SqlNum(r.no),
                    r.issued.date().toString(QStringLiteral("yyyyMMdd")),
                    SqlStr(r.issued.toString(QStringLiteral("yyyy/MM/dd HH:mm:ss"))),
                    SqlNum(r.user),
                    SqlNum(r.seq),
                    QStringLiteral("0,0,'上様'"),
                    SqlNum(r.received),
                    SqlNum(r.received),
                    QStringLiteral("0,0,0,0,'','','','',0,NULL,0")}
            .join(QLatin1Char(','));
    gCon.execute(QStringLiteral("insert into San_Receipt values(") + values + QLatin1Char(')'));
}

QStringList RowTexts(const QString& sql, const QStringList& columns) {
    RecordSet rows = gCon.execute(sql);
    QStringList texts;
    for (const QString& column : rows.eof() ? QStringList() : columns) {
        const QVariant value = rows.field(column);
        texts << (value.isNull() ? QStringLiteral("<null>") : value.toString());
    }
    return texts;
}
