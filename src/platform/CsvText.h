#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <memory>

class QSaveFile;

// CSV text as RFC 4180 writes it and Excel reads it: fields separated by commas, each record
// ended by CR LF. A field holding a comma, a double quote, CR or LF is put between double
// quotes with each of its double quotes doubled; nothing else is changed (blanks around a
// value stay, an empty value stays empty).
QString CsvField(const QString& value);
// One record with its line end.
QString CsvRecord(const QStringList& fields);
// The fields of one record read back (its line end taken off): a quoted field may hold commas
// and doubled quotes.
QStringList CsvFields(const QString& line);

// The byte-order mark by which Excel knows a CSV file is UTF-8.
inline const QByteArray Utf8Bom = QByteArrayLiteral("\xEF\xBB\xBF");

// A CSV file in UTF-8 with the mark, written record by record, readable by its owner only;
// its folder is made when missing. The file appears (or replaces the one there) only when
// commit() finds it written whole: a failure (a full disk too), or an object gone before
// commit(), leaves no part of it. Failures are thrown as a Failure
// (ErrorNumber::FileAccess) naming the file.
class CsvFile {
public:
    explicit CsvFile(const QString& path);
    ~CsvFile();
    CsvFile(const CsvFile&) = delete;
    CsvFile& operator=(const CsvFile&) = delete;

    void write(const QStringList& fields);
    // Everything written is on the disk (a full disk fails here), the file not yet in place.
    void flush();
    void commit();

private:
    [[noreturn]] void fail() const;

    QString path_;
    std::unique_ptr<QSaveFile> file_;
};
