#include "search/FrmTotalKensaku.h"

#include "data/Lookups.h"
#include "frame/BasCmnSubFun.h"
#include "frame/DateFields.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "pickers/FrmCalender.h"
#include "pickers/FrmZipList.h"
#include "platform/controls/CodeList.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xKana.h"
#include "platform/controls/xNum.h"
#include "platform/controls/xZip.h"
#include "platform/ui/Clock.h"
#include "platform/ui/ShowModal.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>

bool GlbKazokTaisyou = false;

namespace {

const QString ScreenName = QStringLiteral("検索条件指定画面");
using C = SearchConditions;

template <class List> QList<QWidget*> widgets(const List& controls) {
    return QList<QWidget*>(controls.begin(), controls.end());
}

// The condition a check box switches; none (-1) for the all-customers and family boxes.
int conditionOf(int box) {
    for (int condition = 0; condition < C::Count; ++condition)
        if (FrmTotalKensaku::boxOf(condition) == box)
            return condition;
    return -1;
}

// A date field's bound: an empty field is open (an invalid date).
QDate bound(const xDate* field) {
    return field->isEmpty() ? QDate() : field->date();
}

} // namespace

FrmTotalKensaku::FrmTotalKensaku(QWidget* parent) : Screen(parent) {
    setObjectName(QStringLiteral("FrmTotalKensaku"));
    setWindowTitle(QStringLiteral("検索条件指定"));
    buildForm();
    for (int i = 0; i < int(chkJoken.size()); ++i)
        connect(chkJoken[i], &QCheckBox::clicked, this, [this, i] { chkJoken_Click(i); });
    for (int i = 0; i < 2; ++i) {
        connect(cmdCalender[i], &QPushButton::clicked, this, [this, i] { cmdCalender_Click(i); });
        connect(cmdSaisyuCalender[i], &QPushButton::clicked, this,
                [this, i] { cmdSaisyuCalender_Click(i); });
    }
    for (int i = 0; i < 6; ++i)
        connect(cmdJusyo[i], &QPushButton::clicked, this, [this, i] { cmdJusyo_Click(i); });
    connect(txtToshi[0], &xInput::leave, this, [this] {
        if (txtToshi[1]->Value() == 0)
            txtToshi[1]->setValue(txtToshi[0]->Value());
    });
    connect(cmdKensaku, &QPushButton::clicked, this, &FrmTotalKensaku::cmdKensaku_Click);
    connect(cmdClear, &QPushButton::clicked, this, &FrmTotalKensaku::JyokenClear);
    connect(cmdCancel, &QPushButton::clicked, this, &FrmTotalKensaku::cmdCancel_Click);
    Procedure(ScreenName, QStringLiteral("Form_Load"), QStringLiteral("検索条件画面ロード処理"),
              [this] { JyokenClear(); });
}

QList<QWidget*> FrmTotalKensaku::group(int index) const {
    switch (index) {
    case C::Kana:
        return {txtKana};
    case C::Jusyo:
        return {txtJusyo1};
    case C::Yubin:
        return widgets(txtYubin) + widgets(cmdJusyo);
    case C::Tel:
        return {txtTel};
    case C::Sex:
        return {FraSex};
    case C::Age:
        return widgets(txtToshi);
    case C::Birthday:
        return {txtMonth, txtDay};
    case C::Visit:
        return widgets(txtRaiten) + widgets(cmdCalender);
    case C::Youto:
        return widgets(cboYoto);
    case C::Item:
        return widgets(cboItem);
    case C::Meka:
        return widgets(cboMeka);
    case C::Amount:
        return widgets(txtKinga);
    case C::HinName:
        return widgets(txtHinName);
    case C::LastVisit:
        return widgets(txtSaisyuRaiten) + widgets(cmdSaisyuCalender);
    default:
        return {};
    }
}

void FrmTotalKensaku::resetGroup(int index) {
    for (QWidget* control : group(index)) {
        if (auto* date = qobject_cast<xDate*>(control))
            date->setDate(index == C::LastVisit ? xDate::EmptyDate : Today());
        else if (auto* amount = qobject_cast<xNum*>(control))
            amount->setValue(0);
        else if (auto* field = qobject_cast<QLineEdit*>(control))
            field->clear();
        else if (auto* list = qobject_cast<QComboBox*>(control))
            list->setCurrentIndex(-1);
    }
    if (index == C::Sex)
        optSex[0]->setChecked(true);
}

void FrmTotalKensaku::JyokenClear() {
    Procedure(ScreenName, QStringLiteral("JyokenClear"), QStringLiteral("検索条件クリア処理"), [&] {
        for (int i = 0; i < C::Count; ++i) {
            chkJoken[boxOf(i)]->setChecked(false);
            resetGroup(i);
            for (QWidget* control : group(i))
                CmnCtlEnabled(control, false);
        }
        FraAll->setVisible(true);
        chkJoken[13]->setEnabled(true);
        FraAll_K->setVisible(true);
        chkJoken[14]->setEnabled(true);
        chkJoken[14]->setChecked(false);
        // Each master is read once for its six lists.
        MasterNames masters;
        for (int i = 0; i < 6; ++i) {
            CmnSetMstCombo(cboYoto[i], [&] { return masters.listEntries(MasterKind::Youto); });
            CmnSetMstCombo(cboItem[i], [&] { return masters.listEntries(MasterKind::Item); });
            CmnSetMstCombo(cboMeka[i], [&] { return masters.listEntries(MasterKind::Meka); });
            for (QComboBox* list : {cboYoto[i], cboItem[i], cboMeka[i]})
                list->setCurrentIndex(-1);
        }
        GlbKazokTaisyou = false;
    });
}

void FrmTotalKensaku::chkJoken_Click(int index) {
    Procedure(ScreenName, QStringLiteral("chkJoken_Click"), QStringLiteral("検索条件の切替処理"),
              [&] {
                  const int condition = conditionOf(index);
                  if (condition >= 0) {
                      resetGroup(condition);
                      const bool on = chkJoken[index]->isChecked();
                      const QList<QWidget*> controls = group(condition);
                      for (QWidget* control : controls)
                          CmnCtlEnabled(control, on);
                      if (on && condition != C::Sex && condition != C::Youto &&
                          condition != C::Item && condition != C::Meka)
                          controls.first()->setFocus();
                  }
                  const bool anyOn = anyConditionOn();
                  FraAll->setVisible(!anyOn);
                  if (!anyOn)
                      chkJoken[14]->setChecked(false);
              });
}

bool FrmTotalKensaku::anyConditionOn() const {
    for (int i = 0; i < C::Count; ++i)
        if (chkJoken[boxOf(i)]->isChecked())
            return true;
    return false;
}

// A date that is none, or a from-date after the to-date, is refused. An empty visit date is
// the earliest date; an empty last-visit bound is open and contradicts nothing.
bool FrmTotalKensaku::dateRangeRefused(int condition, const std::array<xDate*, 2>& dates) {
    if (!chkJoken[boxOf(condition)]->isChecked())
        return false;
    if (CmnRefuseUnreadableDate(dates[0]) || CmnRefuseUnreadableDate(dates[1]))
        return true;
    if (condition == C::LastVisit && (dates[0]->isEmpty() || dates[1]->isEmpty()))
        return false;
    if (dates[0]->date() <= dates[1]->date())
        return false;
    CmnDspMsg(OpeErr_003);
    dates[0]->setFocus();
    return true;
}

bool FrmTotalKensaku::checksPass() {
    const auto fail = [](const QString& msg, QWidget* focus) {
        CmnDspMsg(msg);
        focus->setFocus();
        return false;
    };
    const auto allEmpty = [](const auto& controls) {
        return std::all_of(controls.begin(), controls.end(),
                           [](const auto* control) { return control->currentText().isEmpty(); });
    };
    if (chkJoken[C::Age]->isChecked() && txtToshi[0]->Value() > txtToshi[1]->Value())
        return fail(OpeErr_003, txtToshi[0]);
    if (dateRangeRefused(C::Visit, txtRaiten) || dateRangeRefused(C::LastVisit, txtSaisyuRaiten))
        return false;
    if (chkJoken[C::Youto]->isChecked() && allEmpty(cboYoto))
        return fail(OpeErr_001, cboYoto[0]);
    if (chkJoken[C::Item]->isChecked() && allEmpty(cboItem))
        return fail(OpeErr_001, cboItem[0]);
    if (chkJoken[C::Meka]->isChecked() && allEmpty(cboMeka))
        return fail(OpeErr_001, cboMeka[0]);
    if (chkJoken[C::Amount]->isChecked() && txtKinga[0]->Value() > txtKinga[1]->Value())
        return fail(OpeErr_003, txtKinga[0]);
    if (chkJoken[C::HinName]->isChecked() &&
        std::all_of(txtHinName.begin(), txtHinName.end(),
                    [](const xField* name) { return name->text().isEmpty(); }))
        return fail(OpeErr_001, txtHinName[0]);
    return true;
}

void FrmTotalKensaku::cmdKensaku_Click() {
    Procedure(ScreenName, QStringLiteral("cmdKensaku_Click"), QStringLiteral("検索開始処理"), [&] {
        if (!checksPass())
            return;
        result_ = FraAll->isVisibleTo(this) ? 2 : 1;
        GlbKazokTaisyou = chkJoken[14]->isChecked();
        done(QDialog::Accepted);
    });
}

void FrmTotalKensaku::cmdCancel_Click() {
    result_ = 0;
    done(QDialog::Rejected);
}

void FrmTotalKensaku::reject() {
    cmdCancel_Click();
}

bool FrmTotalKensaku::enterPressed(QWidget* from) {
    if (auto* button = qobject_cast<QPushButton*>(from)) {
        button->click();
        return true;
    }
    // The search button takes the focus first, as a click does: the field being left runs its
    // leave rule (the to-age follows the from-age) before the conditions are read.
    cmdKensaku->setFocus(Qt::OtherFocusReason);
    cmdKensaku->click();
    // The next opening starts in the condition Enter was pressed in.
    if (isHidden() && from->isEnabled())
        from->setFocus(Qt::OtherFocusReason);
    return true;
}

void FrmTotalKensaku::cmdCalender_Click(int index) {
    pickDate(txtRaiten[index]);
}

void FrmTotalKensaku::cmdSaisyuCalender_Click(int index) {
    pickDate(txtSaisyuRaiten[index]);
}

void FrmTotalKensaku::pickDate(xDate* field) {
    FrmCalender calendar(this);
    calendar.setInDate(field->date());
    ShowModal(calendar);
    if (calendar.EndType())
        field->setDate(calendar.ResultDate());
}

void FrmTotalKensaku::cmdJusyo_Click(int index) {
    FrmZipList search(this);
    search.setTodoFlg(0);
    ShowModal(search);
    if (!search.Zip().isEmpty())
        txtYubin[index]->setText(search.Zip());
}

SearchConditions FrmTotalKensaku::conditions() const {
    SearchConditions c;
    for (int i = 0; i < C::Count; ++i)
        c.on[i] = chkJoken[boxOf(i)]->isChecked();
    c.kana = txtKana->text();
    c.jusyo1 = txtJusyo1->text();
    c.tel = txtTel->text();
    c.sex = optSex[1]->isChecked() ? 1 : 0;
    c.ageFrom = int(txtToshi[0]->Value());
    c.ageTo = int(txtToshi[1]->Value());
    c.month = int(txtMonth->Value());
    c.day = int(txtDay->Value());
    c.visitFrom = txtRaiten[0]->date();
    c.visitTo = txtRaiten[1]->date();
    c.lastVisitFrom = bound(txtSaisyuRaiten[0]);
    c.lastVisitTo = bound(txtSaisyuRaiten[1]);
    c.amountFrom = qint64(txtKinga[0]->Value());
    c.amountTo = qint64(txtKinga[1]->Value());
    for (int i = 0; i < 6; ++i) {
        c.yubin[i] = txtYubin[i]->code();
        c.youto[i] = SelectedCode(cboYoto[i]);
        c.item[i] = SelectedCode(cboItem[i]);
        c.meka[i] = SelectedCode(cboMeka[i]);
        c.hinName[i] = txtHinName[i]->text();
    }
    return c;
}
