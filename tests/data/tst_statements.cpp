// The statements the stores write, built from typed values: the exact shapes the shop's tables
// are written with, and typed text (a quote, a tab) that stays one value and never moves a column.
// And which daily backups the program keeps as the days pass.
#include "data/Backup.h"
#include "data/CustomerStore.h"
#include "data/PurchaseStore.h"
#include "platform/db/ConnectionString.h"
#include "platform/db/SqlText.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const QDate Today(2026, 11, 22);

Purchase sample() {
    Purchase p;
    p.seq = 4, p.date = QDate(2024, 3, 5), p.itemNo = u"003"_s, p.youtoNo = u"001"_s;
    p.lzMekaNo = u"002"_s, p.fmName = u" O'FRAME\tX "_s, p.memo = u"メモ"_s;
    p.fmKinga = 20000, p.lzKinga = 8000, p.total = 28000;
    p.eyes[0].numbers[0] = -2.5, p.eyes[1].b1 = u" IN "_s;
    return p;
}

// The 26 prescription values of the sample as written: -2.5 for the right Sph, 'IN' for the
// left B1, 0 and '' elsewhere.
QStringList prescriptionValues() {
    QStringList values;
    for (int eye = 0; eye < 2; ++eye)
        for (int i = 0; i < 13; ++i)
            values << (i == 5 || i == 7 ? (eye == 1 && i == 5 ? u"'IN'"_s : u"''"_s)
                                        : (eye == 0 && i == 0 ? u"-2.5"_s : u"0"_s));
    return values;
}

// Every day from the first to the last, newest first.
QList<QDate> daysFrom(QDate first, QDate last) {
    QList<QDate> days;
    for (QDate day = last; day >= first; day = day.addDays(-1))
        days << day;
    return days;
}

} // namespace

class TestStatements : public QObject {
    Q_OBJECT

private slots:
    void aPurchaseIsWrittenByPositionAndByColumn() {
        QCOMPARE(PurchaseStore::InsertSql(7, sample()),
                 u"insert into San_Uriage Values(7,4,20240305,'003','001','',"
                 "'O''FRAME\tX',20000,'','','002','',8000,28000,"_s +
                     prescriptionValues().join(QLatin1Char(',')) + u",'','メモ','' )"_s);
        QCOMPARE(PurchaseStore::DeleteSql(7, 4),
                 u"delete from San_Uriage where Uri_UserNo = 7 and Uri_Seq = 4"_s);
        // A character nobody can see never reaches the database: NUL and the other control
        // characters are left out of every quoted value; tabs and line breaks stay as pasted.
        QCOMPARE(StorableText(u"山田\u0000太郎\u0007\u007f"_s), u"山田太郎"_s);
        QCOMPARE(StorableText(u"a\tb\r\nc"_s), u"a\tb\r\nc"_s);
        QCOMPARE(SqlStr(u" O'N\u0000eil "_s), u"'O''Neil'"_s);
    }

    // An update writes the columns the screen changed from what it read, nothing else: the
    // register trims texts, the history writes them as typed and never the memo.
    void anUpdateWritesOnlyWhatTheScreenChanged() {
        Purchase changed = sample();
        changed.eyes[0].numbers[0] = -3, changed.memo = u"新メモ"_s;
        QCOMPARE(PurchaseStore::UpdateSql(7, sample(), changed),
                 u"update San_Uriage set Uri_R_Sph = -3, Uri_Memo = '新メモ' where Uri_UserNo = 7 "
                 "and Uri_Seq = 4"_s);
        Purchase shown = sample();
        shown.fmName = u"X"_s;
        QCOMPARE(
            PurchaseStore::UpdateSql(7, shown, sample()),
            u"update San_Uriage set Uri_Fm_Name = 'O''FRAME	X' where Uri_UserNo = 7 and "
            "Uri_Seq = 4"_s);
        QCOMPARE(PurchaseStore::HistoryUpdateSql(7, shown, changed),
                 u"update San_Uriage set Uri_Fm_Name = ' O''FRAME	X ', Uri_R_Sph = -3 where "
                 "Uri_UserNo = 7 and Uri_Seq = 4"_s);

        Customer c;
        c.no = 12, c.name = u" O'Neil "_s, c.entry1 = QDate(2020, 4, 1), c.birth = {2, 10, 5, 3};
        QCOMPARE(CustomerStore::InsertSql(c, Today),
                 u"insert into San_User Values(12,'O''Neil','','','','',"
                 "'','','','','',0,2,2,10,5,3,'2026/11/22','2026/11/22','' )"_s);
        Customer now = c;
        now.jusyo2 = u"2-3"_s, now.birth.year = 11;
        QCOMPARE(CustomerStore::UpdateSql(c, now, Today),
                 u"update San_User set User_Jusyo2 = '2-3',User_Tanjo_Nen = 11,User_Entry2 = "
                 "'2026/11/22' where User_No = 12"_s);
        // Nothing changed: only the date of the last change, for the purchases saved with him.
        QCOMPARE(CustomerStore::UpdateSql(c, c, Today),
                 u"update San_User set User_Entry2 = '2026/11/22' where User_No = 12"_s);
    }

    // Another terminal's change is lost only where this screen changed the same column to
    // something else: then nothing is written and the column is named.
    void aChangeMeetsAnotherTerminalsOnlyInTheSameColumn() {
        struct Case {
            QString shown, now, stored;
            QStringList assignments, collisions;
        };
        const Case cases[] = {
            {u"'a'"_s, u"'a'"_s, u"'b'"_s, {}, {}},                    // only the other changed
            {u"'a'"_s, u"'c'"_s, u"'a'"_s, {u"C = 'c'"_s}, {}},        // only this one
            {u"'a'"_s, u"'c'"_s, u"'b'"_s, {u"C = 'c'"_s}, {u"列"_s}}, // both, differently
            {u"'a'"_s, u"'c'"_s, u"'c'"_s, {u"C = 'c'"_s}, {}},        // both, alike
        };
        for (const Case& c : cases) {
            const GuardedWrite write = PlanWrite({{u"C"_s, u"列"_s, c.shown, c.now, c.stored}});
            QCOMPARE(write.assignments, c.assignments);
            QCOMPARE(write.collisions, c.collisions);
        }
        // A caption shared by several columns (the birth date's four) is named once.
        const GuardedWrite birth = PlanWrite({{u"A"_s, u"誕生日"_s, u"1"_s, u"2"_s, u"3"_s},
                                              {u"B"_s, u"誕生日"_s, u"1"_s, u"2"_s, u"3"_s}});
        QCOMPARE(birth.collisions, QStringList{u"誕生日"_s});
        QCOMPARE(
            RowChangedMeanwhile(u"顧客番号 3「山田」"_s, birth.collisions).description(),
            u"顧客番号 3「山田」は、この画面に表示した後で他の端末が変更しました（誕生日）。"_s);
    }

    void dailyBackupsKeepSevenDaysAndFourWeeks() {
        const auto d = [](int month, int day) {
            return QDate(2026, month, day);
        };
        // The days backed up, and the days kept.
        const QList<std::pair<QList<QDate>, QList<QDate>>> cases{
            {{d(11, 22), d(11, 20), d(11, 20), d(10, 1)}, {d(11, 22), d(11, 20), d(10, 1)}},
            // Every day: the last seven (Monday 16 to Sunday 22), then each week's Sunday.
            {daysFrom(d(9, 1), d(11, 22)),
             daysFrom(d(11, 16), d(11, 22)) + QList{d(11, 15), d(11, 8), d(11, 1), d(10, 25)}},
            // A shop closed for months: the last seven days it was open, then the newest day of
            // each older week; the 5th of January goes, its week holds some of the seven.
            {QList{d(11, 22)} + daysFrom(QDate(2025, 12, 29), d(1, 10)) + QList{d(1, 12)},
             QList{d(11, 22), d(1, 12)} + daysFrom(d(1, 6), d(1, 10)) + QList{d(1, 4)}},
        };
        for (const auto& [days, expected] : cases) {
            QList<QDate> kept = DailyGenerationsToKeep(days);
            std::sort(kept.begin(), kept.end(), std::greater<>());
            QCOMPARE(kept, expected);
        }
    }

    // A server's connection string is read as libpq reads it and written back so that it reads
    // the same; the password is left out wherever the place is shown.
    void connectionStringsReadAndWriteAsTheServerReadsThem() {
        const struct {
            QString text;
            ConnectionSettings settings;
            QString written;
        } cases[] = {
            {u"host=db port=5432 dbname=shop"_s,
             {{u"host"_s, u"db"_s}, {u"port"_s, u"5432"_s}, {u"dbname"_s, u"shop"_s}},
             u"host=db port=5432 dbname=shop"_s},
            {u" user = 店 password='a b\\'c\\\\d' dbname=''"_s,
             {{u"user"_s, u"店"_s}, {u"password"_s, u"a b'c\\d"_s}, {u"dbname"_s, {}}},
             u"user=店 password='a b\\'c\\\\d' dbname=''"_s},
        };
        for (const auto& c : cases) {
            QCOMPARE(ParseConnectionString(c.text), c.settings);
            QCOMPARE(ConnectionStringText(c.settings), c.written);
            QCOMPARE(ParseConnectionString(c.written), c.settings);
        }
        QCOMPARE(DatabasePlaceOf(cases[1].text).shown(), u"user=店 dbname=''"_s);
    }
};

QTEST_MAIN(TestStatements)
#include "tst_statements.moc"
