#pragma once

#include "domain/Receipt.h"

#include <QDateTime>
#include <QStringList>
#include <optional>
#include <vector>

// Receipts as issued (San_Receipt, its lines San_ReceiptLine, its tax per rate San_ReceiptTax).
// A receipt is never changed but for its cancellation mark and its reprint count, and never
// removed: not with its purchase, not with its customer.
namespace ReceiptStore {

QStringList TableStatements();
QStringList Tables();

// In a transaction of its own: the receipt takes the next number never given before (the
// numbering row locked, so two terminals never take one number) and is stored as it is;
// gives the receipt with its number. A purchase deleted or whose amounts or payment changed
// since the receipt was made fails with RowDeleted or RowChanged; money covered by a receipt
// not cancelled (ReceiptCovering) fails with ReceiptRefused. Nothing is stored then.
Receipt Issue(Receipt receipt, const QDateTime& at);
std::optional<Receipt> Find(qint64 no);
// The receipts of a purchase, in the order they were issued.
std::vector<Receipt> OfPurchase(qint64 customerNo, int seq);

// The last day a receipt was issued, cancelled ones included; an invalid date when none was.
QDate LastIssueDay();

// A reprint: the same receipt, counted; gives it as stored.
Receipt Reprint(qint64 no);
// Marks it cancelled (取消) at `at`; one cancelled meanwhile by another terminal fails with
// RowChanged.
void Cancel(qint64 no, const QDateTime& at);

} // namespace ReceiptStore
