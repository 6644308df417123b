#pragma once

#include "domain/ListRow.h"
#include "platform/ui/Screen.h"

#include <array>
#include <functional>
#include <vector>

class QPushButton;

// The print selection: address postcards written vertically or horizontally for the marked
// customers of the list, and the customer ledger of every listed customer.
class FrmPrint : public Screen {
    Q_OBJECT
public:
    // The listed customers with their print marks; allCustomers when the list's search covered
    // everyone.
    FrmPrint(std::vector<ListRow> rows, bool allCustomers, QWidget* parent = nullptr);

    void cmdPrint_Click(int index);
    void PrintSeigyo();
    void PrintSeigyo2();
    long PrintSetData(long job);
    long PrintSetData3(long job);
    long PrintSetData2(long job);

    std::array<QPushButton*, 3> cmdPrint;
    QPushButton* cmdEnd;

protected:
    void showEvent(QShowEvent* event) override;

private:
    // Opens a job, starts the document, runs the page routine and ends or aborts it.
    void runJob(const QString& procedure, const QString& settings, const QString& documentName,
                const std::function<long(long)>& pages);
    long setForm(long job, const QString& form);
    long finishPage(long job);
    void setAddressee(long job, const ListedCustomer& customer);

    std::vector<ListRow> rows_;
    bool allCustomers_;
    QString layout_; // empty: vertical postcards; "1": horizontal
};
