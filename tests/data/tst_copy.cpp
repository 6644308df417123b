// Copying a whole database between a file and a server with the admin tool, and backing it up
// and putting it back: a shop that grows from one terminal to several keeps its data, a copy
// never wipes a shop by accident, and a copy that fails leaves the target as it was. Writing
// the shop out as CSV files for another system. And what a shop meets on a bad day: a full
// disk, a killed backup, the wrong file put back, terminals still connected, a source that
// changes while it is copied, a character nobody can see. No success is reported that did not
// happen, and no file stands under a backup's or an export's name that is not whole.
#include "ShopGenerator.h"
#include "data/Backup.h"
#include "data/DatabaseCopy.h"
#include "data/Schema.h"
#include "data/ShopDatabase.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "platform/Failure.h"
#include "platform/controls/xPass.h"
#include "platform/ui/SingleInstance.h"
#include "print/FrmPrint.h"
#include "search/ListCsv.h"
#include "shell/BasSubMain.h"
#include "shell/FrmMenu.h"
#include "shell/FrmPsw.h"
#include "support/Controls.h"
#include "support/Faults.h"
#include "support/Harness.h"
#include "support/OtherTerminal.h"
#include "support/Roads.h"
#include "support/ShopData.h"

#include <QCryptographicHash>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QThread>
#include <QtTest>
#include <csignal>

using namespace Qt::StringLiterals;

namespace {

constexpr auto OwnerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
constexpr auto OthersAndGroup = QFileDevice::ReadGroup | QFileDevice::ReadOther |
                                QFileDevice::WriteGroup | QFileDevice::WriteOther;

QStringList filesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::Files, QDir::Name);
}

// Waits up to ten seconds for a file of the folder whose name ends so; gives its name.
QString awaitFile(const QString& folder, const QString& ending) {
    for (int i = 0; i < 1000; ++i) {
        for (const QString& name : filesIn(folder))
            if (name.endsWith(ending))
                return name;
        QThread::msleep(10);
    }
    return {};
}

QStringList contentOf(Connection& connection) {
    QStringList content;
    for (const char* sql :
         {"select count(*) from San_User", "select count(*) from San_Uriage",
          "select count(*) from San_Meka", "select max(User_Name) from San_User where User_No = 2",
          "select max(Uri_R_Sph) from San_Uriage where Uri_Seq = 2",
          "select max(Uri_Syohou) from San_Uriage where Uri_Seq = 2",
          "select count(*) from San_User where User_Dlt_F is null"})
        content << connection.execute(QString::fromUtf8(sql)).field(0).toString();
    return content;
}

// Every table of gCon, each as its row count and a digest of all its rows in key order.
QStringList everyTable() {
    QStringList tables;
    for (const QString& table : ShopTables()) {
        QCryptographicHash digest(QCryptographicHash::Sha1);
        qint64 count = 0;
        const QString order = table == QLatin1String("ZipList") ? u"1, 2, 3, 4, 5"_s : u"1, 2"_s;
        for (RecordSet rows = gCon.execute(u"select * from %1 order by %2"_s.arg(table, order));
             !rows.eof(); rows.moveNext(), ++count) {
            for (int i = 0; i < rows.fieldCount(); ++i)
                digest.addData((rows.field(i).toString() + QLatin1Char('\t')).toUtf8());
            digest.addData("\n");
        }
        tables << u"%1 %2 %3"_s.arg(table).arg(count).arg(
            QString::fromLatin1(digest.result().toHex()));
    }
    return tables;
}

QStringList backupsIn(const QString& folder) {
    return QDir(folder + u"/Backup"_s).entryList(QDir::Files, QDir::Name);
}

} // namespace

class TestCopy : public QObject {
    Q_OBJECT
    Harness harness;
    QString output;

    // The admin tool as installed in the test's program folder: what it backs up goes to that
    // folder's Backup/.
    int admin(const QStringList& arguments) { return RunAdmin(harness, arguments, &output); }

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void copiesAndFailedCopies() {
        InsertCustomer({.no = 1});
        InsertCustomer({.no = 2, .name = u"O'Neil 花子"_s, .dltF = u""_s});
        InsertPurchase({.user = 2, .seq = 2, .rightSph = -0.75, .syohou = u"遠近\t両用"_s});
        // Customers up to 9 were given numbers once: the copy never gives them again.
        gCon.execute(u"update San_Saiban set Saiban_No = 9 where Saiban_UserNo = 0"_s);
        const QStringList original = contentOf(gCon);
        const QString source =
            Harness::onServer() ? Harness::serverConnection() : harness.databaseFile();
        const QString file = harness.path(u"copy.mdb"_s);
        QVERIFY2(admin({u"copy"_s, source, file}) == 0, qPrintable(output));
        QVERIFY(output.contains(u"件数は元と一致しました"_s));
        Connection target;
        target.open(file);
        QCOMPARE(contentOf(target), original);
        QCOMPARE(target.execute(u"select Saiban_No from San_Saiban where Saiban_UserNo = 0"_s)
                     .field(0)
                     .toInt(),
                 9);
        if (Harness::onServer()) { // and back onto an empty server: the tables are made first
            gCon.execute(u"drop schema public cascade"_s);
            gCon.execute(u"create schema public"_s);
            QVERIFY2(admin({u"copy"_s, file, source}) == 0, qPrintable(output));
            QCOMPARE(contentOf(gCon), original);
        }

        InsertCustomer({.no = 3});
        // The arguments swapped, or a copy onto itself: a target with customers is refused.
        const QStringList grown = contentOf(gCon);
        for (const QString& from : {source, file}) {
            QCOMPARE(admin({u"copy"_s, from, source}), 1);
            QCOMPARE(contentOf(gCon), grown);
        }
        QVERIFY2(output.contains(u"元のまま"_s), qPrintable(output));
        QCOMPARE(backupsIn(harness.folder()), QStringList());
        // A source that is no database: nothing is made of it.
        QCOMPARE(admin({u"copy"_s, u"--replace"_s, harness.path(u"nothing.mdb"_s), file}), 1);
        QCOMPARE(contentOf(target), original);
        // A row the target refuses after the customers are in: all of it comes back.
        target.execute(u"create trigger refuse before insert on San_Uriage begin "
                       "select raise(abort, 'refused'); end"_s);
        QCOMPARE(admin({u"copy"_s, u"--replace"_s, source, file}), 1);
        QVERIFY2(output.contains(u"元のまま"_s), qPrintable(output));
        QCOMPARE(contentOf(target), original);
        // Rows the target adds on its own fail the count check.
        target.execute(u"drop trigger refuse"_s);
        target.execute(u"create trigger extra after insert on San_Meka begin insert "
                       "into San_Item values('X' || new.Meka_No, 'x'); end"_s);
        QCOMPARE(admin({u"copy"_s, u"--replace"_s, source, file}), 1);
        QVERIFY2(output.contains(u"件数が一致しません: San_Item"_s), qPrintable(output));
        // Each replacement saved the target first, as it was.
        const QStringList saved = backupsIn(harness.folder());
        QCOMPARE(saved.size(), 2);
        for (const QString& name : saved) {
            QVERIFY(name.contains(u"-before-copy"_s));
            Connection kept;
            kept.open(harness.path(u"Backup/"_s + name));
            QCOMPARE(contentOf(kept), original);
        }

        // Onto a server with its customers, when asked: replaced, backed up, and analyzed.
        target.execute(u"drop trigger extra"_s);
        target.execute(u"delete from San_User where User_No = 1"_s);
        if (Harness::onServer()) {
            QVERIFY2(admin({u"copy"_s, u"--replace"_s, file, source}) == 0, qPrintable(output));
            QCOMPARE(contentOf(gCon), contentOf(target));
            QCOMPARE(backupsIn(harness.folder()).filter(u"-before-copy.dump"_s).size(), 1);
            QVERIFY(!QueryValue(u"select last_analyze from pg_stat_user_tables "
                                "where relname = 'san_uriage'"_s)
                         .isNull());
        }
    }

    // Every column in its own name, the masters' names beside their codes (empty for a deleted
    // maker), reals in plain decimal; a folder that cannot be written, or no shop, fails.
    void theShopWrittenOutAsCsv() {
        InsertCustomer({.no = 2, .name = u"O'Neil, \"花子\""_s, .nen = 0, .mon = 0, .day = 0});
        InsertCustomer({.no = 1, .tel = QString()});
        InsertPurchase({.user = 2, .lensMaker = u"008"_s, .syohou = u"遠近\n両用"_s});
        InsertPurchase({.user = 1, .seq = 3, .youto = u"009"_s, .frameMaker = {}});
        gCon.execute(u"delete from San_Meka where Meka_No = '008'"_s);
        const QString out = harness.path(u"out/csv"_s);
        QVERIFY2(admin({u"export-csv"_s, harness.folder(), out}) == 0, qPrintable(output));
        QVERIFY2(output.contains(u"顧客 2 件、売上 2 件、受注 0 件、入金 0 件を書き出しました"_s), qPrintable(output));
        const QByteArray customers = ReadFile(out + u"/customers.csv"_s);
        QVERIFY(customers.startsWith("\xEF\xBB\xBFUser_No,User_Name,User_Kana,"));
        QVERIFY(customers.endsWith(
            "User_Entry2,User_Dlt_F\r\n"
            "1,山田 太郎,やまだ たろう,060-0042,札幌市中央区大通西,1-2-3,,,,,,0,0,1,45,5,3,"
            "2020/04/01,2020/04/01,\r\n"
            "2,\"O'Neil, \"\"花子\"\"\",やまだ たろう,060-0042,札幌市中央区大通西,1-2-3,"
            "011-222-3333,,,,,0,0,1,0,0,0,2020/04/01,2020/04/01,\r\n"));
        const QByteArray purchases = ReadFile(out + u"/purchases.csv"_s);
        QVERIFY(purchases.startsWith("\xEF\xBB\xBFUri_UserNo,Uri_Seq,Uri_Date,Uri_ItemNo,"
                                     "Uri_ItemName,Uri_YoutoNo,Uri_YoutoName,Uri_Fm_MekaNo,"
                                     "Uri_Fm_MekaName,Uri_Fm_Name,"));
        const QByteArray eye = "0,0,0,0,,0,,0,0,0,0,0";
        const QByteArray eyes = "-1.25," + eye + ",-1.5," + eye;
        QCOMPARE(
            purchases.mid(purchases.indexOf("\r\n") + 2),
            "1,3,20260101,001,メガネ,009,その他,,,F-1,20000,52,黒,002,ニコン,L-1,18000,38000," +
                eyes + ",遠近,,\r\n" +
                "2,1,20260101,001,メガネ,001,遠用,001,HOYA,F-1,20000,52,黒,008,,L-1,18000,"
                "38000," +
                eyes + ",\"遠近\n両用\",,\r\n");
        QFile(harness.path(u"blocked"_s)).open(QIODevice::WriteOnly);
        QCOMPARE(admin({u"export-csv"_s, harness.folder(), harness.path(u"blocked/csv"_s)}), 1);
        QVERIFY2(output.contains(u"書き出せませんでした"_s), qPrintable(output));
        QCOMPARE(admin({u"export-csv"_s, harness.path(u"nowhere"_s), out}), 1);
    }

    void backupThenRestoreGivesBackTheWholeShop() {
        for (const char* zip : {"(60, 42, '北海道', '札幌市中央区', '大通西')",
                                "(100, 1, '東京都', '千代田区', '千代田')"})
            gCon.execute(u"insert into ZipList values "_s + QString::fromUtf8(zip));
        QCOMPARE(GenerateShop(gCon, 10000).customers, 10000);
        const QStringList shop = everyTable();

        // Made while the program has the database open.
        QVERIFY2(admin({u"backup"_s, harness.folder()}) == 0, qPrintable(output));
        const QStringList made = backupsIn(harness.folder());
        QCOMPARE(made.size(), 1);
        QVERIFY(made[0].endsWith(Harness::onServer() ? u".dump" : u".mdb"));

        // The day goes on: a purchase gone, a customer changed, a master added.
        gCon.execute(u"delete from San_Uriage where Uri_UserNo = 5000"_s);
        gCon.execute(u"update San_User set User_Name = 'x' where User_No = 7"_s);
        gCon.execute(u"insert into San_Meka values('099', 'x')"_s);
        const QStringList later = everyTable();
        gCon.close();

        // Not while the program runs in the folder, named through a link.
        const QString backup = harness.path(u"Backup/"_s + made[0]);
        {
            SingleInstance running;
            QVERIFY(!running.anotherIsRunning());
            const QString link = harness.path(u"linked"_s);
            QVERIFY(QFile::link(harness.folder(), link));
            QCOMPARE(admin({u"restore"_s, backup, link}), 1);
            QVERIFY2(output.contains(u"起動中"_s), qPrintable(output));
        }
        OpenDatabase();
        QCOMPARE(everyTable(), later);
        gCon.close();

        QVERIFY2(admin({u"restore"_s, backup, harness.folder()}) == 0, qPrintable(output));
        OpenDatabase();
        QCOMPARE(everyTable(), shop);
        // The database it replaced was saved first.
        const QStringList after = backupsIn(harness.folder());
        QCOMPARE(after.size(), 2);
        QVERIFY(after.filter(u"-before-restore."_s).size() == 1);
        // A file that is no backup changes nothing.
        gCon.close();
        QCOMPARE(admin({u"restore"_s, harness.path(u"DB"_s), harness.folder()}), 1);
        OpenDatabase();
        QCOMPARE(everyTable(), shop);
    }

    // A full disk: the shop's CSV files, the list's CSV, a printed PDF and the day's backup each
    // fail with their message and leave no file; the day's backup is told at the end of the day.
    void aFullDiskIsNeverReportedAsWritten() {
        InsertCustomer({.no = 1});
        InsertPurchase({.user = 1});
        FULL_DISK(disk, harness.path(u"full"_s));
        const QStringList onDisk{u"filler"_s};

        QCOMPARE(admin({u"export-csv"_s, harness.folder(), disk.path(u"."_s)}), 1);
        QVERIFY2(output.contains(u"書き出せませんでした"_s) &&
                     !output.contains(u"書き出しました"_s),
                 qPrintable(output));
        const ListedCustomer listed{1, u"山田"_s, {}, {}, u"札幌市"_s, {}, {}, 0, 0, 0, {}};
        QCOMPARE(FailureNumber([&] {
                     WriteListCsv(disk.path(u"list.csv"_s), {{listed, listed, true}},
                                  QDate(2026, 11, 22));
                 }),
                 ErrorNumber::FileAccess);

        QVERIFY(QFile::link(disk.path(u"."_s), harness.path(u"Print"_s)));
        harness.msgs.expect(OpeQes_009, Answer::Yes);
        harness.msgs.expectBox(PdfNotWrittenText, u"印刷選択"_s);
        FrmPrint print({{listed, listed, true}}, true);
        Find<QPushButton>(print, u"cmdPrint"_s, 0).click();

        QVERIFY(QFile::link(disk.path(u"."_s), harness.path(u"Backup"_s)));
        QCOMPARE(FailureNumber([this] { MakeDailyBackup(harness.folder(), Harness::FixedNow); }),
                 ErrorNumber::FileAccess);
        QCOMPARE(filesIn(disk.path(u"."_s)), onDisk);
        gCon.close();
        harness.screens.expect<FrmPsw>([](FrmPsw& screen) {
            auto& psw = Find<xPass>(screen, u"txtPSW"_s);
            psw.setText(u"tavinoru"_s);
            QTest::keyClick(&psw, Qt::Key_Return);
        });
        harness.screens.expect<FrmMenu>([](FrmMenu& menu) { menu.close(); });
        harness.msgs.expectBoxStartingWith(DailyBackupFailedText, AppTitle);
        QCOMPARE(Main(), 0);
        QCOMPARE(filesIn(disk.path(u"."_s)), onDisk);
    }

    // A backup stands under its name only when it is whole: one killed while it is written
    // (the database held by a terminal's long write, so the moment is sure) leaves its
    // temporary file only, and the server's pg_dump ends with the tool. The day still gets its
    // backup, and backups and exports are for their owner only.
    void anInterruptedBackupIsNoBackup() {
        InsertCustomer({.no = 1});
        gCon.close();
        // The other terminal holds the shop: on a server a table locked against readers, on a
        // file the whole file locked by a write in exclusive mode.
        std::unique_ptr<Connection> holding;
        if (Harness::onServer())
            holding = OtherTerminalHolding(harness.folder(),
                                           u"lock table San_Meka in access exclusive mode"_s);
        else {
            holding = std::make_unique<Connection>();
            OpenDatabaseIn(*holding, harness.folder());
            holding->execute(u"pragma locking_mode = exclusive"_s);
            holding->execute(u"update San_Meka set Meka_Name = Meka_Name"_s);
        }
        std::unique_ptr<QProcess> tool = StartAdmin(harness, {u"backup"_s, harness.folder()});
        const QString backups = BackupFolderIn(harness.folder());
        const QString partial = awaitFile(backups, PartialBackupSuffix);
        QVERIFY(!partial.isEmpty());
        QThread::msleep(300);
        ::kill(pid_t(tool->processId()), SIGKILL);
        tool->waitForFinished();
        if (Harness::onServer()) {
            for (int i = 0; i < 500 && ProcessRuns(partial); ++i)
                QThread::msleep(10);
            QVERIFY(!ProcessRuns(partial)); // pg_dump went with the tool
        }
        holding.reset();
        QCOMPARE(filesIn(backups), QStringList{partial});

        OpenDatabase();
        const QString daily = MakeDailyBackup(harness.folder(), Harness::FixedNow);
        QVERIFY(!daily.isEmpty());
        QCOMPARE(QFileInfo(daily).permissions() & OthersAndGroup, QFileDevice::Permissions());
        QVERIFY(QFileInfo(daily).permissions() & OwnerOnly);
        QCOMPARE(admin({u"export-csv"_s, harness.folder(), harness.path(u"out"_s)}), 0);
        QCOMPARE(QFileInfo(harness.path(u"out/customers.csv"_s)).permissions() & OthersAndGroup,
                 QFileDevice::Permissions());
    }

    // Only a whole shop is put back, checked before anything is replaced: not a file with the
    // customers alone, not a dump of another database. A server's shop is not put back while
    // a terminal is connected to it.
    void onlyAWholeShopIsPutBack() {
        InsertCustomer({.no = 1, .name = u"今の客"_s});
        const QString foreign = harness.path(u"foreign"_s);
        if (Harness::onServer()) {
            gCon.execute(u"drop database if exists mirvane_foreign"_s);
            gCon.execute(u"create database mirvane_foreign"_s);
            QString connection = Harness::serverConnection();
            connection.replace(QRegularExpression(u"dbname=\\S+"_s), u"dbname=mirvane_foreign"_s);
            Connection other;
            other.openServer(connection);
            other.execute(u"create table San_User (User_No integer)"_s);
            other.close();
            QProcess dump;
            dump.start(u"pg_dump"_s,
                       {u"--format=custom"_s, u"--file="_s + foreign, u"--dbname="_s + connection});
            QVERIFY(dump.waitForFinished() && dump.exitCode() == 0);
        } else {
            Connection other;
            other.create(foreign);
            other.execute(u"create table San_User (User_No integer)"_s);
        }
        gCon.close();
        QCOMPARE(admin({u"restore"_s, foreign, harness.folder()}), 1);
        QVERIFY2(output.contains(u"店のデータベースのバックアップではありません"_s),
                 qPrintable(output));
        QVERIFY(filesIn(BackupFolderIn(harness.folder())).isEmpty()); // nothing was replaced
        OpenDatabase();
        QCOMPARE(CustomerTexts(1, u"User_Name"_s), u"今の客"_s);
        if (!Harness::onServer())
            return;
        gCon.execute(u"drop database mirvane_foreign"_s);

        const QString made =
            BackupDatabase(DatabasePlaceIn(harness.folder()), harness.path(u"mine"_s),
                           Harness::FixedNow, BackupReason::Asked);
        OtherTerminal terminal(harness.folder());
        gCon.close();
        QCOMPARE(admin({u"restore"_s, made, harness.folder()}), 1);
        QVERIFY2(output.contains(u"ほかに 1 件の接続"_s), qPrintable(output));
    }

    // A copy reads its source as it stood when the copy began: a terminal that adds a customer
    // meanwhile is either kept waiting (a file) or not seen (a server), and the copy stands.
    void aCopyIsOneMomentOfItsSource() {
        InsertCustomer({.no = 1});
        InsertPurchase({.user = 1});
        OtherTerminal terminal(harness.folder());
        terminal.act([] { gCon.setLockWait(200); });
        Connection target;
        target.create(harness.path(u"copy.mdb"_s));
        CreateSchema(target);
        bool added = false;
        CopyDatabase(gCon, target, [&](const QString& table, qint64, qint64) {
            if (table != u"San_Uriage"_s || added)
                return;
            added = true;
            try {
                terminal.registerCustomer(u"途中の客"_s);
            } catch (const Failure& failure) {
                QCOMPARE(failure.number(), ErrorNumber::LockTimeout); // the file waits
            }
        });
        QVERIFY(added);
        QCOMPARE(target.execute(u"select count(*) from San_User"_s).field(0).toInt(), 1);
    }
};

QTEST_MAIN(TestCopy)
#include "tst_copy.moc"
