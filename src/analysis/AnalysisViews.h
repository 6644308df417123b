#pragma once

#include "domain/SalesAnalysis.h"

#include <QDate>
#include <QString>
#include <QStringList>
#include <vector>

class ReportJob;

// The views of the sales analysis: what each reads for a period, the table it shows beside its
// chart (also written to CSV and printed), and its printed page.

enum class AnalysisView { Monthly, Item, Purpose, FrameMaker, LensMaker, Customers, Overview };
inline constexpr int AnalysisViewCount = 7;

// "月別売上", "品目別", ... as the screen's tabs name the views.
QString ViewTitle(AnalysisView view);

// How many customers the overview lists.
inline constexpr int TopCustomerCount = 20;

// What one view read for a period; only the parts of its view are filled.
struct ViewData {
    AnalysisView view = AnalysisView::Monthly;
    AnalysisPeriod period{};
    std::vector<MonthSales> months{};
    std::vector<ShareLine> shares{}; // with the masters' names
    std::vector<BandCounts> bands{};
    SalesSummary summary{};
    std::vector<TopCustomer> top{};
};

// Reads the view's figures for the period from the shop's database.
ViewData ReadView(AnalysisView view, const AnalysisPeriod& period);

// One line of a view's table: the texts shown (amounts grouped, shares with %), and the same
// line for a CSV file (plain numbers a spreadsheet reads as numbers, code and name apart).
struct TableLine {
    QStringList shown{}, csv{};
    bool total = false;  // the line of totals, last
    bool marked = false; // stands out: the progressive lenses' purpose
};

struct AnalysisTable {
    QStringList headings{}, csvHeadings{};
    std::vector<TableLine> lines{};
};

// The table of a view: its first column names the line, the others are numbers.
AnalysisTable TableOf(const ViewData& data);

// The view's figures in one line above the table: "売上合計 1,234,000円　件数 31件".
QString SummaryText(const ViewData& data);

// Writes the table to a CSV file as the customer list writes its own: UTF-8 with the mark,
// texts a spreadsheet would calculate written with an apostrophe in front; the file appears
// only when it was written whole (a Failure otherwise).
void WriteAnalysisCsv(const QString& path, const AnalysisTable& table);

// The view's pages (PrnSan009.jfm, A4 portrait): the title, the period, the figures, the chart
// and the table, its lines going on over as many pages as they need (the chart on the first).
void PrintAnalysis(ReportJob& job, const ViewData& data, const AnalysisTable& table,
                   const QDate& today);
