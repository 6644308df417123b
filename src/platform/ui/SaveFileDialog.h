#pragma once

#include <QString>
#include <functional>

struct SaveFileRequest {
    QString title;
    QString suggested; // the path the dialog opens with
    QString filter;    // e.g. "CSVファイル (*.csv)"
};

// Asks where to save a file and gives the path chosen; empty text when the user cancelled.
// Every file dialog of the program goes here.
QString AskSaveFileName(const QString& title, const QString& suggested, const QString& filter);

// Replaces the real dialog, for tests: the handler answers each request. An empty handler
// restores it.
using SaveFileHandler = std::function<QString(const SaveFileRequest&)>;
void SetSaveFileHandler(SaveFileHandler handler);
