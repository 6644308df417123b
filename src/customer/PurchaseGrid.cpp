#include "customer/PurchaseGrid.h"

#include "platform/Failure.h"
#include "platform/Format.h"

namespace {

using Line = PurchaseLine;
using Columns = std::vector<RowModel<Line>::Column>;
constexpr auto Right = Qt::AlignRight | Qt::AlignVCenter;

QColor colourOf(const Line& line) {
    switch (line.state) {
    case LineState::New:
        return NewLineColor;
    case LineState::Changed:
        return ChangedLineColor;
    case LineState::Deleted:
        return DeletedLineColor;
    case LineState::Stored:
        break;
    }
    return line.unmarked ? ChangedLineColor : QColor();
}

} // namespace

PurchaseGrid::PurchaseGrid(QWidget* parent) : GridView(parent) {
    const auto text = [](QString Purchase::*field) {
        return [field](const Line& l) {
            return l.purchase.*field;
        };
    };
    const auto amount = [](qint64 Purchase::*field) {
        return [field](const Line& l) {
            return FormatYen(l.purchase.*field);
        };
    };
    const auto master = [this](MasterKind kind, QString Purchase::*code) {
        return [this, kind, code](const Line& l) {
            return masterName(kind, l.purchase.*code);
        };
    };
    Columns columns{{QStringLiteral("更新"),
                     [](const Line& l) {
                         return LineStatusText(l.state);
                     }},
                    {QStringLiteral("売上日"),
                     [](const Line& l) {
                         return PurchaseDateText(l.purchase);
                     }},
                    {QStringLiteral("売上合計"), amount(&Purchase::total), Right},
                    {QStringLiteral("受注状態"), &LineOrderText},
                    {QStringLiteral("残金"),
                     [](const Line& l) {
                         const qint64 outstanding = LineOutstanding(l);
                         return outstanding == 0 ? QString() : FormatYen(outstanding);
                     },
                     Right},
                    {QStringLiteral("ｱｲﾃﾑ"), master(MasterKind::Item, &Purchase::itemNo)},
                    {QStringLiteral("用途"), master(MasterKind::Youto, &Purchase::youtoNo)},
                    {QStringLiteral("ﾌﾚｰﾑ名"), text(&Purchase::fmName)},
                    {QStringLiteral("ﾒｰｶｰ"), master(MasterKind::Meka, &Purchase::fmMekaNo)},
                    {QStringLiteral("金 額"), amount(&Purchase::fmKinga), Right},
                    {QStringLiteral("ｻｲｽﾞ"), text(&Purchase::fmSize)},
                    {QStringLiteral("ｶﾗｰ"), text(&Purchase::fmColor)},
                    {QStringLiteral("ﾚﾝｽﾞ名"), text(&Purchase::lzName)},
                    {QStringLiteral("ﾒｰｶｰ"), master(MasterKind::Meka, &Purchase::lzMekaNo)},
                    {QStringLiteral("金 額"), amount(&Purchase::lzKinga), Right},
                    {QStringLiteral("眼処方"), text(&Purchase::syohou)},
                    {QStringLiteral("ﾒﾓ"), text(&Purchase::memo)}};
    for (int eye = 0; eye < 2; ++eye)
        for (int i = 0; i < int(PrescriptionColumns.size()); ++i)
            columns.push_back({QString::fromUtf8(PrescriptionColumns[i].heading) +
                                   (eye == 0 ? QStringLiteral("(R)") : QStringLiteral("(L)")),
                               [eye, i](const Line& l) {
                                   return PrescriptionText(l.purchase.eyes[eye], i);
                               }});
    model_ = new RowModel<Line>(std::move(columns), this);
    model_->background = colourOf;
    setModel(model_);
    const auto changed = [this] {
        emit linesChanged();
    };
    connect(model_, &QAbstractItemModel::modelReset, this, changed);
    connect(model_, &QAbstractItemModel::layoutChanged, this, changed);
    connect(model_, &QAbstractItemModel::rowsInserted, this, changed);
    connect(model_, &QAbstractItemModel::rowsRemoved, this, changed);
    connect(model_, &QAbstractItemModel::dataChanged, this, changed);
    setRowSelection();
    QList<int> widths{44, 96, 80, 72, 72, 96, 100, 110, 84, 72, 50, 60, 110, 84, 72, 110, 120};
    for (int i = 0; i < 26; ++i)
        widths << 62;
    setColumnWidths(widths);
}

QString PurchaseGrid::masterName(MasterKind kind, const QString& code) const {
    if (code.isEmpty())
        return {};
    // A code whose master row is gone shows as the code with an empty name. The names were
    // read with the purchases; painting never stops on the database.
    std::optional<QString> name;
    try {
        name = names_.find(kind, code);
    } catch (const Failure&) {
    }
    return name ? *name : code + QLatin1Char(':');
}

void PurchaseGrid::showPurchases(const std::vector<Purchase>& purchases,
                                 const std::map<int, OrderStore::OrderState>& orders) {
    if (!purchases.empty())
        names_.load();
    std::vector<Line> lines;
    lines.reserve(purchases.size());
    for (const Purchase& purchase : purchases) {
        Line line{++lastId_, purchase, purchase};
        if (const auto state = orders.find(purchase.seq); state != orders.end()) {
            line.order = state->second.order;
            line.payments = state->second.payments;
        }
        lines.push_back(std::move(line));
    }
    model_->setRows(std::move(lines));
}

void PurchaseGrid::setOrder(int id, const std::optional<Order>& order,
                            const std::vector<Payment>& payments) {
    if (const int row = rowOf(id))
        model_->update(row - 1, [&](Line& l) {
            l.order = order;
            l.payments = payments;
        });
}

void PurchaseGrid::keepNewLine(const PurchaseLine& line) {
    Line kept = line;
    kept.id = ++lastId_;
    kept.state = LineState::New;
    model_->append(std::move(kept));
    sortLines();
}

qint64 PurchaseGrid::outstanding() const {
    qint64 sum = 0;
    for (const Line& line : lines())
        if (line.state != LineState::Deleted)
            sum += LineOutstanding(line);
    return sum;
}

int PurchaseGrid::rowOf(int id) const {
    for (int row = 0; row < model_->size(); ++row)
        if (model_->at(row).id == id)
            return row + 1;
    return 0;
}

bool PurchaseGrid::hasMarkedLines() const {
    return std::any_of(lines().begin(), lines().end(),
                       [](const Line& l) { return l.state != LineState::Stored; });
}

bool PurchaseGrid::writeEntry(int id, const Purchase& purchase) {
    const int row = id == 0 ? 0 : rowOf(id);
    if (row == 0) {
        model_->append({++lastId_, purchase, {}, LineState::New});
    } else {
        const std::optional<LineState> state = StateAfterEntry(line(row).state);
        if (!state)
            return false;
        model_->update(row - 1, [&](Line& l) {
            const int seq = l.purchase.seq;
            l.purchase = purchase;
            l.purchase.seq = seq;
            l.state = *state;
        });
    }
    sortLines();
    model_->updateAll([](Line& l) { l.unmarked = false; });
    return true;
}

void PurchaseGrid::sortLines() {
    model_->sortRows([](const Line& a, const Line& b) {
        if (a.purchase.date != b.purchase.date)
            return a.purchase.date > b.purchase.date;
        return a.purchase.itemNo < b.purchase.itemNo;
    });
}

void PurchaseGrid::keepUnstoredLines() {
    std::vector<Line> kept;
    for (const Line& line : lines())
        if (line.state == LineState::New || line.state == LineState::Changed) {
            Line typed{line.id, line.purchase, {}, LineState::New};
            typed.purchase.seq = 0;
            // A stored purchase's order went with its customer; a new line's waits with it.
            if (line.state == LineState::New) {
                typed.order = line.order;
                typed.payments = line.payments;
            }
            kept.push_back(typed);
        }
    model_->setRows(std::move(kept));
}

void PurchaseGrid::toggleDeletion(int row) {
    if (row < 1 || row > lineCount())
        return;
    bool kept = true;
    model_->update(row - 1, [&](Line& l) { kept = ToggleLineDeletion(l); });
    if (!kept)
        model_->removeAt(row - 1);
}

QColor PurchaseGrid::rowColor(int row) const {
    return colourOf(line(row));
}
