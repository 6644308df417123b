#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <QStringList>
#include <vector>

struct SortKey {
    int column; // counted from 1
    Qt::SortOrder order = Qt::AscendingOrder;
};

// The cells of a grid as plain text in plain vectors, one colour per row. Counted from 0
// here; SpreadGrid gives the screens rows and columns counted from 1.
class SpreadModel : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    void setColumns(int count);
    void setHeaders(const QStringList& headers);
    void setRows(int count);
    const QString& cell(int row, int column) const;
    void setCell(int row, int column, const QString& text);
    void setRow(int row, const QStringList& cells);
    void removeRow(int row);
    QColor rowColor(int row) const { return colors_[row]; }
    void setRowColor(int row, const QColor& color);

    void setEditable(int column, bool editable);
    void setNumeric(int column, bool numeric);
    bool isNumeric(int column) const { return numeric_[column]; }
    void setAlignment(int column, Qt::Alignment alignment);
    // A number cell of the column is shown through the pattern ("###,###,##0"); the cell's
    // text stays as written.
    void setDisplayFormat(int column, const QString& pattern);
    // A drop-down column holds the index of the chosen item as text and shows the item.
    void setDropDown(int column, const QStringList& items);
    const QStringList& dropDown(int column) const { return dropDowns_[column]; }

    void sortRows(const std::vector<SortKey>& keys);

    // While bulk changes run, views are told nothing; at the end they reload once.
    void beginBulk();
    void endBulk();

signals:
    // The user changed a cell through an editor.
    void cellEdited(int row, int column);

private:
    void notifyRow(int row);
    int compareRows(const std::vector<QString>& a, const std::vector<QString>& b,
                    const std::vector<SortKey>& keys) const;

    std::vector<std::vector<QString>> rows_;
    std::vector<QColor> colors_;
    QStringList headers_;
    std::vector<bool> editable_;
    std::vector<bool> numeric_;
    std::vector<Qt::Alignment> alignment_;
    std::vector<QStringList> dropDowns_;
    std::vector<QString> formats_;
    int columns_ = 0;
    int bulkDepth_ = 0;
};
