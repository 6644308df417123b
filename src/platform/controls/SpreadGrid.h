#pragma once

#include "platform/controls/SpreadModel.h"

#include <QWidget>

class QTableView;

// The spreadsheet grid of the screens. Rows and columns are counted from 1; row 0 is the
// heading line. A cell holds text; a whole row is written at once from tab-separated text.
// Each row has a background colour, an invalid QColor being the grid's default.
class SpreadGrid : public QWidget {
    Q_OBJECT
public:
    explicit SpreadGrid(QWidget* parent = nullptr);

    int maxRows() const;
    void setMaxRows(int rows);
    int maxCols() const;
    void setMaxCols(int columns);
    void setHeaders(const QStringList& headers);
    void setColumnWidths(const QList<int>& widths);
    // The last column takes up the width left over.
    void setLastColumnStretch(bool stretch);
    void setColumnHidden(int column, bool hidden);
    bool isColumnHidden(int column) const;
    void setColumnEditable(int column, bool editable);
    // Numeric columns sort as numbers and stand right-aligned.
    void setColumnNumeric(int column, bool numeric);
    // Number cells of the column are shown through the pattern; the text stays as written.
    void setColumnDisplayFormat(int column, const QString& pattern);
    // The cells of the column are chosen from a drop-down list; the cell holds the index.
    void setColumnDropDown(int column, const QStringList& items);

    QString text(int row, int column) const;
    // The text a cell shows: for a drop-down column the item, else the text.
    QString displayText(int row, int column) const;
    void setText(int row, int column, const QString& text);
    // Writes cells 1, 2, ... of the row from text separated by tabs; a closing carriage
    // return is dropped.
    void setRowText(int row, const QString& tabSeparated);
    // Adds a row at the bottom, filled from tab-separated text or from its cells; gives its
    // number.
    int addRow(const QString& tabSeparated);
    int addRow(const QStringList& cells);
    void deleteRow(int row);
    void clearRows() { setMaxRows(0); }

    QColor rowColor(int row) const;
    void setRowColor(int row, const QColor& color);

    void sort(const std::vector<SortKey>& keys);

    // The current row: the row last clicked or set; the first row when there are rows and
    // none was chosen; 0 for an empty grid.
    int activeRow() const;
    int activeCol() const;
    void setActiveCell(int row, int column);

    // Switching redraw off lets many rows be written at once; switching it on shows them.
    void setRedraw(bool redraw);

    QTableView* view() const { return view_; }
    SpreadModel* model() const { return model_; }

signals:
    void clicked(int row, int column);
    void doubleClicked(int row, int column);
    // The user changed the text of a cell.
    void cellChanged(int row, int column);
    // The user selected a block of more than one cell by dragging or with Shift.
    void blockSelected(int row1, int column1, int row2, int column2);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void reportBlock();

    SpreadModel* model_;
    QTableView* view_;
    bool redraw_ = true;
};
