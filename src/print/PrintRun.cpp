#include "print/PrintRun.h"

#include "data/SettingStore.h"
#include "frame/BasCmnSubFun.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "platform/AppFolder.h"
#include "platform/report/Report.h"
#include "platform/report/ReportJob.h"
#include "platform/ui/MsgBox.h"

#include <QWidget>
#include <cmath>

QString FormPath(const QString& form) {
    return InstallPath(QStringLiteral("jfm/") + form);
}

bool TellPrintFailure(const Failure& failure, const QString& title) {
    if (failure.number() == ErrorNumber::ReportLibrary)
        MsgBox(failure.description(), MsgIcon::None, MsgButtons::OK, QString());
    else if (failure.number() == ErrorNumber::ReportNotWritten)
        MsgBox(PdfNotWrittenText, MsgIcon::Exclamation, MsgButtons::OK, title);
    else
        return false;
    return true;
}

void AnnouncePdf(const QString& path, const QString& title) {
    if (path.isEmpty())
        return;
    MsgBox(QStringLiteral("ＰＤＦファイルに出力しました。") + QChar(13) + path,
           MsgIcon::Information, MsgButtons::OK, title);
    ShowPdf(path);
}

bool RunPrint(QWidget* window, const PrintRun& run, const std::function<void(ReportJob&)>& pages,
              const QString& title) {
    QString pdf;
    const QString boxTitle = !title.isEmpty() ? title : window ? window->windowTitle() : QString();
    const bool printed =
        Procedure(run.where, run.procedure, QStringLiteral("印刷処理"),
                  [&] {
                      ReportJob job(window);
                      job.setDevMode(run.settings);
                      job.startDoc(run.documentName);
                      CmnSetGlbData(job);
                      pages(job);
                      pdf = job.endDoc();
                  },
                  {.titlePrefix = VbErrorTitleWide, .ownMessage = [&](const Failure& failure) {
                       return TellPrintFailure(failure, boxTitle);
                   }});
    if (printed)
        AnnouncePdf(pdf, boxTitle);
    return printed;
}

void SetListHeading(ReportJob& job, const QDate& date, int page) {
    job.setField(QStringLiteral("yy"), date.toString(QStringLiteral("yyyy")));
    job.setField(QStringLiteral("mm"), date.toString(QStringLiteral("MM")));
    job.setField(QStringLiteral("dd"), date.toString(QStringLiteral("dd")));
    job.setField(QStringLiteral("Page"), QString::number(page));
}

void SetPrinterOffset(ReportJob& job) {
    const SettingStore::PrintOffset offset = SettingStore::ReadPrintOffset();
    job.setLong(ReportOption::OffsetX, std::lround(offset.x * 10));
    job.setLong(ReportOption::OffsetY, std::lround(offset.y * 10));
}
