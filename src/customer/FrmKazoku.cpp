#include "customer/FrmKazoku.h"

#include "customer/CustomerList.h"
#include "data/CustomerStore.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/ui/WaitCursor.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace {
const QString ScreenName = QStringLiteral("顧客検索画面");
}

FrmKazoku::FrmKazoku(QWidget* parent) : Screen(parent) {
    setObjectName(QStringLiteral("FrmKazoku"));
    setWindowTitle(QStringLiteral("家族照会"));
    spdData = new CustomerList(this);
    spdData->setObjectName(QStringLiteral("spdData"));
    spdData->setMinimumSize(700, 300);
    cmdBtn[1] = new xCmdBtn(Qt::Key_F5, QStringLiteral("顧客詳細(F5)"), this);
    cmdBtn[2] = new xCmdBtn(Qt::Key_Escape, QStringLiteral("ｷｬﾝｾﾙ(ESC)"), this);
    for (int i = 1; i <= 2; ++i) {
        cmdBtn[i]->setKeyShown(false);
        cmdBtn[i]->setObjectName(QStringLiteral("cmdBtn(%1)").arg(i));
        cmdBtn[i]->setMinimumSize(130, 36);
        connect(cmdBtn[i], &xCmdBtn::triggered, this, [this, i] { cmdBtn_Click(i); });
    }
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdBtn[1]);
    buttons->addWidget(cmdBtn[2]);
    auto* page = new QVBoxLayout(this);
    page->addWidget(spdData, 1);
    page->addLayout(buttons);
    connect(spdData, &GridView::doubleClicked, this, [this](int row, int) {
        if (row >= 1 && row <= spdData->maxRows())
            choose(row);
    });
}

void FrmKazoku::showEvent(QShowEvent* event) {
    Screen::showEvent(event);
    if (loaded_)
        return;
    loaded_ = true;
    spdData->clearRows();
    cmdBtn[1]->setEnabled(false);
    WaitCursor wait;
    Disp_Kokyaku();
}

void FrmKazoku::Disp_Kokyaku() {
    Procedure(ScreenName, QStringLiteral("Disp_Kokyaku"), QStringLiteral("顧客データの取得処理"),
              [&] {
                  spdData->showCustomers(CustomerStore::WithTel(tel_));
                  if (spdData->maxRows() > 0)
                      cmdBtn[1]->setEnabled(true);
              });
}

void FrmKazoku::cmdBtn_Click(int index) {
    if (index == 2) {
        chosen_ = 0;
        done(QDialog::Rejected);
        return;
    }
    const int row = spdData->activeRow();
    if (row < 1) {
        CmnDspMsg(OpeErr_002);
        return;
    }
    choose(row);
}

void FrmKazoku::choose(int row) {
    chosen_ = spdData->customerNo(row);
    done(QDialog::Accepted);
}
