#pragma once

#include "domain/Purchase.h"
#include "domain/PurchaseLine.h"
#include "domain/SearchConditions.h"

#include <QString>
#include <optional>
#include <vector>

// The statements on the purchase table.
namespace PurchaseStore {

// The column of one prescription value and eye (0 right, 1 left), e.g. Uri_R_Sph.
QString PrescriptionColumn(int index, int eye);

// A customer's purchases, newest first (ties by their number).
std::vector<Purchase> OfCustomer(qint64 customerNo);

// A purchase as the staff know it: "顧客番号 3 の 2024/03/05 の売上（No.2）".
QString RecordName(qint64 customerNo, const Purchase& purchase);

QString InsertSql(qint64 customerNo, const Purchase& purchase);
// "update San_Uriage set ...": the columns in which the purchase now differs from how it was
// shown.
QString UpdateSql(qint64 customerNo, const Purchase& shown, const Purchase& now);
QString DeleteSql(qint64 customerNo, int seq);

// Writes the register's marked lines inside the caller's transaction, which has locked the
// customer's row: new lines are inserted with consecutive numbers never given before, changed
// ones updated in the columns changed, those marked for deletion deleted. A new line's order
// and payments are created with it. A line whose
// purchase another terminal deleted, or changed in a column this save writes (or at all, for
// one to delete), fails the save with RowDeleted or RowChanged.
void SaveLines(qint64 customerNo, const std::vector<PurchaseLine>& lines);

// One page of the sales history: up to three purchases dated on or before a day, newest first,
// with the customer's name and sales total; `shown` is false when the page is empty. Beside
// each purchase the one whose prescription it is compared with, read by the same statement.
struct HistoryPage {
    bool shown = false;
    qint64 customerNo = 0;
    QString name;
    qint64 total = 0;
    std::vector<Purchase> purchases;
    std::vector<std::optional<Purchase>> previous;
};
HistoryPage ReadHistoryPage(qint64 customerNo, qint64 ymd, int page);

// The history writes a corrected purchase back with its own statement: the prescription right
// and left eye alternating, texts as typed, the columns changed since the purchase was shown.
// The note and the memo are not touched.
QString HistoryUpdateSql(qint64 customerNo, const Purchase& shown, const Purchase& now);

// Writes a corrected purchase of the history inside the caller's transaction, checked like the
// register's changed lines (the customer's row locked first).
void SaveFromHistory(qint64 customerNo, const Purchase& shown, const Purchase& now);

// The customer's sales within the visit-date range of the conditions (0 when none).
qint64 SalesForAmountCheck(const SearchConditions& c, qint64 customerNo);

// The sales inquiry: the purchases of one customer that match the purchase conditions.
std::vector<Purchase> ForInquiry(const SearchConditions& c, qint64 customerNo);

} // namespace PurchaseStore
