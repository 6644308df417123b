#pragma once

#include "platform/report/FormPainter.h"

#include <QHash>
#include <QList>
#include <QString>

class QWidget;

// The report library: a print job fills the named fields of a form template and prints a page
// per draw. Operations take the job handle first and give 0 for success or a negative error
// code; jvOpen gives the handle (a value of 0 or less is an error code).
long jvOpen(int mode, QWidget* window, long printer);
long jvSetDevMode(long job, int mode, const QString& device, const QString& settings);
long jvStartDoc(long job, const QString& documentName, const QString& outputName);
long jvSetLong(long job, int option, long value);
long jvSetString(long job, int option, const QString& text);
long jvSetForm(long job, const QString& path, int page, const QString& name, int zoom, int x,
               int y);
long jvSetFieldText(long job, const QString& field, const QString& text);
// The picture of an image item for the next page; the page's values hold its text.
long jvSetFieldPicture(long job, const QString& field, const FormPicture& picture);
long jvDrawForm(long job, int page);
long jvEndPage(long job);
long jvEndDoc(long job);
long jvAbortDoc(long job);
long jvClose(long job);

namespace ReportError {
inline constexpr long NoSuchJob = -1;
inline constexpr long BadSettings = -2;
inline constexpr long NoTemplate = -3;
inline constexpr long BadTemplate = -4;
inline constexpr long OutputFailed = -5;
inline constexpr long NoForm = -6;
inline constexpr long NotStarted = -7;
} // namespace ReportError

// Options a job takes with jvSetLong besides the library's own.
namespace ReportOption {
inline constexpr int KanjiNumerals = 101; // 1: numbers in vertical text as kanji numerals
inline constexpr int PlainPaper = 102;    // 1: also the boxes a postcard brings printed
inline constexpr int OffsetX = 103;       // the printer's feed, tenths of a millimetre right
inline constexpr int OffsetY = 104;       // and down
} // namespace ReportOption

// What a job did, kept while recording is on (the tests turn it on to check a print run).
struct ReportJobRecord {
    QString documentName;
    QString settings;
    QStringList forms;
    QList<std::pair<int, long>> longOptions;
    QList<std::pair<int, QString>> textOptions;
    QList<QHash<QString, QString>> pages; // the field values of each page drawn
    QList<QList<DrawnText>> drawn;        // what each page shows, on the form (without offset)
    QList<QSizeF> pageSizes;              // millimetres
    QHash<QString, QRectF> fieldBoxes;    // the last form's fields and images, millimetres
    bool ended = false;
    bool aborted = false;
    bool closed = false;
    QString output; // the PDF written, or the printer's name
};
const QList<ReportJobRecord>& ReportJobs();
// Starts or stops recording the jobs; either way forgets those recorded so far.
void RecordReportJobs(bool on);

// Where documents go: the system's default printer when one is set up, else a PDF under the
// program folder (Print/) opened in the desktop's viewer; or always a PDF, never opened.
enum class ReportOutput { Automatic, PdfOnly };
void SetReportOutput(ReportOutput output);

// The PDF a job wrote its pages to; empty when it went to a printer or drew no page.
QString ReportPdfPath(long job);
// Opens a PDF in the desktop's viewer when the program runs on a desktop that has one.
void ShowPdf(const QString& path);
