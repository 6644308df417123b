#pragma once

#include <QWidget>

class QAbstractItemModel;
class QTableView;

// A grid on the screens: a table view over a model, rows and columns counted from 1 (row 0 is
// the heading line). The model holds the rows; the grid only shows them and reports what the
// user does with the mouse and the keys.
class GridView : public QWidget {
    Q_OBJECT
public:
    // A model may offer a drop-down list for a cell under this role (a QStringList); the cell's
    // edit value is then the index of the chosen item.
    static constexpr int DropDownRole = Qt::UserRole + 1;
    // The longest text typed into a cell (0: none), as the fields of the screens limit theirs.
    static constexpr int MaxLengthRole = Qt::UserRole + 2;

    explicit GridView(QWidget* parent = nullptr);

    void setModel(QAbstractItemModel* model);
    QAbstractItemModel* gridModel() const;
    int rowCount() const;

    void setColumnWidths(const QList<int>& widths);
    // The last column takes up the width left over.
    void setLastColumnStretch(bool stretch);
    void setColumnHidden(int column, bool hidden);
    bool isColumnHidden(int column) const;
    // Whole rows are selected, one at a time; dragging moves the current row.
    void setRowSelection();

    // The current row: the row last clicked, moved to with the keys or set; the first row when
    // there are rows and none was chosen; 0 for an empty grid.
    int activeRow() const;
    int activeCol() const;
    void setActiveCell(int row, int column);
    // No row current, none selected.
    void clearActiveCell();
    // The text a cell shows, counted from 1.
    QString cellText(int row, int column) const;

    QTableView* view() const { return view_; }

signals:
    void clicked(int row, int column);
    void doubleClicked(int row, int column);
    // The user selected a block of more than one cell: by dragging the mouse over the cells
    // or the row headings, or by a click with Shift. Told once, when the mouse button comes
    // up; a plain click (also inside a block shown before, or on a row heading) is no block.
    void blockSelected(int row1, int column1, int row2, int column2);
    // The current row changed, by a click, a drag, the keys or the program; 0 for none.
    void currentRowChanged(int row);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Where the mouse went down: a cell, or a row heading (column -1).
    QPoint placeAt(QObject* area, const QPoint& position) const;
    void reportBlock();
    void followCurrent();

    QTableView* view_;
    bool focusArriving_ = false;
    // The mouse gesture under way with the left button: where it went down, and whether it
    // selects a block (Shift held, or dragged onto another place).
    struct Gesture {
        bool active = false;
        QPoint pressedAt;
        bool block = false;
    } gesture_;
};
