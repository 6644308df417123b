#include "orders/FrmJyuchu.h"

#include "data/OrderStore.h"
#include "data/PurchaseStore.h"
#include "frame/Conflicts.h"
#include "frame/DateFields.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "orders/FrmRyosyu.h"
#include "platform/Format.h"
#include "platform/controls/CodeList.h"
#include "platform/controls/RowModel.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xNum.h"
#include "platform/ui/Clock.h"
#include "platform/ui/MsgBox.h"
#include "platform/ui/ShowModal.h"
#include "platform/ui/WaitCursor.h"
#include "print/OrderSlip.h"

#include <QComboBox>
#include <QLabel>

namespace {

const QString ScreenName = QStringLiteral("受注・入金");
enum Key { F1 = 0, F5 = 4, F6 = 5, F7 = 6, F8 = 7, F9 = 8, F10 = 9 };

QString yen(qint64 amount) {
    return FormatYen(amount) + QStringLiteral("円");
}

} // namespace

FrmJyuchu::FrmJyuchu(qint64 customerNo, const QString& customerName, const Purchase& purchase,
                     QWidget* parent)
    : Screen(parent), typedOnly_(false), customerNo_(customerNo), customerName_(customerName),
      purchase_(purchase) {
    buildForm();
    fillLists({});
    lblPurchase->setText(QStringLiteral("顧客番号 %1「%2」 %3 の売上（No.%4）  売上合計 %5")
                             .arg(customerNo)
                             .arg(customerName, PurchaseDateText(purchase))
                             .arg(purchase.seq)
                             .arg(yen(purchase.total)));
    readAgain();
}

FrmJyuchu::FrmJyuchu(const Purchase& typed, const std::optional<Order>& order,
                     const std::vector<Payment>& payments, const std::vector<Purchase>& remakeable,
                     QWidget* parent)
    : Screen(parent), typedOnly_(true), purchase_(typed), order_(order), payments_(payments) {
    buildForm();
    fillLists(remakeable);
    lblPurchase->setText(QStringLiteral("登録前の売上 %1  売上合計 %2")
                             .arg(PurchaseDateText(typed), yen(typed.total)));
    if (!order_)
        order_ = Order{};
    showState();
}

void FrmJyuchu::readAgain() {
    Procedure(ScreenName, QStringLiteral("Disp_Order"), QStringLiteral("受注情報の取得処理"), [&] {
        const OrderStore::OrderState state = OrderStore::OfPurchase(customerNo_, purchase_.seq);
        order_ = state.order;
        payments_ = state.payments;
    });
    showState();
}

void FrmJyuchu::showState() {
    const OrderStatus status = order_ ? order_->status : OrderStatus::HandedOver;
    QString statusText = OrderStatusText(status);
    if (!order_)
        statusText += QStringLiteral("（受注なし：お渡し済・入金済の売上）");
    else if (order_->remakeOf != 0)
        statusText += QStringLiteral("（No.%1 の作り直し）").arg(order_->remakeOf);
    if (order_ && DaysLate(*order_, Today()) > 0)
        statusText +=
            QStringLiteral("　★お渡し予定日を %1 日過ぎています").arg(DaysLate(*order_, Today()));
    lblStatus->setText(statusText);
    QStringList steps;
    if (order_)
        for (const StatusStep& step : order_->steps)
            steps << OrderStatusText(step.status) + QLatin1Char(' ') +
                         step.at.toString(QStringLiteral("yyyy/MM/dd HH:mm"));
    lblSteps->setText(steps.join(QStringLiteral("  →  ")));
    const Order shown = order_.value_or(Order{});
    txtDueDate->setDate(shown.due);
    SelectCode(cboSupplier, shown.supplierNo);
    txtSupplierNo->setText(shown.supplierOrderNo);
    txtNote->setText(shown.note);
    paymentRows_->setRows(payments_);
    const qint64 paid = order_ ? PaidAmount(payments_) : purchase_.total;
    lblPaid->setText(QStringLiteral("入金済 ") + yen(paid));
    lblZankin->setText(QStringLiteral("残金 ") +
                       yen(order_ ? OutstandingAmount(purchase_.total, status, payments_) : 0));
    txtPayDate->setDate(Today());
    txtPayAmount->clearValue();
    // The first payment of an order is its deposit; later ones pay the balance.
    cboPayKind->setCurrentIndex(
        int(payments_.empty() ? PaymentKind::Deposit : PaymentKind::Balance));
    const bool open = order_ && IsOpen(status);
    cmdFnuc[F6]->setEnabled(!typedOnly_ && open && NextStatus(status).has_value());
    cmdFnuc[F7]->setEnabled(!typedOnly_ && open);
    cmdFnuc[F9]->setEnabled(order_.has_value());
}

Order FrmJyuchu::typedOrder() const {
    Order order = order_.value_or(Order{});
    order.due = txtDueDate->isEmpty() ? QDate() : txtDueDate->date();
    order.supplierNo = SelectedCode(cboSupplier);
    order.supplierOrderNo = txtSupplierNo->text();
    order.note = txtNote->text();
    if (typedOnly_) {
        order.remakeOf = cboRemake->currentData().toInt();
        order.status = order.remakeOf != 0 ? OrderStatus::Remake : OrderStatus::Taken;
    }
    return order;
}

std::optional<Payment> FrmJyuchu::typedPayment() {
    if (CmnRefuseUnreadableDate(txtPayDate))
        return std::nullopt;
    Payment payment;
    payment.date = txtPayDate->date();
    payment.amount = qint64(txtPayAmount->Value());
    payment.kind = PaymentKind(cboPayKind->currentIndex());
    payment.method = PaymentMethod(cboPayMethod->currentIndex());
    const Order order = typedOrder();
    const QString refusal = PaymentRefusal(purchase_.total, order.status, payments_, payment);
    if (!refusal.isEmpty()) {
        MsgBox(refusal, MsgIcon::Exclamation, MsgButtons::OK, windowTitle());
        txtPayAmount->setFocus();
        return std::nullopt;
    }
    return payment;
}

void FrmJyuchu::store(const QString& procedure, const std::function<void()>& action) {
    const bool done = RunStore({.screen = ScreenName,
                                .procedure = procedure,
                                .description = QStringLiteral("受注情報の保存処理"),
                                .refusal = ErrorNumber::PaymentRefused,
                                .title = windowTitle(),
                                .readAgain =
                                    [this] {
                                        readAgain();
                                    }},
                               action);
    if (!done)
        return;
    stored_ = true;
    CmnDspMsg(OpeInf_001);
    readAgain();
}

void FrmJyuchu::keep() {
    if (CmnRefuseUnreadableDate(txtDueDate))
        return;
    order_ = typedOrder();
    done(QDialog::Accepted);
}

void FrmJyuchu::saveOrder() {
    if (CmnRefuseUnreadableDate(txtDueDate))
        return;
    if (order_) {
        const Order shown = *order_;
        const Order now = typedOrder();
        store(QStringLiteral("Save_Order"),
              [&] { OrderStore::Update(customerNo_, purchase_.seq, shown, now); });
        return;
    }
    if (MsgBox(QStringLiteral("この売上を受注として登録しますか？"), MsgIcon::Question,
               MsgButtons::YesNo, windowTitle()) != Answer::Yes)
        return;
    const Order order = typedOrder();
    store(QStringLiteral("Save_Order"),
          [&] { OrderStore::Start(customerNo_, purchase_.seq, order, Now()); });
}

void FrmJyuchu::advance(OrderStatus next, const QString& question, bool yesByDefault) {
    if (MsgBox(question, MsgIcon::Question, MsgButtons::YesNo, windowTitle(),
               yesByDefault ? MsgDefault::First : MsgDefault::Second) != Answer::Yes)
        return;
    const Order shown = *order_;
    store(QStringLiteral("Save_Status"),
          [&] { OrderStore::SetStatus(customerNo_, purchase_.seq, shown, next, Now()); });
}

void FrmJyuchu::recordPayment() {
    const std::optional<Payment> payment = typedPayment();
    if (!payment)
        return;
    if (typedOnly_) {
        payments_.push_back(*payment);
        order_ = typedOrder();
        showState();
        txtPayAmount->setFocus();
        return;
    }
    store(QStringLiteral("Save_Payment"),
          [&] { OrderStore::AddPayment(customerNo_, purchase_.seq, *payment); });
}

void FrmJyuchu::cmdFnuc_Click(int index) {
    switch (index) {
    case F1:
        done(stored_ ? QDialog::Accepted : QDialog::Rejected);
        break;
    case F5:
        if (typedOnly_)
            keep();
        else
            saveOrder();
        break;
    case F6:
        if (order_ && NextStatus(order_->status))
            advance(*NextStatus(order_->status),
                    QStringLiteral("状態を「%1」に進めますか？")
                        .arg(OrderStatusText(*NextStatus(order_->status))),
                    true);
        break;
    case F7:
        advance(OrderStatus::Cancelled, QStringLiteral("この受注をキャンセルしますか？"), false);
        break;
    case F9:
        recordPayment();
        break;
    case F8:
        if (!typedOnly_) {
            FrmRyosyu receipts(customerNo_, customerName_, purchase_, this);
            ShowModal(receipts);
        }
        break;
    case F10:
        if (!typedOnly_)
            PrintOrderSlip(this, customerNo_, purchase_.seq);
        break;
    default:
        break;
    }
}
