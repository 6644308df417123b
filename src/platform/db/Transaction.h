#pragma once

class Connection;

// One transaction on a connection for the length of a scope: begun by the constructor, made to
// stand by commit(). Leaving the scope without commit() (an exception, an early return) rolls
// it back. The rollback is quiet: the failure that left the scope is the one worth reporting,
// and a connection that is gone already takes its transaction with it.
class Transaction {
public:
    // A save's transaction; or a snapshot: everything read in it is the database as it was
    // at one moment, whatever other terminals write meanwhile (a whole copy of a shop).
    enum class Kind { Write, Snapshot };
    explicit Transaction(Connection& connection, Kind kind = Kind::Write);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit();

private:
    Connection& connection_;
    bool committed_ = false;
};
