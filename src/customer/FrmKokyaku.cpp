#include "customer/FrmKokyaku.h"

#include "customer/FrmKazoku.h"
#include "customer/PurchaseGrid.h"
#include "customer/UriageEntry.h"
#include "data/CustomerStore.h"
#include "data/Lookups.h"
#include "data/OrderStore.h"
#include "data/PurchaseStore.h"
#include "domain/Age.h"
#include "domain/Prescription.h"
#include "frame/BasCmnSubFun.h"
#include "frame/Conflicts.h"
#include "frame/DateFields.h"
#include "frame/Globals.h"
#include "frame/Log.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "history/FrmRireki.h"
#include "orders/FrmJyuchu.h"
#include "pickers/FrmZipList.h"
#include "platform/Format.h"
#include "platform/controls/FunctionKeyRow.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xKana.h"
#include "platform/controls/xLabel.h"
#include "platform/controls/xZip.h"
#include "platform/db/Transaction.h"
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
#include <cmath>

namespace {

const QString ScreenName = QStringLiteral("顧客検索画面");

enum Key { F1 = 0, F3 = 2, F5 = 4, F6 = 5, F8 = 7, F9 = 8, F12 = 11 };

// A birth date part shown without leading zeros; 0 and empty text show as empty text.
QString birthPart(const QString& text) {
    bool isNumber = false;
    const double value = text.trimmed().toDouble(&isNumber);
    return isNumber ? FormatNumber(value, QStringLiteral("##")) : text;
}

int wholeNumber(const xField* field) {
    return int(std::lround(ReadNumber(field->text())));
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
    connect(spdData, &GridView::clicked, this, &FrmKokyaku::spdData_Click);
    connect(spdData, &PurchaseGrid::linesChanged, this, &FrmKokyaku::showOwed);
    // The entry always shows the current line: moved to by a click, the arrow keys or a drag.
    connect(spdData, &GridView::currentRowChanged, this,
            [this](int row) { spdData_Click(row, 1); });
    FraUriage->attachGrid(spdData);
    for (xField* part : {txtTanjo_Nen, txtTanjo_Mon, txtTanjo_Day})
        connect(part, &xInput::leave, part, [part] { part->setText(birthPart(part->text())); });
    CmnRefuseUnreadableDateOnLeave(txtDate);
    connect(txtTanjo_Nen, &xInput::leave, this, &FrmKokyaku::westernYearToEra);
    for (xField* part : {txtTanjo_Mon, txtTanjo_Day})
        connect(part, &xInput::leave, this, [this] {
            if (typedWesternYear_ != 0)
                showEraOf(typedWesternYear_);
        });
    // A year or an era chosen anew is no longer the Western year typed.
    connect(txtTanjo_Nen, &QLineEdit::textEdited, this, [this] { typedWesternYear_ = 0; });
    connect(tanjoGoGroup_, &QButtonGroup::idClicked, this, [this] { typedWesternYear_ = 0; });
}

void FrmKokyaku::westernYearToEra() {
    const int year = wholeNumber(txtTanjo_Nen);
    if (tanjoGoGroup_->checkedId() == NoEra || year < 1900)
        return;
    typedWesternYear_ = year;
    showEraOf(year);
}

void FrmKokyaku::showEraOf(int westernYear) {
    // Before 大正 there is no era to name it in: the year stays Western.
    const EraYear named =
        EraYearOf(westernYear, wholeNumber(txtTanjo_Mon), wholeNumber(txtTanjo_Day));
    optTanjo_Go[named.era]->setChecked(true);
    txtTanjo_Nen->setText(QString::number(named.year));
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
    FraUriage->setPurchaseDate(Today());
    koushin_ = false;
    currentNo_ = syori_;
    if (syori_ != 0) {
        record_ = Record::Stored;
        WaitCursor wait;
        Disp_User(syori_);
        if (shownNo_ == syori_) {
            if (spdData->lineCount() > 0)
                spdData_Click(1, 1);
            return;
        }
        // Not there (deleted meanwhile or marked deleted): the register opens for a new one.
    }
    currentNo_ = 0;
    record_ = Record::New;
    showGrid(false);
    cmdFnuc[F8]->setEnabled(false);
    cmdFnuc[F12]->setEnabled(false);
    Clear_User();
    txtTel->setText(tel_);
    FraUriage->Clear_UriData();
}

void FrmKokyaku::Form_Activate() {
    // Lines that wait to be registered stay, for a new customer too.
    showGrid(spdData->lineCount() > 0);
    if (currentNo_ != 0)
        txtDate->setFocus();
    else
        txtName->setFocus();
}

void FrmKokyaku::showGrid(bool shown) {
    if (!shown)
        spdData->clearLines();
    // The purchase frame sits right below the grid, so it moves up when the grid goes.
    spdData->setVisible(shown);
}

void FrmKokyaku::Disp_User(qint64 customerNo) {
    Procedure(ScreenName, QStringLiteral("Disp_User"), QStringLiteral("顧客情報の取得処理"), [&] {
        const std::optional<Customer> customer = CustomerStore::Find(customerNo);
        if (!customer) {
            CmnDspMsg(OpeErr_008);
            forgetCustomer();
            return;
        }
        showCustomer(*customer);
        cmdFnuc[F3]->setEnabled(true);
        cmdFnuc[F8]->setEnabled(true);
        cmdFnuc[F12]->setEnabled(true);
        Disp_SpdData(customerNo);
    });
}

void FrmKokyaku::forgetCustomer() {
    // A customer who is not there cannot be changed: the next registration inserts what the
    // fields and the waiting lines hold as a new customer.
    record_ = Record::New;
    currentNo_ = 0;
    shownNo_ = 0;
    lblNo->clear();
    cmdFnuc[F8]->setEnabled(false);
    cmdFnuc[F12]->setEnabled(false);
    spdData->keepUnstoredLines();
    showGrid(spdData->lineCount() > 0);
}

void FrmKokyaku::showCustomer(const Customer& c) {
    shown_ = std::make_unique<Customer>(c);
    shownNo_ = c.no;
    lblNo->setText(QString::number(c.no));
    txtName->setText(c.name);
    txtKana->setText(c.kana);
    txtYubin->setText(c.yubin);
    txtJusyo1->setText(c.jusyo1);
    txtJusyo2->setText(c.jusyo2);
    txtTel->setText(c.tel);
    txtKinmu->setText(c.kinmu);
    txtKinmuTel->setText(c.kinmuTel);
    txtSyokai->setText(c.syokai);
    txtSyokaiTel->setText(c.syokaiTel);
    for (const auto& [value, group] : {std::pair{c.sex, sexGroup_}, std::pair{c.kazok, kazokGroup_},
                                       std::pair{c.birth.era, tanjoGoGroup_}})
        if (QAbstractButton* option = group->button(value))
            option->setChecked(true);
    typedWesternYear_ = 0;
    txtTanjo_Nen->setText(birthPart(QString::number(c.birth.year)));
    txtTanjo_Mon->setText(birthPart(QString::number(c.birth.month)));
    txtTanjo_Day->setText(birthPart(QString::number(c.birth.day)));
    Get_Age(c.birth.era, c.birth.year, c.birth.month, c.birth.day);
    if (age_ != 0)
        lblAge->setText(QString::number(age_) + QStringLiteral("歳"));
    txtDate->setDate(c.entry1.isValid() ? c.entry1 : Today());
}

void FrmKokyaku::Disp_SpdData(qint64 customerNo) {
    FraUriage->Clear_UriData();
    Procedure(ScreenName, QStringLiteral("Disp_SpdData"), QStringLiteral("顧客売上履歴の取得処理"),
              [&] {
                  std::vector<Purchase> purchases = PurchaseStore::OfCustomer(customerNo);
                  spdData->showPurchases(purchases, OrderStore::OfCustomer(customerNo));
              });
}

void FrmKokyaku::Get_Age(int era, int year, int month, int day) {
    age_ = AgeOn(era, year, month, day, Today());
}

void FrmKokyaku::Clear_User() {
    Procedure(ScreenName, QStringLiteral("Clear_User"), QStringLiteral("顧客情報入力クリア処理"),
              [&] {
                  txtDate->setDate(Today());
                  lblNo->clear();
                  shownNo_ = 0;
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
                  optTanjo_Go[Showa]->setChecked(true);
                  typedWesternYear_ = 0;
                  lblAge->clear();
              });
}

qint64 FrmKokyaku::Get_LastUNo() {
    // Runs inside the registration's transaction; a failure ends the registration as a whole.
    CmnWriteLog(ScreenName, QStringLiteral("Get_LastUNo"), QStringLiteral("最終顧客Ｎｏ取得処理"),
                QString());
    return CustomerStore::NextNo();
}

bool FrmKokyaku::Save_User() {
    return storeProcedure([this] { saveCustomer(); });
}

bool FrmKokyaku::Delete_User() {
    return storeProcedure([this] { deleteCustomer(); });
}

bool FrmKokyaku::storeProcedure(const std::function<void()>& store) {
    const auto ownMessage = [this](const Failure& failure) {
        if (IsConflict(failure)) {
            tellConflict(failure);
            return true;
        }
        if (failure.number() == ErrorNumber::DatabaseFailed) {
            CmnDspMsg(OpeErr_010);
        } else if (failure.number() == ErrorNumber::PaymentRefused) {
            // A deposit typed with a new line is more than its amount became afterwards.
            MsgBox(failure.description() + QStringLiteral("\n明細の金額か入金額を直してください。"),
                   MsgIcon::Exclamation, MsgButtons::OK, windowTitle());
        } else {
            return false;
        }
        txtName->setFocus();
        return true;
    };
    return Procedure(ScreenName, QStringLiteral("Save_User"),
                     QStringLiteral("顧客マスター保存処理"), store, {.ownMessage = ownMessage});
}

Customer FrmKokyaku::customerFromFields() const {
    Customer c;
    c.no = currentNo_;
    c.name = txtName->text();
    c.kana = txtKana->text();
    c.yubin = txtYubin->code();
    c.jusyo1 = txtJusyo1->text();
    c.jusyo2 = txtJusyo2->text();
    c.tel = txtTel->text();
    c.kinmu = txtKinmu->text();
    c.kinmuTel = txtKinmuTel->text();
    c.syokai = txtSyokai->text();
    c.syokaiTel = txtSyokaiTel->text();
    c.sex = sexGroup_->checkedId();
    c.kazok = kazokGroup_->checkedId();
    c.birth = {tanjoGoGroup_->checkedId(), wholeNumber(txtTanjo_Nen), wholeNumber(txtTanjo_Mon),
               wholeNumber(txtTanjo_Day)};
    // An emptied registration date is stored as empty text, shown again as today.
    c.entry1 = txtDate->isEmpty() ? QDate() : txtDate->date();
    return c;
}

bool FrmKokyaku::datesFit() {
    if (CmnRefuseUnreadableDate(txtDate))
        return false;
    const BirthDate birth = customerFromFields().birth;
    if (BirthDateTaken(birth.era, birth.year, birth.month, birth.day, Today()))
        return true;
    CmnDspMsg(OpeErr_003);
    txtTanjo_Nen->setFocus();
    return false;
}

void FrmKokyaku::tellConflict(const Failure& failure) {
    std::optional<Customer> stored;
    if (currentNo_ != 0 && record_ == Record::Stored)
        Procedure(ScreenName, QStringLiteral("Disp_User"), QStringLiteral("顧客情報の取得処理"),
                  [&] { stored = CustomerStore::Find(currentNo_); });
    if (!stored) {
        // He is gone: what was typed stays, to be registered as a new customer if wanted.
        MsgBox(failure.description() +
                   QStringLiteral("\n今回の登録では何も保存していません。入力した内容は画面に残して"
                                  "います。\n新しい顧客として登録するときは、もう一度［F5 登録］を"
                                  "押してください。"),
               MsgIcon::Exclamation, MsgButtons::OK, ConflictTitle);
        forgetCustomer();
    } else if (CmnAskReadAgain(failure.description())) {
        readAgainKeepingNewLines();
    }
    txtName->setFocus();
}

void FrmKokyaku::readAgainKeepingNewLines() {
    std::vector<PurchaseLine> waiting;
    for (const PurchaseLine& line : spdData->lines())
        if (line.state == LineState::New)
            waiting.push_back(line);
    WaitCursor wait;
    Clear_User();
    record_ = Record::Stored;
    Disp_User(currentNo_);
    for (const PurchaseLine& line : waiting)
        spdData->keepNewLine(line);
    if (spdData->lineCount() > 0)
        spdData_Click(1, 1);
    Form_Activate();
}

void FrmKokyaku::saveCustomer() {
    Customer customer = customerFromFields();
    if (record_ == Record::Stored && !shown_)
        throw RowDeletedMeanwhile(CustomerStore::RecordName(currentNo_, customer.name));
    Transaction transaction(gCon);
    if (record_ == Record::New) {
        customer.no = Get_LastUNo();
        CustomerStore::Insert(customer, Today());
    } else {
        CustomerStore::Update(*shown_, customer, Today());
    }
    Save_UriData(customer.no);
    transaction.commit();
    currentNo_ = customer.no;
    CmnDspMsg(OpeInf_001);
    Clear_User();
    record_ = Record::Stored;
    Disp_User(currentNo_);
    FraUriage->Clear_UriData();
    txtName->setFocus();
}

void FrmKokyaku::deleteCustomer() {
    if (record_ != Record::Stored || !shown_)
        throw RowDeletedMeanwhile(CustomerStore::RecordName(currentNo_, txtName->text()));
    Transaction transaction(gCon);
    std::vector<Purchase> shownPurchases;
    for (const PurchaseLine& line : spdData->lines())
        if (line.state != LineState::New)
            shownPurchases.push_back(line.read);
    CustomerStore::Remove(*shown_, shownPurchases);
    transaction.commit();
    CmnDspMsg(OpeInf_002);
    showGrid(false);
    Clear_User();
    record_ = Record::New;
    cmdFnuc[F8]->setEnabled(false);
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
        if (!datesFit())
            break;
        // A purchase typed but not put into the grid would be lost on Enter: No is the default.
        if (CmnDspMsg(spdData->hasMarkedLines() ? OpeQes_001 : OpeQes_011,
                      FraUriage->holdsTypedEntry() ? MsgDefault::Second : MsgDefault::First) ==
            Answer::Yes) {
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
        record_ = Record::New;
        cmdFnuc[F8]->setEnabled(false);
        cmdFnuc[F3]->setEnabled(false);
        txtName->setFocus();
        break;
    case F8: {
        if (CmnDspMsg(OpeQes_002) != Answer::Yes)
            break;
        Delete_User();
        koushin_ = true;
        break;
    }
    case F9:
        openOrder();
        break;
    case F12:
        openHistory();
        break;
    default:
        break;
    }
}

bool FrmKokyaku::mayLeaveWaitingLines() const {
    // Lines added, changed or marked but not saved go when the register is read again: asked
    // first, with No as the default so a habitual Enter keeps them.
    return !spdData->hasMarkedLines() || CmnDspMsg(OpeQes_007, MsgDefault::Second) == Answer::Yes;
}

void FrmKokyaku::openHistory() {
    // The history needs a customer number; after a clear or a deletion none is shown.
    if (shownNo_ == 0 || !mayLeaveWaitingLines())
        return;
    FrmRireki history(this);
    history.setKokNo(shownNo_);
    ShowModal(history);
    // Only ever from false to true: what the register saved stays reported to its caller.
    koushin_ = koushin_ || history.Koushin();
    WaitCursor wait;
    Disp_User(currentNo_);
    if (spdData->lineCount() > 0)
        spdData_Click(1, 1);
    Form_Activate();
}

void FrmKokyaku::openOrder() {
    const int shownId = FraUriage->shownLineId();
    const int row = shownId != 0 ? spdData->rowOf(shownId) : spdData->activeRow();
    if (row < 1 || row > spdData->lineCount() || spdData->line(row).state == LineState::Deleted) {
        MsgBox(QStringLiteral("受注・入金を開く売上の明細を選んでください。"), MsgIcon::Exclamation,
               MsgButtons::OK, windowTitle());
        return;
    }
    const PurchaseLine line = spdData->line(row);
    if (line.state == LineState::New) {
        std::vector<Purchase> stored;
        for (const PurchaseLine& other : spdData->lines())
            if (other.state != LineState::New)
                stored.push_back(other.read);
        FrmJyuchu order(line.purchase, line.order, line.payments, stored, this);
        if (ShowModal(order) == QDialog::Accepted)
            spdData->setOrder(line.id, order.order(), order.payments());
    } else {
        FrmJyuchu order(currentNo_, txtName->text(), line.read, this);
        ShowModal(order);
        if (order.stored()) {
            koushin_ = true;
            Procedure(ScreenName, QStringLiteral("Disp_SpdData"),
                      QStringLiteral("顧客売上履歴の取得処理"), [&] {
                          const OrderStore::OrderState state =
                              OrderStore::OfPurchase(currentNo_, line.read.seq);
                          spdData->setOrder(line.id, state.order, state.payments);
                      });
        }
    }
    showOwed();
}

void FrmKokyaku::showOwed() {
    const qint64 owed = spdData->outstanding();
    lblZankin->setText(owed == 0
                           ? QString()
                           : QStringLiteral("残金合計 ") + FormatYen(owed) + QStringLiteral("円"));
}

void FrmKokyaku::openFamily() {
    if (txtTel->text().isEmpty())
        return;
    FrmKazoku family(this);
    family.setTEL(txtTel->text());
    ShowModal(family);
    if (family.chosenCustomer() != 0 && mayLeaveWaitingLines()) {
        // The register closes without a question; Open shows it again for the chosen member.
        reopenFor_ = family.chosenCustomer();
        done(QDialog::Accepted);
        return;
    }
    Form_Activate();
}

bool FrmKokyaku::Open(QWidget* parent, qint64 customerNo, const QString& tel) {
    bool koushin = false;
    std::optional<QRect> placed;
    qint64 next = customerNo;
    do {
        FrmKokyaku reg(parent);
        reg.setSyori(next);
        reg.setTEL(tel);
        if (placed)
            reg.setGeometry(*placed); // the new register where the old one was
        ShowModal(reg);
        koushin = koushin || reg.Koushin();
        next = reg.reopenFor();
        placed = reg.geometry();
    } while (next != 0);
    return koushin;
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
    if (row < 1 || row > spdData->lineCount())
        return;
    const PurchaseLine& line = spdData->line(row);
    // The line the entry shows already: what was typed over it stays.
    if (line.id == FraUriage->shownLineId())
        return;
    // Another line chosen while a sale is typed and not yet put into the grid: asked first,
    // No (the default) keeps the sale and the line it belongs to.
    if (FraUriage->holdsTypedEntry() && CmnDspMsg(OpeQes_008, MsgDefault::Second) != Answer::Yes) {
        const int shownRow = spdData->rowOf(FraUriage->shownLineId());
        if (shownRow != 0)
            spdData->setActiveCell(shownRow, 1);
        else
            spdData->clearActiveCell();
        return;
    }
    FraUriage->showLine(line);
    spdData->setActiveCell(row, 1);
}

void FrmKokyaku::Save_UriData(qint64 customerNo) {
    // Inside the registration's transaction: a failing line fails the registration as a whole.
    CmnWriteLog(ScreenName, QStringLiteral("Save_UriData"),
                QStringLiteral("顧客売上履歴マスター保存処理"), QString());
    PurchaseStore::SaveLines(customerNo, spdData->lines());
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
