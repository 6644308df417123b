#pragma once

#include "platform/ui/Screen.h"

#include <array>

class QLabel;
class QPushButton;
class xPass;

// The sign-on screen: the right password opens the main menu.
class FrmPsw : public Screen {
    Q_OBJECT
public:
    explicit FrmPsw(QWidget* parent = nullptr);

    void cmdBtn_Click(int index);

private:
    QLabel* Label1;
    QLabel* Label2;
    QLabel* Label3;
    QLabel* Label4;
    xPass* txtPSW;
    std::array<QPushButton*, 2> cmdBtn;
};
