#include "platform/controls/GridView.h"

#include "platform/controls/xInput.h"

#include <QComboBox>
#include <QEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>

namespace {

QStringList dropDownOf(const QModelIndex& index) {
    return index.data(GridView::DropDownRole).toStringList();
}

// Edits the cells that offer a drop-down list with a combo box of its items.
class DropDownDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        const QStringList items = dropDownOf(index);
        if (items.isEmpty()) {
            const int limit = index.data(GridView::MaxLengthRole).toInt();
            if (limit <= 0)
                return QStyledItemDelegate::createEditor(parent, option, index);
            auto* field = new xInput(parent);
            field->setFrame(false);
            field->setMaxLength(limit);
            return field;
        }
        auto* combo = new QComboBox(parent);
        combo->addItems(items);
        return combo;
    }

    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        if (auto* combo = qobject_cast<QComboBox*>(editor)) {
            combo->setCurrentIndex(index.data(Qt::EditRole).toString().toInt());
            return;
        }
        if (auto* field = qobject_cast<xInput*>(editor)) {
            field->setText(index.data(Qt::EditRole).toString()); // whole, however long
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
        if (auto* field = qobject_cast<xInput*>(editor)) {
            model->setData(index, field->text(), Qt::EditRole);
            return;
        }
        QStyledItemDelegate::setModelData(editor, model, index);
    }
};

} // namespace

GridView::GridView(QWidget* parent) : QWidget(parent) {
    view_ = new QTableView(this);
    view_->setObjectName(QStringLiteral("view"));
    view_->setItemDelegate(new DropDownDelegate(view_));
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
    view_->installEventFilter(this);
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
}

void GridView::setModel(QAbstractItemModel* model) {
    view_->setModel(model);
    followCurrent();
}

void GridView::followCurrent() {
    connect(view_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (!focusArriving_)
                    emit currentRowChanged(current.isValid() ? current.row() + 1 : 0);
            });
}

QAbstractItemModel* GridView::gridModel() const {
    return view_->model();
}

int GridView::rowCount() const {
    return view_->model() ? view_->model()->rowCount() : 0;
}

void GridView::setColumnWidths(const QList<int>& widths) {
    for (int i = 0; i < widths.size(); ++i)
        view_->setColumnWidth(i, widths[i]);
}

void GridView::setLastColumnStretch(bool stretch) {
    view_->horizontalHeader()->setStretchLastSection(stretch);
}

void GridView::setColumnHidden(int column, bool hidden) {
    view_->setColumnHidden(column - 1, hidden);
}

bool GridView::isColumnHidden(int column) const {
    return view_->isColumnHidden(column - 1);
}

void GridView::setRowSelection() {
    view_->setSelectionBehavior(QAbstractItemView::SelectRows);
    view_->setSelectionMode(QAbstractItemView::SingleSelection);
}

int GridView::activeRow() const {
    const QModelIndex current = view_->currentIndex();
    if (current.isValid())
        return current.row() + 1;
    return rowCount() > 0 ? 1 : 0;
}

int GridView::activeCol() const {
    const QModelIndex current = view_->currentIndex();
    if (current.isValid())
        return current.column() + 1;
    return rowCount() > 0 ? 1 : 0;
}

void GridView::setActiveCell(int row, int column) {
    if (!view_->model())
        return;
    const QModelIndex index = view_->model()->index(row - 1, std::max(0, column - 1));
    if (index.isValid())
        view_->setCurrentIndex(index);
}

void GridView::clearActiveCell() {
    if (!view_->selectionModel())
        return;
    view_->selectionModel()->clearCurrentIndex();
    view_->clearSelection();
}

QString GridView::cellText(int row, int column) const {
    if (!view_->model())
        return {};
    return view_->model()->index(row - 1, column - 1).data(Qt::DisplayRole).toString();
}

QPoint GridView::placeAt(QObject* area, const QPoint& position) const {
    if (area == view_->viewport()) {
        const QModelIndex index = view_->indexAt(position);
        return {index.row(), index.column()};
    }
    return {view_->verticalHeader()->logicalIndexAt(position), -1};
}

bool GridView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == view_ && event->type() == QEvent::FocusIn) {
        // Focus arriving by Tab makes the first row current (the view's own rule): that is no
        // row chosen, and it is not told as one.
        const QScopedValueRollback arriving(focusArriving_, true);
        static_cast<QObject*>(view_)->event(event);
        return true;
    }
    if (watched != view_->viewport() && watched != view_->verticalHeader()->viewport())
        return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::LeftButton)
            gesture_ = {true, placeAt(watched, mouse->position().toPoint()),
                        mouse->modifiers().testFlag(Qt::ShiftModifier)};
        break;
    }
    case QEvent::MouseMove: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (gesture_.active && mouse->buttons().testFlag(Qt::LeftButton) &&
            placeAt(watched, mouse->position().toPoint()) != gesture_.pressedAt)
            gesture_.block = true;
        break;
    }
    case QEvent::MouseButtonRelease:
        // The view has not handled the release yet: a drag or a Shift-click has made its
        // selection by now, while a plain click inside a block still shows the old block.
        if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
            if (gesture_.active && gesture_.block)
                reportBlock();
            gesture_ = {};
        }
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void GridView::reportBlock() {
    if (!view_->selectionModel())
        return;
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
