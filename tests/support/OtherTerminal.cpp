#include "support/OtherTerminal.h"

#include "data/CustomerStore.h"
#include "data/PurchaseStore.h"
#include "data/ShopDatabase.h"
#include "frame/Globals.h"
#include "platform/db/Transaction.h"

#include <QDate>

OtherTerminal::OtherTerminal(const QString& folder) {
    OpenDatabaseIn(connection_, folder);
}

void OtherTerminal::act(const std::function<void()>& work) {
    gCon.swap(connection_);
    try {
        work();
    } catch (...) {
        gCon.swap(connection_);
        throw;
    }
    gCon.swap(connection_);
}

void OtherTerminal::execute(const QString& sql) {
    act([&] { gCon.execute(sql); });
}

int OtherTerminal::registerSale(qint64 customerNo, Purchase sale) {
    act([&] {
        Transaction transaction(gCon);
        PurchaseStore::SaveLines(
            customerNo, {{.id = 1, .purchase = sale, .read = {}, .state = LineState::New}});
        transaction.commit();
        sale.seq = gCon.execute(QStringLiteral("select max(Uri_Seq) from San_Uriage where "
                                               "Uri_UserNo = %1")
                                    .arg(customerNo))
                       .field(0)
                       .toInt();
    });
    return sale.seq;
}

void OtherTerminal::deleteSale(qint64 customerNo, int seq) {
    act([&] {
        Transaction transaction(gCon);
        for (const Purchase& stored : PurchaseStore::OfCustomer(customerNo))
            if (stored.seq == seq)
                PurchaseStore::SaveLines(
                    customerNo,
                    {{.id = 1, .purchase = stored, .read = stored, .state = LineState::Deleted}});
        transaction.commit();
    });
}

qint64 OtherTerminal::registerCustomer(const QString& name) {
    Customer customer;
    act([&] {
        Transaction transaction(gCon);
        customer.no = CustomerStore::NextNo();
        customer.name = name;
        CustomerStore::Insert(customer, QDate(2026, 11, 22));
        transaction.commit();
    });
    return customer.no;
}

void OtherTerminal::deleteCustomer(qint64 customerNo) {
    act([&] {
        Transaction transaction(gCon);
        CustomerStore::Remove(*CustomerStore::Find(customerNo),
                              PurchaseStore::OfCustomer(customerNo));
        transaction.commit();
    });
}
