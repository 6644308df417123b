#include "customer/UriageEntry.h"

#include "customer/PurchaseGrid.h"
#include "data/Lookups.h"
#include "frame/BasCmnSubFun.h"
#include "frame/DateFields.h"
#include "frame/Log.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "platform/Failure.h"
#include "platform/Format.h"
#include "platform/controls/CodeList.h"
#include "platform/controls/ComboKeys.h"
#include "platform/controls/FocusOrder.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xNum.h"
#include "platform/ui/Caption.h"
#include "platform/ui/Clock.h"
#include "platform/ui/Named.h"
#include "prescription/PrescriptionReference.h"
#include "prescription/PrescriptionWiring.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <cmath>
#include <limits>

namespace {

template <class Field> Field* named(Field* field, const QString& name, int width) {
    field->setMinimumWidth(width);
    return Named(field, name);
}

// The pairs of prescription fields (right, left) in table order.
template <class Entry> auto tableOrder(Entry& e) {
    return std::array{&e.txtSph, &e.txtCyl,   &e.txtAx,    &e.txtS,   &e.txtP1,
                      &e.txtB1,  &e.txtP2,    &e.txtB2,    &e.txtGai, &e.txtTama,
                      &e.txtPd,  &e.txtRagan, &e.txtKyosei};
}

} // namespace

UriageEntry::UriageEntry(QWidget* parent) : QGroupBox(parent) {
    setObjectName(QStringLiteral("FraUriage"));
    setTitle(QStringLiteral("売上明細"));
    txtDatc = named(new xDate(this), QStringLiteral("txtDatc"), 110);
    CmnRefuseUnreadableDateOnLeave(txtDatc);
    txtKingaKci = named(new xNum(this), QStringLiteral("txtKingaKci"), 110);
    cboItem = named(new QComboBox(this), QStringLiteral("cboItem"), 170);
    cboYoto = named(new QComboBox(this), QStringLiteral("cboYoto"), 170);
    txtFm_Name = named(new xField(this, 40), QStringLiteral("txtFm_Name"), 200);
    txtLz_Name = named(new xField(this, 40), QStringLiteral("txtLz_Name"), 200);
    for (int i = 0; i < 2; ++i)
        cboMeka[i] = named(new QComboBox(this), QStringLiteral("cboMeka(%1)").arg(i), 170);
    txtFm_Kinga = named(new xNum(this), QStringLiteral("txtFm_Kinga"), 100);
    txtLz_Kinga = named(new xNum(this), QStringLiteral("txtLz_Kinga"), 100);
    txtFm_Size = named(new xField(this, 20), QStringLiteral("txtFm_Size"), 80);
    txtFm_Color = named(new xField(this, 20), QStringLiteral("txtFm_Color"), 100);
    txtSyohou = named(new xField(this, 100), QStringLiteral("txtSyohou"), 300);
    txtMemo = named(new xField(this, 100), QStringLiteral("txtMemo"), 300);
    const auto fields = tableOrder(*this);
    for (int eye = 0; eye < 2; ++eye)
        for (int i = 0; i < 13; ++i) {
            const QString name = QStringLiteral("txt") +
                                 QString::fromLatin1(PrescriptionColumns[i].suffix) +
                                 QStringLiteral("(%1)").arg(eye);
            (*fields[i])[eye] = named(new xField(this, 10), name, 58);
        }
    // Alt+M registers the line from any field of the entry.
    cmdOk =
        named(new QPushButton(QStringLiteral("明細登録(&M)"), this), QStringLiteral("cmdOk"), 96);
    cmdCancel =
        named(new QPushButton(QStringLiteral("明細削除"), this), QStringLiteral("cmdCancel"), 96);
    cmdClear =
        named(new QPushButton(QStringLiteral("クリア"), this), QStringLiteral("cmdClear"), 96);
    for (QPushButton* button : {cmdOk, cmdCancel, cmdClear})
        button->setAutoDefault(false);
    PressOnMnemonic(cmdOk);
    reference_ = new PrescriptionReference(this, eyeFields(0), eyeFields(1), true);
    layOut();
    SetTabChain(tabOrder());
    connectEvents();
}

void UriageEntry::setPurchaseDate(const QDate& date) {
    txtDatc->setDate(date);
}

QList<QWidget*> UriageEntry::tabOrder() const {
    QList<QWidget*> order{txtDatc,     cboItem,     cboYoto,     txtFm_Name, cboMeka[0],
                          txtFm_Kinga, txtFm_Size,  txtFm_Color, txtLz_Name, cboMeka[1],
                          txtLz_Kinga, txtKingaKci, txtSyohou,   txtMemo};
    order << PrescriptionTabOrder(eyeFields(0), eyeFields(1));
    return order << cmdOk << cmdCancel << cmdClear;
}

void UriageEntry::connectEvents() {
    new PrescriptionWiring(PrescriptionScreen::Register, eyeFields(0), eyeFields(1), this);
    connect(cmdOk, &QPushButton::clicked, this, &UriageEntry::cmdOk_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &UriageEntry::cmdCancel_Click);
    connect(cmdClear, &QPushButton::clicked, this, &UriageEntry::cmdClear_Click);
    for (xNum* amount : {txtFm_Kinga, txtLz_Kinga})
        connect(amount, &xInput::leave, this, &UriageEntry::updateTotal);
    connect(txtDatc, &xInput::leave, this, &UriageEntry::showPreviousPrescription);
    // Enter or Tab from the lens amount goes on to the total, ready to be typed over; a click
    // elsewhere goes where it was aimed.
    connect(txtLz_Kinga, &xInput::keyDown, this,
            [this](int key, Qt::KeyboardModifiers modifiers, bool* handled) {
                const bool onward =
                    key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab;
                if (!onward || (modifiers != Qt::NoModifier && modifiers != Qt::KeypadModifier))
                    return;
                updateTotal();
                txtKingaKci->setFocus(Qt::TabFocusReason);
                txtKingaKci->selectAll();
                *handled = true;
            });
    MoveOnEnter(cboItem, cboYoto);
    MoveOnEnter(cboYoto, txtFm_Name);
    MoveOnEnter(cboMeka[0], txtFm_Size);
    MoveOnEnter(cboMeka[1], txtLz_Kinga);
    ClearOnDelete(cboMeka[0]);
    ClearOnDelete(cboMeka[1]);
    for (xField* note : {txtSyohou, txtMemo})
        connect(note, &xInput::keyDown, this,
                [this, note](int key, Qt::KeyboardModifiers, bool* handled) {
                    if (key == Qt::Key_Return || key == Qt::Key_Enter)
                        *handled = enterPressed(note);
                });
}

void UriageEntry::attachGrid(PurchaseGrid* grid) {
    grid_ = grid;
    connect(grid_, &PurchaseGrid::linesChanged, this, &UriageEntry::showPreviousPrescription);
}

void UriageEntry::showPreviousPrescription() {
    if (!grid_)
        return;
    // Lines not stored yet get their numbers after every stored one, in the order entered.
    constexpr int FirstUnstored = 32768;
    const auto madeAs = [](const PurchaseLine& line) {
        return line.purchase.seq != 0 ? line.purchase.seq : FirstUnstored + line.id;
    };
    std::vector<Purchase> others;
    int seq = std::numeric_limits<int>::max();
    for (const PurchaseLine& line : grid_->lines()) {
        if (line.id == lineId_) {
            seq = madeAs(line);
        } else if (line.state != LineState::Deleted) {
            others.push_back(line.purchase);
            others.back().seq = madeAs(line);
        }
    }
    // Without a date the purchase is taken as the newest.
    const QDate typed = txtDatc->date();
    const QDate date = typed == xDate::EmptyDate ? QDate(9999, 12, 31) : typed;
    reference_->show(PreviousPrescription(others, date, seq));
}

void UriageEntry::updateTotal() {
    txtKingaKci->setValue(txtFm_Kinga->Value() + txtLz_Kinga->Value());
}

bool UriageEntry::enterPressed(QWidget* from) {
    const std::pair<QWidget*, QWidget*> moves[] = {{txtSyohou, txtMemo}, {txtMemo, txtSph[0]}};
    for (const auto& [source, target] : moves)
        if (from == source) {
            target->setFocus();
            return true;
        }
    return false;
}

std::optional<Purchase> UriageEntry::purchaseFromFields() {
    const auto yen = [](const xNum* field) {
        return qint64(std::llround(field->Value()));
    };
    Purchase p;
    p.date = txtDatc->date();
    p.total = yen(txtKingaKci);
    p.itemNo = SelectedCode(cboItem);
    p.youtoNo = SelectedCode(cboYoto);
    p.fmName = txtFm_Name->text();
    p.fmMekaNo = SelectedCode(cboMeka[0]);
    p.fmKinga = yen(txtFm_Kinga);
    p.fmSize = txtFm_Size->text();
    p.fmColor = txtFm_Color->text();
    p.lzName = txtLz_Name->text();
    p.lzMekaNo = SelectedCode(cboMeka[1]);
    p.lzKinga = yen(txtLz_Kinga);
    p.syohou = txtSyohou->text();
    p.memo = txtMemo->text();
    for (int eye = 0; eye < 2; ++eye)
        for (int i = 0; i < 13; ++i) {
            try {
                SetPrescriptionText(p.eyes[eye], i, prescriptionField(eye, i)->text());
            } catch (const Failure&) {
                CmnDspMsg(OpeErr_004);
                prescriptionField(eye, i)->setFocus();
                return std::nullopt;
            }
        }
    return p;
}

void UriageEntry::cmdOk_Click() {
    for (QComboBox* required : {cboItem, cboYoto})
        if (required->currentText().isEmpty()) {
            CmnDspMsg(OpeErr_001);
            required->setFocus();
            return;
        }
    if (txtDatc->isEmpty()) {
        CmnDspMsg(OpeErr_001);
        txtDatc->setFocus();
        return;
    }
    if (CmnRefuseUnreadableDate(txtDatc))
        return;
    const std::optional<Purchase> purchase = purchaseFromFields();
    if (!purchase)
        return;
    if (grid_->isHidden())
        grid_->setVisible(true);
    if (!grid_->writeEntry(lineId_, *purchase)) {
        CmnDspMsg(OpeErr_017);
        return;
    }
    Clear_UriData();
    txtDatc->setFocus();
}

void UriageEntry::cmdCancel_Click() {
    const int row = grid_->activeRow();
    if (row < 1)
        return;
    grid_->toggleDeletion(row);
    Clear_UriData();
    txtDatc->setFocus();
}

void UriageEntry::cmdClear_Click() {
    Clear_UriData();
    txtDatc->setFocus();
}

void UriageEntry::layOut() {
    auto* sale = new QGridLayout;
    sale->setHorizontalSpacing(6);
    AddCaptioned(sale, QStringLiteral("売上日"), txtDatc, 0, 0);
    AddCaptioned(sale, QStringLiteral("ｱｲﾃﾑ"), cboItem, 0, 2);
    AddCaptioned(sale, QStringLiteral("用途"), cboYoto, 0, 4);
    AddCaptioned(sale, QStringLiteral("ﾌﾚｰﾑ 品名"), txtFm_Name, 1, 0);
    AddCaptioned(sale, QStringLiteral("ﾒｰｶｰ"), cboMeka[0], 1, 2);
    AddCaptioned(sale, QStringLiteral("金額"), txtFm_Kinga, 1, 4);
    sale->addWidget(FieldCaption(QStringLiteral("ｻｲｽﾞ"), this), 1, 6);
    auto* sizeColour = new QHBoxLayout;
    sizeColour->addWidget(txtFm_Size);
    AddCaptioned(sizeColour, QStringLiteral("ｶﾗｰ"), txtFm_Color);
    sale->addLayout(sizeColour, 1, 7);
    AddCaptioned(sale, QStringLiteral("ﾚﾝｽﾞ 品名"), txtLz_Name, 2, 0);
    AddCaptioned(sale, QStringLiteral("ﾒｰｶｰ"), cboMeka[1], 2, 2);
    AddCaptioned(sale, QStringLiteral("金額"), txtLz_Kinga, 2, 4);
    AddCaptioned(sale, QStringLiteral("売上合計"), txtKingaKci, 2, 6);
    AddCaptioned(sale, QStringLiteral("眼処方"), txtSyohou, 3, 0, 3);
    AddCaptioned(sale, QStringLiteral("メ モ"), txtMemo, 3, 4, 3);

    auto* eyes =
        PrescriptionGrid(this, eyeFields(0), eyeFields(1),
                         {QStringLiteral("PD(遠用)"), QStringLiteral("PD(近用)")}, reference_);

    auto* buttons = new QVBoxLayout;
    buttons->addWidget(cmdOk);
    buttons->addWidget(cmdCancel);
    buttons->addWidget(cmdClear);
    buttons->addStretch();
    auto* left = new QVBoxLayout;
    left->addLayout(sale);
    left->addLayout(eyes);
    auto* frame = new QHBoxLayout(this);
    frame->setContentsMargins(8, 4, 8, 6);
    frame->addLayout(left, 1);
    frame->addLayout(buttons);
}

xField* UriageEntry::prescriptionField(int eye, int index) const {
    return (*tableOrder(*this)[index])[eye];
}

EyeFields UriageEntry::eyeFields(int eye) const {
    EyeFields fields;
    for (int i = 0; i < 13; ++i)
        fields[i] = prescriptionField(eye, i);
    return fields;
}

void UriageEntry::fillMasterLists() {
    MasterNames& masters = grid_->masters();
    CmnSetMstCombo(cboYoto, [&] { return masters.listEntries(MasterKind::Youto); });
    CmnSetMstCombo(cboItem, [&] { return masters.listEntries(MasterKind::Item); });
    CmnSetMstCombo(cboMeka[0], [&] { return masters.listEntries(MasterKind::Meka); });
    CmnSetMstCombo(cboMeka[1], [&] { return masters.listEntries(MasterKind::Meka); });
}

void UriageEntry::showLine(const PurchaseLine& line) {
    const Purchase& p = line.purchase;
    lineId_ = line.id;
    txtDatc->setDate(p.date);
    txtKingaKci->setValue(double(p.total));
    SelectCode(cboItem, p.itemNo);
    SelectCode(cboYoto, p.youtoNo);
    txtFm_Name->setText(p.fmName);
    SelectCode(cboMeka[0], p.fmMekaNo);
    txtFm_Kinga->setValue(double(p.fmKinga));
    txtFm_Size->setText(p.fmSize);
    txtFm_Color->setText(p.fmColor);
    txtLz_Name->setText(p.lzName);
    SelectCode(cboMeka[1], p.lzMekaNo);
    txtLz_Kinga->setValue(double(p.lzKinga));
    txtSyohou->setText(p.syohou);
    txtMemo->setText(p.memo);
    for (int eye = 0; eye < 2; ++eye)
        for (int i = 0; i < 13; ++i)
            prescriptionField(eye, i)->setText(PrescriptionText(p.eyes[eye], i));
    shownTexts_ = fieldTexts();
    showPreviousPrescription();
}

void UriageEntry::Clear_UriData() {
    CmnWriteLog(QStringLiteral("顧客検索画面"), QStringLiteral("Clear_UriData"),
                QStringLiteral("売上情報入力クリア処理"), QString());
    txtDatc->setDate(Today());
    for (QComboBox* list : {cboItem, cboYoto, cboMeka[0], cboMeka[1]})
        SelectCode(list, QString());
    for (xField* field : {txtFm_Name, txtFm_Size, txtFm_Color, txtLz_Name, txtSyohou, txtMemo})
        field->clear();
    for (int eye = 0; eye < 2; ++eye)
        for (int i = 0; i < 13; ++i)
            prescriptionField(eye, i)->clear();
    for (xNum* amount : {txtFm_Kinga, txtLz_Kinga, txtKingaKci})
        amount->setValue(0);
    lineId_ = 0;
    shownTexts_ = fieldTexts();
    showPreviousPrescription();
}

QStringList UriageEntry::fieldTexts() const {
    QStringList texts{txtDatc->text()};
    for (const QComboBox* list : {cboItem, cboYoto, cboMeka[0], cboMeka[1]})
        texts << list->currentText();
    for (const xField* field :
         {txtFm_Name, txtFm_Size, txtFm_Color, txtLz_Name, txtSyohou, txtMemo})
        texts << field->text();
    // Amounts by value: a field being typed in shows its number without the thousands marks.
    for (const xNum* amount : {txtFm_Kinga, txtLz_Kinga, txtKingaKci})
        texts << QString::number(amount->Value());
    for (int eye = 0; eye < 2; ++eye)
        for (int i = 0; i < 13; ++i)
            texts << prescriptionField(eye, i)->text();
    return texts;
}
