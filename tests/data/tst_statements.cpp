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

Purchase sample() {
    Purchase p;
    p.seq = 4, p.date = QDate(2024, 3, 5), p.itemNo = u"003"_s, p.youtoNo = u"001"_s;
    p.lzMekaNo = u"002"_s, p.fmName = u" O'FRAME\tX "_s, p.memo = u"メモ"_s, p.total = 28000;
    p.fmKinga = 20000, p.lzKinga = 8000, p.eyes[0].numbers[0] = -2.5, p.eyes[1].b1 = u" IN "_s;
    return p;
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
    static QDate d(int month, int day) { return QDate(2026, month, day); }

private slots:
    // A new row is written by position; an update writes only the columns the screen changed
    // from what it read: the register trims texts, the history writes them as typed and never
    // the memo.
    void rowsAreWrittenWholeByPositionAndChangedByColumn() {
        // The 26 prescription values: -2.5 for the right Sph, 'IN' for the left B1.
        QCOMPARE(PurchaseStore::InsertSql(7, sample()),
                 u"insert into San_Uriage Values(7,4,20240305,'003','001','','O''FRAME\tX',20000,"
                 "'','','002','',8000,28000,-2.5,0,0,0,0,'',0,'',0,0,0,0,0,"
                 "0,0,0,0,0,'IN',0,'',0,0,0,0,0,'','メモ','' )"_s);
        QCOMPARE(PurchaseStore::DeleteSql(7, 4),
                 u"delete from San_Uriage where Uri_UserNo = 7 and Uri_Seq = 4"_s);
        Purchase changed = sample(), shown = sample();
        changed.eyes[0].numbers[0] = -3, changed.memo = u"新メモ"_s, shown.fmName = u"X"_s;
        const QString key = u" where Uri_UserNo = 7 and Uri_Seq = 4"_s;
        QCOMPARE(PurchaseStore::UpdateSql(7, sample(), changed),
                 u"update San_Uriage set Uri_R_Sph = -3, Uri_Memo = '新メモ'"_s + key);
        QCOMPARE(PurchaseStore::UpdateSql(7, shown, sample()),
                 u"update San_Uriage set Uri_Fm_Name = 'O''FRAME\tX'"_s + key);
        QCOMPARE(PurchaseStore::HistoryUpdateSql(7, shown, changed),
                 u"update San_Uriage set Uri_Fm_Name = ' O''FRAME\tX ', Uri_R_Sph = -3"_s + key);

        Customer c;
        c.no = 12, c.name = u" O'Neil "_s, c.entry1 = QDate(2020, 4, 1), c.birth = {2, 10, 5, 3};
        QCOMPARE(CustomerStore::InsertSql(c, d(11, 22)),
                 u"insert into San_User Values(12,'O''Neil','','','','',"
                 "'','','','','',0,2,2,10,5,3,'2026/11/22','2026/11/22','' )"_s);
        Customer now = c;
        now.jusyo2 = u"2-3"_s, now.birth.year = 11;
        QCOMPARE(CustomerStore::UpdateSql(c, now, d(11, 22)),
                 u"update San_User set User_Jusyo2 = '2-3',User_Tanjo_Nen = 11,User_Entry2 = "
                 "'2026/11/22' where User_No = 12"_s);
        // Nothing changed: only the date of the last change, for the purchases saved with him.
        QCOMPARE(CustomerStore::UpdateSql(c, c, d(11, 22)),
                 u"update San_User set User_Entry2 = '2026/11/22' where User_No = 12"_s);

        // NUL and the other control characters are left out of every quoted value; tabs and
        // line breaks stay as pasted.
        QCOMPARE(SqlStr(u" O'N\u0000e\u0007i\u007fl 山田\ta\r\nb "_s), u"'O''Neil 山田\ta\r\nb'"_s);
    }

    // Another terminal's change is lost only where this screen changed the same column to
    // something else: then nothing is written and the column is named, a caption shared by
    // several columns (the birth date's four) once.
    void aChangeMeetsAnotherTerminalsOnlyInTheSameColumn() {
        const GuardedWrite write = PlanWrite({
            {u"C1"_s, u"列1"_s, u"'a'"_s, u"'a'"_s, u"'b'"_s}, // only the other changed
            {u"C2"_s, u"列2"_s, u"'a'"_s, u"'c'"_s, u"'a'"_s}, // only this one
            {u"C3"_s, u"列3"_s, u"'a'"_s, u"'c'"_s, u"'b'"_s}, // both, differently
            {u"C4"_s, u"列4"_s, u"'a'"_s, u"'c'"_s, u"'c'"_s}, // both, alike
            {u"A"_s, u"誕生日"_s, u"1"_s, u"2"_s, u"3"_s},
            {u"B"_s, u"誕生日"_s, u"1"_s, u"2"_s, u"3"_s},
        });
        QCOMPARE(write.assignments, (QStringList{u"C2 = 'c'"_s, u"C3 = 'c'"_s, u"C4 = 'c'"_s,
                                                 u"A = 2"_s, u"B = 2"_s}));
        QCOMPARE(
            RowChangedMeanwhile(u"顧客番号 3「山田」"_s, write.collisions).description(),
            u"顧客番号 3「山田」は、この画面に表示した後で他の端末が変更しました（列3、誕生日）。"_s);
    }

    void dailyBackupsKeepSevenDaysAndFourWeeks() {
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
        const QString text = u" user = 店 password='a b\\'c\\\\d' dbname='' host=db"_s,
                      written = u"user=店 password='a b\\'c\\\\d' dbname='' host=db"_s;
        const ConnectionSettings settings{{u"user"_s, u"店"_s},
                                          {u"password"_s, u"a b'c\\d"_s},
                                          {u"dbname"_s, {}},
                                          {u"host"_s, u"db"_s}};
        QCOMPARE(ParseConnectionString(text), settings);
        QCOMPARE(ConnectionStringText(settings), written);
        QCOMPARE(DatabasePlaceOf(text).shown(), u"user=店 dbname='' host=db"_s);
    }
};

QTEST_MAIN(TestStatements)
#include "tst_statements.moc"
