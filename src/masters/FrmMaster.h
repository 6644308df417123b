#pragma once

#include "domain/Master.h"
#include "platform/ui/Screen.h"

#include <array>
#include <functional>

class QLabel;
class FunctionKeyRow;
class GridView;
template <class Row> class RowModel;
class xCmdBtn;
class xField;

// What makes one master screen differ from the others.
struct MasterConfig {
    QString caption; // also the screen's name in the log
    QString numberHeading, nameHeading;
    QString numberLabel, nameLabel;
    MasterKind kind;
    QString listingDescription;
};

// The maintenance of one master table: the whole table in a grid, a row added, renamed or
// deleted through the two fields.
class FrmMaster : public Screen {
    Q_OBJECT
public:
    FrmMaster(const MasterConfig& config, QWidget* parent);

    // Whether the fields make a new entry or rename the one chosen in the list.
    enum class Entry { New, Chosen };
    Entry entry() const { return entry_; }

    void Form_Load();
    void IniForm();
    void DispMaster();
    void DispSelectRow(int row);
    void ClearText();
    bool ChkEntryData();
    // Adds the typed entry or renames the chosen one.
    void SaveMaster();
    // Deletes the chosen entry.
    void DeleteMaster();
    void cmdFnuc_Click(int index);

protected:
    void showEvent(QShowEvent* event) override;

private:
    GridView* spdData;
    QLabel* Label1;
    QLabel* Label2;
    xField* txtTNo;
    xField* txtName;
    std::array<xCmdBtn*, 12> cmdFnuc;
    void numberLeft();
    // The number field's rule: a whole number 0 to 999, shown as its code ("007"); refused with
    // OpeErr_004 and the focus put back otherwise. Empty passes (the required check tells).
    bool numberReadsAsCode();
    MasterEntry typedEntry() const;
    // Runs a store action as the master's one save procedure, then shows the list afresh.
    void storeProcedure(const std::function<void()>& store, const QString& doneMessage);
    void startNewEntry();

    MasterConfig config_;
    RowModel<MasterEntry>* entries_;
    Entry entry_ = Entry::New;
    bool checkingNumber_ = false;
    // The entry chosen in the list, as it was read: a rename or deletion acts on it only while
    // it still holds that name.
    MasterEntry chosen_;
    bool loaded_ = false;
    FunctionKeyRow* keys_;
};

class FrmMstMeka : public FrmMaster {
    Q_OBJECT
public:
    explicit FrmMstMeka(QWidget* parent = nullptr);
};

class FrmMstItem : public FrmMaster {
    Q_OBJECT
public:
    explicit FrmMstItem(QWidget* parent = nullptr);
};

class FrmMstYouto : public FrmMaster {
    Q_OBJECT
public:
    explicit FrmMstYouto(QWidget* parent = nullptr);
};
