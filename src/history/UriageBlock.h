#pragma once

#include <QGroupBox>
#include <array>

class QComboBox;
class RecordSet;
class xDate;
class xField;
class xNum;

// One purchase of the sales history: read-only until its correction key is pressed.
class UriageBlock : public QGroupBox {
    Q_OBJECT
public:
    UriageBlock(int index, QWidget* parent = nullptr);

    // Empties the block and fills its lists afresh; the block is disabled.
    void clear();
    // Shows one purchase of the history query.
    void show(const RecordSet& row);
    // Whether the block shows a purchase.
    bool showsPurchase() const;
    // The statement that writes the block back, alternating right and left eye.
    QString updateSql(qint64 customerNo) const;

    // A prescription field by eye (0 right, 1 left) and value in table order.
    xField* prescription(int eye, int index) const { return eyes_[eye][index]; }

    int seq = 0;
    bool editing = false;

    xDate* txtUriDate;
    QComboBox *cboItem, *cboYouto, *cboFm_Meka, *cboLz_Meka;
    xField *txtFm_Name, *txtFm_Size, *txtFm_Color, *txtLz_Name;
    xNum *txtFm_Kinga, *txtLz_Kinga, *txtKinga;

private:
    void layOut();
    std::array<std::array<xField*, 13>, 2> eyes_{};
};
