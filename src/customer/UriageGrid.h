#pragma once

#include "customer/UriageLine.h"
#include "platform/controls/SpreadGrid.h"

// The register's purchase grid: one line per purchase, 47 columns, each line with its status
// and colour. Lines are marked here and written to the database only by save().
class UriageGrid : public SpreadGrid {
    Q_OBJECT
public:
    explicit UriageGrid(QWidget* parent = nullptr);

    // Fills the grid with the customer's purchases, newest first. A lens maker that the maker
    // master does not know stops the filling with OpeErr_008; returns false then.
    bool fill(qint64 userNo);

    UriageCells line(int row) const;
    QString status(int row) const { return text(row, UriCol::Status).trimmed(); }
    // Whether any line carries a status: something waits to be written.
    bool hasMarkedLines() const;
    // Colours every line by its status.
    void recolour();

    // Writes every marked line of the customer; runs inside the caller's transaction and
    // fails as a whole when one statement fails.
    void save(qint64 userNo);

    // The next purchase number of a customer: the highest plus one, 1 for the first.
    static int Get_LastSeq(qint64 userNo);
};
