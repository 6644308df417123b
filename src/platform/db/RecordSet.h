#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>

class QSqlQuery;

// The rows of one query, read forward only. A fresh record set stands on its first row;
// eof() is true when there is none. Fields are read by name (case does not matter) or by
// position counted from 0. A Null field is a null QVariant, apart from an empty text.
class RecordSet {
public:
    RecordSet();
    explicit RecordSet(std::unique_ptr<QSqlQuery> query);
    RecordSet(RecordSet&&) noexcept;
    RecordSet& operator=(RecordSet&&) noexcept;
    ~RecordSet();

    bool eof() const;
    void moveNext();
    void close();

    int fieldCount() const;
    QString fieldName(int position) const;
    QVariant field(int position) const;
    QVariant field(const QString& name) const;
    // The position of the column field(name) reads: a loop over many rows looks it up once.
    int positionOf(const QString& name) const;

private:
    void requireRow() const;

    std::unique_ptr<QSqlQuery> query_;
    bool eof_ = true;
    // The columns, read once: names as the database gives them (and as asked for once found)
    // and by lower-case name.
    QStringList names_;
    mutable QHash<QString, int> exactPositions_;
    QHash<QString, int> positions_; // by the name in lower case
};
