#pragma once

#include "domain/Receipt.h"

#include <QString>
#include <QStringList>
#include <vector>

// The shop's own details, printed on what the customer takes home. They belong to the shop and
// travel with its copy (a printer's offset in San_Setting belongs to one machine). More may
// follow: each is one key of San_Shop.
struct ShopDetails {
    QString name, address, tel;
    // The invoice registration number ("T" and 13 digits); empty for a shop not registered.
    QString invoiceNo;
    // How a receipt's tax is rounded to whole yen.
    TaxRounding rounding = TaxRounding::Down;
    bool operator==(const ShopDetails&) const = default;
};

namespace ShopStore {

// The table (San_Shop, one value per key), created with a new database and added to an older
// one when it is opened.
QString TableStatement();
QString Table();

// The details as stored; empty text for one never set.
ShopDetails Read();
// The consumption tax rates with the days they apply from (San_TaxRate); a new database, or
// one made before the rates were kept, starts with 10% from 2019/10/01.
QStringList TaxRateStatements();
std::vector<TaxRate> TaxRates();
// Adds a rate, in a transaction of its own. One that cannot be added (TaxRateRefusal, with the
// last day a receipt was issued as it is inside the transaction) fails with TaxRateRefused; a
// day that has a rate already (another terminal added it meanwhile) fails with RowChanged.
// Nothing is written then. A stored rate is never changed nor removed.
void AddTaxRate(const TaxRate& rate);

// Writes, in a transaction of its own, what was changed on screen from what it showed
// (`shown`). A detail another terminal changed meanwhile to something else fails the save with
// RowChanged, naming it; nothing is written then.
void Write(const ShopDetails& shown, const ShopDetails& now);

} // namespace ShopStore
