#pragma once

#include "data/OrderStore.h"
#include "data/ShopStore.h"
#include "domain/Purchase.h"
#include "domain/Receipt.h"
#include "platform/ui/Screen.h"

#include <array>
#include <optional>
#include <vector>

class FunctionKeyRow;
class GridView;
class QComboBox;
class QLabel;
template <class Row> class RowModel;
class xCmdBtn;
class xDate;

// The receipts of one stored purchase: those issued so far, and a new one for a payment or for
// the whole purchase (F5 発行: stored under the next number, then printed), a reprint of the one
// chosen in the list (F6, marked 再発行) and its cancellation (F7, marked 取消 and kept).
class FrmRyosyu : public Screen {
    Q_OBJECT
public:
    FrmRyosyu(qint64 customerNo, const QString& customerName, const Purchase& purchase,
              QWidget* parent = nullptr);

    void cmdFnuc_Click(int index);

private:
    void buildForm();
    void readAgain();
    void showTargets();
    void showPreview();
    // The receipt of the target as the screen's choices make it, before its addressee.
    Receipt madeFor(const ReceiptTarget& target) const;
    std::optional<Receipt> typedReceipt();
    const Receipt* chosenReceipt();
    void issue();
    void reprint();
    void cancel();
    // Runs one store action; another terminal's work and a refusal are told. True when done.
    bool store(const QString& procedure, const QString& description,
               const std::function<void()>& action);

    const qint64 customerNo_;
    const QString customerName_;
    const Purchase purchase_;
    OrderStore::OrderState state_;
    std::vector<Receipt> receipts_;
    std::vector<ReceiptTarget> targets_;
    ShopDetails shop_;
    std::vector<TaxRate> rates_;

    QLabel *lblPurchase, *lblPreview;
    GridView* spdReceipts;
    RowModel<Receipt>* receiptRows_;
    QComboBox *cboTarget, *cboMethod, *cboKind, *cboAtena;
    xDate* txtPrescDate;
    FunctionKeyRow* keys_;
    std::array<xCmdBtn*, 12> cmdFnuc;
};
