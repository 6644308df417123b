// The statements the stores write, built from typed values: the exact shapes the shop's tables
// are written with, and typed text (a quote, a tab) that stays one value and never moves a column.
// And which daily backups the program keeps as the days pass.
#include "data/Backup.h"
#include "data/CustomerStore.h"
#include "data/PurchaseStore.h"

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
        const QString update = PurchaseStore::UpdateSql(7, sample());
        QVERIFY(update.startsWith(
            u"update San_Uriage set Uri_Date = 20240305, Uri_ItemNo = '003', Uri_YoutoNo = '001', "
            "Uri_Fm_MekaNo = '', Uri_Fm_Name = 'O''FRAME\tX', Uri_Fm_Kinga = 20000,"_s));
        QVERIFY(update.contains(u", Uri_R_Sph = -2.5, Uri_R_Cyl = 0,"_s));
        QVERIFY(update.endsWith(
            u", Uri_Syohou = '', Uri_Memo = 'メモ' where Uri_UserNo = 7 and Uri_Seq = 4"_s));
        QCOMPARE(PurchaseStore::DeleteSql(7, 4),
                 u"delete from San_Uriage where Uri_UserNo = 7 and Uri_Seq = 4"_s);
        // The history writes its own shape: texts as typed, each value right then left.
        const QString history = PurchaseStore::HistoryUpdateSql(7, sample());
        QVERIFY(history.startsWith(
            u"update San_Uriage set  Uri_Date = 20240305, Uri_ItemNo = '003', Uri_YoutoNo = '001', "
            "Uri_Fm_MekaNo = '', Uri_Lz_MekaNo = '002', Uri_Fm_Name = ' O''FRAME\tX ',"_s));
        QVERIFY(history.contains(
            u" Uri_R_SPH = -2.5, Uri_L_SPH = 0, Uri_R_CYL = 0, Uri_L_CYL = 0, Uri_R_AX = 0"_s));
        QVERIFY(history.contains(u"Uri_L_B1 = 'IN', Uri_R_B2 = '',"_s));
        QVERIFY(!history.contains(u"Uri_Memo"_s));
    }

    void aCustomerIsInsertedWithTodaysDatesAndUpdatedWithHisOwn() {
        Customer c;
        c.no = 12, c.name = u" O'Neil "_s, c.kana = u"おにーる"_s, c.tel = u"011"_s;
        c.entry1 = QDate(2020, 4, 1), c.birth = {2, 10, 5, 3};
        QCOMPARE(CustomerStore::InsertSql(c, Today),
                 u"insert into San_User Values(12,'O''Neil','おにーる','','','',"
                 "'011','','','','',0,2,2,10,5,3,'2026/11/22','2026/11/22','' )"_s);
        QCOMPARE(CustomerStore::UpdateSql(c, Today),
                 u"update San_User set User_Name = 'O''Neil',User_Kana = 'おにーる',"
                 "User_Yubin = '',User_Jusyo1 = '',User_Jusyo2 = '',User_Tel = "
                 "'011',User_Kinmu = '',User_KinmuTel = '',User_Syokai = '',"
                 "User_SyokaiTel = '',User_Sex = 0,User_Kazok_F = 2,User_Tanjo_Go "
                 "= 2,User_Tanjo_Nen = 10,User_Tanjo_Mon = 5,User_Tanjo_Day = 3,"
                 "User_Entry1 = '2020/04/01',User_Entry2 = '2026/11/22' where "
                 "User_No = 12"_s);
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
};

QTEST_MAIN(TestStatements)
#include "tst_statements.moc"
