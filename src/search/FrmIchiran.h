#pragma once

#include "domain/SearchConditions.h"
#include "platform/ui/Screen.h"

#include <array>
#include <vector>

class QLabel;
class FrmTotalKensaku;
class FunctionKeyRow;
class ListGrid;
class xCmdBtn;
class xLabel;

// The customer list: customers matching the search conditions with their sales total and last
// visit, print marks for postcards and ledgers, a few fields corrected in place, deletions.
class FrmIchiran : public Screen {
    Q_OBJECT
public:
    explicit FrmIchiran(QWidget* parent = nullptr);

    void Form_Load();
    void Serchkokykau();
    bool UpDataSan_Kokyaku(int row);
    bool DelDataSan_Kokyaku(int row);
    void cmdFnuc_Click(int index);
    // F2: writes the listed rows, in the list's order, to a CSV file the user chooses.
    void OutputCsv();

    // Rows changed and not yet saved (light yellow); rows marked for deletion do not count.
    bool hasUnsavedEdits() const;
    FrmTotalKensaku* conditionsScreen() const { return jyoken_; }

    // The search the list shows, kept from the moment it ran.
    const ShownSearch& shownSearch() const { return shown_; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    ListGrid* spdData;
    xLabel* lblTaisyouCnt;
    xLabel* lblPrintCnt;
    std::array<xCmdBtn*, 12> cmdFnuc;
    void buildForm();
    void toggleDeletion();
    void openRegister(int row);
    void readAgain(qint64 customerNo);
    void savePass();
    // After a save pass that met other terminals' work: one box for all such rows, and on
    // はい each read again (kept, greyed, when its customer is gone).
    void tellConflicts();
    void sortBy(int index);
    void setListKeys(bool enabled);
    bool refuseWhileEditing();
    int currentRow() const;

    FrmTotalKensaku* jyoken_;
    ShownSearch shown_;
    FunctionKeyRow* keys_;
    // The rows of this save pass that met another terminal's work: customer and what it did.
    std::vector<std::pair<qint64, QString>> conflicts_;
};
