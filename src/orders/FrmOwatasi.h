#pragma once

#include "data/Lookups.h"
#include "orders/PickupBoard.h"
#include "platform/ui/Screen.h"

#include <array>
#include <optional>
#include <vector>

class QComboBox;
class QLabel;
class QRadioButton;
class FunctionKeyRow;
class GridView;
template <class Row> class RowModel;
class xCmdBtn;

// The pick-up board: every open order by promised date, the late ones marked, filtered in
// memory; an order moved on to its next status, its customer's register opened, and the call
// list printed from here. The board is read on opening, on F12 and after each action.
class FrmOwatasi : public Screen {
    Q_OBJECT
public:
    explicit FrmOwatasi(QWidget* parent = nullptr);

    // Reads the open orders again and shows those of the filter; the current line stays on
    // the same order while it is shown.
    void DispBoard();
    void cmdFnuc_Click(int index);

protected:
    void showEvent(QShowEvent* event) override;

private:
    std::array<QRadioButton*, 4> optFilter; // all, ready to call, late, one status
    QComboBox* cboStatus;
    QLabel* lblCount;
    GridView* spdData;
    std::array<xCmdBtn*, 12> cmdFnuc;

    BoardView view() const;
    // Shows the lines of the filter from those read, keeping the current order when it can.
    void showLines();
    const OrderStore::BoardLine* currentLine() const;
    void nextStatus();
    // The order and payments of the current line, in the order dialog.
    void openOrder();
    void openCustomer();
    void printCallList();

    FunctionKeyRow* keys_;
    RowModel<OrderStore::BoardLine>* lines_;
    std::vector<OrderStore::BoardLine> all_;
    QDate today_;
    MasterNames names_;
    bool loaded_ = false;
};
