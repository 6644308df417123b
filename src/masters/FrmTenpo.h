#pragma once

#include "data/ShopStore.h"
#include "platform/ui/Screen.h"

#include <array>

class FunctionKeyRow;
class QComboBox;
class TaxRatePanel;
class xCmdBtn;
class xField;

// The shop's own details as the customer's slips and receipts print them: name, address,
// telephone, the invoice registration number, and how the tax is rounded; the consumption tax
// rates, to which a new one is added (never changed nor removed).
class FrmTenpo : public Screen {
    Q_OBJECT
public:
    explicit FrmTenpo(QWidget* parent = nullptr);

    void Form_Load();
    void DispShop();
    void DispTaxRates();
    // Saves what was changed; true when it was stored.
    bool SaveShop();
    // Adds the rate typed, after the staff confirm it; true when it was stored.
    bool AddTaxRate();
    void cmdFnuc_Click(int index);

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    xField* txtShopName;
    xField* txtShopAddress;
    xField* txtShopTel;
    xField* txtInvoiceNo;
    QComboBox* cboTaxRounding;
    TaxRatePanel* taxRates_;
    // The rate typed can be asked about: a day and a percent typed, a day that has no rate shown,
    // the rule of rates kept. Says why not otherwise.
    bool taxRateFits(const TaxRate& rate);
    // The registration number typed can be stored: "T" and 13 digits; one whose check digit
    // differs from a corporation's only when the staff confirm it. Says why not otherwise.
    bool invoiceNoFits();
    std::array<xCmdBtn*, 12> cmdFnuc;
    ShopDetails typed() const;
    bool hasUnsavedEdits() const;

    // The details as the screen read them: a save writes what differs from them.
    ShopDetails shown_;
    bool loaded_ = false;
    FunctionKeyRow* keys_;
};
