#pragma once

#include "domain/Prescription.h"

#include <QDate>
#include <QString>
#include <array>
#include <vector>

// One purchase (sale) of a customer: master codes as three-digit text (empty when none),
// amounts in whole yen, and the prescription of the right (0) and left (1) eye.
struct Purchase {
    int seq = 0; // the purchase's number within the customer; 0 until it is stored
    QDate date;
    // The date as stored (yyyymmdd), also when it is no calendar date (20250230); 0 for a
    // purchase not read from the database.
    qint64 storedYmd = 0;
    QString itemNo, youtoNo, fmMekaNo, lzMekaNo;
    QString fmName, fmSize, fmColor, lzName;
    qint64 fmKinga = 0, lzKinga = 0, total = 0;
    std::array<Prescription, 2> eyes;
    QString syohou, memo;
    bool operator==(const Purchase&) const = default;
};

// The purchase's date as shown: "yyyy/mm/dd", or the stored number through "####/##/##" when it
// is no calendar date.
QString PurchaseDateText(const Purchase& purchase);

// Whether a purchase carries a prescription: an optical value of either eye.
bool HasPrescription(const Purchase& purchase);

// The purchase whose prescription one made on `date` with number `seq` is compared with: of
// the purchases, the latest one made before it (by date, then by number) that carries a
// prescription; null when there is none.
const Purchase* PreviousPrescription(const std::vector<Purchase>& purchases, const QDate& date,
                                     int seq);
