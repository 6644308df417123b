#pragma once

#include "domain/Customer.h"

// What waits to be written for a row of the customer list.
enum class ListState { Unchanged, Changed, ToDelete };

// One row of the customer list: the customer as the list shows him now and as he was read, the
// print mark and the edit state.
struct ListRow {
    ListedCustomer now;
    ListedCustomer read;
    bool marked = false;
    ListState state = ListState::Unchanged;
    // A changed row marked for deletion goes back to changed when the mark is taken back.
    bool changedBeforeDelete = false;
};

// F3 on a row: marks it for deletion, or takes the mark back.
void ToggleRowDeletion(ListRow& row);

// Whether a row waits to be updated (a row only marked for deletion does not count).
inline bool HasUnsavedEdit(const ListRow& row) {
    return row.state == ListState::Changed;
}
