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

protected:
    void showEvent(QShowEvent* event) override;

private:
    // The board's button says how many orders are late and how many wait to be called.
    void showOrderCounts();

    std::array<QPushButton*, 3> cmdMenu;
    std::array<QPushButton*, 3> cmdMst;
    QPushButton* cmdTenpo;
    QPushButton* cmdOwatasi;
    QPushButton* cmdNikkei;
    QPushButton* cmdBunseki;
    QGroupBox* Frame1;
};
