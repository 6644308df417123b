#include "orders/FrmOwatasi.h"

#include "customer/FrmKokyaku.h"
#include "data/PurchaseStore.h"
#include "frame/Conflicts.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "orders/FrmJyuchu.h"
#include "platform/Format.h"
#include "platform/controls/FunctionKeyRow.h"
#include "platform/controls/GridView.h"
#include "platform/controls/RowModel.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/ui/Clock.h"
#include "platform/ui/MsgBox.h"
#include "platform/ui/Named.h"
#include "platform/ui/ShowModal.h"
#include "platform/ui/WaitCursor.h"
#include "print/PrintRun.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>

using OrderStore::BoardLine;

namespace {

const QString ScreenName = QStringLiteral("お渡し管理");
enum Key { F1 = 0, F5 = 4, F6 = 5, F7 = 6, F9 = 8, F12 = 11 };
// The statuses an open order can be at, as the drop-down lists them.
constexpr OrderStatus OpenStatuses[] = {OrderStatus::Taken,   OrderStatus::Remake,
                                        OrderStatus::Ordered, OrderStatus::Arrived,
                                        OrderStatus::Fitted,  OrderStatus::Called};
// A late line's colour; the ★ mark says the same without colour.
const QColor LateColour(255, 204, 204);
constexpr auto Right = Qt::AlignRight | Qt::AlignVCenter;

bool sameOrder(const BoardLine& a, const BoardLine& b) {
    return a.customerNo == b.customerNo && a.seq == b.seq;
}

} // namespace

FrmOwatasi::FrmOwatasi(QWidget* parent) : Screen(parent) {
    setObjectName(QStringLiteral("FrmOwatasi"));
    setWindowTitle(ScreenName);
    const QString captions[] = {QStringLiteral("すべて(&A)"),
                                QStringLiteral("連絡待ち：入荷・加工済(&R)"),
                                QStringLiteral("遅れ(&L)"), QStringLiteral("状態(&S)：")};
    auto* filters = new QHBoxLayout;
    auto* group = new QButtonGroup(this);
    for (int i = 0; i < 4; ++i) {
        optFilter[i] = Named(new QRadioButton(captions[i], this), QStringLiteral("optFilter"), i);
        group->addButton(optFilter[i], i);
        filters->addWidget(optFilter[i]);
    }
    optFilter[0]->setChecked(true);
    cboStatus = Named(new QComboBox(this), QStringLiteral("cboStatus"));
    for (OrderStatus status : OpenStatuses)
        cboStatus->addItem(OrderStatusText(status), int(status));
    filters->addWidget(cboStatus);
    filters->addStretch(1);
    lblCount = Named(new QLabel(this), QStringLiteral("lblCount"));
    filters->addWidget(lblCount);

    spdData = Named(new GridView(this), QStringLiteral("spdData"));
    lines_ = new RowModel<BoardLine>(
        {{QStringLiteral("予定日"),
          [](const BoardLine& l) {
              return DueText(l.order.due);
          }},
         {QStringLiteral("遅れ"),
          [this](const BoardLine& l) { return LateMark(DaysLate(l.order, today_)); }, Right},
         {QStringLiteral("顧客名"),
          [](const BoardLine& l) {
              return l.name;
          }},
         {QStringLiteral("TEL"),
          [](const BoardLine& l) {
              return l.tel;
          }},
         {QStringLiteral("アイテム"),
          [this](const BoardLine& l) {
              return names_.name(MasterKind::Item, l.itemNo);
          }},
         {QStringLiteral("フレーム"),
          [](const BoardLine& l) {
              return l.fmName;
          }},
         {QStringLiteral("レンズ"),
          [](const BoardLine& l) {
              return l.lzName;
          }},
         {QStringLiteral("状態"),
          [](const BoardLine& l) {
              return OrderStatusText(l.order.status);
          }},
         {QStringLiteral("残金"), [](const BoardLine& l) { return FormatYen(l.outstanding); },
          Right}},
        this);
    lines_->background = [this](const BoardLine& l) {
        return DaysLate(l.order, today_) > 0 ? LateColour : QColor();
    };
    spdData->setModel(lines_);
    spdData->setRowSelection();
    spdData->setColumnWidths({92, 64, 150, 120, 90, 180, 180, 80, 92});
    spdData->setMinimumSize(1000, 420);

    keys_ = new FunctionKeyRow(this);
    keys_->setCaptions({QStringLiteral("閉じる"), QString(), QString(), QString(),
                        QStringLiteral("次の状態へ"), QStringLiteral("受注・入金"),
                        QStringLiteral("顧客"), QString(), QStringLiteral("連絡リスト印刷"),
                        QString(), QString(), QStringLiteral("再表示")});
    cmdFnuc = keys_->buttons();

    auto* page = new QVBoxLayout(this);
    page->addLayout(filters);
    page->addWidget(spdData, 1);
    page->addWidget(keys_);
    resize(1100, 640);
    setTabOrder(optFilter[3], cboStatus);
    setTabOrder(cboStatus, spdData->view());

    connect(keys_, &FunctionKeyRow::pressed, this, &FrmOwatasi::cmdFnuc_Click);
    connect(group, &QButtonGroup::idToggled, this, [this](int, bool checked) {
        if (checked)
            showLines();
    });
    // Choosing a status is asking for the lines at it.
    connect(cboStatus, &QComboBox::currentIndexChanged, this, [this] {
        if (optFilter[3]->isChecked())
            showLines();
        else
            optFilter[3]->setChecked(true);
    });
}

void FrmOwatasi::showEvent(QShowEvent* event) {
    Screen::showEvent(event);
    if (!loaded_) {
        loaded_ = true;
        DispBoard();
        spdData->view()->setFocus();
    }
}

BoardView FrmOwatasi::view() const {
    for (int i = 0; i < 3; ++i)
        if (optFilter[i]->isChecked())
            return {BoardFilter(i)};
    return {BoardFilter::Status, OrderStatus(cboStatus->currentData().toInt())};
}

void FrmOwatasi::DispBoard() {
    Procedure(ScreenName, QStringLiteral("DispBoard"), QStringLiteral("受注一覧の表示"), [&] {
        WaitCursor wait;
        today_ = Today();
        names_ = MasterNames();
        all_ = OrderStore::OpenOrders();
        showLines();
    });
}

void FrmOwatasi::showLines() {
    const BoardLine* current = currentLine();
    const std::optional<BoardLine> kept = current ? std::optional(*current) : std::nullopt;
    const int currentRow = spdData->activeRow();
    const BoardView shown = view();
    std::vector<BoardLine> lines;
    for (const BoardLine& line : all_)
        if (Shows(line, shown, today_))
            lines.push_back(line);
    int row = std::clamp(currentRow, 1, std::max(int(lines.size()), 1));
    for (int i = 0; kept && i < int(lines.size()); ++i)
        if (sameOrder(lines[i], *kept))
            row = i + 1;
    lines_->setRows(std::move(lines));
    if (!lines_->rows().empty())
        spdData->setActiveCell(row, 1);
    const BoardTally tally = TallyBoard(all_, lines_->size(), today_);
    lblCount->setText(QStringLiteral("件数 %1件%2　　遅れ %3件　　連絡待ち %4件")
                          .arg(tally.shown)
                          .arg(tally.shown == tally.all
                                   ? QString()
                                   : QStringLiteral("（全 %1件）").arg(tally.all))
                          .arg(tally.late)
                          .arg(tally.ready));
}

const BoardLine* FrmOwatasi::currentLine() const {
    const int row = spdData->activeRow();
    return row > 0 && row <= lines_->size() ? &lines_->at(row - 1) : nullptr;
}

void FrmOwatasi::cmdFnuc_Click(int index) {
    FunctionKeyProcedure(ScreenName, [&] {
        switch (index) {
        case F1:
            done(QDialog::Accepted);
            break;
        case F5:
            nextStatus();
            break;
        case F6:
            openOrder();
            break;
        case F7:
            openCustomer();
            break;
        case F9:
            printCallList();
            break;
        case F12:
            DispBoard();
            break;
        default:
            break;
        }
    });
}

// The question names the customer, the goods and the status the order goes to. Enter says
// はい for the steps of the work; the hand-over takes the order off the board and cannot be
// taken back here, so Enter says いいえ for it, and a balance still owed is said.
void FrmOwatasi::nextStatus() {
    const BoardLine* current = currentLine();
    if (!current || !NextStatus(current->order.status))
        return;
    const BoardLine line = *current;
    const OrderStatus next = *NextStatus(line.order.status);
    const bool handOver = next == OrderStatus::HandedOver;
    QString question =
        QStringLiteral("%1 様の %2 を「%3」にします。")
            .arg(line.name.trimmed(), GoodsText(line, names_), OrderStatusText(next));
    if (handOver && line.outstanding > 0)
        question +=
            QChar(13) + QStringLiteral("残金 %1円 が未入金です。").arg(FormatYen(line.outstanding));
    question += QChar(13) + QStringLiteral("よろしいですか？");
    if (MsgBox(question, MsgIcon::Question, MsgButtons::YesNo, ScreenName,
               handOver ? MsgDefault::Second : MsgDefault::First) != Answer::Yes)
        return;
    const bool saved =
        Procedure(ScreenName, QStringLiteral("SetStatus"), QStringLiteral("受注状態の更新処理"),
                  [&] {
                      WaitCursor wait;
                      OrderStore::SetStatus(line.customerNo, line.seq, line.order, next, Now());
                  },
                  {.titlePrefix = VbErrorTitleWide, .ownMessage = [this](const Failure& failure) {
                       if (!IsConflict(failure))
                           return false;
                       if (CmnAskReadAgain(failure.description()))
                           DispBoard();
                       return true;
                   }});
    if (saved)
        DispBoard();
}

void FrmOwatasi::openOrder() {
    const BoardLine* current = currentLine();
    if (!current)
        return;
    const qint64 customerNo = current->customerNo;
    const int seq = current->seq;
    const QString name = current->name;
    std::optional<Purchase> purchase;
    for (const Purchase& p : PurchaseStore::OfCustomer(customerNo))
        if (p.seq == seq)
            purchase = p;
    if (purchase) {
        FrmJyuchu order(customerNo, name, *purchase, this);
        ShowModal(order);
    }
    DispBoard();
}

void FrmOwatasi::openCustomer() {
    const BoardLine* current = currentLine();
    if (!current)
        return;
    FrmKokyaku::Open(this, current->customerNo);
    DispBoard();
}

void FrmOwatasi::printCallList() {
    if (lines_->size() == 0) {
        MsgBox(QStringLiteral("印刷する受注がありません。"), MsgIcon::Information, MsgButtons::OK,
               ScreenName);
        return;
    }
    WaitCursor wait;
    RunPrint(
        this,
        {ScreenName, QStringLiteral("PrintCallList"), A4ListSettings, QStringLiteral("連絡リスト")},
        [&](ReportJob& job) { PrintCallList(job, lines_->rows(), names_, today_); });
}
