#include "masters/FrmTenpo.h"

#include "frame/Conflicts.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "platform/controls/FocusOrder.h"
#include "platform/controls/FunctionKeyRow.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xField.h"
#include "platform/ui/Named.h"
#include "platform/ui/WaitCursor.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

const QString ScreenName = QStringLiteral("店舗設定画面");
enum Key { F1 = 0, F5 = 4 };

} // namespace

FrmTenpo::FrmTenpo(QWidget* parent) : Screen(parent) {
    setObjectName(QStringLiteral("FrmTenpo"));
    setWindowTitle(QStringLiteral("店舗設定"));
    txtShopName = Named(new xField(this, 40), QStringLiteral("txtShopName"));
    // An address of two lines on the slip: building and floor included.
    txtShopAddress = Named(new xField(this, 80), QStringLiteral("txtShopAddress"));
    txtShopTel = Named(new xField(this, 20), QStringLiteral("txtShopTel"));
    txtShopName->setMinimumWidth(360);
    txtShopAddress->setMinimumWidth(860);
    txtShopTel->setMaximumWidth(200);
    keys_ = new FunctionKeyRow(this);
    keys_->setCaptions({QStringLiteral("閉じる"), QString(), QString(), QString(),
                        QStringLiteral("登録"), QString(), QString(), QString(), QString(),
                        QString(), QString(), QString()});
    cmdFnuc = keys_->buttons();

    auto* fields = new QGridLayout;
    int row = 0;
    for (auto [caption, field] : {std::pair{"店名", txtShopName}, std::pair{"住所", txtShopAddress},
                                  std::pair{"電話番号", txtShopTel}}) {
        fields->addWidget(new QLabel(QString::fromUtf8(caption), this), row, 0);
        fields->addWidget(field, row++, 1,
                          field == txtShopAddress ? Qt::Alignment() : Qt::AlignLeft);
    }
    fields->setColumnStretch(1, 1);
    auto* note = new QLabel(
        QStringLiteral("お客様にお渡しする預り証に印刷されます。どの端末から印刷しても同じです。"),
        this);
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(16, 16, 16, 8);
    page->addLayout(fields);
    page->addSpacing(8);
    page->addWidget(note);
    page->addStretch();
    page->addWidget(keys_);
    SetTabChain({txtShopName, txtShopAddress, txtShopTel});
    setEnterMovesFocus(true);
    resize(980, 280);

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
        // A long address is read from its start.
        txtShopAddress->setCursorPosition(0);
    });
}

ShopDetails FrmTenpo::typed() const {
    return {txtShopName->text(), txtShopAddress->text(), txtShopTel->text()};
}

bool FrmTenpo::hasUnsavedEdits() const {
    const ShopDetails now = typed();
    return now.name.trimmed() != shown_.name.trimmed() ||
           now.address.trimmed() != shown_.address.trimmed() ||
           now.tel.trimmed() != shown_.tel.trimmed();
}

bool FrmTenpo::SaveShop() {
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

void FrmTenpo::cmdFnuc_Click(int index) {
    Procedure(ScreenName, QStringLiteral("cmdFnuc_Click"),
              QStringLiteral("ファンクションボタンのクリック処理"),
              [&] {
                  switch (index) {
                  case F1:
                      if (!hasUnsavedEdits() ||
                          CmnDspMsg(OpeQes_008, MsgDefault::Second) == Answer::Yes)
                          done(QDialog::Accepted);
                      break;
                  case F5: {
                      WaitCursor wait;
                      SaveShop();
                      break;
                  }
                  default:
                      break;
                  }
              },
              {.titlePrefix = VbErrorTitleWide});
}

void FrmTenpo::closeEvent(QCloseEvent* event) {
    // The close box is the close key: what was typed and not saved is asked about first.
    event->ignore();
    cmdFnuc_Click(F1);
}
