#include "platform/db/Transaction.h"

#include "platform/Failure.h"
#include "platform/db/Connection.h"

Transaction::Transaction(Connection& connection) : connection_(connection) {
    connection_.beginTrans();
}

Transaction::~Transaction() {
    if (!open_ || !connection_.inTransaction())
        return;
    try {
        connection_.rollbackTrans();
    } catch (const Failure&) {
        // The connection is gone; the failure on the way out says why.
    }
}

void Transaction::commit() {
    connection_.commitTrans();
    open_ = false;
}
