#pragma once

#include "domain/DailyClosing.h"

#include <QDate>

// The figures of the day's closing, read from the purchases, the orders with their statuses and
// payments, and the receipts as issued.
namespace DailyClosingStore {

// The closing of the day: a few statements over the whole shop, read as it stood at one moment,
// the same answer on both engines. Reads only; what another terminal stores meanwhile shows
// when it is read again.
DailyClosing Read(const QDate& day);

} // namespace DailyClosingStore
