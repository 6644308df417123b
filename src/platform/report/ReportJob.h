#pragma once

#include <QString>

class QWidget;
struct FormPicture;

// One print job of the report library, as every document is printed: made, it opens the job;
// gone, it closes it, and first aborts a document it started and did not end, so no partial
// document is ever printed. A library call that fails throws a Failure: "jvSetForm Error -3"
// (ErrorNumber::ReportLibrary), or ErrorNumber::ReportNotWritten when the PDF could not be
// written whole.
class ReportJob {
public:
    explicit ReportJob(QWidget* window);
    ~ReportJob();
    ReportJob(const ReportJob&) = delete;
    ReportJob& operator=(const ReportJob&) = delete;

    void setDevMode(const QString& settings);
    void startDoc(const QString& documentName);
    // Options of the library and of the shop's forms; they never fail.
    void setLong(int option, long value);
    void setString(int option, const QString& text);
    // The form template the next pages are drawn on.
    void setForm(const QString& templatePath);
    // A field of the form for the next page; a name the form lacks is ignored.
    void setField(const QString& field, const QString& text);
    // The picture of an image of the form for the next page; a name the form lacks is ignored.
    void setPicture(const QString& field, const FormPicture& picture);
    // Draws the form with its fields as one page.
    void printPage();
    // Ends the document; gives the PDF it went to, empty when it went to a printer.
    QString endDoc();

private:
    long handle_;
    bool started_ = false;
    bool ended_ = false;
};
