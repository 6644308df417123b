#include "data/Lookups.h"
#include "frame/BasCmnSubFun.h"
#include "frame/DateFields.h"
#include "orders/FrmJyuchu.h"
#include "platform/Format.h"
#include "platform/controls/FocusOrder.h"
#include "platform/controls/FunctionKeyRow.h"
#include "platform/controls/GridView.h"
#include "platform/controls/RowModel.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xNum.h"
#include "platform/ui/Caption.h"
#include "platform/ui/Named.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

void FrmJyuchu::buildForm() {
    setObjectName(QStringLiteral("FrmJyuchu"));
    setWindowTitle(QStringLiteral("受注・入金"));
    lblPurchase = Named(new QLabel(this), QStringLiteral("lblPurchase"));
    lblStatus = Named(new QLabel(this), QStringLiteral("lblStatus"));
    lblSteps = Named(new QLabel(this), QStringLiteral("lblSteps"));
    lblSteps->setWordWrap(true);
    txtDueDate = Named(new xDate(this), QStringLiteral("txtDueDate"));
    CmnRefuseUnreadableDateOnLeave(txtDueDate);
    cboSupplier = Named(new QComboBox(this), QStringLiteral("cboSupplier"));
    cboSupplier->setMinimumWidth(170);
    txtSupplierNo = Named(new xField(this, 20), QStringLiteral("txtSupplierNo"));
    txtNote = Named(new xField(this, 50), QStringLiteral("txtNote"));
    cboRemake = Named(new QComboBox(this), QStringLiteral("cboRemake"));
    cboRemake->setMinimumWidth(260);

    auto* order = new QGroupBox(QStringLiteral("受注"), this);
    auto* orderGrid = new QGridLayout(order);
    AddCaptioned(orderGrid, QStringLiteral("状態"), lblStatus, 0, 0, 3);
    AddCaptioned(orderGrid, QStringLiteral("お渡し予定日"), txtDueDate, 1, 0);
    AddCaptioned(orderGrid, QStringLiteral("作り直し元"), cboRemake, 1, 2);
    AddCaptioned(orderGrid, QStringLiteral("発注先"), cboSupplier, 2, 0);
    AddCaptioned(orderGrid, QStringLiteral("発注番号"), txtSupplierNo, 2, 2);
    AddCaptioned(orderGrid, QStringLiteral("メモ"), txtNote, 3, 0, 3);
    AddCaptioned(orderGrid, QStringLiteral("経過"), lblSteps, 4, 0, 3);
    orderGrid->setColumnStretch(3, 1);

    spdPayments = Named(new GridView(this), QStringLiteral("spdPayments"));
    paymentRows_ = new RowModel<Payment>({{QStringLiteral("入金日"),
                                           [](const Payment& p) {
                                               return p.date.toString(QStringLiteral("yyyy/MM/dd"));
                                           }},
                                          {QStringLiteral("区分"),
                                           [](const Payment& p) {
                                               return PaymentKindText(p.kind);
                                           }},
                                          {QStringLiteral("方法"),
                                           [](const Payment& p) {
                                               return PaymentMethodText(p.method);
                                           }},
                                          {QStringLiteral("金額"),
                                           [](const Payment& p) {
                                               const QString amount = FormatYen(p.amount);
                                               return p.kind == PaymentKind::Refund
                                                          ? QStringLiteral("-") + amount
                                                          : amount;
                                           },
                                           Qt::AlignRight | Qt::AlignVCenter}},
                                         this);
    spdPayments->setModel(paymentRows_);
    spdPayments->setColumnWidths({100, 70, 120, 110});
    spdPayments->setRowSelection();
    spdPayments->setMinimumHeight(110);
    lblPaid = Named(new QLabel(this), QStringLiteral("lblPaid"));
    lblZankin = Named(new QLabel(this), QStringLiteral("lblZankin"));
    txtPayDate = Named(new xDate(this), QStringLiteral("txtPayDate"));
    cboPayKind = Named(new QComboBox(this), QStringLiteral("cboPayKind"));
    for (PaymentKind kind : {PaymentKind::Deposit, PaymentKind::Balance, PaymentKind::Refund})
        cboPayKind->addItem(PaymentKindText(kind));
    cboPayMethod = Named(new QComboBox(this), QStringLiteral("cboPayMethod"));
    for (PaymentMethod method : PaymentMethods)
        cboPayMethod->addItem(PaymentMethodText(method));
    txtPayAmount = Named(new xNum(this), QStringLiteral("txtPayAmount"));
    txtPayAmount->setRange(0, 99999999);
    for (QWidget* narrow : {static_cast<QWidget*>(txtDueDate), static_cast<QWidget*>(txtPayDate),
                            static_cast<QWidget*>(txtPayAmount)})
        narrow->setMaximumWidth(130);

    auto* payments = new QGroupBox(QStringLiteral("入金"), this);
    auto* paymentPage = new QVBoxLayout(payments);
    paymentPage->addWidget(spdPayments);
    auto* sums = new QHBoxLayout;
    sums->addStretch();
    sums->addWidget(lblPaid);
    sums->addSpacing(24);
    sums->addWidget(lblZankin);
    paymentPage->addLayout(sums);
    auto* entry = new QHBoxLayout;
    AddCaptioned(entry, QStringLiteral("入金日"), txtPayDate);
    AddCaptioned(entry, QStringLiteral("区分"), cboPayKind);
    AddCaptioned(entry, QStringLiteral("方法"), cboPayMethod);
    AddCaptioned(entry, QStringLiteral("金額"), txtPayAmount);
    entry->addStretch();
    paymentPage->addLayout(entry);

    keys_ = new FunctionKeyRow(this);
    keys_->setCaptions({QStringLiteral("閉じる"), QString(), QString(), QString(),
                        typedOnly_ ? QStringLiteral("決定") : QStringLiteral("登録"),
                        QStringLiteral("次の状態へ"), QStringLiteral("キャンセル"),
                        typedOnly_ ? QString() : QStringLiteral("領収書"),
                        QStringLiteral("入金登録"),
                        typedOnly_ ? QString() : QStringLiteral("預り証"), QString(), QString()});
    cmdFnuc = keys_->buttons();
    connect(keys_, &FunctionKeyRow::pressed, this, &FrmJyuchu::cmdFnuc_Click);

    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(12, 10, 12, 10);
    page->addWidget(lblPurchase);
    page->addWidget(order);
    page->addWidget(payments, 1);
    page->addWidget(keys_);
    SetTabChain({txtDueDate, cboRemake, cboSupplier, txtSupplierNo, txtNote, txtPayDate, cboPayKind,
                 cboPayMethod, txtPayAmount});
    cboRemake->setEnabled(typedOnly_);
    resize(760, 560);
}

void FrmJyuchu::fillLists(const std::vector<Purchase>& remakeable) {
    MasterNames masters;
    CmnSetMstCombo(cboSupplier, [&] { return masters.listEntries(MasterKind::Meka); });
    cboRemake->addItem(QString(), 0);
    for (const Purchase& p : remakeable)
        cboRemake->addItem(QStringLiteral("No.%1 %2 %3")
                               .arg(p.seq)
                               .arg(PurchaseDateText(p), masters.name(MasterKind::Item, p.itemNo)),
                           p.seq);
    if (order_)
        cboRemake->setCurrentIndex(std::max(0, cboRemake->findData(order_->remakeOf)));
}
