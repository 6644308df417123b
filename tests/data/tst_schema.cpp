// The database a new shop starts with: tables in their fixed column order, the view, the
// starting masters, and the admin tool that makes it; and the master names and addresses looked
// up in it from their codes.
#include "data/Lookups.h"
#include "data/Schema.h"
#include "frame/Globals.h"
#include "frame/Log.h"
#include "platform/Failure.h"
#include "support/Harness.h"

#include <QFile>
#include <QProcess>
#include <QtTest>

namespace {

QStringList numbersOf(const QString& table, const QString& column) {
    RecordSet rows =
        gCon.execute(QStringLiteral("select %1 from %2 order by %1").arg(column, table));
    QStringList numbers;
    for (; !rows.eof(); rows.moveNext())
        numbers << rows.field(0).toString();
    return numbers;
}

// A purchase with every column given by position, as the stores write one.
void insertPurchase(int user, int seq, int ymd, int total) {
    const QString eye = QStringLiteral("0,0,0,0,0,'',0,'',0,0,0,0,0");
    gCon.execute(QStringLiteral("insert into San_Uriage Values(%1,%2,%3,'001','001','','',0,'','',"
                                "'','',0,%4,%5,%5,'','','')")
                     .arg(QString::number(user), QString::number(seq), QString::number(ymd),
                          QString::number(total), eye));
}

QProcess* runAdmin(const QStringList& arguments) {
    auto* process = new QProcess;
    process->start(QStringLiteral(MIRVANE_ADMIN_PROGRAM), arguments);
    process->waitForFinished(30000);
    return process;
}

QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const QString FailureFirstLine =
    QStringLiteral("障害発生！ サポート先までご連絡お願い致します。\r\r");

} // namespace

class TestSchema : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void theViewHasOneRowPerCustomerWithTotalAndLastDate() {
        for (int user = 1; user <= 3; ++user)
            gCon.execute(QStringLiteral("insert into San_User (User_No) values (%1)").arg(user));
        insertPurchase(1, 1, 20240310, 10000);
        insertPurchase(1, 2, 20261101, 25500);
        insertPurchase(1, 3, 20250701, 4500);
        insertPurchase(3, 1, 20200202, 9800);

        RecordSet rows = gCon.execute(QStringLiteral(
            "select v.* from San_User u inner join V_San_User v on u.User_No = v.User_No "
            "order by u.User_No"));
        const QList<QList<qlonglong>> expected{
            {1, 40000, 20261101}, {2, 0, 0}, {3, 9800, 20200202}};
        for (const QList<qlonglong>& customer : expected) {
            QVERIFY(!rows.eof());
            QCOMPARE(rows.field(0).toLongLong(), customer[0]);
            QCOMPARE(rows.field(1).toLongLong(), customer[1]);
            QCOMPARE(rows.field(3).toLongLong(), customer[2]);
            rows.moveNext();
        }
        QVERIFY(rows.eof());
    }

    void startingMastersAreNumberedWithoutGapsAndNamedFromTheirOwnTable() {
        const QList<std::pair<QString, QString>> masters{
            {QStringLiteral("San_Item"), QStringLiteral("Item_No")},
            {QStringLiteral("San_Youto"), QStringLiteral("Youto_No")},
            {QStringLiteral("San_Meka"), QStringLiteral("Meka_No")}};
        for (const auto& [table, column] : masters) {
            const QStringList numbers = numbersOf(table, column);
            QVERIFY2(numbers.size() >= 3, qPrintable(table));
            for (int i = 0; i < numbers.size(); ++i)
                QCOMPARE(numbers[i], QStringLiteral("%1").arg(i + 1, 3, 10, QLatin1Char('0')));
        }
        QCOMPARE(QueryCount(QStringLiteral("select * from San_User")), 0);
        QCOMPARE(QueryCount(QStringLiteral("select * from ZipList")), 0);

        QCOMPARE(CmnGetMaster(0, QStringLiteral("001")), QStringLiteral("メガネ"));
        QCOMPARE(CmnGetMaster(1, QStringLiteral("001")), QStringLiteral("遠用"));
        QCOMPARE(CmnGetMaster(2, QStringLiteral("001")), QStringLiteral("HOYA"));
        QCOMPARE(CmnGetMaster(2, QStringLiteral("999")), QString());
        QCOMPARE(CmnGetMaster(2, QStringLiteral("0'1")), QString());
    }

    void aNullNameOrABadKindIsReportedAndGivesEmptyText() {
        harness.msgs.expectBox(FailureFirstLine + QStringLiteral("Null の使い方が不正です。"),
                               QStringLiteral(" VB ERROR No.94"));
        gCon.execute(QStringLiteral("insert into San_Meka values('060', NULL)"));
        QCOMPARE(CmnGetMaster(2, QStringLiteral("060")), QString());
        QVERIFY(QString::fromUtf8(readFile(LogFilePath()))
                    .contains(QStringLiteral("\"BasCmnSubFun\",\"CmnGetMaster\",\"ｴﾗ-No.(94)\"")));
        harness.msgs.expectBox(FailureFirstLine + QStringLiteral("実行する SQL 文がありません。"),
                               QStringLiteral(" VB ERROR No.-2147217900"));
        QCOMPARE(CmnGetMaster(3, QStringLiteral("001")), QString());
    }

    void addressesWithAndWithoutThePrefecture() {
        for (const char* row : {"(60, 1, '北海道', '札幌市中央区', '北一条西')",
                                "(60, 42, '北海道', '札幌市中央区', '大通西')",
                                "(100, 1, '東京都', '千代田区', '千代田')",
                                "(100, 1, '東京都', '千代田区', '別の町')"})
            gCon.execute(QStringLiteral("insert into ZipList values ") + QString::fromUtf8(row));
        QCOMPARE(CmnGetJusyo(true, 60, 42), QStringLiteral("北海道札幌市中央区大通西"));
        QCOMPARE(CmnGetJusyo(false, 60, 42), QStringLiteral("札幌市中央区大通西"));
        QCOMPARE(CmnGetJusyo(true, 60, 43), QString());
        // A code listed twice gives one of its addresses.
        QVERIFY(CmnGetJusyo(true, 100, 1) == QStringLiteral("東京都千代田区千代田") ||
                CmnGetJusyo(true, 100, 1) == QStringLiteral("東京都千代田区別の町"));
    }

    void aDatabaseFileIsMadeOnceAndNeverOverwritten() {
        if (Harness::onServer())
            QSKIP("a database file: the run on files covers it");
        gCon.execute(QStringLiteral("insert into San_User (User_No) values (1)"));
        gCon.close();
        const QByteArray before = readFile(harness.databaseFile());
        try {
            CreateDatabase(harness.databaseFile());
            QFAIL("an existing database was overwritten");
        } catch (const Failure& failure) {
            QCOMPARE(failure.number(), ErrorNumber::DatabaseFailed);
        }
        QCOMPARE(readFile(harness.databaseFile()), before);

        // The admin tool makes one in the folder given, once.
        const QString shop = harness.path(QStringLiteral("shop"));
        std::unique_ptr<QProcess> first(runAdmin({QStringLiteral("init"), shop}));
        QCOMPARE(first->exitCode(), 0);
        QVERIFY(QFile::exists(shop + QStringLiteral("/DB/Mirvane.mdb")));
        QVERIFY(QFileInfo(shop + QStringLiteral("/Log")).isDir());

        // The national postal directory comes with it.
        Connection created;
        created.open(shop + QStringLiteral("/DB/Mirvane.mdb"));
        QVERIFY(created.execute(QStringLiteral("select count(*) from ZipList")).field(0).toInt() >
                100000);
        RecordSet chiyoda = created.execute(
            QStringLiteral("select CITY, TOWN from ZipList where ZIP1 = 100 and ZIP2 = 1"));
        QCOMPARE(chiyoda.field(0).toString() + chiyoda.field(1).toString(),
                 QStringLiteral("千代田区千代田"));
        chiyoda.close();
        created.execute(QStringLiteral("insert into San_User (User_No) values (1)"));
        created.close();

        std::unique_ptr<QProcess> second(runAdmin({QStringLiteral("init"), shop}));
        QCOMPARE(second->exitCode(), 1);
        QVERIFY(QString::fromUtf8(second->readAllStandardError()).contains(QStringLiteral("既に")));
        created.open(shop + QStringLiteral("/DB/Mirvane.mdb"));
        QCOMPARE(created.execute(QStringLiteral("select count(*) from San_User")).field(0).toInt(),
                 1);
        created.close();

        std::unique_ptr<QProcess> wrong(runAdmin({QStringLiteral("destroy")}));
        QCOMPARE(wrong->exitCode(), 2);
    }
};

QTEST_MAIN(TestSchema)
#include "tst_schema.moc"
