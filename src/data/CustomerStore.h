#pragma once

#include "data/GuardedWrite.h"
#include "domain/Customer.h"
#include "domain/ListRow.h"
#include "domain/Purchase.h"

#include <QDate>
#include <QStringList>
#include <optional>
#include <vector>

// The statements on the customer table. Writes without a transaction of their own run inside
// the caller's (the register saves a customer and his purchases as one).
namespace CustomerStore {

// The customer of the number, unless he is marked as deleted.
std::optional<Customer> Find(qint64 customerNo);

// Inside the saving transaction: the number a new customer gets, one more than the highest
// ever given (1 for the first), recorded as given.
qint64 NextNo();

// The customer as the staff know him: "顧客番号 3「山田 太郎」".
QString RecordName(qint64 customerNo, const QString& name);

// The date text written into the customer's date columns.
QString DateText(const QDate& date);

// "insert into San_User Values(...)": both dates today, the deletion mark empty.
QString InsertSql(const Customer& customer, const QDate& today);
// "update San_User set ...": the columns in which the customer now differs from how he was
// shown, and the last change today; the deletion mark is left alone.
QString UpdateSql(const Customer& shown, const Customer& now, const QDate& today);
// The customer and every one of his purchases.
QStringList DeleteSql(qint64 customerNo);

void Insert(const Customer& customer, const QDate& today);
// Inside the caller's transaction, with the customer's row locked: writes what changed since he
// was shown. Fails with RowDeleted when his row is gone, with RowChanged when another terminal
// changed a column this save changes.
void Update(const Customer& shown, const Customer& now, const QDate& today);
// Inside the caller's transaction: deletes the customer and his purchases, when they are still
// all as shown (else RowChanged or RowDeleted).
void Remove(const Customer& shown, const std::vector<Purchase>& shownPurchases);

// The quick search by kana and telephone (either may be empty), by kana.
QString QuickSearchSql(const QString& kana, const QString& tel);
std::vector<Customer> QuickSearch(const QString& kana, const QString& tel);
// The customers who share a telephone number: a family, by kana.
std::vector<Customer> WithTel(const QString& tel);

// The customer list's correction of one row: the columns changed in the list, and the date of
// the last change; collisions with the stored row as it is now.
GuardedWrite PlanListedUpdate(const ListRow& row, const ListedCustomer& stored);
QString ListedUpdateSql(qint64 customerNo, const QStringList& assignments, const QDate& today);
// The list writes each row in a transaction of its own, checked against the stored row as
// Update and Remove check theirs; a customer deleted or changed by another terminal since
// the list read him fails the same way.
void UpdateListed(const ListRow& row, const QDate& today);
void RemoveListed(const ListRow& row);

} // namespace CustomerStore
