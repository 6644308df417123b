#include "domain/SearchConditions.h"

#include "domain/Age.h"

#include <algorithm>

bool SearchConditions::any() const {
    return std::any_of(on.begin(), on.end(), [](bool value) { return value; });
}

bool SearchConditions::anyPurchaseCondition() const {
    return on[Visit] || on[Youto] || on[Item] || on[Meka] || on[Amount] || on[HinName];
}

bool AgeMatches(const SearchConditions& c, int era, int year, int currentYear) {
    if (year == 0 || era < Taisho || era > Reiwa)
        return false;
    const int age = currentYear - WesternYear(era, year);
    return c.ageFrom <= age && age <= c.ageTo;
}

bool AmountInRange(const SearchConditions& c, qint64 sum) {
    return c.amountFrom <= sum && sum <= c.amountTo;
}
