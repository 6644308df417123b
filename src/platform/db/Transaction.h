#pragma once

class Connection;

// One transaction on a connection for the length of a scope: begun by the constructor, made to
// stand by commit(). Leaving the scope without commit() (an exception, an early return) rolls
// it back. The rollback is quiet: the failure that left the scope is the one worth reporting,
// and a connection that is gone already takes its transaction with it.
class Transaction {
public:
    explicit Transaction(Connection& connection);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit();

private:
    Connection& connection_;
    bool committed_ = false;
};
