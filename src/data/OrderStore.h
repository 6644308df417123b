#pragma once

#include "domain/Order.h"

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <map>
#include <optional>
#include <vector>

// The orders of purchases (San_Order), the statuses they reached (San_OrderLog) and the
// payments made for them (San_Payment). A purchase without an order is a completed sale:
// handed over and paid in full.
namespace OrderStore {

// The tables, created with a new database and added to an older one when it is opened.
QStringList TableStatements();
// The tables beyond the shop's own that hold the shop's orders, in the order a copy fills them.
QStringList Tables();

// What is known of one purchase's order; no order for a completed sale.
struct OrderState {
    std::optional<Order> order;
    std::vector<Payment> payments;
    bool operator==(const OrderState&) const = default;
};
// The orders and payments of a customer's purchases, by purchase number (purchases without an
// order are left out).
std::map<int, OrderState> OfCustomer(qint64 customerNo);
OrderState OfPurchase(qint64 customerNo, int seq);

// Inside the caller's transaction: the purchase, stored already, takes an order at its
// status, reached at `at`, and the payments (numbered from 1). A payment the order cannot take
// (PaymentRefusal) fails the save with ErrorNumber::PaymentRefused.
void Create(qint64 customerNo, int seq, qint64 total, const Order& order,
            const std::vector<Payment>& payments, const QDateTime& at);

// In a transaction of its own: a stored purchase without an order (a completed sale) takes
// one. The purchase deleted meanwhile fails with RowDeleted; an order another terminal gave it
// meanwhile with RowChanged.
void Start(qint64 customerNo, int seq, const Order& order, const QDateTime& at);

// Each in a transaction of its own, checked against what the screen showed (`shown`): the
// order another terminal changed (its status, or a field this save writes) or deleted fails
// with RowChanged or RowDeleted.
// The order goes on to `next`, reached at `at`.
void SetStatus(qint64 customerNo, int seq, const Order& shown, OrderStatus next,
               const QDateTime& at);
// The promised date, the supplier and his order number, and the note, as changed on screen.
void Update(qint64 customerNo, int seq, const Order& shown, const Order& now);
// A payment for the purchase, checked against the payments stored now: one over what is
// outstanding (or a refund over what was paid) fails with ErrorNumber::PaymentRefused.
void AddPayment(qint64 customerNo, int seq, const Payment& payment);

// Inside the deleting transaction: the purchase, or the customer with all his purchases, is
// gone; so are their orders, statuses and payments.
void ForgetPurchase(qint64 customerNo, int seq);
void ForgetCustomer(qint64 customerNo);

// One open order as the pick-up board lists it.
struct BoardLine {
    qint64 customerNo = 0;
    int seq = 0;
    QString name, tel;
    QString itemNo, fmName, lzName;
    qint64 total = 0, outstanding = 0;
    Order order;
};
// Every open order (not handed over, not cancelled), by promised date (none last), then by
// customer and purchase.
std::vector<BoardLine> OpenOrders();
// How many open orders are late on `today`, and how many wait to be called.
struct BoardCounts {
    int late = 0, ready = 0;
};
BoardCounts CountOpenOrders(const QDate& today);

} // namespace OrderStore
