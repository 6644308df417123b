#pragma once

#include "domain/ListRow.h"
#include "platform/controls/GridView.h"
#include "platform/controls/RowModel.h"

#include <QColor>
#include <QStringList>
#include <vector>

// The customer list's grid: one row a customer, with its print mark and what waits to be
// written for it. The colours come from the rows' states; edits in the grid change the rows.
class ListGrid : public GridView {
    Q_OBJECT
public:
    // Unchanged, changed, to delete; read again after another terminal changed or deleted it.
    static const QColor White, Yellow, Red, Blue, Grey;
    // The grid's columns, counted from 1.
    enum Column { No = 1, Mark, Name, Kana, Yubin, Jusyo1, Jusyo2, Tel, Kazok, Total, LastVisit };
    // The headings of the columns, and the names of the family categories (0 to 3).
    static const QStringList Headings, FamilyNames;
    // The box of a postal code cell given what is no postal code.
    static inline const QString PostalCodeRefused =
        QStringLiteral("郵便番号は「123-4567」のように、数字３桁と数字４桁で入力してください。");
    // The orders of F9 to F12: kana, address, sales, last visit.
    enum class Order { Kana, Address, Sales, LastVisit };

    explicit ListGrid(QWidget* parent = nullptr);

    void showRows(std::vector<ListRow> rows);
    void clearRows() { showRows({}); }
    int maxRows() const { return model_->size(); }
    const std::vector<ListRow>& rows() const { return model_->rows(); }
    // A row, counted from 1.
    const ListRow& row(int row) const { return model_->at(row - 1); }
    void replaceRow(int row, const ListRow& value);
    void removeRow(int row);

    // The result of the search the grid shows: a changed family category marks rows by it.
    void setShownResult(int result) { shownResult_ = result; }

    // Toggles the print marks of rows top to bottom; the count is told once.
    void toggleMarks(int top, int bottom);
    int markedCount() const;
    bool hasUnsavedEdits() const;
    void toggleDeletion(int row);
    void markSaved(int row);
    void sortBy(Order order);

    QColor rowColor(int row) const;

signals:
    void marksChanged(int marked);

private:
    RowModel<ListRow>* model_;
    int shownResult_ = 0;
};
