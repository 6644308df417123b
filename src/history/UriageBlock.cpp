#include "history/UriageBlock.h"

#include "data/Lookups.h"
#include "frame/BasCmnSubFun.h"
#include "frame/DateFields.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "platform/controls/CodeList.h"
#include "platform/controls/ComboKeys.h"
#include "platform/controls/FocusOrder.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xInput.h"
#include "platform/controls/xNum.h"
#include "platform/ui/Caption.h"
#include "platform/ui/Named.h"
#include "prescription/PrescriptionReference.h"
#include "prescription/PrescriptionWiring.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <cmath>

UriageBlock::UriageBlock(int index, QWidget* parent) : QGroupBox(parent) {
    setObjectName(QStringLiteral("FraUriage(%1)").arg(index));
    txtUriDate = Named(new xDate(this), QStringLiteral("txtUriDate"));
    CmnRefuseUnreadableDateOnLeave(txtUriDate);
    cboItem = Named(new QComboBox(this), QStringLiteral("cboItem"));
    cboYouto = Named(new QComboBox(this), QStringLiteral("cboYouto"));
    cboFm_Meka = Named(new QComboBox(this), QStringLiteral("cboFm_Meka"));
    cboLz_Meka = Named(new QComboBox(this), QStringLiteral("cboLz_Meka"));
    // The block is read-only until corrected: what it shows must still be read.
    for (QComboBox* list : {cboItem, cboYouto, cboFm_Meka, cboLz_Meka})
        KeepTextReadableWhenDisabled(list);
    txtFm_Name = Named(new xField(this, 40), QStringLiteral("txtFm_Name"));
    txtFm_Size = Named(new xField(this, 20), QStringLiteral("txtFm_Size"));
    txtFm_Color = Named(new xField(this, 20), QStringLiteral("txtFm_Color"));
    txtLz_Name = Named(new xField(this, 40), QStringLiteral("txtLz_Name"));
    txtFm_Kinga = Named(new xNum(this), QStringLiteral("txtFm_Kinga"));
    txtLz_Kinga = Named(new xNum(this), QStringLiteral("txtLz_Kinga"));
    txtKinga = Named(new xNum(this), QStringLiteral("txtKinga"));
    for (int eye = 0; eye < 2; ++eye)
        for (int i = 0; i < 13; ++i) {
            eyes_[eye][i] = new xField(this, 10);
            eyes_[eye][i]->setObjectName(QStringLiteral("txt") +
                                         QString::fromLatin1(PrescriptionColumns[i].suffix) +
                                         (eye == 0 ? QStringLiteral("_R") : QStringLiteral("_L")));
        }
    new PrescriptionWiring(PrescriptionScreen::History, eyes_[0], eyes_[1], this);
    MoveOnEnter(cboItem, cboYouto);
    MoveOnEnter(cboYouto, txtFm_Name);
    MoveOnEnter(cboFm_Meka, txtFm_Size);
    MoveOnEnter(cboLz_Meka, txtLz_Kinga);
    ClearOnDelete(cboFm_Meka);
    ClearOnDelete(cboLz_Meka);
    reference_ = new PrescriptionReference(this, eyes_[0], eyes_[1], false);
    layOut();
    // Tab follows the block as shown: the sale, the frame, the lens, then the prescription.
    SetTabChain(QList<QWidget*>{txtUriDate, cboItem, cboYouto, txtKinga, cboFm_Meka, txtFm_Name,
                                txtFm_Size, txtFm_Color, txtFm_Kinga, cboLz_Meka, txtLz_Name,
                                txtLz_Kinga}
                << PrescriptionTabOrder(eyes_[0], eyes_[1]));
    // A block is read-only (disabled) most of the time; its values must stay easy to read.
    QPalette colors = palette();
    for (QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        colors.setColor(QPalette::Disabled, role, QColor(0x30, 0x30, 0x30));
    setPalette(colors);
}

void UriageBlock::startCorrection(const QString& title) {
    editing = true;
    setEnabled(true);
    setTitle(title);
    txtFm_Name->setFocus();
}

bool UriageBlock::dateReads() {
    if (txtUriDate->isEmpty()) {
        // A purchase is never stored without its date.
        CmnDspMsg(OpeErr_001);
        txtUriDate->setFocus();
        return false;
    }
    return !CmnRefuseUnreadableDate(txtUriDate);
}

void UriageBlock::layOut() {
    auto* sale = new QHBoxLayout;
    AddCaptioned(sale, QStringLiteral("来店日"), txtUriDate);
    AddCaptioned(sale, QStringLiteral("ｱｲﾃﾑ"), cboItem, 1);
    AddCaptioned(sale, QStringLiteral("用途"), cboYouto, 1);
    AddCaptioned(sale, QStringLiteral("売上計"), txtKinga);

    auto* frame = new QGroupBox(QStringLiteral("ﾌﾚｰﾑ"), this);
    auto* frameRow = new QHBoxLayout(frame);
    frameRow->setContentsMargins(6, 2, 6, 4);
    AddCaptioned(frameRow, QStringLiteral("ﾒｰｶｰ"), cboFm_Meka, 2);
    AddCaptioned(frameRow, QStringLiteral("品名"), txtFm_Name, 2);
    AddCaptioned(frameRow, QStringLiteral("ｻｲｽﾞ"), txtFm_Size, 1);
    AddCaptioned(frameRow, QStringLiteral("ｶﾗｰ"), txtFm_Color, 1);
    AddCaptioned(frameRow, QStringLiteral("金額"), txtFm_Kinga, 1);
    auto* lens = new QGroupBox(QStringLiteral("ﾚﾝｽﾞ"), this);
    auto* lensRow = new QHBoxLayout(lens);
    lensRow->setContentsMargins(6, 2, 6, 4);
    AddCaptioned(lensRow, QStringLiteral("ﾒｰｶｰ"), cboLz_Meka, 2);
    AddCaptioned(lensRow, QStringLiteral("品名"), txtLz_Name, 2);
    AddCaptioned(lensRow, QStringLiteral("金額"), txtLz_Kinga, 1);
    // The two captions stand at the left inside their frames: the block stays low enough for
    // three of them, each with its previous prescription, on one screen.
    for (QGroupBox* box : {frame, lens})
        box->setStyleSheet(QStringLiteral(
            "QGroupBox { border: 1px solid palette(mid); border-radius: 3px; margin-top: 0px;"
            " padding-left: 34px; }"
            "QGroupBox::title { subcontrol-origin: border; subcontrol-position: left center;"
            " left: 6px; }"
            // A style sheet hides the block's colours for disabled text: the same again.
            "*:disabled { color: #303030; }"));
    auto* goods = new QHBoxLayout;
    goods->addWidget(frame, 3);
    goods->addWidget(lens, 2);

    auto* eyes = PrescriptionGrid(this, eyes_[0], eyes_[1],
                                  {QStringLiteral("PD(遠)"), QStringLiteral("PD(近)")}, reference_);

    auto* block = new QVBoxLayout(this);
    block->setContentsMargins(8, 2, 8, 2);
    block->setSpacing(2);
    block->addLayout(sale);
    block->addLayout(goods);
    block->addLayout(eyes);
}

void UriageBlock::clear(MasterNames& masters) {
    CmnSetMstCombo(cboYouto, [&] { return masters.listEntries(MasterKind::Youto); });
    CmnSetMstCombo(cboItem, [&] { return masters.listEntries(MasterKind::Item); });
    CmnSetMstCombo(cboFm_Meka, [&] { return masters.listEntries(MasterKind::Meka); });
    CmnSetMstCombo(cboLz_Meka, [&] { return masters.listEntries(MasterKind::Meka); });
    for (QComboBox* list : {cboItem, cboYouto, cboFm_Meka, cboLz_Meka})
        SelectCode(list, QString());
    setEnabled(false);
    txtUriDate->setDate(xDate::EmptyDate);
    for (xField* text : {txtFm_Name, txtFm_Size, txtFm_Color, txtLz_Name})
        text->clear();
    for (xNum* amount : {txtFm_Kinga, txtLz_Kinga, txtKinga})
        amount->setValue(0);
    for (const auto& eye : eyes_)
        for (xField* field : eye)
            field->clear();
    shown_ = Purchase();
    reference_->clear();
    editing = false;
}

void UriageBlock::show(const Purchase& p, const Purchase* previous) {
    shown_ = p;
    reference_->show(previous);
    txtUriDate->setDate(p.date);
    txtKinga->setValue(double(p.total));
    txtFm_Kinga->setValue(double(p.fmKinga));
    txtLz_Kinga->setValue(double(p.lzKinga));
    SelectCode(cboItem, p.itemNo);
    SelectCode(cboYouto, p.youtoNo);
    SelectCode(cboFm_Meka, p.fmMekaNo);
    SelectCode(cboLz_Meka, p.lzMekaNo);
    txtFm_Name->setText(p.fmName);
    txtLz_Name->setText(p.lzName);
    txtFm_Size->setText(p.fmSize);
    txtFm_Color->setText(p.fmColor);
    for (int eye = 0; eye < 2; ++eye)
        for (int i = 0; i < 13; ++i)
            eyes_[eye][i]->setText(PrescriptionText(p.eyes[eye], i));
}

bool UriageBlock::showsPurchase() const {
    return shown_.seq != 0;
}

Purchase UriageBlock::edited() const {
    const auto yen = [](const xNum* field) {
        return qint64(std::llround(field->Value()));
    };
    Purchase p = shown_;
    p.date = txtUriDate->date();
    p.itemNo = SelectedCode(cboItem);
    p.youtoNo = SelectedCode(cboYouto);
    p.fmMekaNo = SelectedCode(cboFm_Meka);
    p.lzMekaNo = SelectedCode(cboLz_Meka);
    p.fmName = txtFm_Name->text();
    p.lzName = txtLz_Name->text();
    p.fmSize = txtFm_Size->text();
    p.fmColor = txtFm_Color->text();
    p.fmKinga = yen(txtFm_Kinga);
    p.lzKinga = yen(txtLz_Kinga);
    p.total = yen(txtKinga);
    for (int eye = 0; eye < 2; ++eye)
        for (int i = 0; i < 13; ++i)
            SetPrescriptionText(p.eyes[eye], i, eyes_[eye][i]->text());
    return p;
}
