#pragma once

#include "domain/Customer.h"
#include "domain/ListRow.h"

#include <QDate>
#include <QStringList>
#include <optional>
#include <vector>

// The statements on the customer table. Writes without a transaction of their own run inside
// the caller's (the register saves a customer and his purchases as one).
namespace CustomerStore {

// The customer of the number, unless he is marked as deleted.
std::optional<Customer> Find(qint64 customerNo);

// The number a new customer gets: the highest plus one, 1 for the first.
qint64 NextNo();

// The date text written into the customer's date columns.
QString DateText(const QDate& date);

// "insert into San_User Values(...)": both dates today, the deletion mark empty.
QString InsertSql(const Customer& customer, const QDate& today);
// "update San_User set User_Name = ...": the registration date as given, the last change
// today; the deletion mark is left alone.
QString UpdateSql(const Customer& customer, const QDate& today);
// The customer and every one of his purchases.
QStringList DeleteSql(qint64 customerNo);

void Insert(const Customer& customer, const QDate& today);
// Fails with ErrorNumber::RowNotFound when the customer's row is gone.
void Update(const Customer& customer, const QDate& today);
void Remove(qint64 customerNo);

// The quick search by kana and telephone (either may be empty), by kana.
QString QuickSearchSql(const QString& kana, const QString& tel);
std::vector<Customer> QuickSearch(const QString& kana, const QString& tel);
// The customers who share a telephone number: a family, by kana.
std::vector<Customer> WithTel(const QString& tel);

// The customer list's correction of one row: only the columns changed in the list, and the
// date of the last change.
QString ListedUpdateSql(const ListRow& row, const QDate& today);
// The list writes each row in a transaction of its own.
void UpdateListed(const ListRow& row, const QDate& today);
void RemoveAlone(qint64 customerNo);

} // namespace CustomerStore
