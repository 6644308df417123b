#include "shell/FrmMenu.h"

#include "analysis/FrmBunseki.h"
#include "data/OrderStore.h"
#include "frame/Procedure.h"
#include "masters/FrmMaster.h"
#include "masters/FrmTenpo.h"
#include "orders/FrmNikkei.h"
#include "orders/FrmOwatasi.h"
#include "platform/ui/Clock.h"
#include "platform/ui/ShowModal.h"
#include "search/FrmIchiran.h"
#include "search/FrmKensaku.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QPushButton* menuButton(const QString& caption, const QString& name, QWidget* parent) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setMinimumSize(260, 44);
    return button;
}

} // namespace

FrmMenu::FrmMenu(QWidget* parent) : Screen(parent) {
    setObjectName(QStringLiteral("FrmMenu"));
    setWindowTitle(QStringLiteral("Mirvane Ver 3.0"));

    const QString menuCaptions[] = {QStringLiteral("顧客登録／売上登録"),
                                    QStringLiteral("顧客一覧照会"), QStringLiteral("システム終了")};
    for (int i = 0; i < 3; ++i) {
        cmdMenu[i] = menuButton(menuCaptions[i], QStringLiteral("cmdMenu(%1)").arg(i), this);
        connect(cmdMenu[i], &QPushButton::clicked, this, [this, i] { cmdMenu_Click(i); });
    }
    cmdOwatasi = menuButton(QStringLiteral("お渡し管理"), QStringLiteral("cmdOwatasi"), this);
    connect(cmdOwatasi, &QPushButton::clicked, this, [this] {
        FrmOwatasi board(this);
        ShowModal(board);
        showOrderCounts();
    });
    // The day's closing sits beside the board: both are the orders' day-to-day.
    cmdNikkei = menuButton(QStringLiteral("日計表"), QStringLiteral("cmdNikkei"), this);
    cmdNikkei->setMinimumWidth(120);
    connect(cmdNikkei, &QPushButton::clicked, this, [this] {
        FrmNikkei closing(this);
        ShowModal(closing);
    });
    cmdBunseki = menuButton(QStringLiteral("売上分析"), QStringLiteral("cmdBunseki"), this);
    connect(cmdBunseki, &QPushButton::clicked, this, [this] {
        FrmBunseki analysis(this);
        ShowModal(analysis);
    });
    Frame1 = new QGroupBox(QStringLiteral("< マスタ保守 >"), this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    const QString mstCaptions[] = {QStringLiteral("アイテム"), QStringLiteral("用途"),
                                   QStringLiteral("メーカー")};
    auto* masters = new QVBoxLayout(Frame1);
    for (int i = 0; i < 3; ++i) {
        cmdMst[i] = menuButton(mstCaptions[i], QStringLiteral("cmdMst(%1)").arg(i), Frame1);
        connect(cmdMst[i], &QPushButton::clicked, this, [this, i] { cmdMst_Click(i); });
        masters->addWidget(cmdMst[i]);
    }
    // The shop's own name, address and telephone, printed on its slips.
    cmdTenpo = menuButton(QStringLiteral("店舗設定"), QStringLiteral("cmdTenpo"), Frame1);
    connect(cmdTenpo, &QPushButton::clicked, this, [this] {
        FrmTenpo shop(this);
        ShowModal(shop);
    });
    masters->addWidget(cmdTenpo);

    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(32, 24, 32, 24);
    page->setSpacing(12);
    page->addWidget(cmdMenu[0]);
    page->addWidget(cmdMenu[1]);
    auto* orders = new QHBoxLayout;
    orders->setSpacing(12);
    orders->addWidget(cmdOwatasi, 1);
    orders->addWidget(cmdNikkei);
    page->addLayout(orders);
    page->addWidget(cmdBunseki);
    page->addWidget(Frame1);
    page->addSpacing(8);
    page->addWidget(cmdMenu[2]);

    setTabOrder(cmdMenu[0], cmdMenu[1]);
    setTabOrder(cmdMenu[1], cmdOwatasi);
    setTabOrder(cmdOwatasi, cmdNikkei);
    setTabOrder(cmdNikkei, cmdBunseki);
    setTabOrder(cmdBunseki, cmdMst[0]);
    setTabOrder(cmdMst[0], cmdMst[1]);
    setTabOrder(cmdMst[1], cmdMst[2]);
    setTabOrder(cmdMst[2], cmdTenpo);
    setTabOrder(cmdTenpo, cmdMenu[2]);
}

void FrmMenu::showEvent(QShowEvent* event) {
    showOrderCounts();
    Screen::showEvent(event);
}

void FrmMenu::showOrderCounts() {
    OrderStore::BoardCounts counts;
    Procedure(QStringLiteral("メインメニュー"), QStringLiteral("DispOrderCounts"),
              QStringLiteral("受注件数の取得処理"),
              [&] { counts = OrderStore::CountOpenOrders(Today()); }, {.trace = false});
    cmdOwatasi->setText(QStringLiteral("お渡し管理（遅れ %1件・連絡待ち %2件）")
                            .arg(counts.late)
                            .arg(counts.ready));
}

void FrmMenu::cmdMenu_Click(int index) {
    switch (index) {
    case 0: {
        FrmKensaku search(this);
        ShowModal(search);
        showOrderCounts();
        break;
    }
    case 1: {
        FrmIchiran list(this);
        ShowModal(list);
        showOrderCounts();
        break;
    }
    case 2:
        done(QDialog::Accepted);
        break;
    default:
        break;
    }
}

void FrmMenu::cmdMst_Click(int index) {
    switch (index) {
    case 0: {
        FrmMstItem items(this);
        ShowModal(items);
        break;
    }
    case 1: {
        FrmMstYouto purposes(this);
        ShowModal(purposes);
        break;
    }
    default: {
        FrmMstMeka makers(this);
        ShowModal(makers);
        break;
    }
    }
}
