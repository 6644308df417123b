#pragma once

#include "platform/ui/Screen.h"

#include <array>

class QGroupBox;
class QPushButton;

// The main menu: every screen of the shop's work is reached from here.
class FrmMenu : public Screen {
    Q_OBJECT
public:
    explicit FrmMenu(QWidget* parent = nullptr);

    void cmdMenu_Click(int index);
    void cmdMst_Click(int index);

private:
    std::array<QPushButton*, 3> cmdMenu;
    std::array<QPushButton*, 3> cmdMst;
    QPushButton* cmdTenpo;
    QGroupBox* Frame1;
};
