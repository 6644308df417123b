#include "print/PrintRun.h"

#include "frame/BasCmnSubFun.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "platform/AppFolder.h"
#include "platform/report/Report.h"
#include "platform/report/ReportJob.h"
#include "platform/ui/MsgBox.h"

#include <QWidget>

bool RunPrint(QWidget* window, const PrintRun& run, const std::function<void(ReportJob&)>& pages) {
    QString pdf;
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
                  {.titlePrefix = VbErrorTitleWide, .ownMessage = [window](const Failure& failure) {
                       if (failure.number() == ErrorNumber::ReportLibrary)
                           MsgBox(failure.description(), MsgIcon::None, MsgButtons::OK, QString());
                       else if (failure.number() == ErrorNumber::ReportNotWritten)
                           MsgBox(PdfNotWrittenText, MsgIcon::Exclamation, MsgButtons::OK,
                                  window->windowTitle());
                       else
                           return false;
                       return true;
                   }});
    if (printed && !pdf.isEmpty()) {
        MsgBox(QStringLiteral("ＰＤＦファイルに出力しました。") + QChar(13) + pdf,
               MsgIcon::Information, MsgButtons::OK, window->windowTitle());
        ShowPdf(pdf);
    }
    return printed;
}

void SetListHeading(ReportJob& job, const QDate& date, int page) {
    job.setField(QStringLiteral("yy"), date.toString(QStringLiteral("yyyy")));
    job.setField(QStringLiteral("mm"), date.toString(QStringLiteral("MM")));
    job.setField(QStringLiteral("dd"), date.toString(QStringLiteral("dd")));
    job.setField(QStringLiteral("Page"), QString::number(page));
}

QString FormPath(const QString& form) {
    return InstallPath(QStringLiteral("jfm/") + form);
}
