#pragma once

#include <QString>

class RecordSet;
class SpreadGrid;

// The four-column list of customers shared by the quick search and the family list:
// 顧客番号, 氏 名, TEL and 住 所 (both address lines joined).
void SetUpCustomerList(SpreadGrid* grid);

// One customer row of San_User as the list's tab-separated line.
QString CustomerListLine(const RecordSet& row);
