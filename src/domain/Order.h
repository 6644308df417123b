#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <optional>
#include <vector>

// Where a pair of glasses stands between the order and the hand-over. A remake (作り直し) is a
// new order for a purchase made again; it goes on from there like an order taken.
enum class OrderStatus {
    Taken = 0,      // 受注
    Ordered = 1,    // 発注済
    Arrived = 2,    // 入荷
    Fitted = 3,     // 加工済
    Called = 4,     // 連絡済
    HandedOver = 5, // お渡し済
    Cancelled = 6,  // キャンセル
    Remake = 7,     // 作り直し
};

// The status's caption as staff read it ("受注", "発注済", ...).
QString OrderStatusText(OrderStatus status);
// The status a stored code stands for; none for a code no status has.
std::optional<OrderStatus> OrderStatusOf(int code);
// Whether the order is still open: not handed over, not cancelled.
bool IsOpen(OrderStatus status);
// The next status on the way to the hand-over; none when there is no next (handed over,
// cancelled).
std::optional<OrderStatus> NextStatus(OrderStatus status);
// Whether the glasses wait in the shop for the customer to be called or to come.
bool IsReadyToCall(OrderStatus status);

enum class PaymentMethod { Cash = 0, Credit = 1, Electronic = 2, Transfer = 3, Other = 4 };
enum class PaymentKind { Deposit = 0, Balance = 1, Refund = 2 };
// In the order the lists offer them; a list's row is the method's number.
inline constexpr PaymentMethod PaymentMethods[] = {PaymentMethod::Cash, PaymentMethod::Credit,
                                                   PaymentMethod::Electronic,
                                                   PaymentMethod::Transfer, PaymentMethod::Other};

QString PaymentMethodText(PaymentMethod method); // 現金, クレジット, 電子マネー/QR, 振込, その他
QString PaymentKindText(PaymentKind kind); // 内金, 残金, 返金

struct Payment {
    int no = 0; // its number within the purchase; 0 until it is stored
    QDate date;
    qint64 amount = 0; // whole yen, always positive; a refund is paid back
    PaymentMethod method = PaymentMethod::Cash;
    PaymentKind kind = PaymentKind::Deposit;
    bool operator==(const Payment&) const = default;
};

// A status reached and when.
struct StatusStep {
    OrderStatus status = OrderStatus::Taken;
    QDateTime at;
    bool operator==(const StatusStep&) const = default;
};

// The order of one purchase.
struct Order {
    OrderStatus status = OrderStatus::Taken;
    QDate due;          // お渡し予定日; invalid when none was promised
    QString supplierNo; // a maker's code; empty when none
    QString supplierOrderNo;
    QString note;
    int remakeOf = 0;              // the purchase this order makes again; 0 for none
    std::vector<StatusStep> steps; // oldest first
    bool operator==(const Order&) const = default;
};

// What was paid for a purchase: deposits and balances less refunds, never below 0.
qint64 PaidAmount(const std::vector<Payment>& payments);
// What is still to be paid for a purchase of the total; a cancelled order owes nothing.
qint64 OutstandingAmount(qint64 total, OrderStatus status, const std::vector<Payment>& payments);

// Why a payment cannot be recorded (a clear sentence for staff); empty when it can. A deposit
// or balance may not exceed what is outstanding; a refund may not exceed what was paid; an
// amount is more than 0.
QString PaymentRefusal(qint64 total, OrderStatus status, const std::vector<Payment>& payments,
                       const Payment& payment);

// The days an open order is past its promised date on `today` (0 when not late, no date, or
// not open).
int DaysLate(const Order& order, const QDate& today);

// The order number printed on the slip: customer and purchase numbers, "000123-02".
QString OrderNumberText(qint64 customerNo, int seq);
