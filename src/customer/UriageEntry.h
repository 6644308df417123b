#pragma once

#include "domain/Purchase.h"
#include "prescription/PrescriptionWiring.h"

#include <QGroupBox>
#include <QStringList>
#include <array>
#include <optional>

class QComboBox;
class QPushButton;
class PrescriptionReference;
class PurchaseGrid;
struct PurchaseLine;
class xDate;
class xField;
class xNum;

// The purchase entry of the register: one purchase at a time, with its prescription of
// thirteen values per eye (index 0 the right eye, 1 the left).
class UriageEntry : public QGroupBox {
    Q_OBJECT
public:
    explicit UriageEntry(QWidget* parent = nullptr);

    // The grid the entry writes its lines into.
    void attachGrid(PurchaseGrid* grid);

    // Fills the four master lists from the attached grid's masters.
    void fillMasterLists();
    // Empties the entry: today's date, no master chosen, amounts 0, every other field empty.
    void Clear_UriData();

    // The purchase date the fields start with.
    void setPurchaseDate(const QDate& date);
    // Shows a grid line in the fields; "明細登録" then writes over that line.
    void showLine(const PurchaseLine& line);

    // "明細登録": the fields into a new grid line, or over the line being edited.
    void cmdOk_Click();
    // "明細削除": a new line is removed, a stored one marked for deletion or unmarked.
    void cmdCancel_Click();
    // "クリア": the fields only.
    void cmdClear_Click();
    // Enter in one of the entry's notes moves on; true when it did.
    bool enterPressed(QWidget* from);

    // The entry's controls in the order Tab runs through them: row by row as shown, then the
    // prescription and the buttons.
    QList<QWidget*> tabOrder() const;
    // The prescription field of a value in table order (PrescriptionColumns) and eye.
    xField* prescriptionField(int eye, int index) const;

    // Whether the fields hold something typed that is not in the grid: they differ from the
    // line they show, or from the empty entry.
    bool holdsTypedEntry() const { return fieldTexts() != shownTexts_; }

    // The id of the grid line the fields show; 0 for a new line.
    int shownLineId() const { return lineId_; }

    std::array<xField*, 2> txtSph, txtCyl, txtAx, txtS, txtP1, txtB1, txtP2, txtB2, txtGai, txtTama,
        txtRagan, txtKyosei, txtPd;

private:
    xDate* txtDatc;
    xNum* txtKingaKci;
    QComboBox* cboItem;
    QComboBox* cboYoto;
    xField* txtFm_Name;
    std::array<QComboBox*, 2> cboMeka;
    xNum* txtFm_Kinga;
    xField* txtFm_Size;
    xField* txtFm_Color;
    xField* txtLz_Name;
    xNum* txtLz_Kinga;
    xField* txtSyohou;
    xField* txtMemo;
    QPushButton* cmdOk;
    QPushButton* cmdCancel;
    QPushButton* cmdClear;
    void layOut();
    EyeFields eyeFields(int eye) const;
    void connectEvents();
    // The purchase the fields hold; none when a prescription field holds no number (the user
    // was told, and the focus is on that field).
    std::optional<Purchase> purchaseFromFields();
    void updateTotal();
    // Shows the prescription of the purchase before the one in the fields: before the line
    // they edit, or before a new line of their date (after every line of that day).
    void showPreviousPrescription();
    // What the fields hold, one text per field, to tell typing from what was shown.
    QStringList fieldTexts() const;

    PurchaseGrid* grid_ = nullptr;
    PrescriptionReference* reference_;
    int lineId_ = 0;
    QStringList shownTexts_;
};
