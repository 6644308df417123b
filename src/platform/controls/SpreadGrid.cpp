#include "platform/controls/SpreadGrid.h"

namespace {

QStringList splitRow(const QString& tabSeparated) {
    QString text = tabSeparated;
    if (text.endsWith(QLatin1Char('\r')))
        text.chop(1);
    return text.split(QLatin1Char('\t'));
}

} // namespace

SpreadGrid::SpreadGrid(QWidget* parent) : GridView(parent) {
    model_ = new SpreadModel(this);
    setModel(model_);
    connect(model_, &SpreadModel::cellEdited, this,
            [this](int row, int column) { emit cellChanged(row + 1, column + 1); });
}

int SpreadGrid::maxRows() const {
    return model_->rowCount();
}

void SpreadGrid::setMaxRows(int rows) {
    model_->setRows(std::max(0, rows));
}

int SpreadGrid::maxCols() const {
    return model_->columnCount();
}

void SpreadGrid::setMaxCols(int columns) {
    model_->setColumns(columns);
}

void SpreadGrid::setHeaders(const QStringList& headers) {
    model_->setHeaders(headers);
}

void SpreadGrid::setColumnEditable(int column, bool editable) {
    model_->setEditable(column - 1, editable);
}

void SpreadGrid::setColumnNumeric(int column, bool numeric) {
    model_->setNumeric(column - 1, numeric);
    model_->setAlignment(column - 1, (numeric ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

void SpreadGrid::setColumnDisplayFormat(int column, const QString& pattern) {
    model_->setDisplayFormat(column - 1, pattern);
}

void SpreadGrid::setColumnDropDown(int column, const QStringList& items) {
    model_->setDropDown(column - 1, items);
}

QString SpreadGrid::text(int row, int column) const {
    return model_->cell(row - 1, column - 1);
}

QString SpreadGrid::displayText(int row, int column) const {
    if (row < 1 || row > maxRows() || column < 1 || column > maxCols())
        return {};
    return model_->index(row - 1, column - 1).data(Qt::DisplayRole).toString();
}

void SpreadGrid::setText(int row, int column, const QString& text) {
    model_->setCell(row - 1, column - 1, text);
}

void SpreadGrid::setRowText(int row, const QString& tabSeparated) {
    model_->setRow(row - 1, splitRow(tabSeparated));
}

int SpreadGrid::addRow(const QString& tabSeparated) {
    return addRow(splitRow(tabSeparated));
}

int SpreadGrid::addRow(const QStringList& cells) {
    const int row = maxRows() + 1;
    setMaxRows(row);
    model_->setRow(row - 1, cells);
    return row;
}

void SpreadGrid::deleteRow(int row) {
    model_->removeRow(row - 1);
}

QColor SpreadGrid::rowColor(int row) const {
    return row >= 1 && row <= maxRows() ? model_->rowColor(row - 1) : QColor();
}

void SpreadGrid::setRowColor(int row, const QColor& color) {
    model_->setRowColor(row - 1, color);
}

void SpreadGrid::sort(const std::vector<SortKey>& keys) {
    model_->sortRows(keys);
}

void SpreadGrid::setRedraw(bool redraw) {
    if (redraw == redraw_)
        return;
    redraw_ = redraw;
    if (redraw)
        model_->endBulk();
    else
        model_->beginBulk();
}
