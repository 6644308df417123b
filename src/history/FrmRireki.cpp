#include "history/FrmRireki.h"

#include "data/PurchaseStore.h"
#include "domain/Ymd.h"
#include "frame/Conflicts.h"
#include "frame/DateFields.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "history/UriageBlock.h"
#include "platform/controls/FunctionKeyRow.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xLabel.h"
#include "platform/controls/xNum.h"
#include "platform/db/Transaction.h"
#include "platform/ui/Clock.h"
#include "platform/ui/MsgBox.h"
#include "platform/ui/WaitCursor.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

const QString ScreenName = QStringLiteral("顧客売上履歴画面");
const QString BlockTitles[] = {QStringLiteral("上段"), QStringLiteral("中段"),
                               QStringLiteral("下段")};
enum Key { F1 = 0, F4 = 3, F5 = 4, F6 = 5, F7 = 6, F11 = 10, F12 = 11 };

} // namespace

FrmRireki::FrmRireki(QWidget* parent) : Screen(parent) {
    setObjectName(QStringLiteral("FrmRireki"));
    setWindowTitle(QStringLiteral("顧客履歴照会"));
    setEnterMovesFocus(true);
    lblKokNo = new xLabel(this);
    lblKokNo->setObjectName(QStringLiteral("lblKokNo"));
    lblKokNo->setMinimumWidth(90);
    lblName = new xLabel(this);
    lblName->setObjectName(QStringLiteral("lblName"));
    lblName->setMinimumWidth(240);
    txtKingaKei = new xNum(this);
    txtKingaKei->setObjectName(QStringLiteral("txtKingaKei"));
    txtKingaKei->setReadOnly(true);
    txtKensakuDay = new xDate(this);
    txtKensakuDay->setObjectName(QStringLiteral("txtKensakuDay"));
    CmnRefuseUnreadableDateOnLeave(txtKensakuDay);
    cmdKensaku = new QPushButton(QStringLiteral("以前の照会"), this);
    cmdKensaku->setObjectName(QStringLiteral("cmdKensaku"));
    cmdKensaku->setAutoDefault(false);

    auto* header = new QHBoxLayout;
    header->addWidget(new QLabel(QStringLiteral("顧客番号"), this));
    header->addWidget(lblKokNo);
    header->addWidget(lblName);
    header->addSpacing(16);
    header->addWidget(new QLabel(QStringLiteral("売上累計"), this));
    header->addWidget(txtKingaKei);
    header->addStretch();
    header->addWidget(txtKensakuDay);
    header->addWidget(cmdKensaku);

    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(10, 8, 10, 8);
    page->setSpacing(4);
    page->addLayout(header);
    for (int i = 0; i < 3; ++i) {
        FraUriage[i] = new UriageBlock(i, this);
        page->addWidget(FraUriage[i]);
    }
    keys_ = new FunctionKeyRow(this);
    keys_->setCaptions({QStringLiteral("閉じる"), QString(), QString(), QStringLiteral("登録"),
                        QStringLiteral("上段修正"), QStringLiteral("中段修正"),
                        QStringLiteral("下段修正"), QString(), QString(), QString(),
                        QStringLiteral("前頁▲"), QStringLiteral("次頁▼")});
    cmdFnuc = keys_->buttons();
    page->addWidget(keys_);

    connect(keys_, &FunctionKeyRow::pressed, this, &FrmRireki::cmdFnuc_Click);
    connect(cmdKensaku, &QPushButton::clicked, this, &FrmRireki::cmdKensaku_Click);
    resize(1260, 780);
}

void FrmRireki::showEvent(QShowEvent* event) {
    Screen::showEvent(event);
    if (!loaded_) {
        loaded_ = true;
        Form_Load();
    }
}

void FrmRireki::Form_Load() {
    Procedure(ScreenName, QStringLiteral("Form_Load"), QStringLiteral("顧客一覧画面ロード処理"),
              [&] {
                  txtKensakuDay->setDate(Today());
                  page_ = 1;
                  koushin_ = false;
                  showPage();
              });
}

qint64 FrmRireki::searchDay() const {
    return YmdOf(txtKensakuDay->date());
}

void FrmRireki::ClearUriage() {
    lblKokNo->clear();
    lblName->clear();
    shownNo_ = 0;
    txtKingaKei->setValue(0);
    for (int i = 0; i < 3; ++i) {
        FraUriage[i]->clear(masters_);
        FraUriage[i]->setTitle(BlockTitles[i]);
    }
    for (int key : {F4, F5, F6, F7})
        cmdFnuc[key]->setEnabled(false);
}

bool FrmRireki::DispUriage(qint64 ymd) {
    WaitCursor wait;
    PurchaseStore::HistoryPage page;
    // A page that cannot be read is a failure, told and logged; only a real end of the
    // purchases is "no more data".
    readFailed_ = !Procedure(
        ScreenName, QStringLiteral("DispUriage"), QStringLiteral("売上履歴の表示処理"),
        [&] { page = PurchaseStore::ReadHistoryPage(kokNo_, ymd, page_); }, {.trace = false});
    if (readFailed_ || !page.shown)
        return false;
    shownNo_ = page.customerNo;
    lblKokNo->setText(QString::number(page.customerNo));
    lblName->setText(page.name);
    txtKingaKei->setValue(double(page.total));
    for (int key : {F4, F5, F6, F7})
        cmdFnuc[key]->setEnabled(true);
    for (std::size_t block = 0; block < page.purchases.size(); ++block)
        FraUriage[block]->show(page.purchases[block],
                               page.previous[block] ? &*page.previous[block] : nullptr);
    return true;
}

bool FrmRireki::ChkEditData() const {
    return std::any_of(FraUriage.begin(), FraUriage.end(),
                       [](const UriageBlock* block) { return block->editing; });
}

bool FrmRireki::SaveUriage() {
    int saving = 0;
    const auto conflict = [&](const Failure& failure) {
        if (!IsConflict(failure))
            return false;
        if (CmnAskReadAgain(failure.description())) {
            showPage();
            // The block of a purchase another terminal changed says so; a deleted one has left
            // the page, as the box said.
            for (int i = 0; i < 3; ++i)
                if (FraUriage[i]->seq() == saving)
                    FraUriage[i]->setTitle(BlockTitles[i] +
                                           QStringLiteral("（他の端末で変更されました）"));
        }
        return true;
    };
    return Procedure(ScreenName, QStringLiteral("SaveUriage"), QStringLiteral("売上履歴保存処理"),
                     [&] {
                         Transaction transaction(gCon);
                         for (UriageBlock* block : FraUriage)
                             if (block->editing) {
                                 saving = block->seq();
                                 PurchaseStore::SaveFromHistory(shownNo_, block->shown(),
                                                                block->edited());
                             }
                         transaction.commit();
                         for (UriageBlock* block : FraUriage)
                             block->editing = false;
                     },
                     {.ownMessage = conflict});
}

void FrmRireki::showPage() {
    ClearUriage();
    if (!DispUriage(searchDay()) && !readFailed_)
        CmnDspMsg(OpeErr_014);
}

bool FrmRireki::correctedDatesRead() {
    for (UriageBlock* block : FraUriage) {
        if (block->editing && !block->dateReads())
            return false;
    }
    return true;
}

void FrmRireki::cmdKensaku_Click() {
    if (CmnRefuseUnreadableDate(txtKensakuDay))
        return;
    page_ = 1;
    showPage();
}

void FrmRireki::cmdFnuc_Click(int index) {
    switch (index) {
    case F1:
        if (!ChkEditData() || CmnDspMsg(OpeQes_008) == Answer::Yes)
            done(QDialog::Accepted);
        break;
    case F4:
        if (correctedDatesRead() && CmnDspMsg(OpeQes_001) == Answer::Yes && SaveUriage()) {
            koushin_ = true;
            CmnDspMsg(OpeInf_001);
            // The page shows what is stored now, every block read-only until corrected again.
            showPage();
        }
        break;
    case F5:
    case F6:
    case F7: {
        UriageBlock* block = FraUriage[index - F5];
        if (!block->showsPurchase())
            break;
        block->startCorrection(BlockTitles[index - F5] + QStringLiteral("（修正中）"));
        break;
    }
    case F11:
        if (CmnRefuseUnreadableDate(txtKensakuDay))
            break;
        if (ChkEditData() && CmnDspMsg(OpeQes_008) != Answer::Yes)
            break;
        if (page_ < 2) {
            CmnDspMsg(OpeErr_014);
            break;
        }
        --page_;
        showPage();
        break;
    case F12:
        if (CmnRefuseUnreadableDate(txtKensakuDay))
            break;
        if (ChkEditData() && CmnDspMsg(OpeQes_008) != Answer::Yes)
            break;
        ++page_;
        showPage();
        break;
    default:
        break;
    }
}

void FrmRireki::closeEvent(QCloseEvent* event) {
    // The close box is the close key: corrections in progress are asked about first.
    event->ignore();
    cmdFnuc_Click(F1);
}
