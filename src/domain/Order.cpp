#include "domain/Order.h"

#include "platform/Format.h"

#include <algorithm>

QString OrderStatusText(OrderStatus status) {
    switch (status) {
    case OrderStatus::Taken:
        return QStringLiteral("受注");
    case OrderStatus::Ordered:
        return QStringLiteral("発注済");
    case OrderStatus::Arrived:
        return QStringLiteral("入荷");
    case OrderStatus::Fitted:
        return QStringLiteral("加工済");
    case OrderStatus::Called:
        return QStringLiteral("連絡済");
    case OrderStatus::HandedOver:
        return QStringLiteral("お渡し済");
    case OrderStatus::Cancelled:
        return QStringLiteral("キャンセル");
    case OrderStatus::Remake:
        break;
    }
    return QStringLiteral("作り直し");
}

std::optional<OrderStatus> OrderStatusOf(int code) {
    if (code < int(OrderStatus::Taken) || code > int(OrderStatus::Remake))
        return std::nullopt;
    return OrderStatus(code);
}

bool IsOpen(OrderStatus status) {
    return status != OrderStatus::HandedOver && status != OrderStatus::Cancelled;
}

std::optional<OrderStatus> NextStatus(OrderStatus status) {
    switch (status) {
    case OrderStatus::Taken:
    case OrderStatus::Remake:
        return OrderStatus::Ordered;
    case OrderStatus::Ordered:
        return OrderStatus::Arrived;
    case OrderStatus::Arrived:
        return OrderStatus::Fitted;
    case OrderStatus::Fitted:
        return OrderStatus::Called;
    case OrderStatus::Called:
        return OrderStatus::HandedOver;
    case OrderStatus::HandedOver:
    case OrderStatus::Cancelled:
        break;
    }
    return std::nullopt;
}

bool IsReadyToCall(OrderStatus status) {
    return status == OrderStatus::Arrived || status == OrderStatus::Fitted;
}

QString PaymentMethodText(PaymentMethod method) {
    switch (method) {
    case PaymentMethod::Cash:
        return QStringLiteral("現金");
    case PaymentMethod::Credit:
        return QStringLiteral("クレジット");
    case PaymentMethod::Electronic:
        return QStringLiteral("電子マネー/QR");
    case PaymentMethod::Transfer:
        return QStringLiteral("振込");
    case PaymentMethod::Other:
        break;
    }
    return QStringLiteral("その他");
}

QString PaymentKindText(PaymentKind kind) {
    switch (kind) {
    case PaymentKind::Deposit:
        return QStringLiteral("内金");
    case PaymentKind::Balance:
        return QStringLiteral("残金");
    case PaymentKind::Refund:
        break;
    }
    return QStringLiteral("返金");
}

qint64 PaidAmount(const std::vector<Payment>& payments) {
    qint64 paid = 0;
    for (const Payment& payment : payments)
        paid += payment.kind == PaymentKind::Refund ? -payment.amount : payment.amount;
    return std::max<qint64>(paid, 0);
}

qint64 OutstandingAmount(qint64 total, OrderStatus status, const std::vector<Payment>& payments) {
    if (status == OrderStatus::Cancelled)
        return 0;
    return std::max<qint64>(total - PaidAmount(payments), 0);
}

QString PaymentRefusal(qint64 total, OrderStatus status, const std::vector<Payment>& payments,
                       const Payment& payment) {
    if (payment.amount <= 0)
        return QStringLiteral("金額を入力してください。");
    if (!payment.date.isValid())
        return QStringLiteral("入金日を正しく入力してください。");
    if (payment.kind == PaymentKind::Refund) {
        const qint64 paid = PaidAmount(payments);
        if (payment.amount > paid)
            return QStringLiteral("返金額が入金済の額（%1円）を超えています。")
                .arg(FormatYen(paid));
        return {};
    }
    const qint64 outstanding = OutstandingAmount(total, status, payments);
    if (status == OrderStatus::Cancelled)
        return QStringLiteral("キャンセルした受注には入金できません。");
    if (payment.amount > outstanding)
        return QStringLiteral("入金額が残金（%1円）を超えています。").arg(FormatYen(outstanding));
    return {};
}

int DaysLate(const Order& order, const QDate& today) {
    if (!IsOpen(order.status) || !order.due.isValid() || order.due >= today)
        return 0;
    return int(order.due.daysTo(today));
}

QString OrderNumberText(qint64 customerNo, int seq) {
    return QStringLiteral("%1-%2")
        .arg(customerNo, 6, 10, QLatin1Char('0'))
        .arg(seq, 2, 10, QLatin1Char('0'));
}
