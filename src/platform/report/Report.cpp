#include "platform/report/Report.h"

#include "platform/AppFolder.h"
#include "platform/Failure.h"
#include "platform/WholeFile.h"
#include "platform/report/FormPainter.h"
#include "platform/ui/Clock.h"

#include <QDesktopServices>
#include <QDir>
#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSaveFile>
#include <QUrl>
#include <map>
#include <memory>

namespace {

struct Job {
    // The job's record among those kept; -1 when jobs are not being recorded (the job keeps
    // its own while it is open).
    int record = -1;
    ReportJobRecord own;
    QPageSize pageSize = QPageSize(QPageSize::A4);
    QPageLayout::Orientation orientation = QPageLayout::Portrait;
    FormTemplate form;
    bool hasForm = false;
    bool started = false;
    QHash<QString, QString> values;
    QHash<QString, FormPicture> pictures;
    // A PDF is written under a temporary name and takes its own when it is whole.
    std::unique_ptr<QSaveFile> pdfFile;
    std::unique_ptr<QPdfWriter> pdf;
    std::unique_ptr<QPrinter> printer;
    QPainter painter;
    bool pageEnded = false;
    QString pdfPath;
    FormOptions options;
    QPointF offsetMm;

    QPagedPaintDevice* device() const {
        return pdf ? static_cast<QPagedPaintDevice*>(pdf.get()) : printer.get();
    }
};

std::map<long, std::unique_ptr<Job>>& jobs() {
    static std::map<long, std::unique_ptr<Job>> instance;
    return instance;
}

QList<ReportJobRecord>& records() {
    static QList<ReportJobRecord> instance;
    return instance;
}

bool& recording() {
    static bool instance = false;
    return instance;
}

ReportOutput& outputChoice() {
    static ReportOutput instance = ReportOutput::Automatic;
    return instance;
}

Job* find(long handle) {
    const auto it = jobs().find(handle);
    return it == jobs().end() ? nullptr : it->second.get();
}

ReportJobRecord& recordOf(Job& job) {
    return job.record < 0 ? job.own : records()[job.record];
}

QString pdfPathFor(const QString& documentName) {
    const QString folder = AppPath(QStringLiteral("Print"));
    QDir().mkpath(folder);
    const QString stem = folder + QLatin1Char('/') + documentName + QLatin1Char('_') +
                         Now().toString(QStringLiteral("yyyyMMdd_HHmmss"));
    QString path = stem + QStringLiteral(".pdf");
    for (int n = 2; QFileInfo::exists(path); ++n)
        path = stem + QStringLiteral("_%1.pdf").arg(n);
    return path;
}

bool desktopPresent() {
    const QString platform = QGuiApplication::platformName();
    return platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
}

// Starts the page a draw goes on: the first one opens the painter on the device.
bool beginPage(Job& job) {
    const QPageSize size = job.form.pageMm.isEmpty()
                               ? job.pageSize
                               : QPageSize(job.form.pageMm, QPageSize::Millimeter);
    QPagedPaintDevice* device = job.device();
    if (!job.painter.isActive()) {
        // The form's millimetres count from the paper's corner, whatever the printer's margins.
        if (job.printer)
            job.printer->setFullPage(true);
        device->setPageSize(size);
        device->setPageOrientation(job.orientation);
        device->setPageMargins(QMarginsF(0, 0, 0, 0));
        return job.painter.begin(device);
    }
    if (job.pageEnded) {
        device->setPageSize(size);
        job.pageEnded = false;
        return device->newPage();
    }
    return true;
}

} // namespace

const QList<ReportJobRecord>& ReportJobs() {
    return records();
}

void RecordReportJobs(bool on) {
    recording() = on;
    records().clear();
}

void SetReportOutput(ReportOutput output) {
    outputChoice() = output;
}

long jvOpen(int, QWidget*, long) {
    static long nextHandle = 1;
    auto job = std::make_unique<Job>();
    if (recording()) {
        records().append(ReportJobRecord());
        job->record = int(records().size()) - 1;
    }
    const long handle = nextHandle++;
    jobs()[handle] = std::move(job);
    return handle;
}

long jvSetDevMode(long handle, int, const QString&, const QString& settings) {
    Job* job = find(handle);
    if (!job)
        return ReportError::NoSuchJob;
    // orientation, paper size, paper length, paper width (tenths of a millimetre), ...
    const QStringList fields = settings.split(QLatin1Char(','));
    bool ok = false;
    const int orientation = fields.value(0).trimmed().toInt(&ok);
    if (!ok || (orientation != 1 && orientation != 2))
        return ReportError::BadSettings;
    job->orientation = orientation == 1 ? QPageLayout::Portrait : QPageLayout::Landscape;
    const double length = fields.value(2).trimmed().toDouble() / 10;
    const double width = fields.value(3).trimmed().toDouble() / 10;
    if (length > 0 && width > 0)
        job->pageSize = QPageSize(QSizeF(width, length), QPageSize::Millimeter);
    else if (fields.value(1).trimmed() == QLatin1String("9"))
        job->pageSize = QPageSize(QPageSize::A4);
    recordOf(*job).settings = settings;
    return 0;
}

long jvStartDoc(long handle, const QString& documentName, const QString&) {
    Job* job = find(handle);
    if (!job)
        return ReportError::NoSuchJob;
    recordOf(*job).documentName = documentName;
    const QPrinterInfo printer = QPrinterInfo::defaultPrinter();
    if (outputChoice() == ReportOutput::Automatic && !printer.isNull()) {
        job->printer = std::make_unique<QPrinter>(printer, QPrinter::HighResolution);
        job->printer->setDocName(documentName);
        recordOf(*job).output = printer.printerName();
    } else {
        job->pdfPath = pdfPathFor(documentName);
        job->pdfFile = std::make_unique<QSaveFile>(job->pdfPath);
        if (!job->pdfFile->open(QIODevice::WriteOnly) ||
            !job->pdfFile->setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner))
            return ReportError::OutputFailed;
        job->pdf = std::make_unique<QPdfWriter>(job->pdfFile.get());
        job->pdf->setResolution(300);
        job->pdf->setTitle(documentName);
        job->pdf->setCreator(QStringLiteral("Mirvane"));
        recordOf(*job).output = job->pdfPath;
    }
    job->started = true;
    return 0;
}

long jvSetLong(long handle, int option, long value) {
    Job* job = find(handle);
    if (!job)
        return ReportError::NoSuchJob;
    recordOf(*job).longOptions.append({option, value});
    switch (option) {
    case ReportOption::KanjiNumerals:
        job->options.digits = value == 1 ? VerticalDigits::Kanji : VerticalDigits::FullWidth;
        break;
    case ReportOption::PlainPaper:
        job->options.plainPaper = value == 1;
        break;
    case ReportOption::OffsetX:
        job->offsetMm.setX(value / 10.0);
        break;
    case ReportOption::OffsetY:
        job->offsetMm.setY(value / 10.0);
        break;
    default:
        break;
    }
    return 0;
}

long jvSetString(long handle, int option, const QString& text) {
    Job* job = find(handle);
    if (!job)
        return ReportError::NoSuchJob;
    recordOf(*job).textOptions.append({option, text});
    return 0;
}

long jvSetForm(long handle, const QString& path, int, const QString&, int, int, int) {
    Job* job = find(handle);
    if (!job)
        return ReportError::NoSuchJob;
    QString error;
    if (!QFileInfo::exists(path))
        return ReportError::NoTemplate;
    if (!LoadFormTemplate(path, job->form, &error))
        return ReportError::BadTemplate;
    job->hasForm = true;
    recordOf(*job).forms << QFileInfo(path).fileName();
    recordOf(*job).fieldBoxes.clear();
    for (const FormItem& item : job->form.items)
        if (item.kind == FormItem::Kind::Field || item.kind == FormItem::Kind::Image)
            recordOf(*job).fieldBoxes.insert(item.name, QRectF(item.x, item.y, item.w, item.h));
    return 0;
}

long jvSetFieldText(long handle, const QString& field, const QString& text) {
    Job* job = find(handle);
    if (!job)
        return ReportError::NoSuchJob;
    job->values.insert(field, text);
    return 0;
}

long jvSetFieldPicture(long handle, const QString& field, const FormPicture& picture) {
    Job* job = find(handle);
    if (!job)
        return ReportError::NoSuchJob;
    job->pictures.insert(field, picture);
    job->values.insert(field, picture.text);
    return 0;
}

long jvDrawForm(long handle, int) {
    Job* job = find(handle);
    if (!job)
        return ReportError::NoSuchJob;
    if (!job->started)
        return ReportError::NotStarted;
    if (!job->hasForm)
        return ReportError::NoForm;
    if (!beginPage(*job))
        return ReportError::OutputFailed;
    const double k = job->device()->logicalDpiX() / 25.4;
    job->painter.save();
    job->painter.translate(job->offsetMm * k);
    ReportJobRecord& record = recordOf(*job);
    record.drawn.append(
        DrawForm(job->painter, k, job->form, job->values, job->options, job->pictures));
    job->painter.restore();
    record.pages.append(job->values);
    record.pageSizes.append(job->device()->pageLayout().fullRect(QPageLayout::Millimeter).size());
    return 0;
}

long jvEndPage(long handle) {
    Job* job = find(handle);
    if (!job)
        return ReportError::NoSuchJob;
    // Each page is filled afresh: nothing of one page shows on the next.
    job->values.clear();
    job->pictures.clear();
    job->pageEnded = true;
    return 0;
}

long jvEndDoc(long handle) {
    Job* job = find(handle);
    if (!job)
        return ReportError::NoSuchJob;
    if (!job->started)
        return ReportError::NotStarted;
    const bool drew = job->painter.isActive();
    if (drew && !job->painter.end())
        return ReportError::OutputFailed;
    if (drew && job->pdfFile) {
        try {
            CommitWholeFile(*job->pdfFile);
        } catch (const Failure&) {
            job->pdfPath.clear();
            return ReportError::OutputFailed;
        }
    }
    recordOf(*job).ended = true;
    if (!drew)
        job->pdfPath.clear();
    return 0;
}

QString ReportPdfPath(long handle) {
    Job* job = find(handle);
    return job && job->pdf && recordOf(*job).ended ? job->pdfPath : QString();
}

void ShowPdf(const QString& path) {
    if (!path.isEmpty() && outputChoice() == ReportOutput::Automatic && desktopPresent())
        QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

long jvAbortDoc(long handle) {
    Job* job = find(handle);
    if (!job)
        return ReportError::NoSuchJob;
    if (job->printer)
        job->printer->abort();
    if (job->painter.isActive())
        job->painter.end();
    if (job->pdf) {
        job->pdf.reset();
        job->pdfFile.reset(); // never committed: nothing of it stays
    }
    recordOf(*job).aborted = true;
    return 0;
}

long jvClose(long handle) {
    Job* job = find(handle);
    if (!job)
        return ReportError::NoSuchJob;
    if (job->painter.isActive())
        job->painter.end();
    recordOf(*job).closed = true;
    jobs().erase(handle);
    return 0;
}
