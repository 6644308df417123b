#include "frame/DateFields.h"
#include "orders/FrmRyosyu.h"
#include "platform/Format.h"
#include "platform/controls/FocusOrder.h"
#include "platform/controls/FunctionKeyRow.h"
#include "platform/controls/GridView.h"
#include "platform/controls/RowModel.h"
#include "platform/controls/xDate.h"
#include "platform/ui/Caption.h"
#include "platform/ui/Named.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

namespace {

const QString TimeShown = QStringLiteral("yyyy/MM/dd HH:mm");

QString stateOf(const Receipt& r) {
    QStringList state;
    if (r.cancelled)
        state << QStringLiteral("取消 ") + r.cancelledAt.toString(TimeShown);
    if (r.reprints > 0)
        state << QStringLiteral("再発行 %1回").arg(r.reprints);
    return state.join(QStringLiteral("・"));
}

} // namespace

void FrmRyosyu::buildForm() {
    setObjectName(QStringLiteral("FrmRyosyu"));
    setWindowTitle(QStringLiteral("領収書"));
    lblPurchase = Named(new QLabel(this), QStringLiteral("lblPurchase"));
    spdReceipts = Named(new GridView(this), QStringLiteral("spdReceipts"));
    constexpr auto Right = Qt::AlignRight | Qt::AlignVCenter;
    receiptRows_ = new RowModel<Receipt>(
        {{QStringLiteral("No."), [](const Receipt& r) { return QString::number(r.no); }, Right},
         {QStringLiteral("発行日時"),
          [](const Receipt& r) {
              return r.issuedAt.toString(TimeShown);
          }},
         {QStringLiteral("種類"),
          [](const Receipt& r) {
              return r.kind == ReceiptKind::Medical ? QStringLiteral("医療費控除・療養費用")
                                                    : QStringLiteral("通常");
          }},
         {QStringLiteral("宛名"),
          [](const Receipt& r) {
              return r.addressee;
          }},
         {QStringLiteral("対象"),
          [](const Receipt& r) {
              return r.paymentNo == 0 ? QStringLiteral("売上全体")
                                      : QStringLiteral("入金 %1").arg(r.paymentNo);
          }},
         {QStringLiteral("方法"),
          [](const Receipt& r) {
              return PaymentMethodText(r.method);
          }},
         {QStringLiteral("領収金額"), [](const Receipt& r) { return FormatYen(r.received); },
          Right},
         {QStringLiteral("状態"), stateOf}},
        this);
    receiptRows_->background = [](const Receipt& r) {
        return r.cancelled ? QColor(220, 220, 220) : QColor();
    };
    spdReceipts->setModel(receiptRows_);
    spdReceipts->setColumnWidths({50, 130, 140, 150, 70, 100, 90, 150});
    spdReceipts->setRowSelection();
    spdReceipts->setMinimumHeight(130);

    cboTarget = Named(new QComboBox(this), QStringLiteral("cboTarget"));
    cboTarget->setMinimumWidth(300);
    cboMethod = Named(new QComboBox(this), QStringLiteral("cboMethod"));
    for (PaymentMethod method : PaymentMethods)
        cboMethod->addItem(PaymentMethodText(method));
    cboKind = Named(new QComboBox(this), QStringLiteral("cboKind"));
    cboKind->addItems({QStringLiteral("通常"), QStringLiteral("医療費控除・療養費用")});
    cboAtena = Named(new QComboBox(this), QStringLiteral("cboAtena"));
    cboAtena->setEditable(true);
    cboAtena->setMinimumWidth(300);
    txtPrescDate = Named(new xDate(this), QStringLiteral("txtPrescDate"));
    txtPrescDate->setMaximumWidth(130);
    CmnRefuseUnreadableDateOnLeave(txtPrescDate);
    lblPreview = Named(new QLabel(this), QStringLiteral("lblPreview"));
    lblPreview->setWordWrap(true);

    auto* issue = new QGroupBox(QStringLiteral("新しい領収書"), this);
    auto* grid = new QGridLayout(issue);
    AddCaptioned(grid, QStringLiteral("対象"), cboTarget, 0, 0);
    AddCaptioned(grid, QStringLiteral("支払方法"), cboMethod, 0, 2);
    AddCaptioned(grid, QStringLiteral("宛名"), cboAtena, 1, 0);
    AddCaptioned(grid, QStringLiteral("種類"), cboKind, 1, 2);
    AddCaptioned(grid, QStringLiteral("処方箋の日付"), txtPrescDate, 2, 2);
    grid->addWidget(lblPreview, 2, 0, 1, 2);
    grid->setColumnStretch(1, 1);

    keys_ = new FunctionKeyRow(this);
    keys_->setCaptions({QStringLiteral("閉じる"), QString(), QString(), QString(),
                        QStringLiteral("発行"), QStringLiteral("再発行"), QStringLiteral("取消"),
                        QString(), QString(), QString(), QString(), QString()});
    cmdFnuc = keys_->buttons();
    connect(keys_, &FunctionKeyRow::pressed, this, &FrmRyosyu::cmdFnuc_Click);

    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(12, 10, 12, 10);
    page->addWidget(lblPurchase);
    page->addWidget(new QLabel(QStringLiteral("発行済みの領収書"), this));
    page->addWidget(spdReceipts, 1);
    page->addWidget(issue);
    page->addWidget(keys_);
    SetTabChain({cboTarget, cboMethod, cboAtena, cboKind, txtPrescDate});
    resize(940, 560);

    connect(cboTarget, &QComboBox::currentIndexChanged, this, [this] {
        const int i = cboTarget->currentIndex();
        const bool whole = i >= 0 && std::size_t(i) < targets_.size() && targets_[i].paymentNo == 0;
        cboMethod->setEnabled(whole);
        if (i >= 0 && std::size_t(i) < targets_.size())
            cboMethod->setCurrentIndex(int(targets_[i].method));
        showPreview();
    });
    connect(cboMethod, &QComboBox::currentIndexChanged, this, [this] { showPreview(); });
    connect(cboKind, &QComboBox::currentIndexChanged, this,
            [this] { txtPrescDate->setEnabled(cboKind->currentIndex() == 1); });
    txtPrescDate->setEnabled(false);
}
