#pragma once

#include "data/ZipSearch.h"
#include "platform/controls/GridView.h"
#include "platform/controls/RowModel.h"

#include <vector>

// The addresses the postal search found: postal code, prefecture, city and district.
class AddressList : public GridView {
    Q_OBJECT
public:
    explicit AddressList(QWidget* parent = nullptr);

    void showAddresses(std::vector<ZipAddress> addresses) { model_->setRows(std::move(addresses)); }
    void clearRows() { model_->clear(); }
    int maxRows() const { return model_->size(); }
    // An address by its row, counted from 1.
    const ZipAddress& address(int row) const { return model_->at(row - 1); }

    RowModel<ZipAddress>* model() const { return model_; }

private:
    RowModel<ZipAddress>* model_;
};
