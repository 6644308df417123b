#include "platform/db/Transaction.h"

#include "platform/db/Connection.h"

#include <QString>

Transaction::Transaction(Connection& connection, Kind kind) : connection_(connection) {
    connection_.beginTrans();
    // The file's transaction holds the file against writers from its start; a server reads
    // one snapshot only when asked to before the first read.
    if (kind == Kind::Snapshot && connection_.isServer())
        connection_.execute(
            QStringLiteral("set transaction isolation level repeatable read, read only"));
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
