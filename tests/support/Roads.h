#pragma once

#include "support/Harness.h"

#include <QDate>
#include <QList>
#include <functional>

class FrmKokyaku;
class UriageEntry;

// Roads through the screens that many tests walk.

// Opens the register as its callers do (0: a new customer, starting with the telephone) and
// drives it; gives back Koushin.
bool OpenRegister(Harness& harness, qint64 customerNo,
                  const std::function<void(FrmKokyaku&)>& drive, const QString& tel = {});

// Types one purchase into the register's entry as the staff do and presses "明細登録".
// item and youto are positions in their lists.
void EnterPurchase(UriageEntry& entry, const QDate& date, int item, int youto, int frame = 0,
                   int lens = 0);

// The purchase numbers stored for a customer, in order.
QList<int> StoredSeqs(qint64 customerNo);
