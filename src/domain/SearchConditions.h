#pragma once

#include <QDate>
#include <QString>
#include <array>

// The values of the search-conditions screen, as its controls hold them. The customer list
// and the sales inquiry build their statements and row filters from these.
struct SearchConditions {
    enum Condition {
        Kana,
        Jusyo,
        Yubin,
        Tel,
        Sex,
        Age,
        Birthday,
        Visit,
        Youto,
        Item,
        Meka,
        Amount,
        HinName,
        LastVisit,
        Count
    };
    std::array<bool, Count> on{};

    QString kana, jusyo1, tel;
    std::array<QString, 6> yubin; // empty when a field is left empty
    int sex = 0;
    int ageFrom = 0, ageTo = 0;
    int month = 0, day = 0;
    QDate visitFrom, visitTo;
    std::array<QString, 6> youto, item, meka; // master codes; empty when nothing is chosen
    qint64 amountFrom = 0, amountTo = 0;
    std::array<QString, 6> hinName;
    // The customer's last purchase date; an invalid date is an open bound.
    QDate lastVisitFrom, lastVisitTo;

    bool any() const;
    bool anyPurchaseCondition() const;
};

// The age filter: the birth year within the era made Western, the age the years since then.
// A customer without a birth year, or without an era, never passes.
bool AgeMatches(const SearchConditions& c, int era, int year, int currentYear);

// The amount check: the customer's sales within the amount range.
bool AmountInRange(const SearchConditions& c, qint64 sum);

// The search a list shows: its conditions, the conditions screen's result (1 with
// conditions, 2 all customers) and whether the family mode was on.
struct ShownSearch {
    SearchConditions conditions;
    int result = 0;
    bool familyMode = false;
};
