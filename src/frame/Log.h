#pragma once

#include <QString>

// Appends one line to the day's log file Log/ddday.log under the program folder: date, time,
// where, procedure, error number and text, each quoted, separated by commas, ended by CR LF.
// A trace line has an empty number.
void CmnWriteLog(const QString& where, const QString& procedure, const QString& text,
                 const QString& number);

// The log file that a line written at this moment goes to.
QString LogFilePath();

// While a batch lives, log lines are kept and written together when it ends (or when many have
// gathered): the same lines, with the times they were written at, without opening the file for
// each of them. For procedures that run once per row of a long list.
class LogBatch {
public:
    LogBatch();
    ~LogBatch();
    LogBatch(const LogBatch&) = delete;
    LogBatch& operator=(const LogBatch&) = delete;
};
