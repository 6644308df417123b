#pragma once

#include "platform/ui/Screen.h"

#include <array>

class CustomerList;
class xCmdBtn;

// The family list: every customer with the same telephone number as the register's customer.
class FrmKazoku : public Screen {
    Q_OBJECT
public:
    explicit FrmKazoku(QWidget* parent = nullptr);

    void setTEL(const QString& tel) { tel_ = tel; }
    // The customer chosen to be shown in the register; 0 when the list was cancelled.
    qint64 chosenCustomer() const { return chosen_; }

    void Disp_Kokyaku();
    void cmdBtn_Click(int index);

protected:
    void showEvent(QShowEvent* event) override;

private:
    CustomerList* spdData;
    std::array<xCmdBtn*, 3> cmdBtn{}; // 1 顧客詳細(F5), 2 ｷｬﾝｾﾙ(ESC); 0 is not used
    void choose(int row);

    QString tel_;
    qint64 chosen_ = 0;
    bool loaded_ = false;
};
