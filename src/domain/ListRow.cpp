#include "domain/ListRow.h"

void ToggleRowDeletion(ListRow& row) {
    if (row.state == ListState::ToDelete) {
        row.state = row.changedBeforeDelete ? ListState::Changed : ListState::Unchanged;
        row.changedBeforeDelete = false;
        return;
    }
    row.changedBeforeDelete = row.state == ListState::Changed;
    row.state = ListState::ToDelete;
}
