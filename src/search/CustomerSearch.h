#pragma once

#include "search/SearchConditions.h"

#include <functional>

// One customer the list shows.
struct ListedCustomer {
    qint64 no = 0;
    QString name, kana, yubin, jusyo1, jusyo2, tel;
    int kazok = 0;
    qint64 total = 0;     // sales total
    qint64 lastVisit = 0; // yyyymmdd, 0 when none
};

// Reads the customers that match the conditions, in kana order: the customer query, then the
// age filter and the purchase check per customer. Each match is handed to `each`.
void SearchCustomers(const SearchConditions& c, int currentYear,
                     const std::function<void(const ListedCustomer&)>& each);
