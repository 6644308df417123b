#pragma once

#include <QString>

// The shop's own details, printed on what the customer takes home. They belong to the shop and
// travel with its copy (a printer's offset in San_Setting belongs to one machine). More may
// follow: each is one key of San_Shop.
struct ShopDetails {
    QString name, address, tel;
    bool operator==(const ShopDetails&) const = default;
};

namespace ShopStore {

// The table (San_Shop, one value per key), created with a new database and added to an older
// one when it is opened.
QString TableStatement();
QString Table();

// The details as stored; empty text for one never set.
ShopDetails Read();
// Writes, in a transaction of its own, what was changed on screen from what it showed
// (`shown`). A detail another terminal changed meanwhile to something else fails the save with
// RowChanged, naming it; nothing is written then.
void Write(const ShopDetails& shown, const ShopDetails& now);

} // namespace ShopStore
