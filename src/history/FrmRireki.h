#pragma once

#include "data/Lookups.h"
#include "platform/ui/Screen.h"

#include <array>

class QLabel;
class QPushButton;
class FunctionKeyRow;
class UriageBlock;
class xCmdBtn;
class xDate;
class xLabel;
class xNum;

// The sales history: one customer's purchases three at a time, newest first, each block
// correctable after its key.
class FrmRireki : public Screen {
    Q_OBJECT
public:
    explicit FrmRireki(QWidget* parent = nullptr);

    void setKokNo(qint64 customerNo) { kokNo_ = customerNo; }
    // True when a save on this screen succeeded.
    bool Koushin() const { return koushin_; }
    int page() const { return page_; }

    void Form_Load();
    void ClearUriage();
    // Shows the page of purchases dated on or before the day; false when there is none, or
    // when the page could not be read (readFailed(): the failure was told).
    bool DispUriage(qint64 ymd);
    bool readFailed() const { return readFailed_; }
    bool ChkEditData() const;
    bool SaveUriage();
    void cmdFnuc_Click(int index);
    void cmdKensaku_Click();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    xLabel* lblKokNo;
    xLabel* lblName;
    xNum* txtKingaKei;
    xDate* txtKensakuDay;
    QPushButton* cmdKensaku;
    std::array<UriageBlock*, 3> FraUriage;
    std::array<xCmdBtn*, 12> cmdFnuc;
    bool readFailed_ = false;
    void showPage();
    qint64 searchDay() const;
    // Every block in correction holds a real date; else says which is not and focuses it.
    bool correctedDatesRead();

    qint64 kokNo_ = 0;
    qint64 shownNo_ = 0; // the customer of the purchases shown; 0 while none is
    bool koushin_ = false;
    int page_ = 1;
    bool loaded_ = false;
    FunctionKeyRow* keys_;
    // The masters as read when the screen opened: every page's lists are filled from them.
    MasterNames masters_;
};
