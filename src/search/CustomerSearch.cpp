#include "search/CustomerSearch.h"

#include "frame/BasCmnSubFun.h"
#include "frame/Globals.h"
#include "frame/Log.h"

namespace {
const QString ScreenName = QStringLiteral("顧客一覧照会画面");
}

bool PurchasesMatch(const SearchConditions& c, qint64 customerNo) {
    CmnWriteLog(ScreenName, QStringLiteral("SerchUriage"), QStringLiteral("顧客売上側検索処理"),
                QString());
    if (gCon.execute(PurchaseCountQuery(c, customerNo)).field(0).toLongLong() == 0)
        return false;
    if (!c.on[SearchConditions::Amount])
        return true;
    CmnWriteLog(ScreenName, QStringLiteral("CalUriageGaku"),
                QStringLiteral("顧客売上額集計検索処理"), QString());
    const QVariant sum = gCon.execute(AmountQuery(c, customerNo)).field(0);
    return AmountInRange(c, CmnNvl(sum, 0).toLongLong());
}

void SearchCustomers(const SearchConditions& c, int currentYear,
                     const std::function<void(const ListedCustomer&)>& each) {
    RecordSet rows = gCon.execute(CustomerQuery(c));
    const bool checkPurchases = c.anyPurchaseCondition();
    for (; !rows.eof(); rows.moveNext()) {
        if (c.on[SearchConditions::Age] &&
            !AgeMatches(c, rows.field(QStringLiteral("User_Tanjo_Go")),
                        rows.field(QStringLiteral("User_Tanjo_Nen")), currentYear))
            continue;
        const qint64 customerNo = rows.field(0).toLongLong();
        if (checkPurchases && !PurchasesMatch(c, customerNo))
            continue;
        const auto text = [&](const char* column) {
            return CmnNvl(rows.field(QString::fromLatin1(column)), QString()).toString();
        };
        each({customerNo, text("User_Name"), text("User_Kana"), text("User_Yubin"),
              text("User_Jusyo1"), text("User_Jusyo2"), text("User_Tel"),
              CmnNvl(rows.field(QStringLiteral("User_Kazok_F")), 0).toInt(),
              CmnNvl(rows.field(1), 0).toLongLong(), CmnNvl(rows.field(3), 0).toLongLong()});
    }
}
