#include "platform/controls/SpreadGrid.h"

#include <QComboBox>
#include <QEvent>
#include <QHeaderView>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>

namespace {

// Edits the cells of a drop-down column with a combo box of the column's items.
class DropDownDelegate : public QStyledItemDelegate {
public:
    DropDownDelegate(SpreadModel* model, QObject* parent)
        : QStyledItemDelegate(parent), model_(model) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        const QStringList& items = model_->dropDown(index.column());
        if (items.isEmpty())
            return QStyledItemDelegate::createEditor(parent, option, index);
        auto* combo = new QComboBox(parent);
        combo->addItems(items);
        return combo;
    }

    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        if (auto* combo = qobject_cast<QComboBox*>(editor)) {
            combo->setCurrentIndex(index.data(Qt::EditRole).toString().toInt());
            return;
        }
        QStyledItemDelegate::setEditorData(editor, index);
    }

    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override {
        if (auto* combo = qobject_cast<QComboBox*>(editor)) {
            model->setData(index, QString::number(combo->currentIndex()), Qt::EditRole);
            return;
        }
        QStyledItemDelegate::setModelData(editor, model, index);
    }

private:
    SpreadModel* model_;
};

QStringList splitRow(const QString& tabSeparated) {
    QString text = tabSeparated;
    if (text.endsWith(QLatin1Char('\r')))
        text.chop(1);
    return text.split(QLatin1Char('\t'));
}

} // namespace

SpreadGrid::SpreadGrid(QWidget* parent) : QWidget(parent) {
    model_ = new SpreadModel(this);
    view_ = new QTableView(this);
    view_->setObjectName(QStringLiteral("view"));
    view_->setModel(model_);
    view_->setItemDelegate(new DropDownDelegate(model_, view_));
    view_->setSelectionBehavior(QAbstractItemView::SelectItems);
    view_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                           QAbstractItemView::AnyKeyPressed);
    view_->setAlternatingRowColors(false);
    view_->setWordWrap(false);
    view_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view_->verticalHeader()->setDefaultSectionSize(24);
    view_->horizontalHeader()->setHighlightSections(false);
    view_->horizontalHeader()->setStretchLastSection(false);
    view_->viewport()->installEventFilter(this);
    view_->verticalHeader()->viewport()->installEventFilter(this);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_);

    connect(view_, &QTableView::clicked, this, [this](const QModelIndex& index) {
        emit clicked(index.row() + 1, index.column() + 1);
    });
    connect(view_, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        emit doubleClicked(index.row() + 1, index.column() + 1);
    });
    connect(view_->horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int column) { emit clicked(0, column + 1); });
    connect(view_->verticalHeader(), &QHeaderView::sectionClicked, this,
            [this](int row) { emit clicked(row + 1, 0); });
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

void SpreadGrid::setColumnWidths(const QList<int>& widths) {
    for (int i = 0; i < widths.size(); ++i)
        view_->setColumnWidth(i, widths[i]);
}

void SpreadGrid::setLastColumnStretch(bool stretch) {
    view_->horizontalHeader()->setStretchLastSection(stretch);
}

void SpreadGrid::setColumnHidden(int column, bool hidden) {
    view_->setColumnHidden(column - 1, hidden);
}

bool SpreadGrid::isColumnHidden(int column) const {
    return view_->isColumnHidden(column - 1);
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

int SpreadGrid::activeRow() const {
    const QModelIndex current = view_->currentIndex();
    if (current.isValid())
        return current.row() + 1;
    return maxRows() > 0 ? 1 : 0;
}

int SpreadGrid::activeCol() const {
    const QModelIndex current = view_->currentIndex();
    if (current.isValid())
        return current.column() + 1;
    return maxRows() > 0 ? 1 : 0;
}

void SpreadGrid::setActiveCell(int row, int column) {
    const QModelIndex index = model_->index(row - 1, std::max(0, column - 1));
    if (index.isValid())
        view_->setCurrentIndex(index);
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

bool SpreadGrid::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease &&
        (watched == view_->viewport() || watched == view_->verticalHeader()->viewport()))
        reportBlock();
    return QWidget::eventFilter(watched, event);
}

void SpreadGrid::reportBlock() {
    const QItemSelection selection = view_->selectionModel()->selection();
    if (selection.isEmpty())
        return;
    int top = INT_MAX, left = INT_MAX, bottom = -1, right = -1;
    for (const QItemSelectionRange& range : selection) {
        top = std::min(top, range.top());
        left = std::min(left, range.left());
        bottom = std::max(bottom, range.bottom());
        right = std::max(right, range.right());
    }
    if (top == bottom && left == right)
        return;
    emit blockSelected(top + 1, left + 1, bottom + 1, right + 1);
}
