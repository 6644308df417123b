#include "orders/FrmRyosyu.h"

#include "data/Lookups.h"
#include "data/ReceiptStore.h"
#include "frame/Conflicts.h"
#include "frame/DateFields.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "platform/Format.h"
#include "platform/controls/GridView.h"
#include "platform/controls/RowModel.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xDate.h"
#include "platform/ui/Clock.h"
#include "platform/ui/MsgBox.h"
#include "print/ReceiptPrint.h"

#include <QComboBox>
#include <QLabel>

namespace {

const QString ScreenName = QStringLiteral("領収書");
const QString Uesama = QStringLiteral("上様");
enum Key { F1 = 0, F5 = 4, F6 = 5, F7 = 6 };

QString yen(qint64 amount) {
    return FormatYen(amount) + QStringLiteral("円");
}

} // namespace

FrmRyosyu::FrmRyosyu(qint64 customerNo, const QString& customerName, const Purchase& purchase,
                     QWidget* parent)
    : Screen(parent), customerNo_(customerNo), customerName_(customerName.trimmed()),
      purchase_(purchase) {
    buildForm();
    lblPurchase->setText(QStringLiteral("顧客番号 %1「%2」 %3 の売上（No.%4）  売上合計 %5")
                             .arg(customerNo)
                             .arg(customerName_, PurchaseDateText(purchase))
                             .arg(purchase.seq)
                             .arg(yen(purchase.total)));
    cboAtena->addItems({customerName_, Uesama});
    readAgain();
}

void FrmRyosyu::readAgain() {
    Procedure(ScreenName, QStringLiteral("Disp_Receipt"), QStringLiteral("領収書の取得処理"), [&] {
        state_ = OrderStore::OfPurchase(customerNo_, purchase_.seq);
        receipts_ = ReceiptStore::OfPurchase(customerNo_, purchase_.seq);
        shop_ = ShopStore::Read();
        rates_ = ShopStore::TaxRates();
    });
    receiptRows_->setRows(receipts_);
    showTargets();
}

void FrmRyosyu::showTargets() {
    targets_ = ReceiptTargets(purchase_.total, state_.order.has_value(), state_.payments);
    cboTarget->blockSignals(true);
    cboTarget->clear();
    int firstOpen = -1;
    for (const ReceiptTarget& t : targets_) {
        QString text = QStringLiteral("売上全体 ") + yen(t.amount);
        for (const Payment& p : state_.payments)
            if (t.paymentNo != 0 && p.no == t.paymentNo)
                text =
                    QStringLiteral("%1 %2 %3 %4")
                        .arg(p.date.toString(QStringLiteral("yyyy/MM/dd")), PaymentKindText(p.kind),
                             PaymentMethodText(p.method), yen(p.amount));
        const qint64 covering = ReceiptCovering(receipts_, t.paymentNo);
        if (covering != 0)
            text += QStringLiteral("（領収書 No.%1 発行済み）").arg(covering);
        else if (firstOpen < 0)
            firstOpen = cboTarget->count();
        cboTarget->addItem(text);
    }
    cboTarget->setCurrentIndex(firstOpen >= 0 ? firstOpen : 0);
    cboTarget->blockSignals(false);
    emit cboTarget->currentIndexChanged(cboTarget->currentIndex());
    cmdFnuc[F5]->setEnabled(!targets_.empty());
}

Receipt FrmRyosyu::madeFor(const ReceiptTarget& t) const {
    // A payment's method is its own; for the whole sale the staff choose it. The rate is the
    // sale's day's.
    const PaymentMethod method =
        t.paymentNo == 0 ? PaymentMethod(cboMethod->currentIndex()) : t.method;
    return ReceiptFor(purchase_, t.amount, method,
                      TaxPercentOn(rates_, purchase_.date.isValid() ? purchase_.date : Today()),
                      shop_.rounding);
}

void FrmRyosyu::showPreview() {
    const int i = cboTarget->currentIndex();
    if (i < 0 || std::size_t(i) >= targets_.size()) {
        lblPreview->setText(QStringLiteral("この売上にはまだ入金がありません。"));
        return;
    }
    const Receipt r = madeFor(targets_[i]);
    QStringList lines;
    for (const RateTotal& rate : r.taxes)
        lines << QStringLiteral("%1%対象 ¥%2（内消費税 ¥%3）")
                     .arg(rate.percent)
                     .arg(FormatYen(rate.total), FormatYen(rate.tax));
    lines << (r.stamp ? QStringLiteral("収入印紙：必要（貼付欄を印刷します）")
                      : QStringLiteral("収入印紙：不要"));
    lblPreview->setText(lines.join(QLatin1Char('\n')));
}

std::optional<Receipt> FrmRyosyu::typedReceipt() {
    const auto refuse = [this](const QString& text, QWidget* field) {
        MsgBox(text, MsgIcon::Exclamation, MsgButtons::OK, windowTitle());
        if (field)
            field->setFocus();
        return std::nullopt;
    };
    if (shop_.name.trimmed().isEmpty())
        return refuse(QStringLiteral("店舗の名前が設定されていません。領収書には発行する店の名前が"
                                     "必要です。メニューの「店舗設定」で店名・住所・電話番号を登"
                                     "録してから発行してください。"),
                      nullptr);
    const int i = cboTarget->currentIndex();
    if (i < 0 || std::size_t(i) >= targets_.size())
        return refuse(QStringLiteral("この売上にはまだ入金がありません。"), nullptr);
    const bool medical = cboKind->currentIndex() == 1;
    const QString addressee = cboAtena->currentText().trimmed();
    if (addressee.isEmpty())
        return refuse(QStringLiteral("宛名を入力してください。"), cboAtena);
    if (medical && addressee == Uesama)
        return refuse(QStringLiteral("医療費控除・療養費用の領収書は、眼鏡を使う方のお名前を宛名"
                                     "にしてください（お子様の療養費ではお子様のお名前）。"),
                      cboAtena);
    if (medical && (CmnRefuseUnreadableDate(txtPrescDate) || txtPrescDate->isEmpty()))
        return refuse(QStringLiteral("医療費控除・療養費用の領収書には、処方箋の日付を入力して"
                                     "ください。"),
                      txtPrescDate);
    const ReceiptTarget& t = targets_[i];
    Receipt r = madeFor(t);
    r.customerNo = customerNo_;
    r.paymentNo = t.paymentNo;
    r.addressee = addressee;
    r.shopName = shop_.name;
    r.shopAddress = shop_.address;
    r.shopTel = shop_.tel;
    r.invoiceNo = shop_.invoiceNo;
    if (medical) {
        // Itemised for the tax office: what the frame and the lenses are.
        r.kind = ReceiptKind::Medical;
        r.prescriptionDate = txtPrescDate->date();
        MasterNames masters;
        for (ReceiptLine& line : r.lines) {
            QString detail;
            if (line.caption == QStringLiteral("フレーム"))
                detail = masters.name(MasterKind::Meka, purchase_.fmMekaNo) + QLatin1Char(' ') +
                         purchase_.fmName;
            else if (line.caption == QStringLiteral("レンズ"))
                detail = masters.name(MasterKind::Meka, purchase_.lzMekaNo) + QLatin1Char(' ') +
                         purchase_.lzName;
            if (!detail.trimmed().isEmpty())
                line.caption += QStringLiteral("（") + detail.trimmed() + QStringLiteral("）");
        }
    }
    return r;
}

const Receipt* FrmRyosyu::chosenReceipt() {
    const int row = spdReceipts->activeRow() - 1;
    if (row >= 0 && std::size_t(row) < receipts_.size())
        return &receipts_[row];
    MsgBox(QStringLiteral("発行済みの領収書を一覧から選んでください。"), MsgIcon::Exclamation,
           MsgButtons::OK, windowTitle());
    spdReceipts->setFocus();
    return nullptr;
}

bool FrmRyosyu::store(const QString& procedure, const QString& description,
                      const std::function<void()>& action) {
    return RunStore({.screen = ScreenName,
                     .procedure = procedure,
                     .description = description,
                     .refusal = ErrorNumber::ReceiptRefused,
                     .title = windowTitle(),
                     .readAgain = [this] { readAgain(); },
                     .readAgainAfterRefusal = true},
                    action);
}

void FrmRyosyu::issue() {
    const std::optional<Receipt> made = typedReceipt();
    if (!made)
        return;
    if (MsgBox(QStringLiteral("「%1」宛の領収書（%2・%3）を発行して印刷しますか？")
                   .arg(made->addressee, yen(made->received), PaymentMethodText(made->method)),
               MsgIcon::Question, MsgButtons::YesNo, windowTitle()) != Answer::Yes)
        return;
    Receipt issued;
    if (!store(QStringLiteral("Issue_Receipt"), QStringLiteral("領収書の発行処理"),
               [&] { issued = ReceiptStore::Issue(*made, Now()); }))
        return;
    readAgain();
    if (!PrintReceipt(this, issued, false))
        MsgBox(QStringLiteral("領収書 No.%1 は発行して保存しました。印刷できなかったため、一覧"
                              "から選んで再発行（F6）で印刷してください。")
                   .arg(issued.no),
               MsgIcon::Exclamation, MsgButtons::OK, windowTitle());
}

void FrmRyosyu::reprint() {
    const Receipt* chosen = chosenReceipt();
    if (!chosen)
        return;
    const qint64 no = chosen->no;
    Receipt stored;
    if (!store(QStringLiteral("Reprint_Receipt"), QStringLiteral("領収書の再発行処理"),
               [&] { stored = ReceiptStore::Reprint(no); }))
        return;
    readAgain();
    PrintReceipt(this, stored, true);
}

void FrmRyosyu::cancel() {
    const Receipt* chosen = chosenReceipt();
    if (!chosen)
        return;
    const qint64 no = chosen->no;
    if (chosen->cancelled) {
        MsgBox(QStringLiteral("領収書 No.%1 は取り消し済みです。").arg(no), MsgIcon::Exclamation,
               MsgButtons::OK, windowTitle());
        return;
    }
    if (MsgBox(QStringLiteral("領収書 No.%1（%2）を取り消しますか？\n取り消した領収書は「取消」と"
                              "して記録に残ります。")
                   .arg(no)
                   .arg(yen(chosen->received)),
               MsgIcon::Question, MsgButtons::YesNo, windowTitle(),
               MsgDefault::Second) != Answer::Yes)
        return;
    if (!store(QStringLiteral("Cancel_Receipt"), QStringLiteral("領収書の取消処理"),
               [&] { ReceiptStore::Cancel(no, Now()); }))
        return;
    CmnDspMsg(OpeInf_001);
    readAgain();
}

void FrmRyosyu::cmdFnuc_Click(int index) {
    switch (index) {
    case F1:
        done(QDialog::Accepted);
        break;
    case F5:
        issue();
        break;
    case F6:
        reprint();
        break;
    case F7:
        cancel();
        break;
    default:
        break;
    }
}
