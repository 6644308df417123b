#pragma once

#include <QString>
#include <vector>

// What the user typed into the postal search fields.
struct ZipConditions {
    QString zip1;
    QString zip2;
    QString todo;
    QString city;
    QString town;

    bool isEmpty() const;
};

// The directory query for the fields that are filled: exact equality, the two postal code
// parts as whole numbers. A postal code part that is not a number fails (error 13).
QString ZipSearchSql(const ZipConditions& conditions);

// A postal code as the list shows it: "060-0001".
QString FormatZip(qint64 zip1, qint64 zip2);

// One address of the directory as the postal search lists it.
struct ZipAddress {
    QString zip; // "060-0001"
    QString todo, city, town;
};

// The addresses for the fields that are filled, in the directory's order.
std::vector<ZipAddress> FindAddresses(const ZipConditions& conditions);
