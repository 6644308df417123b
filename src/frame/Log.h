#pragma once

#include <QString>

// Appends one line to the day's log file Log/ddday.log under the program folder: date, time,
// where, procedure, error number and text, each quoted, separated by commas, ended by CR LF.
// A trace line has an empty number.
void CmnWriteLog(const QString& where, const QString& procedure, const QString& text,
                 const QString& number);

// The log file that a line written at this moment goes to.
QString LogFilePath();
