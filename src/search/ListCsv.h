#pragma once

#include "domain/ListRow.h"

#include <QDate>
#include <QStringList>
#include <functional>
#include <vector>

// The customer list written out for a printing service or Excel: the list's columns as the
// list shows them, apart from the print mark ("1" or "0") and the sales total (a plain number,
// without the thousands separators that would make Excel read it as text), then the birth date
// in its era and the age on the given day.
QStringList ListCsvHeader();
// A text cell as a spreadsheet shows it as text: one that Excel or Calc would read as a formula
// (it starts with = + - @, a tab or a carriage return) gets an apostrophe in front, which they
// show with it. The admin tool's export writes what is stored, unchanged.
QString SpreadsheetText(const QString& text);
QStringList ListCsvRecord(const ListRow& row, const QDate& today);

// Writes the rows in the order given to a CSV file (see CsvFile). progress is told how many
// rows are written, every so many rows; when it answers false the writing stops and the file
// is left as it was. Gives whether the file was written.
bool WriteListCsv(const QString& path, const std::vector<ListRow>& rows, const QDate& today,
                  const std::function<bool(int written)>& progress = {});
