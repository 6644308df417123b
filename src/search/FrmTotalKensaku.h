#pragma once

#include "domain/SearchConditions.h"
#include "platform/ui/Screen.h"

#include <array>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QPushButton;
class QRadioButton;
class xDate;
class xField;
class xKana;
class xNum;
class xZip;

// The family mode of the last search: the customer list marks family members for printing too.
extern bool GlbKazokTaisyou;

// The search conditions of the customer list. It stays loaded, hidden, while the list lives,
// so its entries survive from one search to the next.
class FrmTotalKensaku : public Screen {
    Q_OBJECT
public:
    explicit FrmTotalKensaku(QWidget* parent = nullptr);

    // 0 after キャンセル, 1 after a search with conditions, 2 after one for all customers.
    int Result() const { return result_; }
    // The entered conditions, as the list and the inquiry use them.
    SearchConditions conditions() const;

    void JyokenClear();
    void chkJoken_Click(int index);
    void cmdKensaku_Click();
    void cmdCancel_Click();
    void cmdCalender_Click(int index);
    void cmdSaisyuCalender_Click(int index);
    void cmdJusyo_Click(int index);

    // The check box of a condition: the conditions' own order for 0 to 12, then 15 for the last
    // visit; 13 is "< 全顧客対象 >" and 14 "< 家族対象 >".
    static constexpr int boxOf(int condition) {
        return condition == SearchConditions::LastVisit ? 15 : condition;
    }

protected:
    // Enter in a condition starts the search; on a button it presses that button.
    bool enterPressed(QWidget* from) override;
    // The window's close box is キャンセル.
    void reject() override;

private:
    std::array<QCheckBox*, 16> chkJoken;
    xKana* txtKana;
    xField *txtJusyo1, *txtTel;
    std::array<xZip*, 6> txtYubin;
    std::array<QPushButton*, 6> cmdJusyo;
    QGroupBox* FraSex;
    std::array<QRadioButton*, 2> optSex;
    std::array<xNum*, 2> txtToshi;
    xNum *txtMonth, *txtDay;
    std::array<xDate*, 2> txtRaiten;
    std::array<QPushButton*, 2> cmdCalender;
    std::array<xDate*, 2> txtSaisyuRaiten; // the last visit's range, open where left empty
    std::array<QPushButton*, 2> cmdSaisyuCalender;
    std::array<QComboBox*, 6> cboYoto, cboItem, cboMeka;
    std::array<xNum*, 2> txtKinga;
    std::array<xField*, 6> txtHinName;
    QGroupBox* FraAll;
    QGroupBox* FraAll_K;
    QPushButton *cmdKensaku, *cmdClear, *cmdCancel;
    void buildForm();
    QList<QWidget*> group(int index) const;
    void resetGroup(int index);
    bool checksPass();
    bool dateRangeRefused(int condition, const std::array<xDate*, 2>& dates);
    bool anyConditionOn() const;
    void pickDate(xDate* field);

    int result_ = 0;
};
