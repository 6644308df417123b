#pragma once

#include "domain/Customer.h"

#include <optional>

// What waits to be written for a row of the customer list.
enum class ListState { Unchanged, Changed, ToDelete };

// What the list found another terminal had done to a row's customer, when it read the row
// again after a save that met it.
enum class ElsewhereWork { None, Changed, Deleted };

// One row of the customer list: the customer as the list shows him now and as he was read, the
// print mark and the edit state.
struct ListRow {
    ListedCustomer now;
    ListedCustomer read;
    bool marked = false;
    ListState state = ListState::Unchanged;
    // A changed row marked for deletion goes back to changed when the mark is taken back.
    bool changedBeforeDelete = false;
    // A row whose customer another terminal deleted stays in the list, greyed, and takes no
    // edits, deletion or print mark.
    ElsewhereWork elsewhere = ElsewhereWork::None;
};

// The row as stored now, read again after a save met another terminal's work: none when the
// customer is gone (the row is then kept as shown, marked deleted).
ListRow ReadAgain(const ListRow& row, const std::optional<ListedCustomer>& stored);

// F3 on a row: marks it for deletion, or takes the mark back.
void ToggleRowDeletion(ListRow& row);

// Whether a row waits to be updated (a row only marked for deletion does not count).
inline bool HasUnsavedEdit(const ListRow& row) {
    return row.state == ListState::Changed;
}
