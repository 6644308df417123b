#include "domain/Age.h"
#include "domain/Purchase.h"
#include "domain/SearchConditions.h"
#include "domain/Ymd.h"

#include <QTest>

namespace {
const QDate today(2026, 11, 23);
}

class TestEras : public QObject {
    Q_OBJECT

private slots:
    // Each era's first and last day: in it as 元年 or its last year, and out of it a day
    // before or after; plus the Western years and the dates that do not exist.
    void birthDatesThatCanBeReal() {
        const struct {
            int era, year, month, day;
            bool fits;
        } cases[] = {
            {Taisho, 1, 7, 30, true},    {Taisho, 1, 7, 29, false},  {Taisho, 15, 12, 24, true},
            {Taisho, 15, 12, 25, false}, {Taisho, 16, 0, 0, false},  {Showa, 1, 12, 25, true},
            {Showa, 1, 12, 24, false},   {Showa, 64, 1, 7, true},    {Showa, 64, 1, 8, false},
            {Showa, 64, 0, 0, true},     {Showa, 70, 0, 0, false},   {Showa, 0, 5, 3, true},
            {Heisei, 1, 1, 8, true},     {Heisei, 1, 1, 7, false},   {Heisei, 1, 1, 0, true},
            {Heisei, 31, 4, 30, true},   {Heisei, 31, 5, 1, false},  {Heisei, 45, 0, 0, false},
            {Reiwa, 1, 5, 1, true},      {Reiwa, 1, 4, 30, false},   {Reiwa, 1, 4, 0, false},
            {Reiwa, 8, 11, 23, true},    {Reiwa, 8, 11, 24, false},  {Reiwa, 9, 0, 0, false},
            {Reiwa, 2, 5, 5, true},      {NoEra, 1900, 1, 1, true},  {NoEra, 1899, 12, 31, false},
            {NoEra, 2026, 0, 0, true},   {NoEra, 2027, 0, 0, false}, {Heisei, 6, 2, 29, false},
            {Heisei, 8, 2, 29, true},    {Showa, 50, 13, 1, false},  {Showa, 50, 4, 31, false},
            {Showa, 0, 2, 30, false},    {Showa, 0, 2, 29, true},    {Showa, 0, 0, 31, true},
        };
        for (const auto& c : cases) {
            QVERIFY2(
                BirthDateFits(c.era, c.year, c.month, c.day, today) == c.fits,
                qPrintable(
                    QStringLiteral("%1 %2/%3/%4").arg(c.era).arg(c.year).arg(c.month).arg(c.day)));
        }
        // The register also wants the year of a date named in an era.
        const struct {
            int era, year, month, day;
            bool taken;
        } register_[] = {{Showa, 0, 5, 3, false},   {Reiwa, 0, 0, 5, false},
                         {Showa, 0, 0, 0, true},    {NoEra, 0, 5, 3, true},
                         {Heisei, 45, 0, 0, false}, {Reiwa, 2, 5, 5, true}};
        for (const auto& c : register_)
            QCOMPARE(BirthDateTaken(c.era, c.year, c.month, c.day, today), c.taken);
    }

    // A Western date named in its era; a year that two eras share goes to the one that holds
    // most of it (or of its month).
    void westernDatesInTheirEra() {
        const struct {
            int year, month, day, era, eraYear;
        } cases[] = {
            {1926, 12, 24, Taisho, 15}, {1926, 12, 25, Showa, 1},  {1926, 0, 0, Taisho, 15},
            {1989, 1, 7, Showa, 64},    {1989, 1, 8, Heisei, 1},   {1989, 0, 0, Heisei, 1},
            {1989, 1, 0, Heisei, 1},    {2019, 4, 30, Heisei, 31}, {2019, 5, 1, Reiwa, 1},
            {2019, 0, 0, Reiwa, 1},     {2020, 5, 5, Reiwa, 2},    {1955, 0, 0, Showa, 30},
            {1912, 7, 29, NoEra, 1912}};
        for (const auto& c : cases) {
            const EraYear named = EraYearOf(c.year, c.month, c.day);
            QCOMPARE(named.era, c.era);
            QCOMPARE(named.year, c.eraYear);
            if (c.era != NoEra)
                QCOMPARE(WesternYear(named.era, named.year), c.year);
        }
    }

    // The age shown, and the age condition, for every era and for Western years: at the edges
    // of the birthday, and with the month or the year unknown; and the birth date as text.
    void agesInEveryEra() {
        const struct {
            int era, year, month, day, today, age;
            const char* text;
        } ages[] = {{Reiwa, 2, 5, 5, 20261123, 6, "令和2年5月5日"},
                    {Reiwa, 1, 12, 1, 20261123, 6, "令和元年12月1日"},
                    {Heisei, 10, 5, 3, 20180502, 19, "平成10年5月3日"},
                    {Heisei, 10, 5, 3, 20180503, 20, "平成10年5月3日"},
                    {Heisei, 10, 5, 0, 20180430, 19, "平成10年5月"},
                    {Heisei, 10, 5, 3, 20180601, 20, "平成10年5月3日"},
                    {Showa, 45, 0, 0, 20180101, 48, "昭和45年"},
                    {Taisho, 15, 12, 1, 20260101, 99, "大正15年12月1日"},
                    {NoEra, 1990, 1, 1, 20260101, 36, "1990年1月1日"},
                    {NoEra, 1, 0, 1, 20260101, 2025, "1年"},
                    {Showa, 0, 5, 3, 20260101, 0, ""}};
        for (const auto& c : ages) {
            QCOMPARE(AgeOn(c.era, c.year, c.month, c.day, DateOfYmd(c.today)), c.age);
            QCOMPARE(BirthDateText(c.era, c.year, c.month, c.day), QString::fromUtf8(c.text));
        }
        SearchConditions fiveToSeven;
        fiveToSeven.ageFrom = 5;
        fiveToSeven.ageTo = 7;
        const struct {
            int era, year;
            bool kept;
        } cases[] = {{Reiwa, 2, true},     {Reiwa, 5, false},  {NoEra, 2020, true},
                     {NoEra, 2010, false}, {Heisei, 31, true}, {Heisei, 30, false},
                     {Reiwa, 0, false},    {7, 2020, false}};
        for (const auto& c : cases)
            QCOMPARE(AgeMatches(fiveToSeven, c.era, c.year, today.year()), c.kept);
    }

    // The purchase a prescription is compared with: the latest before it, by date and then by
    // number, that carries an optical value; one without (度なし, or Pd alone) is passed over.
    void previousPrescription() {
        const auto purchase = [](int seq, int ymd, double rightS, double leftAx) {
            Purchase p;
            p.seq = seq;
            p.date = DateOfYmd(ymd);
            p.eyes[0].numbers[3] = rightS;
            p.eyes[1].numbers[2] = leftAx;
            p.eyes[0].numbers[10] = 64; // Pd alone makes no prescription
            return p;
        };
        const std::vector<Purchase> purchases{
            purchase(1, 20230101, 0, 90), purchase(2, 20240301, 1.5, 0),
            purchase(3, 20240301, 0, 0),  purchase(4, 20240301, 0, 180),
            purchase(5, 20250101, 0, 0),  purchase(6, 20260101, 2, 0)};
        const struct {
            int ymd, seq, previous;
        } cases[] = {{20260101, 6, 4},  {20250101, 5, 4},  {20240301, 4, 2},
                     {20240301, 3, 2},  {20240301, 2, 1},  {20230101, 1, 0},
                     {20240301, 99, 4}, {20270101, 99, 6}, {20240229, 99, 1}};
        for (const auto& c : cases) {
            const Purchase* previous = PreviousPrescription(purchases, DateOfYmd(c.ymd), c.seq);
            QCOMPARE(previous ? previous->seq : 0, c.previous);
        }
    }

    // A power is marked when it moved by 0.50 or more; not when nothing is typed now, nor in an
    // eye that had no prescription before.
    void powerChangesOfHalfADioptre() {
        const struct {
            double now, before, otherBefore;
            PowerMove move;
        } cases[] = {{-1.25, -1.0, 0, PowerMove::None}, {-1.5, -1.0, 0, PowerMove::Down},
                     {-0.5, -1.0, 0, PowerMove::Up},    {0.5, 0, 90, PowerMove::Up},
                     {-0.5, 0, 90, PowerMove::Down},    {0.25, 0, 90, PowerMove::None},
                     {0, -2.0, 0, PowerMove::None},     {2.1, 1.6, 0, PowerMove::Up},
                     {-3.0, 0, 0, PowerMove::None},     {1.74, 1.25, 0, PowerMove::None}};
        for (int index : {0, 1, 3})
            for (const auto& c : cases) {
                Prescription now, before;
                now.numbers[index] = c.now;
                before.numbers[index] = c.before;
                before.numbers[2] = c.otherBefore;
                QCOMPARE(PowerChange(now, before, index), c.move);
            }
    }
};

QTEST_GUILESS_MAIN(TestEras)
#include "tst_eras.moc"
