#pragma once

#include "domain/Order.h"
#include "domain/Purchase.h"

#include <QString>
#include <optional>

// What waits to be written for a purchase line of the register.
enum class LineState { Stored, New, Changed, Deleted };

// The status text the grid shows: empty, "新規", "変更" or "削除".
QString LineStatusText(LineState state);

// One line of the register's purchase grid. Its id stays with it while the grid is sorted.
struct PurchaseLine {
    int id = 0;
    Purchase purchase;
    // A stored line's purchase as it was read: a save writes only what differs from it, and
    // only while the stored purchase still holds it.
    Purchase read;
    LineState state = LineState::Stored;
    // A changed line marked for deletion goes back to changed when the mark is taken back.
    bool changedBeforeDelete = false;
    // A line whose deletion mark was taken back is tinted as changed until the next recolouring.
    bool unmarked = false;
    // The purchase's order and payments: for a stored line as read (none: a completed sale,
    // handed over and paid); for a new line what its registration creates with it.
    std::optional<Order> order = {};
    std::vector<Payment> payments = {};
};

// The order status the grid shows for the line: "お渡し済" for a completed sale.
QString LineOrderText(const PurchaseLine& line);
// What is still to be paid for the line's purchase (0 for a completed sale).
qint64 LineOutstanding(const PurchaseLine& line);

// The state a line takes when the entry writes over it; none when that is refused (a line
// marked for deletion cannot be changed).
std::optional<LineState> StateAfterEntry(LineState state);

// "明細削除" on a line: a new line is to be removed (returns false); a stored or changed one is
// marked for deletion, a marked one unmarked (returns true).
bool ToggleLineDeletion(PurchaseLine& line);
