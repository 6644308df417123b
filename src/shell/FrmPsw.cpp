#include "shell/FrmPsw.h"

#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "platform/controls/xPass.h"
#include "platform/ui/ShowModal.h"
#include "shell/FrmMenu.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
const QString Password = QStringLiteral("tavinoru");
}

FrmPsw::FrmPsw(QWidget* parent) : Screen(parent) {
    setObjectName(QStringLiteral("FrmPsw"));
    setWindowTitle(QStringLiteral("承認画面"));

    Label1 = new QLabel(QStringLiteral("Mirvane"), this);
    Label1->setObjectName(QStringLiteral("Label1"));
    QFont productFont = Label1->font();
    productFont.setPointSize(productFont.pointSize() * 2);
    productFont.setBold(true);
    Label1->setFont(productFont);
    Label3 = new QLabel(QStringLiteral("Ver 3.0"), this);
    Label3->setObjectName(QStringLiteral("Label3"));
    Label4 = new QLabel(QStringLiteral("眼鏡店のための顧客・売上管理システム"), this);
    Label4->setObjectName(QStringLiteral("Label4"));
    Label2 = new QLabel(QStringLiteral("パスワード入力"), this);
    Label2->setObjectName(QStringLiteral("Label2"));
    txtPSW = new xPass(this);
    txtPSW->setObjectName(QStringLiteral("txtPSW"));
    txtPSW->setMinimumWidth(200);
    Label2->setBuddy(txtPSW);

    const QString captions[] = {QStringLiteral("Ｏ Ｋ"), QStringLiteral("終 了")};
    for (int i = 0; i < 2; ++i) {
        cmdBtn[i] = new QPushButton(captions[i], this);
        cmdBtn[i]->setObjectName(QStringLiteral("cmdBtn(%1)").arg(i));
        cmdBtn[i]->setMinimumWidth(100);
        connect(cmdBtn[i], &QPushButton::clicked, this, [this, i] { cmdBtn_Click(i); });
    }
    cmdBtn[0]->setDefault(true);

    auto* title = new QHBoxLayout;
    title->addWidget(Label1);
    title->addWidget(Label3, 0, Qt::AlignBottom);
    title->addStretch();
    auto* entry = new QHBoxLayout;
    entry->addWidget(Label2);
    entry->addWidget(txtPSW, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdBtn[0]);
    buttons->addWidget(cmdBtn[1]);
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(24, 20, 24, 20);
    page->setSpacing(14);
    page->addLayout(title);
    page->addWidget(Label4);
    page->addSpacing(8);
    page->addLayout(entry);
    page->addLayout(buttons);

    setTabOrder(txtPSW, cmdBtn[0]);
    setTabOrder(cmdBtn[0], cmdBtn[1]);
    txtPSW->setFocus();
}

void FrmPsw::cmdBtn_Click(int index) {
    if (index == 1) {
        // Nothing is open beyond the sign-on: closing it ends the program.
        done(QDialog::Rejected);
        return;
    }
    if (txtPSW->text().trimmed().isEmpty()) {
        CmnDspMsg(OpeErr_001);
        txtPSW->setFocus();
        return;
    }
    if (txtPSW->text() != Password) {
        CmnDspMsg(OpeErr_005);
        txtPSW->clear();
        txtPSW->setFocus();
        return;
    }
    FrmMenu menu(this);
    ShowModal(menu);
    done(QDialog::Accepted);
}
