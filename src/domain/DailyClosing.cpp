#include "domain/DailyClosing.h"

#include "platform/Format.h"

#include <algorithm>

namespace {

Tally sum(const std::array<Tally, PaymentMethodCount>& tallies) {
    Tally total;
    for (const Tally& t : tallies)
        total.add(t.count, t.amount);
    return total;
}

// Deposits and balances add, refunds subtract.
qint64 signedAmount(const Payment& payment) {
    return payment.kind == PaymentKind::Refund ? -payment.amount : payment.amount;
}

} // namespace

Tally DailyClosing::receivedTotal() const {
    Tally total = sum(received);
    total.add(salesWithoutOrder.count, salesWithoutOrder.amount);
    return total;
}

Tally DailyClosing::refundedTotal() const {
    return sum(refunded);
}

Owed OutstandingAt(const std::vector<OrderedSale>& sales, const QDate& day) {
    Owed owed;
    for (const OrderedSale& sale : sales) {
        if (sale.date > day || (sale.cancelledOn.isValid() && sale.cancelledOn <= day))
            continue;
        qint64 paid = 0;
        for (const Payment& payment : sale.payments)
            if (payment.date <= day)
                paid += signedAmount(payment);
        const qint64 outstanding = std::max<qint64>(sale.total - paid, 0);
        if (outstanding > 0) {
            ++owed.purchases;
            owed.amount += outstanding;
        }
    }
    return owed;
}

std::vector<ClosingLine> ClosingLines(const DailyClosing& c) {
    std::vector<ClosingLine> lines;
    const auto add = [&](const QString& section, const QString& item, const Tally& tally) {
        lines.push_back({section, item, tally.count, tally.amount});
    };
    const QString sales = QStringLiteral("売上");
    add(sales, QStringLiteral("売上合計"), c.sales);
    add(sales, QStringLiteral("うち受注"), c.salesWithOrder);
    const QString received = QStringLiteral("入金");
    for (int m = 0; m < PaymentMethodCount; ++m)
        add(received, PaymentMethodText(PaymentMethod(m)), c.received[m]);
    add(received, QStringLiteral("受注なしの売上"), c.salesWithoutOrder);
    add(received, QStringLiteral("入金合計"), c.receivedTotal());
    const QString refunded = QStringLiteral("返金");
    for (int m = 0; m < PaymentMethodCount; ++m)
        add(refunded, PaymentMethodText(PaymentMethod(m)), c.refunded[m]);
    add(refunded, QStringLiteral("返金合計"), c.refundedTotal());
    lines.push_back(
        {QStringLiteral("差引"), QStringLiteral("入金合計－返金合計"), {}, c.netReceived()});
    const QString receipts = QStringLiteral("領収書");
    add(receipts, QStringLiteral("発行"), c.receiptsIssued);
    add(receipts, QStringLiteral("取消"), c.receiptsCancelled);
    const QString owed = QStringLiteral("残金");
    add(owed, QStringLiteral("前日末"), {c.owedBefore.purchases, c.owedBefore.amount});
    add(owed, QStringLiteral("当日末"), {c.owedAfter.purchases, c.owedAfter.amount});
    lines.push_back({owed, QStringLiteral("増減"), {}, c.owedChange(), true});
    return lines;
}

QString ClosingAmountText(const ClosingLine& line) {
    const QString text = FormatYen(line.amount);
    return line.signedAmount && line.amount > 0 ? QLatin1Char('+') + text : text;
}
