// The conditions screen's controls and their places.
#include "frame/DateFields.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xKana.h"
#include "platform/controls/xNum.h"
#include "platform/controls/xZip.h"
#include "platform/ui/Named.h"
#include "search/FrmTotalKensaku.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace {

xNum* number(QWidget* parent, const QString& name, int index, const QString& format,
             double highest) {
    auto* field = Named(new xNum(parent), name, index);
    field->setDisplayFormat(format);
    field->setRange(0, highest);
    field->setMaximumWidth(110);
    return field;
}

QPushButton* smallButton(QWidget* parent, const QString& caption, const QString& name, int index) {
    auto* button = Named(new QPushButton(caption, parent), name, index);
    button->setAutoDefault(false);
    button->setFixedWidth(32);
    return button;
}

QLabel* text(const QString& caption, QWidget* parent) {
    return new QLabel(caption, parent);
}

} // namespace

void FrmTotalKensaku::buildForm() {
    const QString captions[] = {QStringLiteral("かな名"),       QStringLiteral("住所"),
                                QStringLiteral("郵便番号"),     QStringLiteral("ＴＥＬ"),
                                QStringLiteral("性別"),         QStringLiteral("年齢"),
                                QStringLiteral("誕生日"),       QStringLiteral("来店日"),
                                QStringLiteral("用途"),         QStringLiteral("アイテム"),
                                QStringLiteral("メーカー"),     QStringLiteral("売上額"),
                                QStringLiteral("商品名"),       QStringLiteral("< 全顧客対象 >"),
                                QStringLiteral("< 家族対象 >"), QStringLiteral("最終来店日")};
    for (int i = 0; i < int(chkJoken.size()); ++i)
        chkJoken[i] = Named(new QCheckBox(captions[i], this), QStringLiteral("chkJoken"), i);
    txtKana = Named(new xKana(this), QStringLiteral("txtKana"));
    txtJusyo1 = Named(new xField(this, 50), QStringLiteral("txtJusyo1"));
    txtTel = Named(new xField(this, 20), QStringLiteral("txtTel"));
    FraSex = Named(new QGroupBox(this), QStringLiteral("FraSex"));
    optSex[0] = Named(new QRadioButton(QStringLiteral("男"), FraSex), QStringLiteral("optSex"), 0);
    optSex[1] = Named(new QRadioButton(QStringLiteral("女"), FraSex), QStringLiteral("optSex"), 1);
    auto* sexRow = new QHBoxLayout(FraSex);
    sexRow->setContentsMargins(6, 0, 6, 0);
    sexRow->addWidget(optSex[0]);
    sexRow->addWidget(optSex[1]);
    txtMonth = number(this, QStringLiteral("txtMonth"), -1, QStringLiteral("#0"), 12);
    txtDay = number(this, QStringLiteral("txtDay"), -1, QStringLiteral("#0"), 31);
    for (int i = 0; i < 2; ++i) {
        txtToshi[i] = number(this, QStringLiteral("txtToshi"), i, QStringLiteral("##0"), 150);
        txtKinga[i] =
            number(this, QStringLiteral("txtKinga"), i, QStringLiteral("###,###,##0"), 999999999);
        txtKinga[i]->setMaximumWidth(140);
        txtRaiten[i] = Named(new xDate(this), QStringLiteral("txtRaiten"), i);
        CmnRefuseUnreadableDateOnLeave(txtRaiten[i]);
        cmdCalender[i] = smallButton(this, QStringLiteral("…"), QStringLiteral("cmdCalender"), i);
        txtSaisyuRaiten[i] = Named(new xDate(this), QStringLiteral("txtSaisyuRaiten"), i);
        CmnRefuseUnreadableDateOnLeave(txtSaisyuRaiten[i]);
        // Both date ranges line up whatever follows them on their rows.
        for (xDate* date : {txtRaiten[i], txtSaisyuRaiten[i]})
            date->setFixedWidth(130);
        cmdSaisyuCalender[i] =
            smallButton(this, QStringLiteral("…"), QStringLiteral("cmdSaisyuCalender"), i);
    }
    for (int i = 0; i < 6; ++i) {
        txtYubin[i] = Named(new xZip(this), QStringLiteral("txtYubin"), i);
        cmdJusyo[i] = smallButton(this, QStringLiteral("▼"), QStringLiteral("cmdJusyo"), i);
        cboYoto[i] = Named(new QComboBox(this), QStringLiteral("cboYoto"), i);
        cboItem[i] = Named(new QComboBox(this), QStringLiteral("cboItem"), i);
        cboMeka[i] = Named(new QComboBox(this), QStringLiteral("cboMeka"), i);
        txtHinName[i] = Named(new xField(this, 40), QStringLiteral("txtHinName"), i);
    }
    cmdKensaku =
        Named(new QPushButton(QStringLiteral("検索開始"), this), QStringLiteral("cmdKensaku"));
    cmdClear = Named(new QPushButton(QStringLiteral("クリア"), this), QStringLiteral("cmdClear"));
    cmdCancel =
        Named(new QPushButton(QStringLiteral("キャンセル"), this), QStringLiteral("cmdCancel"));
    for (QPushButton* button : {cmdKensaku, cmdClear, cmdCancel}) {
        button->setAutoDefault(false);
        button->setMinimumSize(120, 36);
    }
    FraAll = Named(new QGroupBox(this), QStringLiteral("FraAll"));
    (new QHBoxLayout(FraAll))->addWidget(chkJoken[13]);
    FraAll_K = Named(new QGroupBox(this), QStringLiteral("FraAll_K"));
    (new QHBoxLayout(FraAll_K))->addWidget(chkJoken[14]);

    auto* rows = new QGridLayout;
    rows->setHorizontalSpacing(8);
    rows->setVerticalSpacing(4);
    const auto six = [this](auto& controls, std::array<QPushButton*, 6>* buttons = nullptr) {
        auto* grid = new QGridLayout;
        grid->setHorizontalSpacing(6);
        for (int i = 0; i < 6; ++i) {
            auto* cell = new QHBoxLayout;
            cell->addWidget(controls[i], 1);
            if (buttons)
                cell->addWidget((*buttons)[i]);
            grid->addLayout(cell, i / 3, i % 3);
        }
        return grid;
    };
    const auto range = [this](QWidget* from, QWidget* fromButton, QWidget* to, QWidget* toButton,
                              const QString& unit) {
        auto* row = new QHBoxLayout;
        row->addWidget(from);
        if (fromButton)
            row->addWidget(fromButton);
        row->addWidget(text(QStringLiteral("～"), this));
        row->addWidget(to);
        if (toButton)
            row->addWidget(toButton);
        if (!unit.isEmpty())
            row->addWidget(text(unit, this));
        row->addStretch();
        return row;
    };
    rows->addWidget(chkJoken[0], 0, 0);
    rows->addWidget(txtKana, 0, 1);
    rows->addWidget(chkJoken[1], 1, 0);
    rows->addWidget(txtJusyo1, 1, 1);
    rows->addWidget(chkJoken[2], 2, 0, Qt::AlignTop);
    rows->addLayout(six(txtYubin, &cmdJusyo), 2, 1);
    rows->addWidget(chkJoken[3], 3, 0);
    rows->addWidget(txtTel, 3, 1);
    rows->addWidget(chkJoken[4], 4, 0);
    auto* sex = new QHBoxLayout;
    sex->addWidget(FraSex);
    sex->addStretch();
    rows->addLayout(sex, 4, 1);
    rows->addWidget(chkJoken[5], 5, 0);
    rows->addLayout(range(txtToshi[0], nullptr, txtToshi[1], nullptr, QStringLiteral("歳")), 5, 1);
    rows->addWidget(chkJoken[6], 6, 0);
    auto* birthday = new QHBoxLayout;
    birthday->addWidget(txtMonth);
    birthday->addWidget(text(QStringLiteral("月"), this));
    birthday->addWidget(txtDay);
    birthday->addWidget(text(QStringLiteral("日"), this));
    birthday->addStretch();
    rows->addLayout(birthday, 6, 1);
    rows->addWidget(chkJoken[7], 7, 0);
    rows->addLayout(range(txtRaiten[0], cmdCalender[0], txtRaiten[1], cmdCalender[1], QString()), 7,
                    1);
    rows->addWidget(chkJoken[15], 8, 0);
    rows->addLayout(range(txtSaisyuRaiten[0], cmdSaisyuCalender[0], txtSaisyuRaiten[1],
                          cmdSaisyuCalender[1], QStringLiteral("（空欄は制限なし）")),
                    8, 1);
    rows->addWidget(chkJoken[8], 9, 0, Qt::AlignTop);
    rows->addLayout(six(cboYoto), 9, 1);
    rows->addWidget(chkJoken[9], 10, 0, Qt::AlignTop);
    rows->addLayout(six(cboItem), 10, 1);
    rows->addWidget(chkJoken[10], 11, 0, Qt::AlignTop);
    rows->addLayout(six(cboMeka), 11, 1);
    rows->addWidget(chkJoken[11], 12, 0);
    rows->addLayout(range(txtKinga[0], nullptr, txtKinga[1], nullptr, QStringLiteral("円")), 12, 1);
    rows->addWidget(chkJoken[12], 13, 0, Qt::AlignTop);
    rows->addLayout(six(txtHinName), 13, 1);
    rows->setColumnStretch(1, 1);

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(FraAll);
    bottom->addWidget(FraAll_K);
    bottom->addStretch();
    bottom->addWidget(cmdKensaku);
    bottom->addWidget(cmdClear);
    bottom->addWidget(cmdCancel);
    auto* page = new QVBoxLayout(this);
    page->addWidget(text(QStringLiteral("・ 検索条件を入力してから、「検索開始」を押して下さい。"
                                        "（条件未入力は全件表示）"),
                         this));
    page->addLayout(rows);
    page->addLayout(bottom);
}
