#pragma once

#include "platform/Failure.h"

#include <QDate>
#include <QString>
#include <functional>

class QWidget;
class ReportJob;

// What every printed document shares: where its form comes from, how it is run, how a failure
// of the report library is told, and where a PDF went.

// The box of a document that could not be written whole (a full disk): no file is left.
inline const QString PdfNotWrittenText =
    QStringLiteral("ＰＤＦファイルを書き出せませんでした。ディスクの空きと、プログラムフォルダーの "
                   "Print フォルダーに書き込めるかを確かめてください。");

// The printer settings of a list on A4 portrait paper: the ledger, the call list.
inline const QString A4ListSettings = QStringLiteral("1,9,2970,2100,,1,7,,2,1,,,0");

// The printer settings of a slip on A5 portrait paper: the order slip, the receipt.
inline const QString A5SlipSettings = QStringLiteral("1,11,2100,1480,,1,7,,2,1,,,0");

// The form template of the name; templates come with the program.
QString FormPath(const QString& form);

// Tells a failure of the report library in its own words, and a PDF not written whole with
// PdfNotWrittenText; false for any other failure (the procedure's standard box tells it).
bool TellPrintFailure(const Failure& failure, const QString& title);

// A document written to a PDF says where it is, and opens in the desktop's viewer; nothing
// for one that went to a printer (empty path).
void AnnouncePdf(const QString& path, const QString& title);

// What one printed document is: the screen's procedure that prints it, the printer settings and
// the document's name.
struct PrintRun {
    QString where, procedure, settings, documentName;
};

// Prints one document as every screen does: the job opened, the document started with the
// shop's options, the pages drawn, the document ended. A failure aborts it and is told; a
// document written to a PDF is announced in a box titled as the window, or with `title` when one
// is given. True when printed.
bool RunPrint(QWidget* window, const PrintRun& run, const std::function<void(ReportJob&)>& pages,
              const QString& title = {});

// The printer's feed, off by the same on every paper, as the shop set it.
void SetPrinterOffset(ReportJob& job);

// The heading fields of a list's page: the date (yy, mm, dd) and the page number (Page).
void SetListHeading(ReportJob& job, const QDate& date, int page);
