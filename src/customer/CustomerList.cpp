#include "customer/CustomerList.h"

CustomerList::CustomerList(QWidget* parent) : GridView(parent) {
    setObjectName(QStringLiteral("spdData"));
    model_ = new RowModel<Customer>(
        {{QStringLiteral("顧客番号"), [](const Customer& c) { return QString::number(c.no); },
          Qt::AlignRight | Qt::AlignVCenter},
         {QStringLiteral("氏 名"),
          [](const Customer& c) {
              return c.name;
          }},
         {QStringLiteral("TEL"),
          [](const Customer& c) {
              return c.tel;
          }},
         {QStringLiteral("住 所"),
          [](const Customer& c) {
              return c.jusyo1.trimmed() + c.jusyo2;
          }}},
        this);
    setModel(model_);
    setColumnWidths({80, 170, 130, 380});
    setLastColumnStretch(true);
}

void CustomerList::showCustomers(std::vector<Customer> customers) {
    model_->setRows(std::move(customers));
}
