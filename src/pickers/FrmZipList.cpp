#include "pickers/FrmZipList.h"

#include "data/ZipSearch.h"
#include "frame/Procedure.h"
#include "pickers/AddressList.h"
#include "platform/controls/xField.h"
#include "platform/ui/MsgBox.h"
#include "platform/ui/WaitCursor.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>

namespace {

const QString ScreenName = QStringLiteral("FrmZipList");

xField* field(QWidget* parent, const QString& name, int maxLength, int width) {
    auto* input = new xField(parent, maxLength);
    input->setObjectName(name);
    input->setMinimumWidth(width);
    return input;
}

QPushButton* button(QWidget* parent, const QString& name, const QString& caption) {
    auto* pushButton = new QPushButton(caption, parent);
    pushButton->setObjectName(name);
    pushButton->setAutoDefault(false);
    pushButton->setMinimumWidth(96);
    return pushButton;
}

} // namespace

FrmZipList::FrmZipList(QWidget* parent) : Screen(parent) {
    setObjectName(QStringLiteral("FrmZipList"));
    setWindowTitle(QStringLiteral("郵便番号・住所検索"));

    txtZip1 = field(this, QStringLiteral("txtZip1"), 3, 48);
    txtZip2 = field(this, QStringLiteral("txtZip2"), 4, 60);
    txtTodo = field(this, QStringLiteral("txtTodo"), 10, 120);
    txtCity = field(this, QStringLiteral("txtCity"), 10, 160);
    txtTown = field(this, QStringLiteral("txtTown"), 10, 160);
    // The two parts of the code are looked up as numbers: only digits can be typed there.
    txtZip1->setNumericInput(QStringLiteral("000"), 0, 999);
    txtZip2->setNumericInput(QStringLiteral("0000"), 0, 9999);
    cmdKensak = button(this, QStringLiteral("cmdKensak"), QStringLiteral("検索実行"));
    cmdClear = button(this, QStringLiteral("cmdClear"), QStringLiteral("クリア"));
    cmdOK = button(this, QStringLiteral("cmdOK"), QStringLiteral("ＯＫ"));
    cmdCAN = button(this, QStringLiteral("cmdCAN"), QStringLiteral("ｷｬﾝｾﾙ"));
    cmdKensak->setDefault(true);

    spdZipList = new AddressList(this);
    spdZipList->setObjectName(QStringLiteral("spdZipList"));
    spdZipList->setMinimumSize(680, 320);

    auto* conditions = new QGridLayout;
    conditions->addWidget(new QLabel(QStringLiteral("郵便番号"), this), 0, 0);
    auto* zip = new QHBoxLayout;
    zip->addWidget(txtZip1);
    zip->addWidget(new QLabel(QStringLiteral("－"), this));
    zip->addWidget(txtZip2);
    zip->addStretch();
    conditions->addLayout(zip, 0, 1);
    conditions->addWidget(new QLabel(QStringLiteral("都道府県"), this), 0, 2);
    conditions->addWidget(txtTodo, 0, 3);
    conditions->addWidget(new QLabel(QStringLiteral("市町村郡"), this), 1, 0);
    conditions->addWidget(txtCity, 1, 1);
    conditions->addWidget(new QLabel(QStringLiteral("町"), this), 1, 2);
    conditions->addWidget(txtTown, 1, 3);
    auto* searchButtons = new QVBoxLayout;
    searchButtons->addWidget(cmdKensak);
    searchButtons->addWidget(cmdClear);
    auto* top = new QHBoxLayout;
    top->addLayout(conditions, 1);
    top->addLayout(searchButtons);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(cmdOK);
    bottom->addWidget(cmdCAN);
    auto* page = new QVBoxLayout(this);
    page->addLayout(top);
    page->addWidget(spdZipList, 1);
    page->addLayout(bottom);

    connect(cmdKensak, &QPushButton::clicked, this, &FrmZipList::cmdKensak_Click);
    connect(cmdClear, &QPushButton::clicked, this, &FrmZipList::cmdClear_Click);
    connect(cmdOK, &QPushButton::clicked, this, &FrmZipList::cmdOK_Click);
    connect(cmdCAN, &QPushButton::clicked, this, &FrmZipList::cmdCAN_Click);
    connect(spdZipList, &GridView::doubleClicked, this, [this](int row, int) {
        if (row >= 1)
            cmdOK_Click();
    });
    new QShortcut(QKeySequence(Qt::Key_Escape), this, this, &FrmZipList::cmdCAN_Click);
    txtZip1->setFocus();
}

void FrmZipList::cmdKensak_Click() {
    const ZipConditions typed{txtZip1->text(), txtZip2->text(), txtTodo->text(), txtCity->text(),
                              txtTown->text()};
    if (typed.isEmpty()) {
        MsgBox(QStringLiteral("検索条件は、必ず１つは入力して下さい。"), MsgIcon::None,
               MsgButtons::OK, QString());
        return;
    }
    WaitCursor wait;
    AddrRead();
}

void FrmZipList::AddrRead() {
    Procedure(ScreenName, QStringLiteral("AddrRead"), QStringLiteral("郵便・住所の取得処理"), [&] {
        spdZipList->clearRows();
        spdZipList->showAddresses(FindAddresses(
            {txtZip1->text(), txtZip2->text(), txtTodo->text(), txtCity->text(), txtTown->text()}));
    });
}

void FrmZipList::cmdOK_Click() {
    const int row = spdZipList->activeRow();
    if (row < 1)
        return; // nothing listed to choose; the user searches again or cancels
    const ZipAddress& chosen = spdZipList->address(row);
    zip_ = chosen.zip;
    addr_ = (todoFlg_ == 1 ? chosen.todo : QString()) + chosen.city + chosen.town;
    done(QDialog::Accepted);
}

void FrmZipList::cmdCAN_Click() {
    zip_.clear();
    addr_.clear();
    done(QDialog::Rejected);
}

void FrmZipList::cmdClear_Click() {
    spdZipList->clearRows();
    for (xField* input : {txtZip1, txtZip2, txtTodo, txtCity, txtTown})
        input->clear();
    txtZip1->setFocus();
}

void FrmZipList::closeEvent(QCloseEvent* event) {
    zip_.clear();
    addr_.clear();
    Screen::closeEvent(event);
}
