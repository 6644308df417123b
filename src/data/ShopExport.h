#pragma once

#include <QString>

class Connection;

// The files a shop's data is written to for another system, in the folder given.
inline const QString CustomersCsv = QStringLiteral("customers.csv");
inline const QString PurchasesCsv = QStringLiteral("purchases.csv");

struct ExportedRows {
    qint64 customers = 0;
    qint64 purchases = 0;
};

// Writes every customer (by number) and every purchase (by customer and sequence) with all
// their columns, under the columns' own names, to CustomersCsv and PurchasesCsv as CSV files
// (see CsvFile). Each master code of a purchase is followed by the master's name, empty when
// that entry was deleted. Numbers are written in plain decimal, Nulls as empty values. Neither
// file is put in place unless both were written.
ExportedRows ExportShopCsv(Connection& connection, const QString& folder);
