#pragma once

#include "domain/ListRow.h"

#include <QString>
#include <vector>

// A household: customers who share a telephone number, compared as it was typed as the family
// list finds a family, and the address. Representative (代表) first, then the others in the
// order given.
using Household = std::vector<const ListedCustomer*>;

// The households of the marked rows, in the order of their first marked member. A household
// takes in the marked customers of it; one whose mark is off is not named on its card. A
// customer without a telephone number is a household of his own.
std::vector<Household> MarkedHouseholds(const std::vector<ListRow>& rows);

// The addressee of a household card, for the fields "Name" and "Sama". Up to four members:
// one line per member, "\t" before the given name and before 様 so that they line up, the family
// name written once on the representative's line. More members: the representative and
// "御一同様". Members whose family names differ are written with their full names.
struct Addressee {
    QString name, sama;
};
Addressee HouseholdAddressee(const Household& household);

inline constexpr int MostNamesOnACard = 4;
