#include "history/UriageBlock.h"

#include "frame/BasCmnSubFun.h"
#include "platform/Format.h"
#include "platform/controls/ComboKeys.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xNum.h"
#include "platform/db/RecordSet.h"
#include "platform/db/SqlText.h"
#include "prescription/PrescriptionValues.h"
#include "prescription/PrescriptionWiring.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>

namespace {

enum { Sph, Cyl, Ax, S, P1, B1, P2, B2, Gai, Tama, Pd, Ragan, Kyosei };

// The order in which the history writes a prescription back, each value right then left.
constexpr int SaveOrder[] = {Sph, Cyl, Ax, S, P1, P2, B1, B2, Gai, Tama, Pd, Ragan, Kyosei};

QLabel* caption(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return label;
}

QString listCode(const QComboBox* list) {
    return QLatin1Char('\'') + list->currentText().left(3) + QLatin1Char('\'');
}

void chooseCode(QComboBox* list, const QVariant& code) {
    const QString text = code.toString();
    list->setCurrentIndex(text.isEmpty() ? -1 : text.toInt() - 1);
}

} // namespace

UriageBlock::UriageBlock(int index, QWidget* parent) : QGroupBox(parent) {
    setObjectName(QStringLiteral("FraUriage(%1)").arg(index));
    txtUriDate = new xDate(this);
    cboItem = new QComboBox(this);
    cboYouto = new QComboBox(this);
    cboFm_Meka = new QComboBox(this);
    cboLz_Meka = new QComboBox(this);
    txtFm_Name = new xField(this, 40);
    txtFm_Size = new xField(this, 20);
    txtFm_Color = new xField(this, 20);
    txtLz_Name = new xField(this, 40);
    txtFm_Kinga = new xNum(this);
    txtLz_Kinga = new xNum(this);
    txtKinga = new xNum(this);
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
    layOut();
    // A block is read-only (disabled) most of the time; its values must stay easy to read.
    QPalette colors = palette();
    for (QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        colors.setColor(QPalette::Disabled, role, QColor(0x30, 0x30, 0x30));
    setPalette(colors);
}

void UriageBlock::layOut() {
    auto* sale = new QHBoxLayout;
    sale->addWidget(caption(QStringLiteral("来店日"), this));
    sale->addWidget(txtUriDate);
    sale->addWidget(caption(QStringLiteral("ｱｲﾃﾑ"), this));
    sale->addWidget(cboItem, 1);
    sale->addWidget(caption(QStringLiteral("用途"), this));
    sale->addWidget(cboYouto, 1);
    sale->addWidget(caption(QStringLiteral("売上計"), this));
    sale->addWidget(txtKinga);

    auto* frame = new QGroupBox(QStringLiteral("ﾌﾚｰﾑ"), this);
    auto* frameRow = new QHBoxLayout(frame);
    frameRow->setContentsMargins(6, 2, 6, 4);
    frameRow->addWidget(caption(QStringLiteral("ﾒｰｶｰ"), frame));
    frameRow->addWidget(cboFm_Meka, 2);
    frameRow->addWidget(caption(QStringLiteral("品名"), frame));
    frameRow->addWidget(txtFm_Name, 2);
    frameRow->addWidget(caption(QStringLiteral("ｻｲｽﾞ"), frame));
    frameRow->addWidget(txtFm_Size, 1);
    frameRow->addWidget(caption(QStringLiteral("ｶﾗｰ"), frame));
    frameRow->addWidget(txtFm_Color, 1);
    frameRow->addWidget(caption(QStringLiteral("金額"), frame));
    frameRow->addWidget(txtFm_Kinga, 1);
    auto* lens = new QGroupBox(QStringLiteral("ﾚﾝｽﾞ"), this);
    auto* lensRow = new QHBoxLayout(lens);
    lensRow->setContentsMargins(6, 2, 6, 4);
    lensRow->addWidget(caption(QStringLiteral("ﾒｰｶｰ"), lens));
    lensRow->addWidget(cboLz_Meka, 2);
    lensRow->addWidget(caption(QStringLiteral("品名"), lens));
    lensRow->addWidget(txtLz_Name, 2);
    lensRow->addWidget(caption(QStringLiteral("金額"), lens));
    lensRow->addWidget(txtLz_Kinga, 1);
    auto* goods = new QHBoxLayout;
    goods->addWidget(frame, 3);
    goods->addWidget(lens, 2);

    auto* eyes = PrescriptionGrid(this, eyes_[0], eyes_[1],
                                  {QStringLiteral("PD(遠)"), QStringLiteral("PD(近)")});

    auto* block = new QVBoxLayout(this);
    block->setContentsMargins(8, 4, 8, 4);
    block->setSpacing(3);
    block->addLayout(sale);
    block->addLayout(goods);
    block->addLayout(eyes);
}

void UriageBlock::clear() {
    CmnSetMstCombo(cboYouto, QStringLiteral("youto"));
    CmnSetMstCombo(cboItem, QStringLiteral("Item"));
    CmnSetMstCombo(cboFm_Meka, QStringLiteral("meka"));
    CmnSetMstCombo(cboLz_Meka, QStringLiteral("meka"));
    for (QComboBox* list : {cboItem, cboYouto, cboFm_Meka, cboLz_Meka})
        list->setCurrentIndex(-1);
    setEnabled(false);
    txtUriDate->setDate(xDate::EmptyDate);
    for (xField* text : {txtFm_Name, txtFm_Size, txtFm_Color, txtLz_Name})
        text->clear();
    for (xNum* amount : {txtFm_Kinga, txtLz_Kinga, txtKinga})
        amount->setValue(0);
    for (const auto& eye : eyes_)
        for (xField* field : eye)
            field->clear();
    seq = 0;
    editing = false;
}

void UriageBlock::show(const RecordSet& row) {
    const auto text = [&](const char* column) {
        return CmnNvl(row.field(QString::fromLatin1(column)), QString()).toString();
    };
    const auto amount = [&](const char* column) {
        return CmnNvl(row.field(QString::fromLatin1(column)), 0).toDouble();
    };
    txtUriDate->setText(FormatYmd(row.field(QStringLiteral("Uri_Date")).toLongLong()));
    seq = row.field(QStringLiteral("Uri_Seq")).toInt();
    txtKinga->setValue(amount("Uri_kingakei"));
    txtFm_Kinga->setValue(amount("Uri_Fm_Kinga"));
    txtLz_Kinga->setValue(amount("Uri_Lz_Kinga"));
    chooseCode(cboItem, row.field(QStringLiteral("Uri_ItemNo")));
    chooseCode(cboYouto, row.field(QStringLiteral("Uri_YoutoNo")));
    chooseCode(cboFm_Meka, row.field(QStringLiteral("Uri_Fm_MekaNo")));
    chooseCode(cboLz_Meka, row.field(QStringLiteral("Uri_Lz_MekaNo")));
    txtFm_Name->setText(text("Uri_Fm_Name"));
    txtLz_Name->setText(text("Uri_Lz_Name"));
    txtFm_Size->setText(text("Uri_Fm_Size"));
    txtFm_Color->setText(text("Uri_Fm_Color"));
    for (int eye = 0; eye < 2; ++eye)
        for (int i = 0; i < 13; ++i)
            eyes_[eye][i]->setText(
                PrescriptionDisplay(i, row.field(PrescriptionColumn(i, eye == 0 ? 'R' : 'L'))));
}

bool UriageBlock::showsPurchase() const {
    return txtUriDate->date() != xDate::EmptyDate;
}

QString UriageBlock::updateSql(qint64 customerNo) const {
    const QDate date = txtUriDate->date();
    QStringList parts{QStringLiteral(" Uri_Date = ") +
                          SqlNum(qint64(date.year()) * 10000 + date.month() * 100 + date.day()),
                      QStringLiteral(" Uri_ItemNo = ") + listCode(cboItem),
                      QStringLiteral(" Uri_YoutoNo = ") + listCode(cboYouto),
                      QStringLiteral(" Uri_Fm_MekaNo = ") + listCode(cboFm_Meka),
                      QStringLiteral(" Uri_Lz_MekaNo = ") + listCode(cboLz_Meka),
                      QStringLiteral(" Uri_Fm_Name = ") + SqlQuote(txtFm_Name->text()),
                      QStringLiteral(" Uri_Lz_Name = ") + SqlQuote(txtLz_Name->text()),
                      QStringLiteral(" Uri_Fm_Size = ") + SqlQuote(txtFm_Size->text()),
                      QStringLiteral(" Uri_Fm_Color = ") + SqlQuote(txtFm_Color->text()),
                      QStringLiteral(" Uri_Fm_Kinga = ") + PlainDecimal(txtFm_Kinga->Value()),
                      QStringLiteral(" Uri_Lz_Kinga = ") + PlainDecimal(txtLz_Kinga->Value()),
                      QStringLiteral(" Uri_KingaKei = ") + PlainDecimal(txtKinga->Value())};
    for (int index : SaveOrder)
        for (int eye = 0; eye < 2; ++eye) {
            const QString suffix = QString::fromLatin1(PrescriptionColumns[index].suffix);
            const QString column = QStringLiteral(" Uri_") +
                                   (eye == 0 ? QLatin1Char('R') : QLatin1Char('L')) +
                                   QLatin1Char('_') + (index == Kyosei ? suffix : suffix.toUpper());
            parts << column + QStringLiteral(" = ") +
                         PrescriptionStorage(index, eyes_[eye][index]->text());
        }
    return QStringLiteral("update San_Uriage set ") + parts.join(QLatin1Char(',')) +
           QStringLiteral(" where Uri_UserNo = ") + SqlNum(customerNo) +
           QStringLiteral(" and Uri_Seq = ") + SqlNum(seq);
}
