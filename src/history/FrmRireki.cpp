#include "history/FrmRireki.h"

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
#include "platform/db/SqlText.h"
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

qint64 ymdOf(const QDate& date) {
    return qint64(date.year()) * 10000 + date.month() * 100 + date.day();
}

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
                  ClearUriage();
                  txtKensakuDay->setDate(Today());
                  page_ = 1;
                  koushin_ = false;
                  if (!DispUriage(searchDay()))
                      CmnDspMsg(OpeErr_014);
              });
}

qint64 FrmRireki::searchDay() const {
    return ymdOf(txtKensakuDay->date());
}

void FrmRireki::ClearUriage() {
    lblKokNo->clear();
    lblName->clear();
    txtKingaKei->setValue(0);
    for (int i = 0; i < 3; ++i) {
        FraUriage[i]->clear();
        FraUriage[i]->setTitle(BlockTitles[i]);
    }
    for (int key : {F4, F5, F6, F7})
        cmdFnuc[key]->setEnabled(false);
}

bool FrmRireki::DispUriage(qint64 ymd) {
    WaitCursor wait;
    bool shown = false;
    try {
        RecordSet rows = gCon.execute(
            QStringLiteral(
                "select San3.*,San1.User_Name,San2.* from V_San_User as San3,San_User as "
                "San1,San_Uriage as San2 where San1.User_No = ") +
            SqlNum(kokNo_) +
            QStringLiteral(" and San1.User_No = San2.Uri_UserNo  and San2.Uri_UserNo = "
                           "San3.User_No and san2.Uri_date <= ") +
            SqlNum(ymd) + QStringLiteral(" order by San2.Uri_Date desc,san2.Uri_Seq "));
        const int first = 3 * page_ - 2;
        int block = 0;
        for (int count = 1; !rows.eof() && block < 3; ++count, rows.moveNext()) {
            if (count < first)
                continue;
            if (!shown) {
                lblKokNo->setText(rows.field(QStringLiteral("Uri_UserNo")).toString());
                lblName->setText(rows.field(QStringLiteral("User_Name")).toString());
                txtKingaKei->setValue(rows.field(1).toDouble());
                for (int key : {F4, F5, F6, F7})
                    cmdFnuc[key]->setEnabled(true);
                shown = true;
            }
            FraUriage[block++]->show(rows);
        }
    } catch (const Failure&) {
        // The history shows what could be read.
    }
    return shown;
}

bool FrmRireki::ChkEditData() const {
    return std::any_of(FraUriage.begin(), FraUriage.end(),
                       [](const UriageBlock* block) { return block->editing; });
}

bool FrmRireki::SaveUriage() {
    return Procedure(ScreenName, QStringLiteral("SaveUriage"), QStringLiteral("売上履歴保存処理"),
                     [&] {
                         gCon.beginTrans();
                         for (UriageBlock* block : FraUriage)
                             if (block->editing)
                                 gCon.execute(block->updateSql(lblKokNo->text().toLongLong()));
                         gCon.commitTrans();
                         for (UriageBlock* block : FraUriage)
                             block->editing = false;
                     });
}

void FrmRireki::showPage() {
    ClearUriage();
    if (!DispUriage(searchDay()))
        CmnDspMsg(OpeErr_014);
}

void FrmRireki::cmdKensaku_Click() {
    ClearUriage();
    page_ = 1;
    if (!DispUriage(searchDay()))
        CmnDspMsg(OpeErr_014);
}

void FrmRireki::cmdFnuc_Click(int index) {
    switch (index) {
    case F1:
        if (!ChkEditData() || CmnDspMsg(OpeQes_008) == Answer::Yes)
            done(QDialog::Accepted);
        break;
    case F4:
        if (CmnDspMsg(OpeQes_001) == Answer::Yes && SaveUriage()) {
            koushin_ = true;
            CmnDspMsg(OpeInf_001);
        }
        break;
    case F5:
    case F6:
    case F7: {
        UriageBlock* block = FraUriage[index - F5];
        if (!block->showsPurchase())
            break;
        block->editing = true;
        block->setEnabled(true);
        block->setTitle(BlockTitles[index - F5] + QStringLiteral("（修正中）"));
        block->txtFm_Name->setFocus();
        break;
    }
    case F11:
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
