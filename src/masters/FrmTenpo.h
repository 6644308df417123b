#pragma once

#include "data/ShopStore.h"
#include "platform/ui/Screen.h"

#include <array>

class FunctionKeyRow;
class xCmdBtn;
class xField;

// The shop's own details as the customer's slips print them: name, address, telephone.
class FrmTenpo : public Screen {
    Q_OBJECT
public:
    explicit FrmTenpo(QWidget* parent = nullptr);

    void Form_Load();
    void DispShop();
    // Saves what was changed; true when it was stored.
    bool SaveShop();
    void cmdFnuc_Click(int index);

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    xField* txtShopName;
    xField* txtShopAddress;
    xField* txtShopTel;
    std::array<xCmdBtn*, 12> cmdFnuc;
    ShopDetails typed() const;
    bool hasUnsavedEdits() const;

    // The details as the screen read them: a save writes what differs from them.
    ShopDetails shown_;
    bool loaded_ = false;
    FunctionKeyRow* keys_;
};
