#pragma once

#include "platform/ui/Screen.h"

#include <array>
#include <functional>
#include <memory>

class QLabel;
class QPushButton;
class QRadioButton;
class QButtonGroup;
class Failure;
class FunctionKeyRow;
class UriageEntry;
class PurchaseGrid;
struct Customer;
class xCmdBtn;
class xDate;
class xField;
class xKana;
class xLabel;
class xZip;

// The customer register: one customer's record, shown, created, changed or deleted together
// with his purchases.
class FrmKokyaku : public Screen {
    Q_OBJECT
public:
    explicit FrmKokyaku(QWidget* parent = nullptr);

    // Shows the register modally as its callers open it (0: a new customer, starting with the
    // telephone). When the family list chose a member the register closes and opens again for
    // him, until it closes for good. True when anything was registered or deleted meanwhile.
    static bool Open(QWidget* parent, qint64 customerNo, const QString& tel = {});

    // The customer to show; 0 opens the register for a new customer.
    void setSyori(qint64 customerNo) { syori_ = customerNo; }
    qint64 Syori() const { return syori_; }
    // The telephone a new customer starts with.
    void setTEL(const QString& tel) { tel_ = tel; }
    // True when something was registered or deleted during this visit.
    bool Koushin() const { return koushin_; }
    // The family member the register closed to be opened for; 0 when it closed for good.
    qint64 reopenFor() const { return reopenFor_; }

    // Whether the fields make a new customer or show a stored one.
    enum class Record { New, Stored };
    Record record() const { return record_; }
    qint64 currentNo() const { return currentNo_; }
    int age() const { return age_; }

    void Form_Load();
    void Form_Activate();
    void Disp_User(qint64 customerNo);
    void Disp_SpdData(qint64 customerNo);
    void Save_UriData(qint64 customerNo);
    // The customer number the screen shows; 0 for none (a new customer, after a clear).
    qint64 shownNo() const { return shownNo_; }
    // Registers the customer the fields hold, new or stored, with the waiting lines. False when
    // the save failed; the screen is then as it was before.
    bool Save_User();
    // Deletes the stored customer shown, with his purchases. False when that failed; the screen
    // then still shows him.
    bool Delete_User();
    void Clear_User();
    qint64 Get_LastUNo();
    void Get_Age(int era, int year, int month, int day);
    void cmdFnuc_Click(int index);
    void cmdJusyo_Click();
    void spdData_Click(int row, int column);

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool enterPressed(QWidget* from) override;

private:
    xLabel* lblNo;
    xDate* txtDate;
    xField* txtName;
    xKana* txtKana;
    xZip* txtYubin;
    QPushButton* cmdJusyo;
    xField *txtJusyo1, *txtJusyo2, *txtTel, *txtKinmu, *txtKinmuTel, *txtSyokai, *txtSyokaiTel;
    std::array<QRadioButton*, 2> optSex;
    std::array<QRadioButton*, 4> optKazok_F;
    // By stored code: 0 大正, 1 昭和, 2 平成, 3 西暦 (no era), 4 令和.
    std::array<QRadioButton*, 5> optTanjo_Go;
    xField *txtTanjo_Nen, *txtTanjo_Mon, *txtTanjo_Day;
    QLabel* lblAge;
    QLabel* lblZankin;
    PurchaseGrid* spdData;
    UriageEntry* FraUriage;
    std::array<xCmdBtn*, 12> cmdFnuc;
    void buildForm();
    void connectEvents();
    QList<xField*> recordFields() const;
    void showGrid(bool shown);
    void fillAddressFromPostalCode();
    void openFamily();
    void openHistory();
    // The order and payments of the purchase the entry shows (or of the grid's current line).
    void openOrder();
    void showOwed();
    bool mayLeaveWaitingLines() const;
    void forgetCustomer();
    // Runs a save or deletion as one procedure, telling its failures as the register does.
    bool storeProcedure(const std::function<void()>& store);
    void saveCustomer();
    void deleteCustomer();
    Customer customerFromFields() const;
    // The registration date and the birth date can be stored; else says so and focuses them.
    bool datesFit();
    void westernYearToEra();
    void showEraOf(int westernYear);
    void showCustomer(const Customer& customer);
    // After a save that met another terminal's work: says so, and reads the stored customer
    // again when the staff ask for it (lines not stored yet stay).
    void tellConflict(const Failure& failure);
    void readAgainKeepingNewLines();

    Record record_ = Record::New;
    qint64 syori_ = 0;
    QString tel_;
    bool koushin_ = false;
    qint64 reopenFor_ = 0;
    qint64 currentNo_ = 0;
    qint64 shownNo_ = 0;
    // The customer as last read: a save writes only what the fields changed from it.
    std::unique_ptr<Customer> shown_;
    int age_ = 0;
    // A Western year typed while an era was chosen: its era follows the month and day typed.
    int typedWesternYear_ = 0;
    bool loaded_ = false;
    QButtonGroup* sexGroup_;
    QButtonGroup* kazokGroup_;
    QButtonGroup* tanjoGoGroup_;
    FunctionKeyRow* keys_;
};
