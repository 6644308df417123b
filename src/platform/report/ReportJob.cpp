#include "platform/report/ReportJob.h"

#include "platform/Failure.h"
#include "platform/report/Report.h"

namespace {

void check(const char* call, long result) {
    if (result == ReportError::OutputFailed)
        throw Failure(ErrorNumber::ReportNotWritten, QString::fromLatin1(call) +
                                                         QStringLiteral(" Error ") +
                                                         QString::number(result));
    if (result != 0)
        throw Failure(ErrorNumber::ReportLibrary, QString::fromLatin1(call) +
                                                      QStringLiteral(" Error ") +
                                                      QString::number(result));
}

} // namespace

ReportJob::ReportJob(QWidget* window) : handle_(jvOpen(2, window, 0)) {
    if (handle_ <= 0)
        check("jvOpen", handle_);
}

ReportJob::~ReportJob() {
    if (started_ && !ended_)
        jvAbortDoc(handle_);
    jvClose(handle_);
}

void ReportJob::setDevMode(const QString& settings) {
    check("jvSetDevMode", jvSetDevMode(handle_, 1, QString(), settings));
}

void ReportJob::startDoc(const QString& documentName) {
    check("jvStartDoc", jvStartDoc(handle_, documentName, QString()));
    started_ = true;
}

void ReportJob::setLong(int option, long value) {
    jvSetLong(handle_, option, value);
}

void ReportJob::setString(int option, const QString& text) {
    jvSetString(handle_, option, text);
}

void ReportJob::setForm(const QString& templatePath) {
    check("jvSetForm", jvSetForm(handle_, templatePath, 1, QString(), 100, 0, 0));
}

void ReportJob::setField(const QString& field, const QString& text) {
    jvSetFieldText(handle_, field, text);
}

void ReportJob::setPicture(const QString& field, const FormPicture& picture) {
    jvSetFieldPicture(handle_, field, picture);
}

void ReportJob::printPage() {
    check("jvDrawForm", jvDrawForm(handle_, 1));
    check("jvEndPage", jvEndPage(handle_));
}

QString ReportJob::endDoc() {
    // A document whose end failed is not aborted afterwards: it is over either way.
    ended_ = true;
    check("jvEndDoc", jvEndDoc(handle_));
    return ReportPdfPath(handle_);
}
