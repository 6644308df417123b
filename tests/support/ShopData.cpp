#include "support/ShopData.h"

#include "frame/Globals.h"
#include "platform/db/SqlText.h"

namespace {
QString textOrNull(const QString& value) {
    return value.isNull() ? QStringLiteral("NULL") : SqlQuote(value);
}
} // namespace

void InsertCustomer(const CustomerRow& r) {
    const QStringList values{
        SqlNum(r.no),         SqlQuote(r.name),     SqlQuote(r.kana),     SqlQuote(r.yubin),
        SqlQuote(r.jusyo1),   SqlQuote(r.jusyo2),   SqlQuote(r.tel),      QStringLiteral("''"),
        QStringLiteral("''"), QStringLiteral("''"), QStringLiteral("''"), SqlNum(r.sex),
        SqlNum(r.kazok),      SqlNum(r.tanjoGo),    SqlNum(r.nen),        SqlNum(r.mon),
        SqlNum(r.day),        SqlQuote(r.entry1),   SqlQuote(r.entry1),   textOrNull(r.dltF)};
    gCon.execute(QStringLiteral("insert into San_User values(") + values.join(QLatin1Char(',')) +
                 QLatin1Char(')'));
}

void InsertPurchase(const PurchaseRow& r) {
    QStringList values{SqlNum(r.user),          SqlNum(r.seq),         SqlNum(r.ymd),
                       SqlQuote(r.item),        SqlQuote(r.youto),     SqlQuote(r.frameMaker),
                       QStringLiteral("'F-1'"), SqlNum(r.frame),       QStringLiteral("'52'"),
                       QStringLiteral("'黒'"),  SqlQuote(r.lensMaker), QStringLiteral("'L-1'"),
                       SqlNum(r.lens),          SqlNum(r.total)};
    for (int eye = 0; eye < 2; ++eye)
        for (int i = 0; i < 13; ++i) {
            if (i == 5 || i == 7)
                values << QStringLiteral("''");
            else if (i == 0)
                values << SqlReal(eye == 0 ? r.rightSph : r.leftSph);
            else
                values << QStringLiteral("0");
        }
    values << SqlQuote(r.syohou) << SqlQuote(r.memo) << QStringLiteral("''");
    gCon.execute(QStringLiteral("insert into San_Uriage values(") + values.join(QLatin1Char(',')) +
                 QLatin1Char(')'));
}

QStringList RowTexts(const QString& sql, const QStringList& columns) {
    RecordSet rows = gCon.execute(sql);
    QStringList texts;
    if (rows.eof())
        return texts;
    for (const QString& column : columns) {
        const QVariant value = rows.field(column);
        texts << (value.isNull() ? QStringLiteral("<null>") : value.toString());
    }
    return texts;
}
