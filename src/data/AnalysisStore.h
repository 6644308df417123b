#pragma once

#include "domain/SalesAnalysis.h"

#include <QString>
#include <vector>

// The statements of the sales analysis: each view's figures are summed by the database in one
// grouped statement over the purchases of the period, the same text on both engines. Purchase
// dates are compared as the stored yyyymmdd numbers.
namespace AnalysisStore {

// The sales of each month number in the period and in the same days a year earlier.
QString MonthsSql(const AnalysisPeriod& period);
std::vector<MonthGroup> Months(const AnalysisPeriod& period);

// What a breakdown groups the period's purchases by, and which amount it sums: the total for
// items and purposes, the frame's amount by frame maker, the lenses' by lens maker.
enum class Breakdown { Item, Purpose, FrameMaker, LensMaker };
QString BreakdownSql(Breakdown by, const AnalysisPeriod& period);
std::vector<CodeSales> ByCode(Breakdown by, const AnalysisPeriod& period);

// The customers served in the period, grouped as ServedGroup says: a customer is new when his
// first purchase ever lies in the period. A purchase whose customer is no longer stored counts
// as a man of unknown age.
QString ServedSql(const AnalysisPeriod& period);
std::vector<ServedGroup> Served(const AnalysisPeriod& period);

// The period's sales, and how many customers they were made to.
QString SummarySql(const AnalysisPeriod& period);
SalesSummary Summary(const AnalysisPeriod& period);

// The customers with the highest sales in the period, highest first (equal sales by customer
// number), with their names.
QString TopCustomersSql(const AnalysisPeriod& period, int count);
std::vector<TopCustomer> TopCustomers(const AnalysisPeriod& period, int count);

} // namespace AnalysisStore
