#include "search/ListGrid.h"

#include "domain/PostalCode.h"
#include "domain/PrintMarks.h"
#include "platform/Format.h"
#include "platform/ui/MsgBox.h"

const QColor ListGrid::White(255, 255, 255);
const QColor ListGrid::Yellow(255, 255, 128);
const QColor ListGrid::Red(255, 128, 128);
const QColor ListGrid::Grey(192, 192, 192);
const QColor ListGrid::Blue(200, 228, 255);
const QStringList ListGrid::Headings{
    QStringLiteral("顧客№"),    QStringLiteral("印刷"),     QStringLiteral("氏 名"),
    QStringLiteral("かな名"),   QStringLiteral("郵便番号"), QStringLiteral("住所１"),
    QStringLiteral("住所２"),   QStringLiteral("T E L"),    QStringLiteral("家族"),
    QStringLiteral("売上累計"), QStringLiteral("最終来店")};
const QStringList ListGrid::FamilyNames{QStringLiteral("代表"), QStringLiteral("家族"),
                                        QStringLiteral("個人"), QStringLiteral("DM不要")};

namespace {

using Columns = std::vector<RowModel<ListRow>::Column>;
constexpr auto Right = Qt::AlignRight | Qt::AlignVCenter;

QColor colourOf(const ListRow& row) {
    switch (row.state) {
    case ListState::Changed:
        return ListGrid::Yellow;
    case ListState::ToDelete:
        return ListGrid::Red;
    case ListState::Unchanged:
        break;
    }
    switch (row.elsewhere) {
    case ElsewhereWork::Changed:
        return ListGrid::Blue;
    case ElsewhereWork::Deleted:
        return ListGrid::Grey;
    case ElsewhereWork::None:
        break;
    }
    return ListGrid::White;
}

QString tipOf(const ListRow& row) {
    switch (row.elsewhere) {
    case ElsewhereWork::Changed:
        return QStringLiteral(
            "他の端末が変更した顧客です。保存されている最新の内容を表示しています。");
    case ElsewhereWork::Deleted:
        return QStringLiteral("他の端末が削除した顧客です。訂正・削除・印刷はできません。");
    case ElsewhereWork::None:
        break;
    }
    return {};
}

// A text column the list corrects in place, typed within the register field's limit: any
// change makes the row one to update.
RowModel<ListRow>::Column editable(int column, QString ListedCustomer::*field, int maxLength) {
    RowModel<ListRow>::Column made{ListGrid::Headings[column - 1],
                                   [field](const ListRow& r) { return r.now.*field; },
                                   Qt::AlignLeft | Qt::AlignVCenter,
                                   {},
                                   [field](ListRow& r, const QString& text) {
                                       r.now.*field = text;
                                       r.state = ListState::Changed;
                                       r.changedBeforeDelete = false;
                                   }};
    made.maxLength = maxLength;
    return made;
}

// The postal code column takes what reads as a postal code, stored as the register stores it;
// anything else is refused with a box, the cell keeping what it had.
RowModel<ListRow>::Column postalCode() {
    RowModel<ListRow>::Column made = editable(ListGrid::Yubin, &ListedCustomer::yubin, 8);
    const auto store = made.edit;
    made.edit = [store](ListRow& r, const QString& text) {
        const std::optional<QString> code = PostalCodeOf(text);
        if (!code) {
            MsgBox(ListGrid::PostalCodeRefused, MsgIcon::Exclamation, MsgButtons::OK,
                   QStringLiteral("顧客一覧照会"));
            return;
        }
        if (*code != r.now.yubin)
            store(r, *code);
    };
    made.maxLength = 10;
    return made;
}

} // namespace

ListGrid::ListGrid(QWidget* parent) : GridView(parent) {
    setObjectName(QStringLiteral("spdData"));
    Columns columns{
        {Headings[No - 1], [](const ListRow& r) { return QString::number(r.now.no); }, Right},
        {Headings[Mark - 1],
         [](const ListRow& r) { return r.marked ? QStringLiteral("●") : QString(); },
         Qt::AlignCenter},
        editable(Name, &ListedCustomer::name, 30),
        editable(Kana, &ListedCustomer::kana, 40),
        postalCode(),
        editable(Jusyo1, &ListedCustomer::jusyo1, 50),
        editable(Jusyo2, &ListedCustomer::jusyo2, 50),
        editable(Tel, &ListedCustomer::tel, 20),
        {Headings[Kazok - 1], [](const ListRow& r) { return FamilyNames.value(r.now.kazok); },
         Qt::AlignLeft | Qt::AlignVCenter,
         [](const ListRow& r) { return QString::number(r.now.kazok); },
         [this](ListRow& r, const QString& index) {
             r.now.kazok = index.toInt();
             r.state = ListState::Changed;
             r.changedBeforeDelete = false;
             r.marked = MarkAfterFamilyChange(r.now.kazok, shownResult_);
         },
         FamilyNames},
        {Headings[Total - 1], [](const ListRow& r) { return FormatYen(r.now.total); }, Right},
        {Headings[LastVisit - 1], [](const ListRow& r) { return FormatYmd(r.now.lastVisit); },
         Right}};
    model_ = new RowModel<ListRow>(std::move(columns), this);
    model_->background = colourOf;
    model_->tip = tipOf;
    model_->locked = [](const ListRow& r) {
        return r.elsewhere == ElsewhereWork::Deleted;
    };
    model_->edited = [this](int, int column) {
        if (column + 1 == Kazok)
            emit marksChanged(markedCount());
    };
    setModel(model_);
    setColumnWidths({60, 40, 120, 130, 80, 190, 110, 116, 70, 92, 92});
}

void ListGrid::showRows(std::vector<ListRow> rows) {
    model_->setRows(std::move(rows));
    emit marksChanged(markedCount());
}

void ListGrid::replaceRow(int row, const ListRow& value) {
    model_->update(row - 1, [&](ListRow& r) { r = value; });
    emit marksChanged(markedCount());
}

void ListGrid::removeRow(int row) {
    model_->removeAt(row - 1);
    emit marksChanged(markedCount());
}

void ListGrid::toggleMarks(int top, int bottom) {
    top = std::max(top, 1);
    bottom = std::min(bottom, maxRows());
    model_->updateRange(top - 1, bottom - 1, [](ListRow& r) {
        r.marked = !r.marked && r.elsewhere != ElsewhereWork::Deleted;
    });
    emit marksChanged(markedCount());
}

int ListGrid::markedCount() const {
    return int(
        std::count_if(rows().begin(), rows().end(), [](const ListRow& r) { return r.marked; }));
}

bool ListGrid::hasUnsavedEdits() const {
    return std::any_of(rows().begin(), rows().end(), HasUnsavedEdit);
}

void ListGrid::toggleDeletion(int row) {
    model_->update(row - 1, ToggleRowDeletion);
}

void ListGrid::markSaved(int row) {
    model_->update(row - 1, [](ListRow& r) {
        r.read = r.now;
        r.state = ListState::Unchanged;
    });
}

void ListGrid::sortBy(Order order) {
    switch (order) {
    case Order::Kana:
        model_->sortRows(
            [](const ListRow& a, const ListRow& b) { return a.now.kana < b.now.kana; });
        break;
    case Order::Address:
        model_->sortRows(
            [](const ListRow& a, const ListRow& b) { return a.now.jusyo1 < b.now.jusyo1; });
        break;
    case Order::Sales:
        model_->sortRows([](const ListRow& a, const ListRow& b) {
            return a.now.total != b.now.total ? a.now.total > b.now.total : a.now.kana < b.now.kana;
        });
        break;
    case Order::LastVisit:
        model_->sortRows([](const ListRow& a, const ListRow& b) {
            return a.now.lastVisit != b.now.lastVisit ? a.now.lastVisit > b.now.lastVisit
                                                      : a.now.kana < b.now.kana;
        });
        break;
    }
}

QColor ListGrid::rowColor(int row) const {
    return colourOf(this->row(row));
}
