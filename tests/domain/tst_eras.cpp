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
    // before or after; plus the Western years and the dates that do not exist. The register
    // also wants the year of a date named in an era.
    void birthDatesThatCanBeReal() {
        // y: fits and the register takes it; f: fits but is not taken; n: neither.
        const std::tuple<int, int, int, int, char> cases[] = {
            {Taisho, 1, 7, 30, 'y'},   {Taisho, 1, 7, 29, 'n'},  {Taisho, 15, 12, 24, 'y'},
            {Taisho, 15, 12, 25, 'n'}, {Taisho, 16, 0, 0, 'n'},  {Showa, 1, 12, 25, 'y'},
            {Showa, 1, 12, 24, 'n'},   {Showa, 64, 1, 7, 'y'},   {Showa, 64, 1, 8, 'n'},
            {Showa, 64, 0, 0, 'y'},    {Showa, 0, 5, 3, 'f'},    {Heisei, 1, 1, 8, 'y'},
            {Heisei, 1, 1, 7, 'n'},    {Heisei, 1, 1, 0, 'y'},   {Heisei, 31, 4, 30, 'y'},
            {Heisei, 31, 5, 1, 'n'},   {Reiwa, 1, 5, 1, 'y'},    {Reiwa, 1, 4, 30, 'n'},
            {Reiwa, 1, 4, 0, 'n'},     {Reiwa, 8, 11, 23, 'y'},  {Reiwa, 8, 11, 24, 'n'},
            {Reiwa, 9, 0, 0, 'n'},     {NoEra, 1900, 1, 1, 'y'}, {NoEra, 1899, 12, 31, 'n'},
            {NoEra, 2026, 0, 0, 'y'},  {NoEra, 2027, 0, 0, 'n'}, {Heisei, 6, 2, 29, 'n'},
            {Heisei, 8, 2, 29, 'y'},   {Showa, 50, 13, 1, 'n'},  {Showa, 50, 4, 31, 'n'},
            {Showa, 0, 2, 30, 'n'},    {Showa, 0, 2, 29, 'f'},   {Showa, 0, 0, 31, 'f'},
            {Reiwa, 0, 0, 5, 'f'},     {Showa, 0, 0, 0, 'y'},    {NoEra, 0, 5, 3, 'y'},
        };
        QStringList wrong;
        for (const auto& [era, year, month, day, expected] : cases)
            if (BirthDateFits(era, year, month, day, today) != (expected != 'n') ||
                BirthDateTaken(era, year, month, day, today) != (expected == 'y'))
                wrong << QString::asprintf("%d %d/%d/%d", era, year, month, day);
        QCOMPARE(wrong.join(QLatin1String("; ")), QString());
    }

    // A Western date named in its era; a year that two eras share goes to the one that holds
    // most of it (or of its month).
    void westernDatesInTheirEra() {
        const std::tuple<int, int, int, int, int> cases[] = {
            {1926, 12, 24, Taisho, 15}, {1926, 12, 25, Showa, 1},  {1926, 0, 0, Taisho, 15},
            {1989, 1, 7, Showa, 64},    {1989, 1, 8, Heisei, 1},   {1989, 0, 0, Heisei, 1},
            {1989, 1, 0, Heisei, 1},    {2019, 4, 30, Heisei, 31}, {2019, 5, 1, Reiwa, 1},
            {2019, 0, 0, Reiwa, 1},     {2020, 5, 5, Reiwa, 2},    {1955, 0, 0, Showa, 30},
            {1912, 7, 29, NoEra, 1912}};
        for (const auto& [year, month, day, era, eraYear] : cases) {
            const EraYear named = EraYearOf(year, month, day);
            QCOMPARE((QList{named.era, named.year}), (QList{era, eraYear}));
            if (era != NoEra)
                QCOMPARE(WesternYear(named.era, named.year), year);
        }
    }

    // The age shown, and the age condition, for every era and for Western years: at the edges
    // of the birthday, and with the month or the year unknown; and the birth date as text.
    void agesInEveryEra() {
        const std::tuple<int, int, int, int, int, int, const char*> ages[] = {
            {Reiwa, 2, 5, 5, 20261123, 6, "令和2年5月5日"},
            {Reiwa, 1, 12, 1, 20261123, 6, "令和元年12月1日"},
            {Heisei, 10, 5, 3, 20180502, 19, "平成10年5月3日"},
            {Heisei, 10, 5, 3, 20180503, 20, "平成10年5月3日"},
            {Heisei, 10, 5, 0, 20180430, 19, "平成10年5月"},
            {Showa, 45, 0, 0, 20180101, 48, "昭和45年"},
            {Taisho, 15, 12, 1, 20260101, 99, "大正15年12月1日"},
            {NoEra, 1990, 1, 1, 20260101, 36, "1990年1月1日"},
            {NoEra, 1, 0, 1, 20260101, 2025, "1年"},
            {Showa, 0, 5, 3, 20260101, 0, ""}};
        for (const auto& [era, year, month, day, on, age, text] : ages) {
            QCOMPARE(AgeOn(era, year, month, day, DateOfYmd(on)), age);
            QCOMPARE(BirthDateText(era, year, month, day), QString::fromUtf8(text));
        }
        SearchConditions fiveToSeven;
        fiveToSeven.ageFrom = 5, fiveToSeven.ageTo = 7;
        const std::tuple<int, int, bool> kept[] = {
            {Reiwa, 2, true},   {Reiwa, 5, false},   {NoEra, 2020, true}, {NoEra, 2010, false},
            {Heisei, 31, true}, {Heisei, 30, false}, {Reiwa, 0, false},   {7, 2020, false}};
        for (const auto& [era, year, matches] : kept)
            QCOMPARE(AgeMatches(fiveToSeven, era, year, today.year()), matches);
    }

    // The purchase a prescription is compared with: the latest before it, by date and then by
    // number, that carries an optical value; one without (度なし, or Pd alone) is passed over.
    void previousPrescription() {
        const std::tuple<int, int, double, double> made[] = {
            {1, 20230101, 0, 90},  {2, 20240301, 1.5, 0}, {3, 20240301, 0, 0},
            {4, 20240301, 0, 180}, {5, 20250101, 0, 0},   {6, 20260101, 2, 0}};
        std::vector<Purchase> purchases;
        for (const auto& [seq, ymd, rightS, leftAx] : made) {
            Purchase& p = purchases.emplace_back();
            p.seq = seq, p.date = DateOfYmd(ymd);
            p.eyes[0].numbers[3] = rightS, p.eyes[1].numbers[2] = leftAx;
            p.eyes[0].numbers[10] = 64; // Pd alone makes no prescription
        }
        const std::tuple<int, int, int> cases[] = {
            {20260101, 6, 4},  {20250101, 5, 4},  {20240301, 4, 2},
            {20240301, 3, 2},  {20240301, 2, 1},  {20230101, 1, 0},
            {20240301, 99, 4}, {20270101, 99, 6}, {20240229, 99, 1}};
        for (const auto& [ymd, seq, expected] : cases) {
            const Purchase* previous = PreviousPrescription(purchases, DateOfYmd(ymd), seq);
            QCOMPARE(previous ? previous->seq : 0, expected);
        }
    }

    // A power is marked when it moved by 0.50 or more; not when nothing is typed now, nor in an
    // eye that had no prescription before.
    void powerChangesOfHalfADioptre() {
        const std::tuple<double, double, double, PowerMove> cases[] = {
            {-1.25, -1.0, 0, PowerMove::None}, {-1.5, -1.0, 0, PowerMove::Down},
            {-0.5, -1.0, 0, PowerMove::Up},    {0.5, 0, 90, PowerMove::Up},
            {-0.5, 0, 90, PowerMove::Down},    {0.25, 0, 90, PowerMove::None},
            {0, -2.0, 0, PowerMove::None},     {2.1, 1.6, 0, PowerMove::Up},
            {-3.0, 0, 0, PowerMove::None},     {1.74, 1.25, 0, PowerMove::None}};
        for (int index : {0, 1, 3})
            for (const auto& [now, before, otherBefore, move] : cases) {
                Prescription typed, previous;
                typed.numbers[index] = now, previous.numbers[index] = before;
                previous.numbers[2] = otherBefore;
                QCOMPARE(PowerChange(typed, previous, index), move);
            }
    }
};

QTEST_GUILESS_MAIN(TestEras)
#include "tst_eras.moc"
