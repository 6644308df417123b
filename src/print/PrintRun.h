#pragma once

#include <QDate>
#include <QString>
#include <functional>

class QWidget;
class ReportJob;

// The box of a document that could not be written whole (a full disk): no file is left.
inline const QString PdfNotWrittenText =
    QStringLiteral("ＰＤＦファイルを書き出せませんでした。ディスクの空きと、プログラムフォルダーの "
                   "Print フォルダーに書き込めるかを確かめてください。");

// What one printed document is: the screen's procedure that prints it, the printer settings and
// the document's name.
struct PrintRun {
    QString where, procedure, settings, documentName;
};

// Prints one document as every screen does: the job opened, the document started with the
// shop's data, the pages drawn, the document ended. A failure aborts it and is told (the
// library's own failures as it words them); a document written to a PDF is announced in a box
// titled as the window and opened. True when the document was printed.
bool RunPrint(QWidget* window, const PrintRun& run, const std::function<void(ReportJob&)>& pages);

// The heading fields of a list's page: the date (yy, mm, dd) and the page number (Page).
void SetListHeading(ReportJob& job, const QDate& date, int page);

// The form template of that name that comes with the program.
QString FormPath(const QString& form);
