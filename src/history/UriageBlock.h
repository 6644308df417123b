#pragma once

#include "domain/Purchase.h"

#include <QGroupBox>
#include <array>

class MasterNames;
class PrescriptionReference;
class QComboBox;
class xDate;
class xField;
class xNum;

// One purchase of the sales history: read-only until its correction key is pressed.
class UriageBlock : public QGroupBox {
    Q_OBJECT
public:
    UriageBlock(int index, QWidget* parent = nullptr);

    // Empties the block and fills its lists afresh from the screen's masters; the block is
    // disabled.
    void clear(MasterNames& masters);
    // Shows one purchase of the history, under its prescription the previous one's (if any).
    void show(const Purchase& purchase, const Purchase* previous);
    // Whether the block shows a purchase.
    bool showsPurchase() const;
    // The purchase as the block's fields hold it now; what the block does not show (the note,
    // the memo) stays as it was read. Fails (13) on a prescription field that holds no number.
    Purchase edited() const;
    // The number of the purchase shown; 0 while the block is empty.
    int seq() const { return shown_.seq; }
    // The purchase as it was read: a correction writes only what differs from it.
    const Purchase& shown() const { return shown_; }

    // A prescription field by eye (0 right, 1 left) and value in table order.
    xField* prescription(int eye, int index) const { return eyes_[eye][index]; }

    bool editing = false;
    // Opens the block for correction under the title, the focus on the frame's name.
    void startCorrection(const QString& title);
    // Whether the corrected date can be stored; if not, says so and puts the focus on it.
    bool dateReads();

private:
    xDate* txtUriDate;
    QComboBox *cboItem, *cboYouto, *cboFm_Meka, *cboLz_Meka;
    xField *txtFm_Name, *txtFm_Size, *txtFm_Color, *txtLz_Name;
    xNum *txtFm_Kinga, *txtLz_Kinga, *txtKinga;
    void layOut();
    std::array<std::array<xField*, 13>, 2> eyes_{};
    PrescriptionReference* reference_;
    Purchase shown_;
};
