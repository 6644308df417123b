#include "search/FrmIchiranSub.h"

#include "data/Lookups.h"
#include "data/PurchaseStore.h"
#include "frame/BasCmnSubFun.h"
#include "frame/Procedure.h"
#include "platform/Format.h"
#include "platform/controls/RowModel.h"
#include "platform/controls/xLabel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <memory>
#include <numeric>

namespace {

const QString ScreenName = QStringLiteral("指定顧客売上照会画面");

using Columns = std::vector<RowModel<Purchase>::Column>;

// The inquiry's columns; a master code is shown with its name, a maker only when there is one.
Columns inquiryColumns(const std::shared_ptr<MasterNames>& masters) {
    const auto maker = [masters](QString Purchase::*code) {
        return [masters, code](const Purchase& p) {
            return (p.*code).isEmpty() ? QString() : masters->withName(MasterKind::Meka, p.*code);
        };
    };
    constexpr auto right = Qt::AlignRight | Qt::AlignVCenter;
    return {
        {QStringLiteral("売上日"),
         [](const Purchase& p) {
             return PurchaseDateText(p); // as stored, also when it is no calendar date
         }},
        {QStringLiteral("ｱｲﾃﾑ"),
         [masters](const Purchase& p) {
             return masters->withName(MasterKind::Item, p.itemNo);
         }},
        {QStringLiteral("用途"),
         [masters](const Purchase& p) {
             return masters->withName(MasterKind::Youto, p.youtoNo);
         }},
        {QStringLiteral("ﾌﾚｰﾑﾒｰｶｰ"), maker(&Purchase::fmMekaNo)},
        {QStringLiteral("ﾌﾚｰﾑ名"),
         [](const Purchase& p) {
             return p.fmName;
         }},
        {QStringLiteral("ﾌﾚｰﾑ金額"), [](const Purchase& p) { return FormatYen(p.fmKinga); }, right},
        {QStringLiteral("ﾚﾝｽﾞﾒｰｶｰ"), maker(&Purchase::lzMekaNo)},
        {QStringLiteral("ﾚﾝｽﾞ名"),
         [](const Purchase& p) {
             return p.lzName;
         }},
        {QStringLiteral("ﾚﾝｽﾞ金額"), [](const Purchase& p) { return FormatYen(p.lzKinga); }, right},
        {QStringLiteral("売上合計額"), [](const Purchase& p) { return FormatYen(p.total); },
         right}};
}

} // namespace

FrmIchiranSub::FrmIchiranSub(QWidget* parent) : Screen(parent) {
    setObjectName(QStringLiteral("FrmIchiranSub"));
    setWindowTitle(QStringLiteral("指定顧客売上履歴照会"));
    spdData = new GridView(this);
    spdData->setObjectName(QStringLiteral("spdData"));
    masters_ = std::make_shared<MasterNames>();
    rows_ = new RowModel<Purchase>(inquiryColumns(masters_), this);
    spdData->setModel(rows_);
    const QList<int> widths{92, 130, 130, 120, 120, 86, 120, 120, 86, 96};
    spdData->setColumnWidths(widths);
    // Every column in view without scrolling sideways, the grid's row numbers and scroll bar
    // beside them; the screen stays within 1280 pixels.
    spdData->setMinimumSize(std::accumulate(widths.begin(), widths.end(), 0) + 70, 360);
    lblKaisu = new xLabel(this);
    lblKaisu->setObjectName(QStringLiteral("lblKaisu"));
    lblKinga = new xLabel(this);
    lblKinga->setObjectName(QStringLiteral("lblKinga"));
    for (xLabel* total : {lblKaisu, lblKinga}) {
        total->setMinimumWidth(110);
        total->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    cmdEnd = new QPushButton(QStringLiteral("閉じる"), this);
    cmdEnd->setObjectName(QStringLiteral("cmdEnd"));
    cmdEnd->setAutoDefault(false);
    cmdEnd->setMinimumSize(110, 36);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(new QLabel(QStringLiteral("来店回数"), this));
    bottom->addWidget(lblKaisu);
    bottom->addSpacing(16);
    bottom->addWidget(new QLabel(QStringLiteral("売上累計額"), this));
    bottom->addWidget(lblKinga);
    bottom->addStretch();
    bottom->addWidget(cmdEnd);
    auto* page = new QVBoxLayout(this);
    page->addWidget(spdData, 1);
    page->addLayout(bottom);
    connect(cmdEnd, &QPushButton::clicked, this, [this] { done(QDialog::Accepted); });
    new QShortcut(QKeySequence(Qt::Key_Escape), this, this, [this] { done(QDialog::Accepted); });
}

void FrmIchiranSub::showEvent(QShowEvent* event) {
    Screen::showEvent(event);
    if (!loaded_) {
        loaded_ = true;
        Form_Load();
    }
}

void FrmIchiranSub::Form_Load() {
    Procedure(ScreenName, QStringLiteral("Form_Load"),
              QStringLiteral("指定顧客売上照会画面ロード処理"), [&] {
                  rows_->clear();
                  lblKaisu->setText(QStringLiteral("0"));
                  lblKinga->setText(QStringLiteral("0"));
                  SerchUriage(user_);
              });
}

bool FrmIchiranSub::CalUriageGaku(qint64 customerNo) {
    bool inRange = false;
    Procedure(ScreenName, QStringLiteral("CalUriageGaku"), QStringLiteral("顧客売上額集計検索処理"),
              [&] {
                  inRange = AmountInRange(
                      conditions_, PurchaseStore::SalesForAmountCheck(conditions_, customerNo));
              });
    return inRange;
}

void FrmIchiranSub::SerchUriage(qint64 customerNo) {
    Procedure(ScreenName, QStringLiteral("SerchUriage"), QStringLiteral("顧客売上側検索処理"), [&] {
        std::vector<Purchase> purchases = PurchaseStore::ForInquiry(conditions_, customerNo);
        masters_->load(); // the names are read here, never while the rows are painted
        // The amount check depends on the customer alone: every purchase is listed, or none.
        if (conditions_.on[SearchConditions::Amount] && !CalUriageGaku(customerNo))
            purchases.clear();
        int visits = 0;
        qint64 lastDate = -1;
        qint64 sum = 0;
        for (const Purchase& p : purchases) {
            if (p.storedYmd != lastDate) {
                ++visits;
                lastDate = p.storedYmd;
            }
            sum += p.total;
        }
        rows_->setRows(std::move(purchases));
        lblKaisu->setText(FormatNumber(visits, QStringLiteral("###,###,##0")));
        lblKinga->setText(QStringLiteral("\\") + FormatYen(sum));
    });
}
