#pragma once

#include <QString>

class Connection;

// The files a shop's data is written to for another system, in the folder given.
inline const QString CustomersCsv = QStringLiteral("customers.csv");
inline const QString PurchasesCsv = QStringLiteral("purchases.csv");
// The orders of purchases, the statuses they reached and the payments made for them.
inline const QString OrdersCsv = QStringLiteral("orders.csv");
inline const QString OrderStatusesCsv = QStringLiteral("order-statuses.csv");
inline const QString PaymentsCsv = QStringLiteral("payments.csv");
// The shop's own details, one key a line.
inline const QString ShopCsv = QStringLiteral("shop.csv");
// The consumption tax rates with the days they apply from.
inline const QString TaxRatesCsv = QStringLiteral("tax-rates.csv");
// The receipts as issued, their lines and their tax per rate.
inline const QString ReceiptsCsv = QStringLiteral("receipts.csv");
inline const QString ReceiptLinesCsv = QStringLiteral("receipt-lines.csv");
inline const QString ReceiptTaxesCsv = QStringLiteral("receipt-taxes.csv");

struct ExportedRows {
    qint64 customers = 0;
    qint64 purchases = 0;
    qint64 orders = 0, orderStatuses = 0, payments = 0;
    qint64 shop = 0, taxRates = 0, receipts = 0;
};

// Writes every customer (by number) and every purchase (by customer and sequence) with all
// their columns, under the columns' own names, to CustomersCsv and PurchasesCsv as CSV files
// (see CsvFile). Each master code of a purchase is followed by the master's name, empty when
// that entry was deleted. The orders, their statuses and the payments follow, each table with
// all its columns by customer and purchase, then the shop's details (ShopCsv) by key. Numbers
// are written in plain decimal, Nulls as empty values. No file is put in place unless all were
// written.
ExportedRows ExportShopCsv(Connection& connection, const QString& folder);
