#include "domain/PurchaseLine.h"

QString LineStatusText(LineState state) {
    switch (state) {
    case LineState::New:
        return QStringLiteral("新規");
    case LineState::Changed:
        return QStringLiteral("変更");
    case LineState::Deleted:
        return QStringLiteral("削除");
    case LineState::Stored:
        break;
    }
    return {};
}

QString LineOrderText(const PurchaseLine& line) {
    return OrderStatusText(line.order ? line.order->status : OrderStatus::HandedOver);
}

qint64 LineOutstanding(const PurchaseLine& line) {
    return line.order ? OutstandingAmount(line.purchase.total, line.order->status, line.payments)
                      : 0;
}

std::optional<LineState> StateAfterEntry(LineState state) {
    switch (state) {
    case LineState::Deleted:
        return std::nullopt;
    case LineState::New:
        return LineState::New;
    default:
        return LineState::Changed;
    }
}

bool ToggleLineDeletion(PurchaseLine& line) {
    switch (line.state) {
    case LineState::New:
        return false;
    case LineState::Deleted:
        line.state = line.changedBeforeDelete ? LineState::Changed : LineState::Stored;
        line.changedBeforeDelete = false;
        line.unmarked = true;
        return true;
    default:
        line.changedBeforeDelete = line.state == LineState::Changed;
        line.state = LineState::Deleted;
        line.unmarked = false;
        return true;
    }
}
