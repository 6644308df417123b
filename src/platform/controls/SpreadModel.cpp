#include "platform/controls/SpreadModel.h"

#include "platform/Format.h"
#include "platform/controls/GridView.h"

#include <algorithm>
#include <numeric>

namespace {

double sortNumber(const QString& text, bool* isNumber) {
    QString plain = text.trimmed();
    plain.remove(QLatin1Char(','));
    plain.remove(QLatin1Char('/'));
    plain.remove(QChar(0xA5)); // yen sign
    plain.remove(QLatin1Char('\\'));
    return plain.toDouble(isNumber);
}

const QString EmptyCell;

} // namespace

int SpreadModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(rows_.size());
}

int SpreadModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns_;
}

QVariant SpreadModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const int row = index.row();
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole: {
        const QString& text = rows_[row][column];
        if (!formats_[column].isEmpty()) {
            bool isNumber = false;
            const double number = QString(text).remove(QLatin1Char(',')).toDouble(&isNumber);
            return isNumber ? FormatNumber(number, formats_[column]) : text;
        }
        const QStringList& items = dropDowns_[column];
        if (items.isEmpty())
            return text;
        bool isIndex = false;
        const int item = text.toInt(&isIndex);
        return isIndex && item >= 0 && item < items.size() ? items[item] : text;
    }
    case Qt::EditRole:
        return rows_[row][column];
    case GridView::DropDownRole:
        return dropDowns_[column];
    case Qt::BackgroundRole:
        return colors_[row].isValid() ? QVariant(colors_[row]) : QVariant();
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(alignment_[column]);
    default:
        return {};
    }
}

bool SpreadModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole)
        return false;
    const QString text = value.toString();
    if (rows_[index.row()][index.column()] == text)
        return true;
    rows_[index.row()][index.column()] = text;
    emit dataChanged(index, index);
    emit cellEdited(index.row(), index.column());
    return true;
}

QVariant SpreadModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical)
        return section + 1;
    return section < headers_.size() ? headers_[section] : QString();
}

Qt::ItemFlags SpreadModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (editable_[index.column()])
        flags |= Qt::ItemIsEditable;
    return flags;
}

void SpreadModel::setColumns(int count) {
    beginResetModel();
    columns_ = count;
    for (auto& row : rows_)
        row.resize(count);
    editable_.resize(count, false);
    numeric_.resize(count, false);
    alignment_.resize(count, Qt::AlignLeft | Qt::AlignVCenter);
    dropDowns_.resize(count);
    formats_.resize(count);
    endResetModel();
}

void SpreadModel::setHeaders(const QStringList& headers) {
    headers_ = headers;
    if (int(headers.size()) > columns_)
        setColumns(int(headers.size()));
    else if (bulkDepth_ == 0 && columns_ > 0)
        emit headerDataChanged(Qt::Horizontal, 0, columns_ - 1);
}

void SpreadModel::setRows(int count) {
    const int current = int(rows_.size());
    if (count == current)
        return;
    const bool notify = bulkDepth_ == 0;
    if (count > current) {
        if (notify)
            beginInsertRows({}, current, count - 1);
        rows_.resize(count, std::vector<QString>(columns_));
        colors_.resize(count);
        if (notify)
            endInsertRows();
        return;
    }
    if (notify)
        beginRemoveRows({}, count, current - 1);
    rows_.resize(count);
    colors_.resize(count);
    if (notify)
        endRemoveRows();
}

const QString& SpreadModel::cell(int row, int column) const {
    if (row < 0 || row >= int(rows_.size()) || column < 0 || column >= columns_)
        return EmptyCell;
    return rows_[row][column];
}

void SpreadModel::setCell(int row, int column, const QString& text) {
    if (row < 0 || row >= int(rows_.size()) || column < 0 || column >= columns_)
        return;
    rows_[row][column] = text;
    if (bulkDepth_ == 0)
        emit dataChanged(index(row, column), index(row, column));
}

void SpreadModel::setRow(int row, const QStringList& cells) {
    if (row < 0 || row >= int(rows_.size()))
        return;
    const int count = std::min(int(cells.size()), columns_);
    for (int column = 0; column < count; ++column)
        rows_[row][column] = cells[column];
    notifyRow(row);
}

void SpreadModel::removeRow(int row) {
    if (row < 0 || row >= int(rows_.size()))
        return;
    const bool notify = bulkDepth_ == 0;
    if (notify)
        beginRemoveRows({}, row, row);
    rows_.erase(rows_.begin() + row);
    colors_.erase(colors_.begin() + row);
    if (notify)
        endRemoveRows();
}

void SpreadModel::setRowColor(int row, const QColor& color) {
    if (row < 0 || row >= int(rows_.size()))
        return;
    colors_[row] = color;
    notifyRow(row);
}

void SpreadModel::setEditable(int column, bool editable) {
    editable_[column] = editable;
}

void SpreadModel::setNumeric(int column, bool numeric) {
    numeric_[column] = numeric;
}

void SpreadModel::setAlignment(int column, Qt::Alignment alignment) {
    alignment_[column] = alignment;
}

void SpreadModel::setDisplayFormat(int column, const QString& pattern) {
    formats_[column] = pattern;
}

void SpreadModel::setDropDown(int column, const QStringList& items) {
    dropDowns_[column] = items;
}

int SpreadModel::compareRows(const std::vector<QString>& a, const std::vector<QString>& b,
                             const std::vector<SortKey>& keys) const {
    for (const SortKey& key : keys) {
        const int column = key.column - 1;
        if (column < 0 || column >= columns_)
            continue;
        int order = 0;
        if (numeric_[column]) {
            bool aNumber = false;
            bool bNumber = false;
            const double x = sortNumber(a[column], &aNumber);
            const double y = sortNumber(b[column], &bNumber);
            // An empty or unreadable cell comes before every number.
            order = aNumber != bNumber ? (aNumber ? 1 : -1) : (x < y ? -1 : x > y ? 1 : 0);
        } else {
            order = QString::compare(a[column], b[column]);
            order = order < 0 ? -1 : order > 0 ? 1 : 0;
        }
        if (order != 0)
            return key.order == Qt::AscendingOrder ? order : -order;
    }
    return 0;
}

void SpreadModel::sortRows(const std::vector<SortKey>& keys) {
    std::vector<int> order(rows_.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](int x, int y) { return compareRows(rows_[x], rows_[y], keys) < 0; });
    if (bulkDepth_ == 0)
        emit layoutAboutToBeChanged();
    std::vector<std::vector<QString>> sortedRows;
    std::vector<QColor> sortedColors;
    sortedRows.reserve(rows_.size());
    sortedColors.reserve(rows_.size());
    for (int from : order) {
        sortedRows.push_back(std::move(rows_[from]));
        sortedColors.push_back(colors_[from]);
    }
    rows_ = std::move(sortedRows);
    colors_ = std::move(sortedColors);
    if (bulkDepth_ == 0)
        emit layoutChanged();
}

void SpreadModel::beginBulk() {
    if (bulkDepth_++ == 0)
        beginResetModel();
}

void SpreadModel::endBulk() {
    if (bulkDepth_ > 0 && --bulkDepth_ == 0)
        endResetModel();
}

void SpreadModel::notifyRow(int row) {
    if (bulkDepth_ == 0 && columns_ > 0)
        emit dataChanged(index(row, 0), index(row, columns_ - 1));
}
