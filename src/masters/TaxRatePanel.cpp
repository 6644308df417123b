#include "masters/TaxRatePanel.h"

#include "frame/DateFields.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "platform/controls/GridView.h"
#include "platform/controls/RowModel.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xNum.h"
#include "platform/ui/Named.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QTableView>
#include <cmath>

namespace {

QString dayText(const QDate& day) {
    return day.toString(QStringLiteral("yyyy/MM/dd"));
}

} // namespace

TaxRatePanel::TaxRatePanel(QWidget* parent) : QWidget(parent) {
    rows_ = new RowModel<TaxRate>(
        {{QStringLiteral("適用開始日"), [](const TaxRate& r) { return dayText(r.from); },
          Qt::AlignCenter},
         {QStringLiteral("税率"),
          [](const TaxRate& r) { return QStringLiteral("%1%").arg(r.percent); },
          Qt::AlignRight | Qt::AlignVCenter},
         {QString(),
          [this](const TaxRate& r) {
              if (r.from > today_)
                  return QStringLiteral("適用予定");
              return r.from == inForceFrom_ ? QStringLiteral("適用中") : QString();
          }}},
        this);
    spdTaxRate = Named(new GridView(this), QStringLiteral("spdTaxRate"));
    spdTaxRate->setModel(rows_);
    spdTaxRate->setColumnWidths({110, 60, 80});
    spdTaxRate->setRowSelection();
    spdTaxRate->setFixedSize(300, 130);

    txtTaxFrom = Named(new xDate(this), QStringLiteral("txtTaxFrom"));
    txtTaxFrom->setFixedWidth(110);
    CmnRefuseUnreadableDateOnLeave(txtTaxFrom);
    txtTaxPercent = Named(new xNum(this), QStringLiteral("txtTaxPercent"));
    txtTaxPercent->setDisplayFormat(QStringLiteral("##0"));
    // Over 100 can be typed, to be refused in words rather than by a key that does nothing.
    txtTaxPercent->setRange(0, 999);
    txtTaxPercent->setFixedWidth(60);

    auto* entry = new QGridLayout;
    entry->addWidget(new QLabel(QStringLiteral("適用開始日"), this), 0, 0);
    entry->addWidget(txtTaxFrom, 0, 1);
    entry->addWidget(new QLabel(QStringLiteral("税率"), this), 1, 0);
    auto* percent = new QHBoxLayout;
    percent->addWidget(txtTaxPercent);
    percent->addWidget(new QLabel(QStringLiteral("%"), this));
    percent->addStretch();
    entry->addLayout(percent, 1, 1);
    auto* hint = new QLabel(
        QStringLiteral("新しい税率は、適用開始日と税率を入力して F9 で追加します。\n"
                       "領収書は発行したとおりに保存されるため、登録した税率は変更も削除も"
                       "できません。\n適用開始日は、最後に領収書を発行した日より後の日です。"),
        this);
    entry->addWidget(hint, 2, 0, 1, 3);
    entry->setColumnStretch(2, 1);
    entry->setRowStretch(3, 1);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(spdTaxRate, 0, Qt::AlignTop);
    layout->addSpacing(12);
    layout->addLayout(entry, 1);
}

void TaxRatePanel::setRates(std::vector<TaxRate> rates, const QDate& today) {
    today_ = today;
    inForceFrom_ = QDate();
    for (const TaxRate& rate : rates)
        if (rate.from <= today && (!inForceFrom_.isValid() || rate.from > inForceFrom_))
            inForceFrom_ = rate.from;
    rows_->setRows(std::move(rates));
    if (rows_->size() > 0)
        spdTaxRate->view()->scrollToBottom();
}

const std::vector<TaxRate>& TaxRatePanel::rates() const {
    return rows_->rows();
}

TaxRate TaxRatePanel::typed() const {
    return {txtTaxFrom->isUnreadable() || txtTaxFrom->isEmpty() ? QDate() : txtTaxFrom->date(),
            int(std::lround(txtTaxPercent->Value()))};
}

QWidget* TaxRatePanel::dayField() const {
    return txtTaxFrom;
}

QWidget* TaxRatePanel::percentField() const {
    return txtTaxPercent;
}

bool TaxRatePanel::hasTyped() const {
    return !txtTaxFrom->isEmpty() || !txtTaxPercent->isEmpty();
}

bool TaxRatePanel::refuseIncomplete() {
    if (CmnRefuseUnreadableDate(txtTaxFrom))
        return true;
    xInput* empty = txtTaxFrom->isEmpty()      ? static_cast<xInput*>(txtTaxFrom)
                    : txtTaxPercent->isEmpty() ? txtTaxPercent
                                               : nullptr;
    if (!empty)
        return false;
    CmnDspMsg(OpeErr_001);
    empty->setFocus();
    return true;
}

void TaxRatePanel::clearTyped() {
    txtTaxFrom->setDate(xDate::EmptyDate);
    txtTaxPercent->clearValue();
}
