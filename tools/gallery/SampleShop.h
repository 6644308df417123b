#pragma once

#include <QString>

// The sample shop the gallery shows its screens on.

// A new database in the folder, opened, with a family of three and a neighbour, their purchases,
// and the latest purchase an order waiting to be handed over.
void seedShop(const QString& folder);
// 300 customers more, each with one purchase, for the lists.
void seedManyCustomers();
// The shop's name, a long address, telephone and registration number.
void seedShopDetails();
// Two years of sales of the 300 customers, for the analysis.
void seedSales();
