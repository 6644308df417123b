#pragma once

#include "domain/Customer.h"
#include "platform/controls/GridView.h"
#include "platform/controls/RowModel.h"

#include <vector>

// The four-column list of customers shared by the quick search and the family list:
// 顧客番号, 氏 名, TEL and 住 所 (both address lines joined).
class CustomerList : public GridView {
    Q_OBJECT
public:
    explicit CustomerList(QWidget* parent = nullptr);

    void showCustomers(std::vector<Customer> customers);
    void clearRows() { showCustomers({}); }
    int maxRows() const { return model_->size(); }
    // The customer number of a row, counted from 1.
    qint64 customerNo(int row) const { return model_->at(row - 1).no; }

private:
    RowModel<Customer>* model_;
};
