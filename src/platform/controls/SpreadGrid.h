#pragma once

#include "platform/controls/GridView.h"
#include "platform/controls/SpreadModel.h"

// A grid of plain text cells, for lists that are only shown or picked from (postal codes,
// samples). Rows and columns are counted from 1. Each row has a background colour, an invalid
// QColor being the grid's default. The shop's own rows are kept in typed models instead.
class SpreadGrid : public GridView {
    Q_OBJECT
public:
    explicit SpreadGrid(QWidget* parent = nullptr);

    int maxRows() const;
    void setMaxRows(int rows);
    int maxCols() const;
    void setMaxCols(int columns);
    void setHeaders(const QStringList& headers);
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

    // Switching redraw off lets many rows be written at once; switching it on shows them.
    void setRedraw(bool redraw);

    SpreadModel* model() const { return model_; }

signals:
    // The user changed the text of a cell.
    void cellChanged(int row, int column);

private:
    SpreadModel* model_;
    bool redraw_ = true;
};
