#pragma once

#include "domain/Receipt.h"

#include <QWidget>
#include <vector>

class GridView;
class xDate;
class xNum;
template <class Row> class RowModel;

// The consumption tax rates of the shop settings: the stored rates with the day each applies
// from, and the fields a new one is typed into. Rates are only ever added.
class TaxRatePanel : public QWidget {
    Q_OBJECT
public:
    explicit TaxRatePanel(QWidget* parent = nullptr);

    // Shows the stored rates, oldest first, marking the one that applies on `today`.
    void setRates(std::vector<TaxRate> rates, const QDate& today);
    const std::vector<TaxRate>& rates() const;

    // The rate typed: its day (invalid when empty or unreadable) and its percent.
    TaxRate typed() const;
    bool hasTyped() const;
    // A day or percent not typed, or a day that is no real date, is refused with its box and the
    // focus goes to the field; true when refused.
    bool refuseIncomplete();
    void clearTyped();

    // The fields of the new rate, for the screen's keyboard order and to go back to.
    QWidget* dayField() const;
    QWidget* percentField() const;

private:
    GridView* spdTaxRate;
    xDate* txtTaxFrom;
    xNum* txtTaxPercent;
    RowModel<TaxRate>* rows_;
    // Today, and the day the rate in force today applies from (invalid when none does).
    QDate today_, inForceFrom_;
};
