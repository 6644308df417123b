#pragma once

#include "platform/controls/GridView.h"

#include <QAbstractTableModel>
#include <QColor>
#include <algorithm>
#include <functional>
#include <numeric>
#include <vector>

// A grid's rows as typed values in a plain vector. What a cell shows, its colour and what an
// edit does are derived from the row by the column's functions; nothing is read back from the
// text shown. Rows are counted from 0 here.

// One column of a RowModel: its heading and how its cells are derived from a row.
template <class Row> struct GridColumn {
    using Text = std::function<QString(const Row&)>;
    using Edit = std::function<void(Row&, const QString&)>;

    GridColumn(QString heading, Text text,
               Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter, Text editText = Text(),
               Edit edit = Edit(), QStringList dropDown = QStringList())
        : heading(std::move(heading)), text(std::move(text)), alignment(alignment),
          editText(std::move(editText)), edit(std::move(edit)), dropDown(std::move(dropDown)) {}

    QString heading;
    Text text;
    Qt::Alignment alignment;
    // Editable columns: the text the editor starts from, and what an edit does to the row.
    Text editText;
    Edit edit;
    // A drop-down column's items; its edit text is the index of the chosen item.
    QStringList dropDown;
    // The longest text typed or pasted into a cell of an editable column, in characters (0: no
    // limit); a longer stored text is shown and kept whole.
    int maxLength = 0;
};

template <class Row> class RowModel : public QAbstractTableModel {
public:
    using Column = GridColumn<Row>;

    explicit RowModel(std::vector<Column> columns, QObject* parent = nullptr)
        : QAbstractTableModel(parent), columns_(std::move(columns)) {}

    // The background of a row; an invalid colour leaves the grid's default.
    std::function<QColor(const Row&)> background;
    // Called after the user changed a cell through an editor.
    std::function<void(int row, int column)> edited;
    // A row that takes no edits; every row takes them when unset.
    std::function<bool(const Row&)> locked;
    // A row's tip, shown when the mouse rests on it; none when unset or empty.
    std::function<QString(const Row&)> tip;

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : int(rows_.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : int(columns_.size());
    }

    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid())
            return {};
        const Row& row = rows_[index.row()];
        const Column& column = columns_[index.column()];
        switch (role) {
        case Qt::DisplayRole:
            return column.text(row);
        case Qt::EditRole:
            return column.editText ? column.editText(row) : column.text(row);
        case Qt::BackgroundRole: {
            const QColor colour = background ? background(row) : QColor();
            return colour.isValid() ? QVariant(colour) : QVariant();
        }
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(column.alignment);
        case GridView::DropDownRole:
            return column.dropDown;
        case GridView::MaxLengthRole:
            return column.maxLength;
        case Qt::ToolTipRole: {
            const QString text = tip ? tip(row) : QString();
            return text.isEmpty() ? QVariant() : QVariant(text);
        }
        default:
            return {};
        }
    }

    bool setData(const QModelIndex& index, const QVariant& value, int role) override {
        if (!index.isValid() || role != Qt::EditRole || !columns_[index.column()].edit ||
            (locked && locked(rows_[index.row()])))
            return false;
        const Column& column = columns_[index.column()];
        Row& row = rows_[index.row()];
        const QString text = value.toString();
        if ((column.editText ? column.editText(row) : column.text(row)) == text)
            return true;
        column.edit(row, text);
        rowChanged(index.row());
        if (edited)
            edited(index.row(), index.column());
        return true;
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (role != Qt::DisplayRole)
            return {};
        if (orientation == Qt::Vertical)
            return section + 1;
        return section < int(columns_.size()) ? columns_[section].heading : QString();
    }

    Qt::ItemFlags flags(const QModelIndex& index) const override {
        if (!index.isValid())
            return Qt::NoItemFlags;
        Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
        if (columns_[index.column()].edit && !(locked && locked(rows_[index.row()])))
            flags |= Qt::ItemIsEditable;
        return flags;
    }

    const std::vector<Row>& rows() const { return rows_; }
    const Row& at(int row) const { return rows_[row]; }
    int size() const { return int(rows_.size()); }

    void setRows(std::vector<Row> rows) {
        beginResetModel();
        rows_ = std::move(rows);
        endResetModel();
    }
    void clear() { setRows({}); }
    int append(Row row) {
        const int at = int(rows_.size());
        beginInsertRows({}, at, at);
        rows_.push_back(std::move(row));
        endInsertRows();
        return at;
    }
    void removeAt(int row) {
        beginRemoveRows({}, row, row);
        rows_.erase(rows_.begin() + row);
        endRemoveRows();
    }
    // Changes one row in place and repaints it.
    template <class Change> void update(int row, Change change) {
        change(rows_[row]);
        rowChanged(row);
    }
    // Changes the rows first to last and repaints them once.
    template <class Change> void updateRange(int first, int last, Change change) {
        if (first > last)
            return;
        for (int row = first; row <= last; ++row)
            change(rows_[row]);
        emit dataChanged(index(first, 0), index(last, columnCount() - 1));
    }
    // Changes every row and repaints them once.
    template <class Change> void updateAll(Change change) {
        updateRange(0, int(rows_.size()) - 1, change);
    }
    // Sorts the rows, keeping equal rows in their order; the current row and the selection
    // follow their rows.
    template <class Less> void sortRows(Less less) {
        std::vector<int> order(rows_.size());
        std::iota(order.begin(), order.end(), 0);
        std::stable_sort(order.begin(), order.end(),
                         [&](int a, int b) { return less(rows_[a], rows_[b]); });
        emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
        std::vector<int> position(rows_.size());
        std::vector<Row> sorted;
        sorted.reserve(rows_.size());
        for (int i = 0; i < int(order.size()); ++i) {
            position[order[i]] = i;
            sorted.push_back(std::move(rows_[order[i]]));
        }
        rows_ = std::move(sorted);
        const QModelIndexList before = persistentIndexList();
        QModelIndexList after;
        for (const QModelIndex& kept : before)
            after << index(position[kept.row()], kept.column());
        changePersistentIndexList(before, after);
        emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
    }

private:
    void rowChanged(int row) { emit dataChanged(index(row, 0), index(row, columnCount() - 1)); }

    std::vector<Column> columns_;
    std::vector<Row> rows_;
};
