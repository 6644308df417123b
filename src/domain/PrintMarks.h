#pragma once

#include <QString>

// Whether a listed customer is marked for printing when the list is searched: never without a
// first address line; for all customers the representatives and individuals; with conditions
// never those who want no mail, and family members only in the family mode.
bool MarkedOnSearch(const QString& jusyo1, int kazok, int result, bool familyMode);

// Whether a row is marked once its family category is changed in the list.
bool MarkAfterFamilyChange(int kazok, int result);
