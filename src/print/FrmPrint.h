#pragma once

#include "domain/ListRow.h"
#include "platform/ui/Screen.h"
#include "print/PrintRun.h"

#include <array>
#include <functional>
#include <vector>

class QCheckBox;
class QDoubleSpinBox;
class QPushButton;
class QVBoxLayout;
class ReportJob;

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
    // The pages of the vertical and the horizontal postcards and of the ledger; a library
    // failure stops them and is thrown.
    void PrintSetData(ReportJob& job);
    void PrintSetData3(ReportJob& job);
    void PrintSetData2(ReportJob& job);

protected:
    void showEvent(QShowEvent* event) override;

private:
    std::array<QPushButton*, 3> cmdPrint;
    QPushButton* cmdEnd;
    // How the cards are printed: one per household (連名), numbers in vertical addresses as
    // kanji numerals, the postal-code boxes on plain paper; and the printer's feed offset,
    // kept in the database.
    QCheckBox* chkRenmei;
    QCheckBox* chkKansuji;
    QCheckBox* chkYubinWaku;
    QDoubleSpinBox* txtOffsetX;
    QDoubleSpinBox* txtOffsetY;
    void runJob(const QString& procedure, const QString& settings, const QString& documentName,
                const std::function<void(ReportJob&)>& pages);
    void setAddressee(ReportJob& job, const ListedCustomer& customer);

    // One card: its customer, and the household's addressee when it is a household card.
    struct Card {
        const ListedCustomer* customer;
        QString name, sama; // empty name: the customer's own addressee
    };
    std::vector<Card> cards() const;
    void buildPrintOptions(QVBoxLayout* page);
    void setPrintOptions(ReportJob& job);
    void saveOffset();
    void setCardAddressee(ReportJob& job, const Card& card);

    std::vector<ListRow> rows_;
    bool allCustomers_;
    QString layout_; // empty: vertical postcards; "1": horizontal
};
