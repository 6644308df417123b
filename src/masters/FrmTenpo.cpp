#include "masters/FrmTenpo.h"

#include "data/ReceiptStore.h"
#include "frame/Conflicts.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "masters/TaxRatePanel.h"
#include "platform/controls/FocusOrder.h"
#include "platform/controls/FunctionKeyRow.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xField.h"
#include "platform/ui/Clock.h"
#include "platform/ui/MsgBox.h"
#include "platform/ui/Named.h"
#include "platform/ui/WaitCursor.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

const QString ScreenName = QStringLiteral("店舗設定画面");
enum Key { F1 = 0, F5 = 4, F9 = 8 };

QString dayText(const QDate& day) {
    return day.toString(QStringLiteral("yyyy/MM/dd"));
}

} // namespace

FrmTenpo::FrmTenpo(QWidget* parent) : Screen(parent) {
    setObjectName(QStringLiteral("FrmTenpo"));
    setWindowTitle(QStringLiteral("店舗設定"));
    txtShopName = Named(new xField(this, 40), QStringLiteral("txtShopName"));
    // An address of two lines on the slip: building and floor included.
    txtShopAddress = Named(new xField(this, 80), QStringLiteral("txtShopAddress"));
    txtShopTel = Named(new xField(this, 20), QStringLiteral("txtShopTel"));
    txtInvoiceNo = Named(new xField(this, 20), QStringLiteral("txtInvoiceNo"));
    txtInvoiceNo->setMinimumWidth(180);
    txtInvoiceNo->setMaximumWidth(220);
    txtInvoiceNo->setToolTip(QStringLiteral("適格請求書発行事業者の登録番号：T と13桁の数字"));
    cboTaxRounding = Named(new QComboBox(this), QStringLiteral("cboTaxRounding"));
    for (const char* rounding : {"切り捨て", "四捨五入", "切り上げ"})
        cboTaxRounding->addItem(QString::fromUtf8(rounding));
    taxRates_ = new TaxRatePanel(this);
    txtShopName->setMinimumWidth(360);
    txtShopAddress->setMinimumWidth(860);
    txtShopTel->setMaximumWidth(200);
    keys_ = new FunctionKeyRow(this);
    keys_->setCaptions({QStringLiteral("閉じる"), QString(), QString(), QString(),
                        QStringLiteral("登録"), QString(), QString(), QString(),
                        QStringLiteral("税率追加"), QString(), QString(), QString()});
    cmdFnuc = keys_->buttons();

    auto* fields = new QGridLayout;
    int row = 0;
    for (auto [caption, field] : {std::pair<const char*, QWidget*>{"店名", txtShopName},
                                  {"住所", txtShopAddress},
                                  {"電話番号", txtShopTel},
                                  {"登録番号", txtInvoiceNo},
                                  {"消費税の端数", cboTaxRounding},
                                  {"消費税率", taxRates_}}) {
        fields->addWidget(new QLabel(QString::fromUtf8(caption), this), row, 0,
                          field == taxRates_ ? Qt::AlignTop : Qt::Alignment());
        fields->addWidget(field, row++, 1,
                          field == txtShopAddress ? Qt::Alignment() : Qt::AlignLeft);
    }
    fields->setColumnStretch(1, 1);
    auto* note = new QLabel(
        QStringLiteral("お客様にお渡しする預り証・領収書に印刷されます。どの端末から印刷しても"
                       "同じです。価格は税込、消費税は領収書ごと・税率ごとに計算します。"),
        this);
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(16, 16, 16, 8);
    page->addLayout(fields);
    page->addSpacing(8);
    page->addWidget(note);
    page->addStretch();
    page->addWidget(keys_);
    SetTabChain({txtShopName, txtShopAddress, txtShopTel, txtInvoiceNo, cboTaxRounding,
                 taxRates_->dayField(), taxRates_->percentField()});
    setEnterMovesFocus(true);
    resize(980, 480);

    connect(keys_, &FunctionKeyRow::pressed, this, &FrmTenpo::cmdFnuc_Click);
}

void FrmTenpo::showEvent(QShowEvent* event) {
    Screen::showEvent(event);
    if (!loaded_) {
        loaded_ = true;
        Form_Load();
    }
}

void FrmTenpo::Form_Load() {
    Procedure(ScreenName, QStringLiteral("Form_Load"), windowTitle(), [&] {
        DispShop();
        txtShopName->setFocus();
    });
}

void FrmTenpo::DispShop() {
    Procedure(ScreenName, QStringLiteral("DispShop"), QStringLiteral("店舗情報の画面表示"), [&] {
        shown_ = ShopStore::Read();
        txtShopName->setText(shown_.name);
        txtShopAddress->setText(shown_.address);
        txtShopTel->setText(shown_.tel);
        txtInvoiceNo->setText(shown_.invoiceNo);
        cboTaxRounding->setCurrentIndex(int(shown_.rounding));
        DispTaxRates();
        // A long address is read from its start.
        txtShopAddress->setCursorPosition(0);
    });
}

void FrmTenpo::DispTaxRates() {
    Procedure(ScreenName, QStringLiteral("DispTaxRates"), QStringLiteral("消費税率の画面表示"),
              [&] { taxRates_->setRates(ShopStore::TaxRates(), Today()); });
}

ShopDetails FrmTenpo::typed() const {
    return {txtShopName->text(), txtShopAddress->text(), txtShopTel->text(),
            RegistrationNumberOf(txtInvoiceNo->text()),
            TaxRounding(cboTaxRounding->currentIndex())};
}

bool FrmTenpo::hasUnsavedEdits() const {
    const ShopDetails now = typed();
    return now.name.trimmed() != shown_.name.trimmed() ||
           now.address.trimmed() != shown_.address.trimmed() ||
           now.tel.trimmed() != shown_.tel.trimmed() || now.invoiceNo != shown_.invoiceNo ||
           now.rounding != shown_.rounding || taxRates_->hasTyped();
}

bool FrmTenpo::invoiceNoFits() {
    const QString number = RegistrationNumberOf(txtInvoiceNo->text());
    if (number.isEmpty())
        return true;
    switch (CheckRegistrationNumber(number)) {
    case RegistrationCheck::Valid:
        return true;
    case RegistrationCheck::CheckDigitDiffers:
        if (MsgBox(QStringLiteral("登録番号 %1 は、法人番号の検査用数字（先頭の数字）と合いません。"
                                  "\n個人事業者の登録番号として、このまま登録しますか？")
                       .arg(number),
                   MsgIcon::Question, MsgButtons::YesNo, windowTitle(),
                   MsgDefault::Second) == Answer::Yes)
            return true;
        break;
    case RegistrationCheck::NotTAnd13Digits:
        MsgBox(
            QStringLiteral("登録番号は「T」と13桁の数字で入力してください（例 T1234567890123）。"),
            MsgIcon::Exclamation, MsgButtons::OK, windowTitle());
        break;
    }
    txtInvoiceNo->setFocus();
    return false;
}

bool FrmTenpo::SaveShop() {
    if (!invoiceNoFits())
        return false;
    return Procedure(ScreenName, QStringLiteral("SaveShop"), QStringLiteral("店舗情報の保存処理"),
                     [&] {
                         ShopStore::Write(shown_, typed());
                         DispShop();
                         CmnDspMsg(OpeInf_001);
                     },
                     {.ownMessage = [this](const Failure& failure) {
                         if (!IsConflict(failure))
                             return false;
                         if (CmnAskReadAgain(failure.description()))
                             DispShop();
                         return true;
                     }});
}

bool FrmTenpo::taxRateFits(const TaxRate& rate) {
    if (taxRates_->refuseIncomplete())
        return false;
    // The day is a real one by now: the rule without receipts speaks of the percent alone.
    QWidget* field = taxRates_->percentField();
    QString why = TaxRateRefusal(rate, QDate());
    if (why.isEmpty()) {
        field = taxRates_->dayField();
        for (const TaxRate& shown : taxRates_->rates())
            if (shown.from == rate.from)
                why = QStringLiteral("%1 からの消費税率は、%2% で登録済みです。登録した税率は"
                                     "変更も削除もできません。")
                          .arg(dayText(rate.from))
                          .arg(shown.percent);
    }
    if (why.isEmpty())
        why = TaxRateRefusal(rate, ReceiptStore::LastIssueDay());
    if (why.isEmpty())
        return true;
    MsgBox(why, MsgIcon::Exclamation, MsgButtons::OK, windowTitle());
    field->setFocus();
    return false;
}

bool FrmTenpo::AddTaxRate() {
    const TaxRate rate = taxRates_->typed();
    if (!taxRateFits(rate) ||
        MsgBox(QStringLiteral("%1 から消費税率 %2% を適用します。\n"
                              "登録した税率は、後から変更も削除もできません。\nよろしいですか？")
                   .arg(dayText(rate.from))
                   .arg(rate.percent),
               MsgIcon::Question, MsgButtons::YesNo, windowTitle(),
               MsgDefault::Second) != Answer::Yes)
        return false;
    return Procedure(
        ScreenName, QStringLiteral("AddTaxRate"), QStringLiteral("消費税率の追加処理"),
        [&] {
            ShopStore::AddTaxRate(rate);
            taxRates_->clearTyped();
            DispTaxRates();
            CmnDspMsg(OpeInf_001);
            taxRates_->dayField()->setFocus();
        },
        {.ownMessage = [this](const Failure& failure) {
            if (IsConflict(failure)) {
                if (CmnAskReadAgain(failure.description(),
                                    QStringLiteral("読み直すのは消費税率だけです。店名などの入力"
                                                   "はそのまま残ります。"))) {
                    taxRates_->clearTyped();
                    DispTaxRates();
                }
            } else if (failure.number() == ErrorNumber::TaxRateRefused) {
                MsgBox(failure.description(), MsgIcon::Exclamation, MsgButtons::OK, windowTitle());
            } else {
                return false;
            }
            taxRates_->dayField()->setFocus();
            return true;
        }});
}

void FrmTenpo::cmdFnuc_Click(int index) {
    FunctionKeyProcedure(ScreenName, [&] {
        switch (index) {
        case F1:
            if (!hasUnsavedEdits() || CmnDspMsg(OpeQes_008, MsgDefault::Second) == Answer::Yes)
                done(QDialog::Accepted);
            break;
        case F5: {
            WaitCursor wait;
            SaveShop();
            break;
        }
        case F9:
            AddTaxRate();
            break;
        default:
            break;
        }
    });
}

void FrmTenpo::closeEvent(QCloseEvent* event) {
    // The close box is the close key: what was typed and not saved is asked about first.
    event->ignore();
    cmdFnuc_Click(F1);
}
