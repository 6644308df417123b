// The rules of the sales analysis on their own: the quick periods, the months of a period with
// the year before beside them, shares and the lines without a code, the slices of a chart, the
// age bands on the period's last day, and the counts of the customers served.
#include "domain/Age.h"
#include "domain/SalesAnalysis.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class TestSalesRules : public QObject {
    Q_OBJECT

private slots:
    void periodsRunUpToToday() {
        const std::tuple<QuickPeriod, QDate, QString> cases[] = {
            {QuickPeriod::ThisMonth, {2026, 11, 22}, u"2026/11/01〜2026/11/22"_s},
            {QuickPeriod::ThisYear, {2026, 11, 22}, u"2026/01/01〜2026/11/22"_s},
            {QuickPeriod::Last12Months, {2026, 11, 22}, u"2025/12/01〜2026/11/22"_s},
            {QuickPeriod::Last12Months, {2026, 1, 31}, u"2025/02/01〜2026/01/31"_s}};
        for (const auto& [choice, today, text] : cases)
            QCOMPARE(PeriodText(QuickPeriodOf(choice, today)), text);
        QCOMPARE(PeriodText(YearBefore({{2024, 2, 29}, {2024, 12, 31}})),
                 u"2023/02/28〜2023/12/31"_s);
    }

    // Every month of the period, also one without sales, each beside the same month a year
    // earlier; a stored month number no calendar has comes in its place by number.
    void monthsOfAPeriodWithTheYearBefore() {
        const std::vector<MonthGroup> read{{202512, {100, 1}, {}},
                                           {202412, {}, {80, 2}},
                                           {202513, {7, 1}, {}},
                                           {202502, {}, {40, 1}},
                                           {202602, {5, 1}, {}}};
        QString shown;
        for (const MonthSales& m : MonthlySales({{2025, 12, 15}, {2026, 2, 10}}, read))
            shown += MonthText(m.ym) + u' ' + QString::number(m.current.amount) + u'/' +
                     QString::number(m.yearBefore.amount) + u' ' +
                     RatioText(m.current.amount, m.yearBefore.amount) + u';';
        QCOMPARE(shown, u"2025/12 100/80 125.0%;2025/13 7/0 ;2026/01 0/0 ;2026/02 5/40 12.5%;"_s);
    }

    // Empty and blank codes make one line, last; the others by amount, equal amounts by code.
    // A chart puts the smallest lines beyond its slices together.
    void sharesAndSlices() {
        const std::vector<ShareLine> lines = ShareLines({{u"002"_s, {100, 1}},
                                                         {QString(), {50, 2}},
                                                         {u"005"_s, {200, 3}},
                                                         {u" "_s, {25, 1}},
                                                         {u"001"_s, {100, 1}}});
        QString shown;
        for (const ShareLine& line : lines)
            shown += line.code + u':' + QString::number(line.sales.amount) + u'/' +
                     QString::number(line.sales.count) + u' ' + ShareText(line.shareTenths) + u';';
        QCOMPARE(shown, u"005:200/3 42.1%;001:100/1 21.1%;002:100/1 21.1%;:75/3 15.8%;"_s);
        QCOMPARE(lines.back().kind, ShareKind::NoCode);
        QCOMPARE(TotalOf(lines), (SalesSum{475, 8}));
        const std::vector<ShareLine> slices = ChartSlices(lines, 3);
        QCOMPARE(slices.size(), std::size_t(3));
        QCOMPARE(ShareLineText(slices[2]) + QString::number(slices[2].sales.amount) +
                     ShareText(slices[2].shareTenths),
                 u"上記以外17536.9%"_s);
        QCOMPARE(ShareLineText({.code = u"003"_s, .name = u"遠近両用"_s}), u"003 遠近両用"_s);
        QCOMPARE(ShareLineText({.code = u"009"_s}), u"009"_s);
        QVERIFY(IsProgressive(u"遠近両用"_s) && !IsProgressive(u"中近両用"_s));
        QCOMPARE(ShareTenths(1, 0), 0);
    }

    // The band of the age on the day, the birthday of that year come or not; the same age the
    // register computes. A year not known, or after the day, is its own band.
    void ageBandsOnThePeriodsLastDay() {
        const QDate day(2026, 9, 30);
        const std::tuple<int, int, int, int, int> cases[] = {
            {Showa, 61, 9, 30, 4},         {Showa, 61, 10, 1, 3},
            {Showa, 45, 5, 3, 5},          {NoEra, 1930, 0, 0, 9},
            {Reiwa, 3, 12, 1, 0},          {Heisei, 8, 9, 30, 3},
            {Showa, 0, 5, 3, UnknownBand}, {NoEra, 2027, 1, 1, UnknownBand}};
        for (const auto& [era, year, month, dayOfMonth, band] : cases) {
            const bool had =
                month < day.month() || (month == day.month() && dayOfMonth <= day.day());
            QCOMPARE(AgeBandOf(era, year, had, day), band);
            if (band != UnknownBand)
                QCOMPARE(std::min(AgeOn(era, year, month, dayOfMonth, day) / 10, 9), band);
        }
        QCOMPARE(AgeBandText(0) + AgeBandText(3) + AgeBandText(9) + AgeBandText(UnknownBand),
                 u"10歳未満30代90歳以上不明"_s);
    }

    // Each group counts in its band and column; a sex other than 女 counts as 男.
    void customersByBandSexAndFirstVisit() {
        const std::vector<BandCounts> bands = CustomerBands({{0, Showa, 61, true, true, 2},
                                                             {1, Showa, 61, true, false, 3},
                                                             {2, Showa, 61, false, false, 1},
                                                             {1, Showa, 0, false, true, 4}},
                                                            {2026, 9, 30});
        QCOMPARE(bands.size(), std::size_t(AgeBands));
        QCOMPARE(bands[4], (BandCounts{4, {2, 0, 0, 3}}));
        QCOMPARE(bands[3], (BandCounts{3, {0, 0, 1, 0}}));
        QCOMPARE(bands[UnknownBand].customers[NewWomen] + bands[UnknownBand].total(), 8);
        QCOMPARE((SalesSummary{{100, 3}, 2}).average(), 33);
        QCOMPARE((SalesSummary{{200, 3}, 2}).average(), 67);
        QCOMPARE(SalesSummary().average(), 0);
    }
};

QTEST_GUILESS_MAIN(TestSalesRules)
#include "tst_salesrules.moc"
