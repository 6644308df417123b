// The register's controls and their places on the screen.
#include "customer/FrmKokyaku.h"
#include "customer/PurchaseGrid.h"
#include "customer/UriageEntry.h"
#include "domain/Age.h"
#include "platform/controls/FocusOrder.h"
#include "platform/controls/FunctionKeyRow.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xKana.h"
#include "platform/controls/xLabel.h"
#include "platform/controls/xZip.h"
#include "platform/ui/Caption.h"
#include "platform/ui/Named.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>

namespace {

template <size_t N>
QHBoxLayout* optionGroup(std::array<QRadioButton*, N>& buttons, QButtonGroup*& group,
                         const QString& name, const std::array<QString, N>& captions,
                         QWidget* parent) {
    group = new QButtonGroup(parent);
    auto* row = new QHBoxLayout;
    for (size_t i = 0; i < N; ++i) {
        buttons[i] = Named(new QRadioButton(captions[i], parent), name, i);
        group->addButton(buttons[i], int(i));
        row->addWidget(buttons[i]);
    }
    TabToCheckedOption(group);
    row->addStretch();
    return row;
}

} // namespace

void FrmKokyaku::buildForm() {
    lblNo = Named(new xLabel(this), QStringLiteral("lblNo"));
    lblNo->setMinimumWidth(100);
    txtDate = Named(new xDate(this), QStringLiteral("txtDate"));
    txtName = Named(new xField(this, 30), QStringLiteral("txtName"));
    txtKana = Named(new xKana(this), QStringLiteral("txtKana"));
    txtKana->setMaxLength(40);
    txtYubin = Named(new xZip(this), QStringLiteral("txtYubin"));
    txtYubin->setMaximumWidth(100);
    cmdJusyo = Named(new QPushButton(QStringLiteral("▼"), this), QStringLiteral("cmdJusyo"));
    cmdJusyo->setAutoDefault(false);
    cmdJusyo->setFixedWidth(32);
    txtJusyo1 = Named(new xField(this, 50), QStringLiteral("txtJusyo1"));
    txtJusyo2 = Named(new xField(this, 50), QStringLiteral("txtJusyo2"));
    txtTel = Named(new xField(this, 20), QStringLiteral("txtTel"));
    txtKinmu = Named(new xField(this, 30), QStringLiteral("txtKinmu"));
    txtKinmuTel = Named(new xField(this, 20), QStringLiteral("txtKinmuTel"));
    txtSyokai = Named(new xField(this, 30), QStringLiteral("txtSyokai"));
    txtSyokaiTel = Named(new xField(this, 20), QStringLiteral("txtSyokaiTel"));
    txtTanjo_Nen = Named(new xField(this, 4), QStringLiteral("txtTanjo_Nen"));
    txtTanjo_Mon = Named(new xField(this, 2), QStringLiteral("txtTanjo_Mon"));
    txtTanjo_Day = Named(new xField(this, 2), QStringLiteral("txtTanjo_Day"));
    txtTanjo_Nen->setNumericInput(QStringLiteral("0000"), 0, 9999);
    txtTanjo_Mon->setNumericInput(QStringLiteral("00"), 0, 12);
    txtTanjo_Day->setNumericInput(QStringLiteral("00"), 0, 31);
    for (xField* part : {txtTanjo_Nen, txtTanjo_Mon, txtTanjo_Day}) {
        part->setMaximumWidth(56);
        part->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    lblAge = Named(new QLabel(this), QStringLiteral("lblAge"));
    lblAge->setMinimumWidth(60);

    auto* record = new QGridLayout;
    record->setHorizontalSpacing(8);
    record->addWidget(FieldCaption(QStringLiteral("顧客番号"), this), 0, 0);
    record->addWidget(lblNo, 0, 1, Qt::AlignLeft);
    record->addWidget(FieldCaption(QStringLiteral("登録日"), this), 0, 2);
    record->addWidget(txtDate, 0, 3, Qt::AlignLeft);
    AddCaptioned(record, QStringLiteral("氏 名"), txtName, 1, 0);
    AddCaptioned(record, QStringLiteral("かな名"), txtKana, 1, 2);
    record->addWidget(FieldCaption(QStringLiteral("郵便番号"), this), 2, 0);
    auto* postal = new QHBoxLayout;
    postal->addWidget(txtYubin);
    postal->addWidget(cmdJusyo);
    postal->addStretch();
    record->addLayout(postal, 2, 1);
    AddCaptioned(record, QStringLiteral("ＴＥＬ"), txtTel, 2, 2);
    AddCaptioned(record, QStringLiteral("住所１"), txtJusyo1, 3, 0);
    AddCaptioned(record, QStringLiteral("住所２"), txtJusyo2, 3, 2);
    record->addWidget(FieldCaption(QStringLiteral("勤務先"), this), 4, 0);
    auto* work = new QHBoxLayout;
    work->addWidget(txtKinmu, 2);
    AddCaptioned(work, QStringLiteral("ＴＥＬ"), txtKinmuTel, 1);
    record->addLayout(work, 4, 1);
    record->addWidget(FieldCaption(QStringLiteral("紹介者"), this), 4, 2);
    auto* referrer = new QHBoxLayout;
    referrer->addWidget(txtSyokai, 2);
    AddCaptioned(referrer, QStringLiteral("ＴＥＬ"), txtSyokaiTel, 1);
    record->addLayout(referrer, 4, 3);
    record->addWidget(FieldCaption(QStringLiteral("性別"), this), 5, 0);
    record->addLayout(optionGroup<2>(optSex, sexGroup_, QStringLiteral("optSex"),
                                     {QStringLiteral("男"), QStringLiteral("女")}, this),
                      5, 1);
    record->addWidget(FieldCaption(QStringLiteral("家族区分"), this), 5, 2);
    record->addLayout(optionGroup<4>(optKazok_F, kazokGroup_, QStringLiteral("optKazok_F"),
                                     {QStringLiteral("代表"), QStringLiteral("家族"),
                                      QStringLiteral("個人"), QStringLiteral("DM不要")},
                                     this),
                      5, 3);
    record->addWidget(FieldCaption(QStringLiteral("誕生日"), this), 6, 0);
    // The eras in the order of time, the Western year last; each option's id is its stored code.
    tanjoGoGroup_ = new QButtonGroup(this);
    auto* birth = new QHBoxLayout;
    const std::pair<int, QString> eras[] = {{Taisho, QStringLiteral("大正")},
                                            {Showa, QStringLiteral("昭和")},
                                            {Heisei, QStringLiteral("平成")},
                                            {Reiwa, QStringLiteral("令和")},
                                            {NoEra, QStringLiteral("西暦")}};
    for (const auto& [code, name] : eras) {
        optTanjo_Go[code] =
            Named(new QRadioButton(name, this), QStringLiteral("optTanjo_Go"), code);
        tanjoGoGroup_->addButton(optTanjo_Go[code], code);
        birth->addWidget(optTanjo_Go[code]);
    }
    TabToCheckedOption(tanjoGoGroup_);
    optTanjo_Go[NoEra]->setToolTip(QStringLiteral("年を西暦で入力します"));
    txtTanjo_Nen->setToolTip(QStringLiteral(
        "西暦（4桁）で入力すると、元号と年に直します（西暦を選んだときは西暦のまま）"));
    birth->addSpacing(12);
    birth->addWidget(txtTanjo_Nen);
    birth->addWidget(new QLabel(QStringLiteral("年"), this));
    birth->addWidget(txtTanjo_Mon);
    birth->addWidget(new QLabel(QStringLiteral("月"), this));
    birth->addWidget(txtTanjo_Day);
    birth->addWidget(new QLabel(QStringLiteral("日"), this));
    birth->addSpacing(12);
    birth->addWidget(lblAge);
    birth->addStretch();
    record->addLayout(birth, 6, 1, 1, 3);
    record->setColumnStretch(1, 1);
    record->setColumnStretch(3, 1);

    spdData = Named(new PurchaseGrid(this), QStringLiteral("spdData"));
    spdData->setMinimumHeight(130);
    FraUriage = new UriageEntry(this);
    keys_ = new FunctionKeyRow(this);
    keys_->setCaptions({QStringLiteral("閉じる"), QString(), QStringLiteral("家族"), QString(),
                        QStringLiteral("登録"), QStringLiteral("クリア"), QString(),
                        QStringLiteral("顧客削除"), QStringLiteral("受注・入金"), QString(),
                        QString(), QStringLiteral("履歴照会")});
    cmdFnuc = keys_->buttons();

    // Tab follows the screen: the record row by row, the purchases, then the entry. In the grid
    // Tab goes on to the entry instead of from cell to cell.
    spdData->view()->setTabKeyNavigation(false);
    QList<QWidget*> order{txtDate,   txtName,   txtKana,  txtYubin,    cmdJusyo,  txtTel,
                          txtJusyo1, txtJusyo2, txtKinmu, txtKinmuTel, txtSyokai, txtSyokaiTel};
    order << QList<QWidget*>(optSex.begin(), optSex.end())
          << QList<QWidget*>(optKazok_F.begin(), optKazok_F.end());
    for (QAbstractButton* era : tanjoGoGroup_->buttons()) // in the order shown
        order << era;
    order << txtTanjo_Nen << txtTanjo_Mon << txtTanjo_Day << spdData->view();
    SetTabChain(order << FraUriage->tabOrder());

    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(12, 10, 12, 10);
    page->addLayout(record);
    // What the customer still owes, above his purchases.
    lblZankin = Named(new QLabel(this), QStringLiteral("lblZankin"));
    lblZankin->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    page->addWidget(lblZankin);
    page->addWidget(spdData, 1);
    page->addWidget(FraUriage);
    page->addStretch(0);
    page->addWidget(keys_);
}
