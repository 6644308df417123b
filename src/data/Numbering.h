#pragma once

#include <QString>
#include <QStringList>

class Connection;

// The numbers new customers and purchases get: one more than the highest ever given, so a
// number is never given twice, not even after its customer or purchase was deleted. A screen
// that still shows a deleted record can then never reach a newer one through its number.
// What was given is kept in San_Saiban: the row of customer 0 holds the last customer number,
// the row of a customer the last purchase number given to him.
namespace Numbering {

QString TableStatement();
// Adds the table to a database made before it, starting from the numbers in use.
void Upgrade(Connection& connection);

// Inside the saving transaction: the next customer number, recorded as given.
qint64 TakeCustomerNo();
// Inside the saving transaction: `count` consecutive purchase numbers for the customer,
// recorded as given; gives the first.
int TakePurchaseSeqs(qint64 customerNo, int count);
// Inside the issuing transaction: the next receipt number, recorded as given.
qint64 TakeReceiptNo();
// Inside the deleting transaction: a customer is deleted. His number stays given (also when
// he came from an older database that did not record it), his purchase numbering goes.
void ForgetCustomer(qint64 customerNo);
// Inside the deleting transaction: a purchase is deleted; its number stays given.
void KeepPurchaseSeq(qint64 customerNo, int seq);

} // namespace Numbering
