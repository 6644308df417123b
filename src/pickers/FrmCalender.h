#pragma once

#include "platform/ui/Screen.h"

#include <QDate>
#include <array>

class QPushButton;
class xClndr;

// The calendar picker: shows the caller's date and hands back the date picked.
class FrmCalender : public Screen {
    Q_OBJECT
public:
    explicit FrmCalender(QWidget* parent = nullptr);

    void setInDate(const QDate& date);
    // The date last picked; the date shown at the start when nothing was picked.
    QDate ResultDate() const { return resultDate_; }
    // True when the screen was closed with "ＯＫ".
    bool EndType() const { return endType_; }

    void cmdSelect_Click(int index);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    xClndr* xClndr1;
    std::array<QPushButton*, 2> cmdSelect;
    QDate resultDate_;
    bool endType_ = false;
};
