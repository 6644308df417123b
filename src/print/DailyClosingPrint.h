#pragma once

#include "domain/DailyClosing.h"

#include <QString>

class QWidget;

// The day's closing on paper (PrnSan008.jfm, A5 portrait): the shop, the day, when it was
// printed, every line of the closing and how the outstanding balance is reckoned.
inline const QString DailyClosingTitle = QStringLiteral("日計表");

// Prints the closing as every paper is printed (a PDF when no printer is set up, announced);
// failures are told in boxes. True when printed.
bool PrintDailyClosing(QWidget* window, const DailyClosing& closing);

// The closing as CSV records, one a line of the closing: 日付, 区分, 項目, 件数, 金額 (a plain
// number, negative for a fall; no count where a count means nothing), the heading first.
QList<QStringList> DailyClosingCsvRecords(const DailyClosing& closing);
// Writes them whole to the file or not at all (see CsvFile); a failure is thrown.
void WriteDailyClosingCsv(const QString& path, const DailyClosing& closing);
