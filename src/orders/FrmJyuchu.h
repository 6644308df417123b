#pragma once

#include "domain/Order.h"
#include "domain/Purchase.h"
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
class xField;
class xNum;

// The order and payments of one purchase. For a stored purchase every key stores at once, in
// its own transaction: the order's date, supplier and note (F5; a completed sale takes an
// order), the next status (F6), a cancellation (F7), a payment (F9); F8 opens its receipts. For a
// purchase typed in the register and not yet stored, what is chosen waits with its line and is
// stored with the registration (F5 keeps it, F1 drops it).
class FrmJyuchu : public Screen {
    Q_OBJECT
public:
    // A stored purchase of the customer.
    FrmJyuchu(qint64 customerNo, const QString& customerName, const Purchase& purchase,
              QWidget* parent = nullptr);
    // A purchase typed and not yet stored, with what waits with it; the customer's stored
    // purchases are what it may make again.
    FrmJyuchu(const Purchase& typed, const std::optional<Order>& order,
              const std::vector<Payment>& payments, const std::vector<Purchase>& remakeable,
              QWidget* parent = nullptr);

    // Whether anything was stored while it was open.
    bool stored() const { return stored_; }
    // For a typed purchase kept with F5: its order and payments.
    const std::optional<Order>& order() const { return order_; }
    const std::vector<Payment>& payments() const { return payments_; }

    void cmdFnuc_Click(int index);

private:
    void buildForm();
    void fillLists(const std::vector<Purchase>& remakeable);
    // Reads the stored order and payments again and shows them.
    void readAgain();
    void showState();
    Order typedOrder() const;
    std::optional<Payment> typedPayment();
    void keep();
    void saveOrder();
    void advance(OrderStatus next, const QString& question, bool yesByDefault);
    void recordPayment();
    // Runs one store action of a stored purchase; a refusal or another terminal's work is told.
    void store(const QString& procedure, const std::function<void()>& action);

    const bool typedOnly_;
    const qint64 customerNo_ = 0;
    const QString customerName_;
    const Purchase purchase_;
    std::optional<Order> order_;
    std::vector<Payment> payments_;
    bool stored_ = false;

    QLabel *lblPurchase, *lblStatus, *lblSteps, *lblPaid, *lblZankin;
    xDate* txtDueDate;
    QComboBox *cboSupplier, *cboRemake;
    xField *txtSupplierNo, *txtNote;
    GridView* spdPayments;
    RowModel<Payment>* paymentRows_;
    xDate* txtPayDate;
    QComboBox *cboPayKind, *cboPayMethod;
    xNum* txtPayAmount;
    FunctionKeyRow* keys_;
    std::array<xCmdBtn*, 12> cmdFnuc;
};
