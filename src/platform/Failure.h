#pragma once

#include <QByteArray>
#include <QString>
#include <exception>

// The one failure type of the program: an error number and its description.
// Database errors, file errors and broken rules all travel as a Failure.
class Failure : public std::exception {
public:
    Failure(long number, QString description)
        : number_(number), description_(std::move(description)), what_(description_.toUtf8()) {}

    long number() const { return number_; }
    const QString& description() const { return description_; }
    const char* what() const noexcept override { return what_.constData(); }

private:
    long number_;
    QString description_;
    QByteArray what_;
};

namespace ErrorNumber {
// A write that breaks a unique key, or a database that cannot be opened.
inline constexpr long DatabaseFailed = -2147467259;
// A lock another terminal held for longer than the wait (SQLite busy, PostgreSQL lock timeout).
inline constexpr long LockTimeout = -2147217871;
// The server's connection was lost and could not be opened again.
inline constexpr long ConnectionLost = 3146;
// A database file marked read-only.
inline constexpr long ReadOnlyDatabase = 3051;
// Any other failure of an SQL statement.
inline constexpr long StatementFailed = -2147217900;
// A field asked for by a name or position the row does not have.
inline constexpr long NoSuchField = -2146825023;
// A record set read past its end.
inline constexpr long NoCurrentRow = -2146825267;
// A save meant a row another terminal changed after the screen showed it: a column the save
// writes no longer holds what the screen read.
inline constexpr long RowChanged = -2147217864;
// A save meant a row another terminal deleted after the screen showed it.
inline constexpr long RowDeleted = -2147217885;
// A transaction call out of order (commit without begin, ...).
inline constexpr long TransactionState = -2146825287;
// A file that cannot be written or read.
inline constexpr long FileAccess = 75;
// A call of the report library that failed; the description names the call and its code.
inline constexpr long ReportLibrary = -2147221503;
// A document printed to a PDF that could not be written whole (a full disk, a folder that
// cannot be written).
inline constexpr long ReportNotWritten = -2147221502;
// A payment the order cannot take (over what is outstanding, a refund over what was paid); the
// description says why in words for staff.
inline constexpr long PaymentRefused = -2147221501;
// A receipt that cannot be issued (the money is receipted already); the description says which.
inline constexpr long ReceiptRefused = -2147221500;
// A consumption tax rate that cannot be added (TaxRateRefusal); the description says why.
inline constexpr long TaxRateRefused = -2147221499;
// Anything thrown that is not a Failure.
inline constexpr long Unexpected = -2147418113;
} // namespace ErrorNumber
