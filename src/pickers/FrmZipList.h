#pragma once

#include "platform/ui/Screen.h"

class QLabel;
class QPushButton;
class AddressList;
class xField;

// Postal code and address search: finds directory entries by any of the five fields and
// hands the chosen postal code and address back to the screen that opened it.
class FrmZipList : public Screen {
    Q_OBJECT
public:
    explicit FrmZipList(QWidget* parent = nullptr);

    // 1: the address handed back starts with the prefecture.
    void setTodoFlg(int flag) { todoFlg_ = flag; }
    int TodoFlg() const { return todoFlg_; }
    // The chosen postal code ("060-0001") and address; empty after cancel.
    const QString& Zip() const { return zip_; }
    const QString& Addr() const { return addr_; }

    void cmdKensak_Click();
    void cmdClear_Click();
    void cmdOK_Click();
    void cmdCAN_Click();
    void AddrRead();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    xField* txtZip1;
    xField* txtZip2;
    xField* txtTodo;
    xField* txtCity;
    xField* txtTown;
    QPushButton* cmdKensak;
    QPushButton* cmdClear;
    QPushButton* cmdOK;
    QPushButton* cmdCAN;
    AddressList* spdZipList;
    int todoFlg_ = 0;
    QString zip_;
    QString addr_;
};
