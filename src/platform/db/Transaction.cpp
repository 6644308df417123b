#include "platform/db/Transaction.h"

#include "platform/db/Connection.h"

Transaction::Transaction(Connection& connection) : connection_(connection) {
    connection_.beginTrans();
}

Transaction::~Transaction() {
    if (committed_ || !connection_.inTransaction())
        return;
    try {
        connection_.rollbackTrans();
    } catch (...) {
        // The server or the file is gone; nothing of the transaction is left to undo.
    }
}

void Transaction::commit() {
    // A commit that fails leaves the transaction to the destructor's rollback.
    connection_.commitTrans();
    committed_ = true;
}
