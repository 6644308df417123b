#include "masters/FrmMaster.h"

#include "data/MasterStore.h"
#include "frame/BasCmnSubFun.h"
#include "frame/Conflicts.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "platform/Format.h"
#include "platform/NumberText.h"
#include "platform/controls/FunctionKeyRow.h"
#include "platform/controls/GridView.h"
#include "platform/controls/RowModel.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xField.h"
#include "platform/ui/MsgBox.h"
#include "platform/ui/WaitCursor.h"

#include <QGridLayout>
#include <QLabel>
#include <QRegularExpression>
#include <QVBoxLayout>

namespace {
enum Key { F1 = 0, F5 = 4, F6 = 5, F8 = 7 };
}

FrmMaster::FrmMaster(const MasterConfig& config, QWidget* parent)
    : Screen(parent), config_(config) {
    setWindowTitle(config.caption);
    spdData = new GridView(this);
    spdData->setObjectName(QStringLiteral("spdData"));
    entries_ = new RowModel<MasterEntry>({{config.numberHeading,
                                           [](const MasterEntry& e) {
                                               return e.code;
                                           }},
                                          {config.nameHeading,
                                           [](const MasterEntry& e) {
                                               return e.name;
                                           }}},
                                         this);
    spdData->setModel(entries_);
    spdData->setColumnWidths({90, 300});
    spdData->setLastColumnStretch(true);
    spdData->setMinimumSize(440, 340);
    Label1 = new QLabel(config.numberLabel, this);
    Label2 = new QLabel(config.nameLabel, this);
    txtTNo = new xField(this, 3);
    txtTNo->setObjectName(QStringLiteral("txtTNo"));
    txtTNo->setMaximumWidth(70);
    txtName = new xField(this, 20);
    txtName->setObjectName(QStringLiteral("txtName"));
    keys_ = new FunctionKeyRow(this);
    keys_->setCaptions({QStringLiteral("閉じる"), QString(), QString(), QString(),
                        QStringLiteral("保存"), QStringLiteral("クリア"), QString(),
                        QStringLiteral("削除"), QString(), QString(), QString(), QString()});
    cmdFnuc = keys_->buttons();

    auto* fields = new QGridLayout;
    fields->addWidget(Label1, 0, 0);
    fields->addWidget(txtTNo, 0, 1, Qt::AlignLeft);
    fields->addWidget(Label2, 1, 0);
    fields->addWidget(txtName, 1, 1);
    fields->setColumnStretch(1, 1);
    auto* page = new QVBoxLayout(this);
    page->addWidget(spdData, 1);
    page->addLayout(fields);
    page->addWidget(keys_);
    setEnterMovesFocus(true);
    resize(1000, 600);

    connect(keys_, &FunctionKeyRow::pressed, this, &FrmMaster::cmdFnuc_Click);
    connect(txtTNo, &xInput::leave, this, &FrmMaster::numberLeft);
    connect(spdData, &GridView::clicked, this, [this](int row, int) {
        if (row > 0 && row <= entries_->size()) {
            DispSelectRow(row);
            cmdFnuc[F8]->setEnabled(true);
        }
        txtName->setFocus();
    });
}

void FrmMaster::showEvent(QShowEvent* event) {
    Screen::showEvent(event);
    if (!loaded_) {
        loaded_ = true;
        Form_Load();
    }
}

void FrmMaster::Form_Load() {
    Procedure(config_.caption, QStringLiteral("Form_Load"), config_.caption, [&] {
        cmdFnuc[F8]->setEnabled(false);
        IniForm();
        DispMaster();
        txtTNo->setFocus();
    });
}

void FrmMaster::IniForm() {
    Procedure(config_.caption, QStringLiteral("IniForm"), QStringLiteral("画面の初期化処理"), [&] {
        entries_->clear();
        CmnCtlEnabled(txtTNo, true);
        CmnCtlEnabled(txtName, true);
        txtTNo->clear();
        txtName->clear();
        entry_ = Entry::New;
    });
}

void FrmMaster::DispMaster() {
    Procedure(config_.caption, QStringLiteral("DispMaster"), config_.listingDescription, [&] {
        entries_->clear();
        entries_->setRows(MasterStore::Entries(config_.kind));
    });
}

void FrmMaster::DispSelectRow(int row) {
    Procedure(config_.caption, QStringLiteral("DispSelectRow"),
              QStringLiteral("明細指定行の編集表示"), [&] {
                  chosen_ = entries_->at(row - 1);
                  txtTNo->setText(chosen_.code);
                  txtName->setText(chosen_.name);
                  CmnCtlEnabled(txtTNo, false);
                  CmnCtlEnabled(txtName, true);
                  entry_ = Entry::Chosen;
              });
}

void FrmMaster::ClearText() {
    Procedure(config_.caption, QStringLiteral("ClearText"), QStringLiteral("入力クリア処理"), [&] {
        txtTNo->clear();
        txtName->clear();
        CmnCtlEnabled(txtTNo, true);
        CmnCtlEnabled(txtName, true);
    });
}

bool FrmMaster::ChkEntryData() {
    bool filled = false;
    Procedure(config_.caption, QStringLiteral("ChkEntryData"), QStringLiteral("未入力ＣＨＫ処理"),
              [&] {
                  for (xField* field : {txtTNo, txtName})
                      if (field->text().trimmed().isEmpty()) {
                          CmnDspMsg(OpeErr_001);
                          field->setFocus();
                          return;
                      }
                  filled = true;
              });
    return filled;
}

MasterEntry FrmMaster::typedEntry() const {
    return {txtTNo->text(), txtName->text()};
}

void FrmMaster::SaveMaster() {
    if (entry_ == Entry::New)
        storeProcedure([this] { MasterStore::Insert(config_.kind, typedEntry()); }, OpeInf_001);
    else
        storeProcedure([this] { MasterStore::Rename(config_.kind, chosen_, txtName->text()); },
                       OpeInf_001);
}

void FrmMaster::DeleteMaster() {
    storeProcedure([this] { MasterStore::Remove(config_.kind, chosen_); }, OpeInf_002);
}

void FrmMaster::startNewEntry() {
    ClearText();
    entry_ = Entry::New;
    cmdFnuc[F8]->setEnabled(false);
    txtTNo->setFocus();
}

void FrmMaster::storeProcedure(const std::function<void()>& store, const QString& doneMessage) {
    Procedure(config_.caption, QStringLiteral("SaveMaster"), QStringLiteral("マスター保存処理"),
              [&] {
                  store();
                  CmnDspMsg(doneMessage);
                  DispMaster();
                  startNewEntry();
              },
              {.ownMessage = [this](const Failure& failure) {
                  if (IsConflict(failure)) {
                      if (CmnAskReadAgain(failure.description())) {
                          DispMaster();
                          startNewEntry();
                      }
                      return true;
                  }
                  if (failure.number() != ErrorNumber::DatabaseFailed)
                      return false;
                  MsgBox(QStringLiteral("不正な処理です。"), MsgIcon::None, MsgButtons::OK,
                         AppTitle);
                  return true;
              }});
}

namespace {

// A master code as stored: three digits.
bool IsMasterCode(const QString& text) {
    static const QRegularExpression code(QStringLiteral("^\\d{3}$"));
    return code.match(text).hasMatch();
}

} // namespace

void FrmMaster::cmdFnuc_Click(int index) {
    FunctionKeyProcedure(config_.caption, [&] {
        switch (index) {
        case F1:
            done(QDialog::Accepted);
            break;
        case F5: {
            WaitCursor wait;
            // A number that is no code is never saved. The key took the focus, so
            // the field's own rule has refused it already when the focus is back in
            // the field; otherwise it is refused now.
            if (entry_ == Entry::New && !txtTNo->text().trimmed().isEmpty() &&
                !IsMasterCode(txtTNo->text())) {
                if (focusWidget() != txtTNo)
                    numberReadsAsCode();
                if (!IsMasterCode(txtTNo->text())) {
                    txtTNo->setFocus();
                    break;
                }
            }
            if (ChkEntryData())
                SaveMaster();
            break;
        }
        case F6:
            startNewEntry();
            break;
        case F8: {
            WaitCursor wait;
            if (CmnDspMsg(OpeQes_002) == Answer::Yes)
                DeleteMaster();
            break;
        }
        default:
            break;
        }
    });
}

void FrmMaster::numberLeft() {
    // The box of a refusal takes the focus from the field: that is no second leaving.
    if (!checkingNumber_) {
        checkingNumber_ = true;
        numberReadsAsCode();
        checkingNumber_ = false;
    }
}

bool FrmMaster::numberReadsAsCode() {
    const QString typed = txtTNo->text().trimmed();
    if (typed.isEmpty())
        return true; // the check of the required fields says so
    bool isNumber = false;
    const double number = NumberFromText(typed, &isNumber);
    const double rounded = RoundHalfAwayFromZero(number, 0);
    if (!isNumber || rounded < 0 || rounded > 999) {
        CmnDspMsg(OpeErr_004);
        txtTNo->setFocus();
        return false;
    }
    txtTNo->setText(FormatNumber(rounded, QStringLiteral("000")));
    return true;
}

FrmMstMeka::FrmMstMeka(QWidget* parent)
    : FrmMaster({QStringLiteral("メーカーマスタ保守"), QStringLiteral("ﾒ-ｶｰ№"),
                 QStringLiteral("メーカー名"), QStringLiteral("ﾒｰｶｰ№"), QStringLiteral("ﾒｰｶｰ名"),
                 MasterKind::Meka, QStringLiteral("メーカーマスタ情報の画面表示")},
                parent) {
    setObjectName(QStringLiteral("FrmMstMeka"));
}

FrmMstItem::FrmMstItem(QWidget* parent)
    : FrmMaster({QStringLiteral("アイテムマスタ保守"), QStringLiteral("ｱｲﾃﾑ№"),
                 QStringLiteral("アイテム名"), QStringLiteral("ｱｲﾃﾑ№"),
                 QStringLiteral("アイテム名"), MasterKind::Item,
                 QStringLiteral("アイテムマスタ情報の画面表示")},
                parent) {
    setObjectName(QStringLiteral("FrmMstItem"));
}

FrmMstYouto::FrmMstYouto(QWidget* parent)
    : FrmMaster({QStringLiteral("用途マスタ保守"), QStringLiteral("用途№"),
                 QStringLiteral("用途名"), QStringLiteral("用途№"), QStringLiteral("用途名"),
                 MasterKind::Youto, QStringLiteral("用途マスタ情報の画面表示")},
                parent) {
    setObjectName(QStringLiteral("FrmMstYouto"));
}
