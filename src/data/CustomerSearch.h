#pragma once

#include "domain/Customer.h"
#include "domain/SearchConditions.h"

#include <functional>
#include <optional>

// Reads the customers that match the conditions, in kana order: the customer query, then the
// age filter and the purchase check per customer. Each match is handed to `each`.
void SearchCustomers(const SearchConditions& c, int currentYear,
                     const std::function<void(const ListedCustomer&)>& each);

// One customer as the list shows him, read afresh; none when he is no longer there.
std::optional<ListedCustomer> FindListedCustomer(qint64 customerNo);
