#pragma once

#include <QString>

class Connection;

struct GeneratedShop {
    qint64 customers = 0;
    qint64 purchases = 0;
    qint64 regular = 0; // a customer with exactly 50 purchases
    qint64 orders = 0, openOrders = 0;
};

// Fills a database that has its tables, masters and postal directory with a shop's customers
// and their purchases over twenty years: realistic kana names, households sharing a telephone,
// birth dates in the eras, prescriptions; the latest purchases are orders, 2,000 of them still
// open (fewer in a smaller shop), as many before them handed over. The same seed gives the
// same shop.
GeneratedShop GenerateShop(Connection& connection, qint64 customers, unsigned seed = 20261122);
