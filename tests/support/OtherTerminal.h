#pragma once

#include "domain/Purchase.h"
#include "platform/db/Connection.h"

#include <QString>
#include <functional>

// Another terminal of the shop: its own connection to the test's database file or server.
// What runs inside act() is that terminal's work, the program's own code, with gCon standing
// for the other terminal's connection until it returns.
class OtherTerminal {
public:
    explicit OtherTerminal(const QString& folder);

    void act(const std::function<void()>& work);
    void execute(const QString& sql);

    // What its register stores, each in a transaction of its own as the register saves: a new
    // sale of a customer (gives its number), a sale deleted, a new customer (gives his number).
    int registerSale(qint64 customerNo, Purchase sale);
    void deleteSale(qint64 customerNo, int seq);
    qint64 registerCustomer(const QString& name);
    // As its register's F8: the customer with every sale he has.
    void deleteCustomer(qint64 customerNo);

private:
    Connection connection_;
};
