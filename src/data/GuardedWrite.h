#pragma once

#include "platform/Failure.h"
#include "platform/db/SqlText.h"

#include <QString>
#include <QStringList>
#include <vector>

// A save writes only what its screen changed, and only over what the screen showed: another
// terminal may have changed or deleted the row since.

// One column a save may write, with its value as the screen read it, as the screen holds it
// now, and as the row holds it now: each as the literal the save would write.
struct GuardedColumn {
    QString name;
    QString caption; // its name on screen, for telling the staff what collided
    QString shown, now, stored;
};

// What a save writes of one row: "Column = value" for each column the screen changed, and the
// captions of those another terminal changed meanwhile to something else (a collision).
struct GuardedWrite {
    QStringList assignments;
    QStringList collisions;
};
GuardedWrite PlanWrite(const std::vector<GuardedColumn>& columns);

// The columns of a row type, each with the literal a save writes for it.
template <class Row> struct ColumnOf {
    const char* name;
    const char* caption;
    QString (*literal)(const Row&);
};

// The literals of the usual columns: a text trimmed, a text as typed, a whole number.
template <class Row, QString Row::*field> QString TrimmedText(const Row& row) {
    return SqlStr(row.*field);
}
template <class Row, QString Row::*field> QString TextAsTyped(const Row& row) {
    return SqlQuote(row.*field);
}
template <class Row, int Row::*field> QString WholeNumber(const Row& row) {
    return SqlNum(row.*field);
}

template <class Row>
std::vector<GuardedColumn> Compare(const std::vector<ColumnOf<Row>>& columns, const Row& shown,
                                   const Row& now, const Row& stored) {
    std::vector<GuardedColumn> compared;
    compared.reserve(columns.size());
    for (const ColumnOf<Row>& column : columns)
        compared.push_back({QString::fromLatin1(column.name), QString::fromUtf8(column.caption),
                            column.literal(shown), column.literal(now), column.literal(stored)});
    return compared;
}

// The failures of a save that met another terminal's work; the record is named as the staff
// know it ("顧客番号 3「山田 太郎」").
Failure RowChangedMeanwhile(const QString& record, const QStringList& collisions = {});
Failure RowDeletedMeanwhile(const QString& record);

// Runs a statement that must change exactly the one row its save checked (RowDeleted else).
void ExecuteOnCheckedRow(const QString& statement, const QString& record);
