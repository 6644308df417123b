#pragma once

#include "data/Lookups.h"
#include "data/OrderStore.h"
#include "domain/PurchaseLine.h"
#include "platform/controls/GridView.h"
#include "platform/controls/RowModel.h"

#include <QColor>
#include <vector>

inline const QColor NewLineColor(128, 255, 255);
inline const QColor ChangedLineColor(255, 255, 128);
inline const QColor DeletedLineColor(255, 128, 128);

// The register's purchase grid: one line per purchase with what waits to be written for it.
// Status texts, colours and master names are derived from the lines when they are painted;
// nothing is read back from the grid's cells.
class PurchaseGrid : public GridView {
    Q_OBJECT
public:
    explicit PurchaseGrid(QWidget* parent = nullptr);

    // Shows a customer's stored purchases in the order given, with their orders; an empty list
    // empties the grid.
    void showPurchases(const std::vector<Purchase>& purchases,
                       const std::map<int, OrderStore::OrderState>& orders = {});
    void clearLines() { showPurchases({}); }
    // The line's order and payments, as stored now or (for a new line) as they wait.
    void setOrder(int id, const std::optional<Order>& order, const std::vector<Payment>& payments);
    // A new line kept as it was typed, with what waits with it, after the grid was read again.
    void keepNewLine(const PurchaseLine& line);
    // What the customer still owes for the lines shown.
    qint64 outstanding() const;
    // The masters of the register, read once while it is open: the grid names its codes by them
    // and the entry's lists are filled from them.
    MasterNames& masters() const { return names_; }

    int lineCount() const { return model_->size(); }
    const std::vector<PurchaseLine>& lines() const { return model_->rows(); }
    // A line by its row, counted from 1.
    const PurchaseLine& line(int row) const { return model_->at(row - 1); }
    // The row of a line, 0 when the grid has no line of that id.
    int rowOf(int id) const;
    // Whether any line waits to be written.
    bool hasMarkedLines() const;

    // "明細登録": the purchase over the line of the id, or into a new line when the id is 0.
    // A line marked for deletion is not changed (false). The lines are sorted newest first and
    // recoloured by their state; the current row stays on its line.
    bool writeEntry(int id, const Purchase& purchase);
    // The customer is gone: only what was typed and not yet stored stays, as new lines (a
    // changed purchase included); stored lines and those marked for deletion leave the grid.
    void keepUnstoredLines();
    // "明細削除" on a row: a new line leaves the grid, another is marked or unmarked.
    void toggleDeletion(int row);

    // The colour a row is painted in.
    QColor rowColor(int row) const;

    // The grid's columns, counted from 1.
    enum Column { Status = 1, Date, Total, Progress, Owed, Item, Youto, FmName, FmMaker, FmKinga };

signals:
    // Lines came, went, were sorted or changed.
    void linesChanged();

private:
    void sortLines();
    QString masterName(MasterKind kind, const QString& code) const;

    RowModel<PurchaseLine>* model_;
    mutable MasterNames names_;
    int lastId_ = 0;
};
