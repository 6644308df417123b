#include "customer/FrmKokyaku.h"

#include "customer/Age.h"
#include "customer/FrmKazoku.h"
#include "customer/UriageEntry.h"
#include "customer/UriageGrid.h"
#include "customer/UserSql.h"
#include "data/Lookups.h"
#include "frame/BasCmnSubFun.h"
#include "frame/Globals.h"
#include "frame/Log.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "history/FrmRireki.h"
#include "pickers/FrmZipList.h"
#include "platform/Format.h"
#include "platform/controls/FunctionKeyRow.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xKana.h"
#include "platform/controls/xLabel.h"
#include "platform/controls/xZip.h"
#include "platform/db/SqlText.h"
#include "platform/ui/Clock.h"
#include "platform/ui/MsgBox.h"
#include "platform/ui/ShowModal.h"
#include "platform/ui/WaitCursor.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCloseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>

namespace {

const QString ScreenName = QStringLiteral("顧客検索画面");

enum Key { F1 = 0, F3 = 2, F5 = 4, F6 = 5, F8 = 7, F12 = 11 };

// A birth date part shown without leading zeros; 0 and empty text show as empty text.
QString birthPart(const QString& text) {
    bool isNumber = false;
    const double value = text.trimmed().toDouble(&isNumber);
    return isNumber ? FormatNumber(value, QStringLiteral("##")) : text;
}

} // namespace

FrmKokyaku::FrmKokyaku(QWidget* parent) : Screen(parent) {
    setObjectName(QStringLiteral("FrmKokyaku"));
    setWindowTitle(QStringLiteral("顧客登録・照会"));
    setEnterMovesFocus(true);
    buildForm();
    connectEvents();
    resize(1260, 780);
}

void FrmKokyaku::connectEvents() {
    connect(keys_, &FunctionKeyRow::pressed, this, &FrmKokyaku::cmdFnuc_Click);
    connect(cmdJusyo, &QPushButton::clicked, this, &FrmKokyaku::cmdJusyo_Click);
    connect(txtYubin, &QLineEdit::textEdited, this, &FrmKokyaku::fillAddressFromPostalCode);
    connect(spdData, &SpreadGrid::clicked, this, &FrmKokyaku::spdData_Click);
    FraUriage->attachGrid(spdData);
    for (xField* part : {txtTanjo_Nen, txtTanjo_Mon, txtTanjo_Day})
        connect(part, &xInput::leave, part, [part] { part->setText(birthPart(part->text())); });
}

QList<xField*> FrmKokyaku::recordFields() const {
    return {txtName,   txtJusyo1,    txtJusyo2,    txtTel,       txtKinmu,    txtKinmuTel,
            txtSyokai, txtSyokaiTel, txtTanjo_Nen, txtTanjo_Mon, txtTanjo_Day};
}

void FrmKokyaku::showEvent(QShowEvent* event) {
    Screen::showEvent(event);
    if (!loaded_) {
        loaded_ = true;
        Form_Load();
    }
    Form_Activate();
}

void FrmKokyaku::Form_Load() {
    txtKana->linkTo(txtName);
    txtDate->setDate(Today());
    FraUriage->fillMasterLists();
    FraUriage->txtDatc->setDate(Today());
    koushin_ = false;
    currentNo_ = syori_;
    if (syori_ != 0) {
        EditMode = 1;
        WaitCursor wait;
        Disp_User(syori_);
        if (spdData->maxRows() > 0)
            spdData_Click(1, 1);
        return;
    }
    EditMode = 0;
    showGrid(false);
    cmdFnuc[F8]->setEnabled(false);
    cmdFnuc[F12]->setEnabled(false);
    Clear_User();
    txtTel->setText(tel_);
    FraUriage->Clear_UriData();
}

void FrmKokyaku::Form_Activate() {
    if (currentNo_ != 0) {
        showGrid(spdData->maxRows() > 0);
        txtDate->setFocus();
        return;
    }
    showGrid(false);
    txtName->setFocus();
}

void FrmKokyaku::showGrid(bool shown) {
    if (!shown)
        spdData->clearRows();
    // The purchase frame sits right below the grid, so it moves up when the grid goes.
    spdData->setVisible(shown);
}

void FrmKokyaku::Disp_User(qint64 customerNo) {
    Procedure(ScreenName, QStringLiteral("Disp_User"), QStringLiteral("顧客情報の取得処理"), [&] {
        RecordSet row = gCon.execute(QStringLiteral("select * from San_User where User_No = ") +
                                     SqlNum(customerNo) +
                                     QStringLiteral(" and ( User_Dlt_F <> '1' Or User_Dlt_F Is "
                                                    "Null ) Order By User_No"));
        if (row.eof()) {
            CmnDspMsg(OpeErr_008);
            return;
        }
        const auto text = [&](const char* column) {
            return CmnNvl(row.field(QString::fromLatin1(column)), QString()).toString();
        };
        lblNo->setText(QString::number(customerNo));
        txtName->setText(text("User_Name"));
        txtKana->setText(text("User_Kana"));
        txtYubin->setText(text("User_Yubin"));
        txtJusyo1->setText(text("User_Jusyo1"));
        txtJusyo2->setText(text("User_Jusyo2"));
        txtTel->setText(text("User_Tel"));
        txtKinmu->setText(text("User_Kinmu"));
        txtKinmuTel->setText(text("User_KinmuTel"));
        txtSyokai->setText(text("User_Syokai"));
        txtSyokaiTel->setText(text("User_SyokaiTel"));
        const std::pair<const char*, QButtonGroup*> options[] = {{"User_Sex", sexGroup_},
                                                                 {"User_Kazok_F", kazokGroup_},
                                                                 {"User_Tanjo_Go", tanjoGoGroup_}};
        for (const auto& [column, group] : options) {
            const QString value = text(column).trimmed();
            if (!value.isEmpty() && group->button(value.toInt()))
                group->button(value.toInt())->setChecked(true);
        }
        txtTanjo_Nen->setText(birthPart(text("User_Tanjo_Nen")));
        txtTanjo_Mon->setText(birthPart(text("User_Tanjo_Mon")));
        txtTanjo_Day->setText(birthPart(text("User_Tanjo_Day")));
        Get_Age(text("User_Tanjo_Go").toInt(), text("User_Tanjo_Nen").toInt(),
                text("User_Tanjo_Mon").toInt(), text("User_Tanjo_Day").toInt());
        if (age_ != 0)
            lblAge->setText(QString::number(age_) + QStringLiteral("歳"));
        const QString entry1 = text("User_Entry1").trimmed();
        txtDate->setDate(entry1.isEmpty()
                             ? Today()
                             : QDate::fromString(entry1.left(10), QStringLiteral("yyyy/MM/dd")));
        row.close();
        cmdFnuc[F3]->setEnabled(true);
        cmdFnuc[F8]->setEnabled(true);
        cmdFnuc[F12]->setEnabled(true);
        Disp_SpdData(customerNo);
    });
}

void FrmKokyaku::Disp_SpdData(qint64 customerNo) {
    FraUriage->Clear_UriData();
    Procedure(ScreenName, QStringLiteral("Disp_SpdData"), QStringLiteral("顧客売上履歴の取得処理"),
              [&] { spdData->fill(customerNo); });
}

void FrmKokyaku::Get_Age(int era, int year, int month, int day) {
    age_ = AgeOn(era, year, month, day, Today());
}

void FrmKokyaku::Clear_User() {
    Procedure(ScreenName, QStringLiteral("Clear_User"), QStringLiteral("顧客情報入力クリア処理"),
              [&] {
                  txtDate->setDate(Today());
                  lblNo->clear();
                  txtKana->clear();
                  CmnCtlEnabled(txtKana, true);
                  txtYubin->clear();
                  CmnCtlEnabled(txtYubin, true);
                  for (xField* field : recordFields()) {
                      field->clear();
                      CmnCtlEnabled(field, true);
                  }
                  optSex[0]->setChecked(true);
                  optKazok_F[2]->setChecked(true);
                  optTanjo_Go[1]->setChecked(true);
                  lblAge->clear();
              });
}

qint64 FrmKokyaku::Get_LastUNo() {
    // Runs inside the registration's transaction; a failure ends the registration as a whole.
    CmnWriteLog(ScreenName, QStringLiteral("Get_LastUNo"), QStringLiteral("最終顧客Ｎｏ取得処理"),
                QString());
    RecordSet rows = gCon.execute(QStringLiteral("select max(User_No) from San_User"));
    return rows.field(0).isNull() ? 1 : rows.field(0).toLongLong() + 1;
}

void FrmKokyaku::Save_User() {
    Procedure(ScreenName, QStringLiteral("Save_User"), QStringLiteral("顧客マスター保存処理"),
              [&] { saveCustomer(); }, {.ownMessage = [this](const Failure& failure) {
                  if (failure.number() != ErrorNumber::DatabaseFailed)
                      return false;
                  CmnDspMsg(OpeErr_010);
                  txtName->setFocus();
                  return true;
              }});
}

void FrmKokyaku::saveCustomer() {
    const UserRecord user{txtName->text(),
                          txtKana->text(),
                          txtYubin->text(),
                          txtJusyo1->text(),
                          txtJusyo2->text(),
                          txtTel->text(),
                          txtKinmu->text(),
                          txtKinmuTel->text(),
                          txtSyokai->text(),
                          txtSyokaiTel->text(),
                          sexGroup_->checkedId(),
                          kazokGroup_->checkedId(),
                          tanjoGoGroup_->checkedId(),
                          txtTanjo_Nen->text(),
                          txtTanjo_Mon->text(),
                          txtTanjo_Day->text(),
                          txtDate->date()};
    gCon.beginTrans();
    if (EditMode == 2) {
        for (const QString& statement : UserDeleteSql(currentNo_))
            gCon.execute(statement);
        gCon.commitTrans();
        CmnDspMsg(OpeInf_002);
        showGrid(false);
        Clear_User();
        EditMode = 0;
        cmdFnuc[F8]->setEnabled(false);
    } else {
        const qint64 number = EditMode == 0 ? Get_LastUNo() : currentNo_;
        gCon.execute(EditMode == 0 ? UserInsertSql(number, user, Today())
                                   : UserUpdateSql(number, user, Today()));
        Save_UriData(number);
        gCon.commitTrans();
        currentNo_ = number;
        CmnDspMsg(OpeInf_001);
        Clear_User();
        Disp_User(currentNo_);
        EditMode = 1;
    }
    FraUriage->Clear_UriData();
    txtName->setFocus();
}

void FrmKokyaku::cmdFnuc_Click(int index) {
    switch (index) {
    case F1:
        if (!spdData->hasMarkedLines() || CmnDspMsg(OpeQes_007) == Answer::Yes)
            done(QDialog::Accepted);
        break;
    case F3:
        openFamily();
        break;
    case F5:
        if (txtName->text().trimmed().isEmpty()) {
            CmnDspMsg(OpeErr_001);
            txtName->setFocus();
            break;
        }
        if (CmnDspMsg(spdData->hasMarkedLines() ? OpeQes_001 : OpeQes_011) == Answer::Yes) {
            Save_User();
            koushin_ = true;
        }
        break;
    case F6:
        if (CmnDspMsg(OpeQes_008) != Answer::Yes)
            break;
        showGrid(false);
        Clear_User();
        FraUriage->Clear_UriData();
        EditMode = 0;
        cmdFnuc[F8]->setEnabled(false);
        cmdFnuc[F3]->setEnabled(false);
        txtName->setFocus();
        break;
    case F8:
        if (CmnDspMsg(OpeQes_002) != Answer::Yes)
            break;
        EditMode = 2;
        Save_User();
        koushin_ = true;
        break;
    case F12:
        openHistory();
        break;
    default:
        break;
    }
}

void FrmKokyaku::openHistory() {
    // The history needs a customer number; after a clear or a deletion none is shown.
    bool isNumber = false;
    const qint64 shown = lblNo->text().toLongLong(&isNumber);
    if (!isNumber || shown == 0)
        return;
    FrmRireki history(this);
    history.setKokNo(shown);
    ShowModal(history);
    koushin_ = history.Koushin();
    WaitCursor wait;
    Disp_User(currentNo_);
    if (spdData->maxRows() > 0)
        spdData_Click(1, 1);
    Form_Activate();
}

void FrmKokyaku::openFamily() {
    if (txtTel->text().isEmpty())
        return;
    FrmKazoku family(this);
    family.setTEL(txtTel->text());
    ShowModal(family);
    if (family.chosenCustomer() != 0) {
        reopenFor(family.chosenCustomer());
        return;
    }
    Form_Activate();
}

void FrmKokyaku::reopenFor(qint64 customerNo) {
    // The register closes without a question and opens again for the chosen member; the
    // screen that opened it gets control back when that one closes.
    FrmKokyaku again(parentWidget());
    again.setSyori(customerNo);
    again.setGeometry(geometry());
    ShowModal(again);
    koushin_ = koushin_ || again.Koushin();
    done(QDialog::Accepted);
}

void FrmKokyaku::cmdJusyo_Click() {
    FrmZipList search(this);
    search.setTodoFlg(0);
    ShowModal(search);
    if (!search.Zip().isEmpty())
        txtYubin->setText(search.Zip());
    if (!search.Addr().isEmpty())
        txtJusyo1->setText(search.Addr());
    Form_Activate();
    QApplication::processEvents();
    txtJusyo1->setFocus();
}

void FrmKokyaku::fillAddressFromPostalCode() {
    static const QRegularExpression complete(QStringLiteral("^\\d{3}-\\d{4}$"));
    const QString code = txtYubin->text();
    if (!complete.match(code).hasMatch())
        return;
    txtJusyo1->setText(CmnGetJusyo(false, code.left(3).toLongLong(), code.mid(4, 4).toLongLong()));
}

void FrmKokyaku::spdData_Click(int row, int) {
    if (row < 1 || row > spdData->maxRows())
        return;
    FraUriage->LineMode = 1;
    spdData->setActiveCell(row, 1);
    FraUriage->showLine(spdData->line(row));
}

void FrmKokyaku::Save_UriData(qint64 customerNo) {
    // Inside the registration's transaction: a failing line fails the registration as a whole.
    CmnWriteLog(ScreenName, QStringLiteral("Save_UriData"),
                QStringLiteral("顧客売上履歴マスター保存処理"), QString());
    spdData->save(customerNo);
}

bool FrmKokyaku::enterPressed(QWidget* from) {
    if (FraUriage->enterPressed(from))
        return true;
    const auto in = [from](const auto& buttons) {
        return std::find(buttons.begin(), buttons.end(), from) != buttons.end();
    };
    if (in(optSex)) {
        optKazok_F[2]->setFocus();
        return true;
    }
    if (in(optKazok_F)) {
        optTanjo_Go[1]->setFocus();
        return true;
    }
    if (in(optTanjo_Go)) {
        txtTanjo_Nen->setFocus();
        return true;
    }
    return Screen::enterPressed(from);
}

void FrmKokyaku::closeEvent(QCloseEvent* event) {
    // The window's close box is the close key: unsaved lines are asked about first.
    event->ignore();
    cmdFnuc_Click(F1);
}
