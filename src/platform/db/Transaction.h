#pragma once

class Connection;

// One transaction on a connection, begun by the constructor. commit() makes the writes stay;
// leaving the scope without it (an exception on the way out, say) rolls them back.
class Transaction {
public:
    explicit Transaction(Connection& connection);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit();

private:
    Connection& connection_;
    bool open_ = true;
};
