#pragma once

#include "domain/SearchConditions.h"

#include <QList>
#include <QString>

// The statements of the customer list and the sales inquiry, built from the search conditions.

// The customer list's query: customers with their sales total and last visit, by kana. Given
// customer numbers, only those.
QString CustomerQuery(const SearchConditions& c, const QList<qint64>& only = {});

// The customers of the customer-side conditions alone, in no order: number, era and year of
// birth.
QString CustomerSideQuery(const SearchConditions& c);

// Which form the maker condition takes: the list's (only chosen makers) or the inquiry's
// (all twelve terms).
enum class MakerForm { List, Inquiry };

// The purchase fragments of the visit-date, purpose, item, maker and product-name conditions.
QString PurchaseFragments(const SearchConditions& c, MakerForm form);

// The list's purchase check for every customer at once: the customer of each matching purchase
// (a customer as often as he has such purchases).
QString PurchaseCustomersQuery(const SearchConditions& c);

// The amount check: the customer's sales in the visit-date range; and for every customer at once.
QString AmountQuery(const SearchConditions& c, qint64 customerNo);
QString AmountsByCustomerQuery(const SearchConditions& c);

// The sales inquiry's purchases of one customer, newest first.
QString InquiryQuery(const SearchConditions& c, qint64 customerNo);
