#pragma once

#include "domain/Order.h"

#include <QDate>
#include <QString>
#include <array>
#include <optional>
#include <vector>

// The day's closing (日計表): what was sold, taken and paid back on one day, the receipts
// issued and cancelled, and what customers still owe at the day's end. Amounts are whole yen.

// A count of things and their amount.
struct Tally {
    int count = 0;
    qint64 amount = 0;
    void add(int n, qint64 yen) {
        count += n;
        amount += yen;
    }
    bool operator==(const Tally&) const = default;
};

inline constexpr int PaymentMethodCount = int(PaymentMethod::Other) + 1;

// What customers owe: the amount, and how many purchases owe something.
struct Owed {
    int purchases = 0;
    qint64 amount = 0;
    bool operator==(const Owed&) const = default;
};

struct DailyClosing {
    QDate day;
    Tally sales;          // the purchases dated that day (Uri_KingaKei)
    Tally salesWithOrder; // of them, those with an order
    // Deposits and balances (内金, 残金) dated that day, by method.
    std::array<Tally, PaymentMethodCount> received{};
    // The day's sales without an order: paid in full when sold, the method not recorded.
    Tally salesWithoutOrder;
    // Refunds (返金) dated that day, by method.
    std::array<Tally, PaymentMethodCount> refunded{};
    Tally receiptsIssued;    // issued that day, Σ received
    Tally receiptsCancelled; // cancelled that day, Σ received
    Owed owedBefore;         // at the end of the day before
    Owed owedAfter;          // at the end of the day

    // Every deposit and balance of the day and the sales without an order.
    Tally receivedTotal() const;
    Tally refundedTotal() const;
    // What came in less what was paid back.
    qint64 netReceived() const { return receivedTotal().amount - refundedTotal().amount; }
    qint64 owedChange() const { return owedAfter.amount - owedBefore.amount; }
    bool operator==(const DailyClosing&) const = default;
};

// A purchase with an order, as the outstanding balance needs it.
struct OrderedSale {
    QDate date;        // the purchase date
    qint64 total = 0;  // Uri_KingaKei
    QDate cancelledOn; // the day of its キャンセル step; invalid when never cancelled
    std::vector<Payment> payments;
};

// What is outstanding at the end of `day`: over the purchases with an order, dated on or before
// the day and not cancelled on or before it, the sum of max(0, total − their payments dated on
// or before the day), deposits and balances adding, refunds subtracting. A sale without an
// order was paid in full when sold and never owes anything.
Owed OutstandingAt(const std::vector<OrderedSale>& sales, const QDate& day);

// The rule above as the closing states it on screen and on paper.
inline const QString OutstandingDefinition = QStringLiteral(
    "残金＝その日の終わりに、受注のある売上（売上日がその日以前で、その日までにキャンセルされて"
    "いないもの）ごとに「売上金額－その日までの入金（内金・残金は加算、返金は減算）」を求め、"
    "0円未満は0円として合計した額。受注のない売上は販売時に全額入金済として含めません。");

// One line of the closing as the screen, the paper and the CSV file show it.
struct ClosingLine {
    QString section, item;
    std::optional<int> count; // none where a count means nothing
    qint64 amount = 0;
    bool signedAmount = false; // a change, shown with its sign
    bool operator==(const ClosingLine&) const = default;
};

// The lines of the closing, in the order they are shown: 売上, 入金 by method with the sales
// without an order and the total, 返金 by method with the total, 差引, 領収書, 残金.
std::vector<ClosingLine> ClosingLines(const DailyClosing& closing);

// An amount as the closing shows it: "12,000", a change with its sign ("+3,000", "-500").
QString ClosingAmountText(const ClosingLine& line);
