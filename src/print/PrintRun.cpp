#include "print/PrintRun.h"

#include "platform/AppFolder.h"
#include "platform/report/Report.h"
#include "platform/ui/MsgBox.h"

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
