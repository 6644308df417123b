#include "search/FrmKensaku.h"

#include "customer/CustomerList.h"
#include "customer/FrmKokyaku.h"
#include "data/CustomerStore.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xField.h"
#include "platform/controls/xKana.h"
#include "platform/ui/WaitCursor.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>

namespace {

const QString ScreenName = QStringLiteral("顧客検索画面");

xCmdBtn* keyButton(Qt::Key key, const QString& caption, const QString& name, QWidget* parent) {
    auto* button = new xCmdBtn(key, caption, parent);
    button->setKeyShown(false);
    button->setObjectName(name);
    button->setMinimumSize(140, 36);
    return button;
}

} // namespace

FrmKensaku::FrmKensaku(QWidget* parent) : Screen(parent) {
    setObjectName(QStringLiteral("FrmKensaku"));
    setWindowTitle(QStringLiteral("顧客検索"));
    txtKana = new xKana(this);
    txtKana->setObjectName(QStringLiteral("txtKana"));
    txtTel = new xField(this, 20);
    txtTel->setObjectName(QStringLiteral("txtTel"));
    cmdKensak =
        keyButton(Qt::Key_F12, QStringLiteral("検索実行(F12)"), QStringLiteral("cmdKensak"), this);
    cmdBtn[0] =
        keyButton(Qt::Key_F1, QStringLiteral("新規顧客(F1)"), QStringLiteral("cmdBtn(0)"), this);
    cmdBtn[1] =
        keyButton(Qt::Key_F5, QStringLiteral("既存顧客(F5)"), QStringLiteral("cmdBtn(1)"), this);
    cmdBtn[2] =
        keyButton(Qt::Key_Escape, QStringLiteral("ｷｬﾝｾﾙ(ESC)"), QStringLiteral("cmdBtn(2)"), this);
    spdData = new CustomerList(this);
    spdData->setMinimumSize(820, 360);

    auto* guide =
        new QLabel(QStringLiteral("・ 既に、顧客情報が登録されているか確認します。"), this);
    auto* fields = new QGridLayout;
    fields->addWidget(new QLabel(QStringLiteral("氏名（かな名）"), this), 0, 0);
    fields->addWidget(txtKana, 0, 1);
    fields->addWidget(new QLabel(QStringLiteral("ＴＥＬ"), this), 1, 0);
    fields->addWidget(txtTel, 1, 1);
    fields->addWidget(cmdKensak, 0, 2, 2, 1);
    fields->setColumnStretch(1, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdBtn[0]);
    buttons->addWidget(cmdBtn[1]);
    buttons->addStretch();
    buttons->addWidget(cmdBtn[2]);
    auto* page = new QVBoxLayout(this);
    page->addWidget(guide);
    page->addLayout(fields);
    page->addWidget(spdData, 1);
    page->addLayout(buttons);
    setEnterMovesFocus(true);
    setTabOrder(txtKana, txtTel);

    connect(cmdKensak, &xCmdBtn::triggered, this, &FrmKensaku::cmdKensak_Click);
    for (int i = 0; i < 3; ++i)
        connect(cmdBtn[i], &xCmdBtn::triggered, this, [this, i] { cmdBtn_Click(i); });
    connect(spdData, &GridView::doubleClicked, this, [this](int row, int) {
        if (row < 1 || row > spdData->maxRows())
            return;
        spdData->setActiveCell(row, 1);
        openRegister(spdData->customerNo(row));
    });
    cmdBtn[1]->setEnabled(false);
    txtKana->setFocus();
}

void FrmKensaku::cmdKensak_Click() {
    if (txtTel->text().isEmpty() && txtKana->text().isEmpty()) {
        CmnDspMsg(OpeErr_001);
        txtTel->setFocus();
        return;
    }
    Disp_Kokyaku();
}

void FrmKensaku::Disp_Kokyaku() {
    int found = 0;
    const bool searched = Procedure(
        ScreenName, QStringLiteral("Disp_Kokyaku"), QStringLiteral("顧客データの取得処理"), [&] {
            // The busy pointer only while searching: it is gone before the register opens.
            WaitCursor wait;
            spdData->showCustomers(CustomerStore::QuickSearch(txtKana->text(), txtTel->text()));
            found = spdData->maxRows();
        });
    if (!searched)
        return;
    if (found == 0) {
        openRegister(0);
        cmdBtn[1]->setEnabled(false);
        txtTel->setFocus();
    } else if (found == 1) {
        spdData->setActiveCell(1, 1);
        openRegister(spdData->customerNo(1));
    } else {
        spdData->view()->setFocus();
        cmdBtn[1]->setEnabled(true);
    }
}

void FrmKensaku::cmdBtn_Click(int index) {
    switch (index) {
    case 0:
        openRegister(0);
        reset();
        break;
    case 1: {
        const int row = spdData->activeRow();
        if (row < 1) {
            CmnDspMsg(OpeErr_002);
            return;
        }
        spdData->setActiveCell(row, 1);
        openRegister(spdData->customerNo(row));
        reset();
        break;
    }
    default:
        done(QDialog::Rejected);
        break;
    }
}

void FrmKensaku::openRegister(qint64 customerNo) {
    FrmKokyaku::Open(this, customerNo, customerNo == 0 ? txtTel->text().trimmed() : QString());
}

void FrmKensaku::reset() {
    spdData->clearRows();
    txtKana->clear();
    txtTel->clear();
    txtTel->setFocus();
}
