#pragma once

#include "platform/ui/Screen.h"

#include <array>

class CustomerList;
class xCmdBtn;
class xField;
class xKana;

// The quick search: finds customers by part of the kana name and/or the telephone number and
// opens the register for one of them, or for a new customer.
class FrmKensaku : public Screen {
    Q_OBJECT
public:
    explicit FrmKensaku(QWidget* parent = nullptr);

    void cmdKensak_Click();
    void Disp_Kokyaku();
    void cmdBtn_Click(int index);

    std::array<xCmdBtn*, 3> cmdBtn; // 新規顧客(F1), 既存顧客(F5), ｷｬﾝｾﾙ(ESC)

private:
    xKana* txtKana;
    xField* txtTel;
    xCmdBtn* cmdKensak;
    CustomerList* spdData;
    // Opens the register for a customer (0: a new one, starting with the typed telephone).
    void openRegister(qint64 customerNo);
    void reset();
};

// The quick search's statement: kana and telephone each found anywhere, as typed.
