#pragma once

#include <QDate>
#include <QString>
#include <array>
#include <vector>

// The rules of the sales analysis, apart from the statements that read the figures and the
// screen that shows them. Purchase dates are compared as the yyyymmdd numbers they are stored
// as, so a stored date that is no calendar date (20240231) still falls in its month by number.

// The days analysed, both included.
struct AnalysisPeriod {
    QDate from, to;
    qint64 fromYmd() const;
    qint64 toYmd() const;
    bool operator==(const AnalysisPeriod&) const = default;
};

// The quick choices of the period, each up to today: this month, this year, and the twelve
// months that end with this one (from the first of the month eleven months back).
enum class QuickPeriod { ThisMonth, ThisYear, Last12Months };
AnalysisPeriod QuickPeriodOf(QuickPeriod choice, const QDate& today);

// The same days a year earlier (29 February becomes the 28th).
AnalysisPeriod YearBefore(const AnalysisPeriod& period);

// "2025/12/01〜2026/11/22".
QString PeriodText(const AnalysisPeriod& period);

// Sales as summed: the amount and how many purchases.
struct SalesSum {
    qint64 amount = 0;
    qint64 count = 0;
    bool operator==(const SalesSum&) const = default;
};

// One month number (yyyymm) as read: its sales in the period, and the sales of the year-earlier
// period dated in that month.
struct MonthGroup {
    qint64 ym = 0;
    SalesSum current{}, yearBefore{};
};

// One line of the monthly view: the month, its sales, and those of the same month a year
// before.
struct MonthSales {
    qint64 ym = 0;
    SalesSum current{}, yearBefore{};
    bool operator==(const MonthSales&) const = default;
};

// Every month of the period in order, each with the year-earlier month beside it; a month
// number that no calendar has (202413) but that holds a stored purchase is listed too, in its
// place by number, so that the months add up to the period's whole sales.
std::vector<MonthSales> MonthlySales(const AnalysisPeriod& period,
                                     const std::vector<MonthGroup>& groups);

// "2025/12".
QString MonthText(qint64 ym);

// This year's sales against last year's as a percentage with one decimal ("112.5%"); empty
// when there was nothing the year before.
QString RatioText(qint64 current, qint64 yearBefore);

// A share of a whole in tenths of a percent, rounded half up; 0 when the whole is not above 0.
int ShareTenths(qint64 part, qint64 whole);
// "34.5%".
QString ShareText(int tenths);

// One line of a breakdown by item, purpose or maker: a master code with its sales.
struct CodeSales {
    QString code{}; // as stored; empty for none
    SalesSum sales{};
};

// What a line of a breakdown stands for: a code, the purchases without one, or the lines a
// chart leaves out, put together.
enum class ShareKind { Code, NoCode, Rest };

struct ShareLine {
    ShareKind kind = ShareKind::Code;
    QString code{};
    QString name{}; // the master's name; empty for a code whose entry was deleted
    SalesSum sales{};
    int shareTenths = 0;
    bool operator==(const ShareLine&) const = default;
};

// The breakdown's lines: a code that is empty or blank counts as none, and all of those
// make one line, last; the others by amount, largest first (equal amounts by code). Each has its
// share of the total amount.
std::vector<ShareLine> ShareLines(const std::vector<CodeSales>& groups);
SalesSum TotalOf(const std::vector<ShareLine>& lines);

// The slices of a chart of the lines: at most `most`; when there are more, the smallest are
// put together in one Rest line, last.
std::vector<ShareLine> ChartSlices(const std::vector<ShareLine>& lines, int most);

// How a line is named: "003 遠近両用"; "（なし）" for the purchases without a code;
// "上記以外" for the rest of a chart.
QString ShareLineText(const ShareLine& line);

// The purpose of progressive lenses, whose share the purpose view makes stand out.
bool IsProgressive(const QString& purposeName);

// The customers served in the period, grouped by what their band depends on: sex, birth year
// in its era, whether the birthday of the year had come by the period's last day, and whether
// the customer's first purchase ever lies in the period (new) or before it (returning).
struct ServedGroup {
    int sex = 0; // 1 女; anything else is counted as 男, as the register shows it
    int era = 1;
    int year = 0; // 0: not known
    bool hadBirthday = false;
    bool isNew = false;
    qint64 customers = 0;
};

// Ten-year bands of the age on the period's last day: 0 for under 10, 1 for the 10s ... 9 for
// 90 and over; UnknownBand for a birth year not known (or one after the day).
inline constexpr int AgeBands = 11;
inline constexpr int UnknownBand = 10;
int AgeBandOf(int era, int year, bool hadBirthday, const QDate& day);
// "10歳未満", "20代", "90歳以上", "不明".
QString AgeBandText(int band);

// The four counts of a band: new men, new women, returning men, returning women.
enum ServedColumn { NewMen, NewWomen, ReturningMen, ReturningWomen };
struct BandCounts {
    int band = 0;
    std::array<qint64, 4> customers{};
    qint64 total() const;
    bool operator==(const BandCounts&) const = default;
};

// Every band in order, the unknown one last, each with its counts (zero where nobody came).
std::vector<BandCounts> CustomerBands(const std::vector<ServedGroup>& groups, const QDate& day);

// The period's sales as a whole and how many customers they were made to.
struct SalesSummary {
    SalesSum sales{};
    qint64 customers = 0;
    // The average sale, rounded half up to whole yen; 0 without sales.
    qint64 average() const;
};

// One of the customers who bought the most in the period.
struct TopCustomer {
    qint64 no = 0;
    QString name{}; // empty when the customer is no longer stored
    SalesSum sales{};
    bool operator==(const TopCustomer&) const = default;
};
