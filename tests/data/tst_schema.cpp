// The database a new shop starts with: tables in their fixed column order, the view, the
// starting masters, and the admin tool that makes it; the master names and addresses looked up
// in it from their codes; and importing Japan Post's directory: both forms, split rows, notes,
// and a failed import that leaves the old content whole.
#include "data/Lookups.h"
#include "data/Schema.h"
#include "data/SettingStore.h"
#include "data/ShopDatabase.h"
#include "data/ZipImport.h"
#include "frame/Globals.h"
#include "frame/Log.h"
#include "platform/Failure.h"
#include "support/Harness.h"
#include "support/OtherTerminal.h"
#include "support/ShopData.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

QByteArray toShiftJis(const QByteArray& utf8) {
    QProcess iconv;
    iconv.start(u"iconv"_s, {u"-f"_s, u"UTF-8"_s, u"-t"_s, u"CP932"_s});
    iconv.write(utf8);
    iconv.closeWriteChannel();
    iconv.waitForFinished();
    return iconv.readAllStandardOutput();
}

// One KEN_ALL row, in UTF-8: the code and the three kanji columns; the rest as Japan Post fills
// it.
QByteArray kenAll(const char* zip, const char* todo, const char* city, const char* town) {
    return QByteArray("01101,\"060  \",\"") + zip + "\",\"ﾎｯｶｲﾄﾞｳ\",\"ｻｯﾎﾟﾛｼ\",\"ｶﾅ\",\"" + todo +
           "\",\"" + city + "\",\"" + town + "\",0,0,1,0,0,0\r\n";
}

// Every row a query gives, its columns as text joined by blanks.
QStringList rowsOf(const QString& sql) {
    QStringList all;
    for (RecordSet rows = gCon.execute(sql); !rows.eof(); rows.moveNext()) {
        QStringList columns;
        for (int i = 0; i < rows.fieldCount(); ++i)
            columns << rows.field(i).toString();
        all << columns.join(u' ');
    }
    return all;
}

// The customer view's definition as the database keeps it.
QString viewDefinition() {
    return QueryValue(Harness::onServer()
                          ? u"select pg_get_viewdef('v_san_user'::regclass)"_s
                          : u"select sql from sqlite_master where name = 'V_San_User'"_s)
        .toString();
}

QStringList zipList() {
    return rowsOf(u"select * from ZipList order by ZIP1, ZIP2, TOWN"_s);
}

// The admin tool's exit code, and what it printed and reported.
struct AdminRun {
    int exitCode;
    QString out, err;
};

AdminRun runAdmin(const QStringList& arguments,
                  const QString& program = QStringLiteral(MIRVANE_ADMIN_PROGRAM)) {
    QProcess tool;
    tool.start(program, arguments);
    tool.waitForFinished(60000);
    return {tool.exitCode(), QString::fromUtf8(tool.readAllStandardOutput()),
            QString::fromUtf8(tool.readAllStandardError())};
}

} // namespace

class TestSchema : public QObject {
    Q_OBJECT
    Harness harness;

    QString kenAllFile() {
        const QByteArray text =
            kenAll("0600042", "北海道", "札幌市中央区", "大通西（１～") +
            kenAll("0600042", "北海道", "札幌市中央区", "１９丁目）") +
            kenAll("0600000", "北海道", "札幌市中央区", "以下に掲載がない場合") +
            kenAll("1000301", "東京都", "利島村", "利島村一円") +
            kenAll("5220317", "滋賀県", "犬上郡多賀町", "一円") +
            kenAll("4520961", "愛知県", "清須市", "春日") +
            kenAll("4520961", "愛知県", "清須市", "清洲") +
            kenAll("4506201", "愛知県", "名古屋市中村区", "名駅ミッドランドスクエア（高層棟）１階");
        return WriteFile(harness.path(u"KEN_ALL.CSV"_s), toShiftJis(text));
    }

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void startingMastersAndMasterNamesLookedUpFromTheirCodes() {
        QCOMPARE(rowsOf(u"select count(*), max(Item_No) from San_Item union all select count(*), "
                        "max(Youto_No) from San_Youto union all select count(*), max(Meka_No) "
                        "from San_Meka"_s),
                 (QStringList{u"7 007"_s, u"9 009"_s, u"8 008"_s}));
        QCOMPARE(QStringList({CmnGetMaster(0, u"001"_s), CmnGetMaster(1, u"001"_s),
                              CmnGetMaster(2, u"001"_s), CmnGetMaster(2, u"999"_s),
                              CmnGetMaster(2, u"0'1"_s)}),
                 (QStringList{u"メガネ"_s, u"遠用"_s, u"HOYA"_s, {}, {}}));

        // A null name or a bad kind is reported and gives empty text.
        harness.msgs.expectFailure(u"Null の使い方が不正です。"_s, 94);
        gCon.execute(u"insert into San_Meka values('060', NULL)"_s);
        QCOMPARE(CmnGetMaster(2, u"060"_s), QString());
        QVERIFY(QString::fromUtf8(ReadFile(LogFilePath()))
                    .contains(u"\"BasCmnSubFun\",\"CmnGetMaster\",\"ｴﾗ-No.(94)\""_s));
        harness.msgs.expectFailure(u"実行する SQL 文がありません。"_s, -2147217900);
        QCOMPARE(CmnGetMaster(3, u"001"_s), QString());
    }

    // A database made before the settings and numbering tables gains them when the program
    // opens it, keeping its rows; a setting written twice keeps its last value; the numbering
    // starts from the numbers in use. The view an older program made is put in its present
    // form. The view has one row per customer: his number, total, a spare 0 and last date.
    void anOlderDatabaseGainsTheSettingsTableAndTheViewTotalsEachCustomer() {
        gCon.execute(u"drop table San_Setting"_s);
        gCon.execute(u"drop table San_Saiban"_s);
        const QString present = viewDefinition();
        gCon.execute(u"drop view V_San_User"_s);
        const QString olderView =
            u"CREATE VIEW V_San_User AS SELECT u.User_No AS User_No, COALESCE((SELECT "
            "SUM(r.Uri_KingaKei) FROM San_Uriage r WHERE r.Uri_UserNo = u.User_No), 0) AS "
            "Uri_Ruikei, 0 AS Uri_Yobi, COALESCE((SELECT MAX(r.Uri_Date) FROM San_Uriage r WHERE "
            "r.Uri_UserNo = u.User_No), 0) AS Uri_LastDate FROM San_User u"_s;
        gCon.execute(olderView);
        QVERIFY(viewDefinition() != present);
        for (int user : {1, 2, 3, 7})
            gCon.execute(u"insert into San_User (User_No) values (%1)"_s.arg(user));
        InsertPurchase({.seq = 1, .ymd = 20240310, .total = 10000});
        InsertPurchase({.seq = 2, .ymd = 20261101, .total = 25500});
        InsertPurchase({.seq = 3, .ymd = 20250701, .total = 4500});
        InsertPurchase({.user = 3, .ymd = 20200202, .total = 9800});
        gCon.close();
        OpenDatabase();
        SettingStore::WritePrintOffset({-2.5, 1});
        SettingStore::WritePrintOffset({1.5, 0.25});
        gCon.execute(u"drop view V_San_User"_s);
        gCon.execute(olderView);
        gCon.close();
        if (Harness::onServer()) {
            // Another terminal in the middle of reading the view: the program opens all the
            // same, after the lock wait, and leaves the older form for a later opening. (A
            // file waits for any read to end before the program's opening writes.)
            OtherTerminal reading(harness.folder());
            reading.execute(u"begin"_s);
            reading.execute(u"select count(*) from V_San_User"_s);
            gCon.setLockWait(300);
            OpenDatabase();
            gCon.setLockWait(Connection::DefaultLockWaitMs);
            QVERIFY(viewDefinition() != present);
            QCOMPARE(QueryCount(u"select * from V_San_User"_s), 4);
            reading.execute(u"rollback"_s);
            gCon.close();
        }
        OpenDatabase();
        QCOMPARE(viewDefinition(), present);
        const QStringList viewRows{u"1 40000 0 20261101"_s, u"2 0 0 0"_s, u"3 9800 0 20200202"_s,
                                   u"7 0 0 0"_s};
        QCOMPARE(rowsOf(u"select * from V_San_User order by User_No"_s), viewRows);
        // The grouped form a list of every customer reads on the server gives the same rows.
        QCOMPARE(rowsOf(u"select * from ("_s + CustomerTotalsGrouped() + u") g order by User_No"_s),
                 viewRows);
        QCOMPARE(QueryCount(u"select * from San_Setting"_s), 2);
        const auto offset = SettingStore::ReadPrintOffset();
        QCOMPARE(std::pair(offset.x, offset.y), std::pair(1.5, 0.25));
        QCOMPARE(QueryValue(u"select Saiban_No from San_Saiban where Saiban_UserNo = 0"_s).toInt(),
                 7);
    }

    // The admin tool makes a shop's database once, with the national postal directory it finds
    // where it is installed (or says it cannot find it); a database file is never overwritten.
    void theAdminToolMakesADatabaseOnceWithTheDirectoryWhereItIsInstalled() {
        if (Harness::onServer())
            QSKIP("database files: the run on files covers them");
        gCon.execute(u"insert into San_User (User_No) values (1)"_s);
        gCon.close();
        const QByteArray before = ReadFile(harness.databaseFile());
        QCOMPARE(FailureNumber([&] { CreateDatabase(harness.databaseFile()); }),
                 ErrorNumber::DatabaseFailed);
        QCOMPARE(ReadFile(harness.databaseFile()), before);

        const QString shop = harness.path(u"shop"_s), created = shop + u"/DB/Mirvane.mdb"_s;
        QCOMPARE(runAdmin({u"init"_s, shop}).exitCode, 0);
        QVERIFY(QFileInfo(shop + u"/Log"_s).isDir());
        gCon.open(created);
        QVERIFY(QueryValue(u"select count(*) from ZipList"_s).toInt() > 100000);
        QCOMPARE(rowsOf(u"select CITY || TOWN from ZipList where ZIP1 = 100 and ZIP2 = 1"_s),
                 QStringList{u"千代田区千代田"_s});
        gCon.close();
        const QByteArray made = ReadFile(created);
        const AdminRun second = runAdmin({u"init"_s, shop});
        QVERIFY2(second.exitCode == 1 && second.err.contains(u"既に"_s), qPrintable(second.err));
        QCOMPARE(ReadFile(created), made);

        // An unknown command gets the usage, which names every command.
        const AdminRun unknown = runAdmin({u"destroy"_s});
        QCOMPARE(unknown.exitCode, 2);
        for (const char* command : {"init [", "init --server", "import-zip [--allow-smaller]",
                                    "copy [--replace]", "backup [", "restore FILE"})
            QVERIFY2(unknown.err.contains(QLatin1String(command)), command);

        // The tool's folder, where the directory is put beside it (none: nowhere), and whether
        // the shop's folder is named by the launcher's environment rather than an argument.
        const std::tuple<const char*, const char*, bool> installs[] = {
            {"alone", nullptr, false},
            {"opt/mirvane/bin", "opt/mirvane/share/mirvane/postal", false},
            {"usr/lib/mirvane", "usr/share/mirvane/postal", false},
            {"opt/mirvane", "opt/mirvane/postal", true}};
        for (const auto& [programs, postal, named] : installs) {
            const QString tool = harness.path(QString::fromLatin1(programs)),
                          directory = harness.path(QString::fromLatin1(postal));
            QDir().mkpath(tool);
            QFile::copy(QStringLiteral(MIRVANE_ADMIN_PROGRAM), tool + u"/admin"_s);
            if (postal && QDir().mkpath(directory))
                WriteFile(directory + u"/utf_ken_all.csv.qz"_s,
                          qCompress(kenAll("1000001", "東京都", "千代田区", "千代田")));
            const QString shop = named ? harness.path(u"home/Mirvane"_s) : tool + u"/shop"_s;
            qputenv("MIRVANE_PROGRAM_FOLDER", shop.toUtf8());
            const AdminRun init = runAdmin(
                named ? QStringList{u"init"_s} : QStringList{u"init"_s, shop}, tool + u"/admin"_s);
            QCOMPARE(init.exitCode, postal ? 0 : 1);
            QCOMPARE(init.err.contains(u"見つかりません"_s), !postal);
            QCOMPARE(QFile::exists(shop + u"/DB/Mirvane.mdb"_s), bool(postal));
            QVERIFY(!QFile::exists(tool + u"/DB"_s));
            if (postal) {
                gCon.open(shop + u"/DB/Mirvane.mdb"_s);
                QCOMPARE(zipList(), QStringList{u"100 1 東京都 千代田区 千代田"_s});
            }
        }
        qunsetenv("MIRVANE_PROGRAM_FOLDER");
    }

    // Japan Post's directory in either form replaces the old content, also by the admin tool; a
    // broken file, a failure while writing or a file much smaller than what is loaded (unless
    // asked for) leaves the old content whole.
    void theDirectoryInBothFormsReplacesTheOldContentAndABrokenFileLeavesIt() {
        const QStringList kenAllRows{
            u"60 0 北海道 札幌市中央区 "_s,
            u"60 42 北海道 札幌市中央区 大通西"_s,
            u"100 301 東京都 利島村 利島村"_s,
            u"450 6201 愛知県 名古屋市中村区 名駅ミッドランドスクエア１階"_s,
            u"452 961 愛知県 清須市 春日"_s,
            u"452 961 愛知県 清須市 清洲"_s,
            u"522 317 滋賀県 犬上郡多賀町 一円"_s};
        QCOMPARE(ImportZipFile(gCon, kenAllFile()), 7);
        QCOMPARE(zipList(), kenAllRows);
        // Addresses with and without the prefecture; a code listed twice gives one of its own.
        QCOMPARE(QStringList({CmnGetJusyo(true, 60, 42), CmnGetJusyo(false, 60, 42),
                              CmnGetJusyo(true, 60, 43)}),
                 (QStringList{u"北海道札幌市中央区大通西"_s, u"札幌市中央区大通西"_s, {}}));
        QVERIFY(CmnGetJusyo(true, 452, 961) == u"愛知県清須市春日"_s ||
                CmnGetJusyo(true, 452, 961) == u"愛知県清須市清洲"_s);

        const QString broken = harness.path(u"broken.csv"_s);
        for (const QByteArray& bytes :
             {QByteArray("a,b,c\r\n"), kenAll("0600042", "北海道", "札幌市", "x") + "1,2,3,4\r\n",
              kenAll("06000AB", "北海道", "札幌市", "x"), QByteArray("\xff\xfe\x00\x01", 4),
              QByteArray(),
              // cut inside a town split over rows
              toShiftJis(kenAll("1000001", "東京都", "千代田区", "千代田") +
                         kenAll("0600042", "北海道", "札幌市中央区", "大通西（１～"))}) {
            try {
                ImportZipFile(gCon, WriteFile(broken, bytes));
                QFAIL("a broken file was imported");
            } catch (const Failure& failure) {
                QVERIFY(failure.description().contains(u"形式ではありません"_s));
            }
            QCOMPARE(zipList(), kenAllRows);
        }

        const QByteArray utf8 = kenAll("1000001", "東京都", "千代田区", "千代田") +
                                kenAll("1000005", "東京都", "千代田区", "丸の内（次のビルを除く）");
        const QString utf8File = WriteFile(harness.path(u"u.csv"_s), utf8);
        QCOMPARE(ImportZipFile(gCon, utf8File, ZipSize::AnySize), 2);
        const QStringList utf8Rows{u"100 1 東京都 千代田区 千代田"_s,
                                   u"100 5 東京都 千代田区 丸の内"_s};
        QCOMPARE(zipList(), utf8Rows);

        gCon.close();
        const AdminRun imported = runAdmin({u"import-zip"_s, kenAllFile(), harness.folder()});
        QVERIFY2(imported.exitCode == 0 && imported.out.contains(u"7 件"_s),
                 qPrintable(imported.err));
        const AdminRun refused = runAdmin(
            {u"import-zip"_s, WriteFile(harness.path(u"x.csv"_s), "1,2\n"), harness.folder()});
        QVERIFY2(refused.exitCode == 1 && refused.err.contains(u"元のまま"_s),
                 qPrintable(refused.err));
        // Fewer than nine in ten of the codes loaded now: refused unless asked for.
        const QString smaller = harness.path(u"smaller.csv"_s);
        const QByteArray whole = ReadFile(kenAllFile()); // without its last line
        WriteFile(smaller, whole.left(whole.lastIndexOf("\r\n", whole.size() - 3) + 2));
        const AdminRun cut = runAdmin({u"import-zip"_s, smaller, harness.folder()});
        QVERIFY2(cut.exitCode == 1 && cut.err.contains(u"--allow-smaller"_s), qPrintable(cut.err));
        OpenDatabase();
        QCOMPARE(zipList(), kenAllRows);
        gCon.close();
        QCOMPARE(
            runAdmin({u"import-zip"_s, u"--allow-smaller"_s, smaller, harness.folder()}).exitCode,
            0);
        OpenDatabase();
        const QStringList smallerRows = kenAllRows.mid(0, 3) + kenAllRows.mid(4);
        QCOMPARE(zipList(), smallerRows);

        // A failure while writing (here a trigger breaking a unique key) rolls the replacement
        // back too.
        CreateBeforeInsertTrigger(u"refuse"_s, u"ZipList"_s,
                                  u"insert into San_Item values('001', 'x')"_s);
        QVERIFY_THROWS_EXCEPTION(Failure, ImportZipFile(gCon, kenAllFile()));
        QCOMPARE(zipList(), smallerRows);
    }
};

QTEST_MAIN(TestSchema)
#include "tst_schema.moc"
