#pragma once

#include "domain/Prescription.h"

#include <QDate>
#include <QString>
#include <array>

// One purchase (sale) of a customer: master codes as three-digit text (empty when none),
// amounts in whole yen, and the prescription of the right (0) and left (1) eye.
struct Purchase {
    int seq = 0; // the purchase's number within the customer; 0 until it is stored
    QDate date;
    QString itemNo, youtoNo, fmMekaNo, lzMekaNo;
    QString fmName, fmSize, fmColor, lzName;
    qint64 fmKinga = 0, lzKinga = 0, total = 0;
    std::array<Prescription, 2> eyes;
    QString syohou, memo;
    bool operator==(const Purchase&) const = default;
};
