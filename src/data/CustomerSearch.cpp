#include "data/CustomerSearch.h"

#include "data/CustomerQueries.h"
#include "domain/Age.h"
#include "frame/Globals.h"
#include "frame/Log.h"
#include "platform/FieldValues.h"

#include <QHash>
#include <QSet>
#include <array>
#include <optional>

namespace {
const QString ScreenName = QStringLiteral("顧客一覧照会画面");
}

// The purchase check of the list: a matching purchase, and the amount in range when that
// condition is on. Every customer's answer comes from two statements over all purchases, read
// once; each customer checked still has his trace lines in the log.
class PurchaseCheck {
public:
    explicit PurchaseCheck(const SearchConditions& c)
        : amountOn_(c.on[SearchConditions::Amount]),
          // With only the amount (and visit dates) asked, the customers with a purchase are
          // those the sums are about: one statement tells both.
          sumsTellPurchases_(amountOn_ && !c.on[SearchConditions::Youto] &&
                             !c.on[SearchConditions::Item] && !c.on[SearchConditions::Meka] &&
                             !c.on[SearchConditions::HinName]),
          c_(c) {
        if (!sumsTellPurchases_) {
            RecordSet matching = gCon.execute(PurchaseCustomersQuery(c));
            for (; !matching.eof(); matching.moveNext())
                withPurchase_.insert(matching.field(0).toLongLong());
        }
        if (!amountOn_)
            return;
        RecordSet sums = gCon.execute(AmountsByCustomerQuery(c));
        for (; !sums.eof(); sums.moveNext())
            sums_.insert(sums.field(0).toLongLong(), CmnNvl(sums.field(1), 0).toLongLong());
    }

    bool matches(qint64 customerNo) const {
        CmnWriteLog(ScreenName, QStringLiteral("SerchUriage"), QStringLiteral("顧客売上側検索処理"),
                    QString());
        if (!(sumsTellPurchases_ ? sums_.contains(customerNo) : withPurchase_.contains(customerNo)))
            return false;
        if (!amountOn_)
            return true;
        CmnWriteLog(ScreenName, QStringLiteral("CalUriageGaku"),
                    QStringLiteral("顧客売上額集計検索処理"), QString());
        return AmountInRange(c_, sums_.value(customerNo, 0));
    }

private:
    bool amountOn_;
    bool sumsTellPurchases_;
    const SearchConditions& c_;
    QSet<qint64> withPurchase_;
    QHash<qint64, qint64> sums_;
};

namespace {

// The columns of the customer's own table that the list shows, found by name once per query.
enum ListColumn { Name, Kana, Yubin, Jusyo1, Jusyo2, Tel, Kazok, Go, Nen, Mon, Day, ColumnCount };
using ListColumns = std::array<int, ColumnCount>;

ListColumns listColumns(const RecordSet& rows) {
    static const char* const names[ColumnCount] = {
        "User_Name",      "User_Kana",      "User_Yubin",    "User_Jusyo1",
        "User_Jusyo2",    "User_Tel",       "User_Kazok_F",  "User_Tanjo_Go",
        "User_Tanjo_Nen", "User_Tanjo_Mon", "User_Tanjo_Day"};
    ListColumns at{};
    for (int column = 0; column < ColumnCount; ++column)
        at[column] = rows.positionOf(QString::fromLatin1(names[column]));
    return at;
}

// The row of the customer query as the list shows it: the view's number, total and last visit
// come first.
ListedCustomer listed(const RecordSet& row, const ListColumns& at) {
    const auto text = [&](ListColumn column) {
        return CmnNvl(row.field(at[column]), QString()).toString();
    };
    const auto number = [&](ListColumn column, int nullValue) {
        return CmnNvl(row.field(at[column]), nullValue).toInt();
    };
    return {row.field(0).toLongLong(),
            text(Name),
            text(Kana),
            text(Yubin),
            text(Jusyo1),
            text(Jusyo2),
            text(Tel),
            number(Kazok, 0),
            CmnNvl(row.field(1), 0).toLongLong(),
            CmnNvl(row.field(3), 0).toLongLong(),
            {number(Go, NoEra), number(Nen, 0), number(Mon, 0), number(Day, 0)}};
}

// The customers that pass the age filter and the purchase check, in no order. The checks run
// on the customer side alone; the totals are read afterwards for those that passed.
QList<qint64> filteredCustomers(const SearchConditions& c, int currentYear) {
    std::optional<PurchaseCheck> purchases;
    if (c.anyPurchaseCondition())
        purchases.emplace(c);
    QList<qint64> passed;
    RecordSet rows = gCon.execute(CustomerSideQuery(c));
    for (; !rows.eof(); rows.moveNext()) {
        if (c.on[SearchConditions::Age] &&
            !AgeMatches(c, CmnNvl(rows.field(1), 3).toInt(), CmnNvl(rows.field(2), 0).toInt(),
                        currentYear))
            continue;
        const qint64 customerNo = rows.field(0).toLongLong();
        if (purchases && !purchases->matches(customerNo))
            continue;
        passed << customerNo;
    }
    return passed;
}

} // namespace

void SearchCustomers(const SearchConditions& c, int currentYear,
                     const std::function<void(const ListedCustomer&)>& each) {
    LogBatch log;
    QList<qint64> only;
    if (c.on[SearchConditions::Age] || c.anyPurchaseCondition()) {
        only = filteredCustomers(c, currentYear);
        if (only.isEmpty())
            return;
    }
    RecordSet rows = gCon.execute(CustomerQuery(c, only));
    const ListColumns at = listColumns(rows);
    for (; !rows.eof(); rows.moveNext())
        each(listed(rows, at));
}

std::optional<ListedCustomer> FindListedCustomer(qint64 customerNo) {
    RecordSet rows = gCon.execute(CustomerQuery(SearchConditions{}, {customerNo}));
    if (rows.eof())
        return std::nullopt;
    return listed(rows, listColumns(rows));
}
