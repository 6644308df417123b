#include "domain/ListRow.h"

void ToggleRowDeletion(ListRow& row) {
    if (row.elsewhere == ElsewhereWork::Deleted)
        return;
    if (row.state == ListState::ToDelete) {
        row.state = row.changedBeforeDelete ? ListState::Changed : ListState::Unchanged;
        row.changedBeforeDelete = false;
        return;
    }
    row.changedBeforeDelete = row.state == ListState::Changed;
    row.state = ListState::ToDelete;
}

ListRow ReadAgain(const ListRow& row, const std::optional<ListedCustomer>& stored) {
    ListRow fresh;
    fresh.now = fresh.read = stored ? *stored : row.read;
    fresh.marked = stored && row.marked;
    fresh.elsewhere = stored ? ElsewhereWork::Changed : ElsewhereWork::Deleted;
    return fresh;
}
