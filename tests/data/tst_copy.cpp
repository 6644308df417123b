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
#include "shell/BasSubMain.h"
#include "shell/FrmMenu.h"
#include "shell/FrmPsw.h"
#include "support/Controls.h"
#include "support/Faults.h"
#include "support/Harness.h"
#include "support/OtherTerminal.h"
#include "support/ShopData.h"

#include <QCryptographicHash>
#include <QProcess>
#include <QPushButton>
#include <QThread>
#include <QtTest>
#include <csignal>

using namespace Qt::StringLiterals;

namespace {

constexpr auto OwnerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

// What the file lets its owner and the others do.
QFileDevice::Permissions access(const QString& path) {
    return QFileInfo(path).permissions() &
           (OwnerOnly | QFileDevice::ReadGroup | QFileDevice::ReadOther | QFileDevice::WriteGroup |
            QFileDevice::WriteOther);
}

QStringList filesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::Files, QDir::Name);
}

// Every table, each as a digest of all its rows in key order.
QStringList everyTable(Connection& connection = gCon) {
    QStringList tables;
    for (const QString& table : ShopTables()) {
        QCryptographicHash digest(QCryptographicHash::Sha1);
        const QString order = table == u"ZipList"_s ? u"1, 2, 3, 4, 5"_s : u"1, 2"_s;
        RecordSet rows = connection.execute(u"select * from %1 order by %2"_s.arg(table, order));
        for (; !rows.eof(); rows.moveNext())
            for (int i = 0; i < rows.fieldCount(); ++i)
                digest.addData((rows.field(i).toString() + u'\t').toUtf8());
        tables << table + u' ' + QString::fromLatin1(digest.result().toHex());
    }
    return tables;
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
        const QStringList original = everyTable();
        const QString source =
            Harness::onServer() ? Harness::serverConnection() : harness.databaseFile();
        const QString file = harness.path(u"copy.mdb"_s);
        QVERIFY2(admin({u"copy"_s, source, file}) == 0, qPrintable(output));
        QVERIFY(output.contains(u"件数は元と一致しました"_s));
        Connection target;
        target.open(file);
        QCOMPARE(everyTable(target), original); // San_Saiban too
        if (Harness::onServer()) { // and back onto an empty server: the tables are made first
            gCon.execute(u"drop schema public cascade; create schema public"_s);
            QVERIFY2(admin({u"copy"_s, file, source}) == 0, qPrintable(output));
            QCOMPARE(everyTable(), original);
        }

        InsertCustomer({.no = 3});
        // The arguments swapped, or a copy onto itself: a target with customers is refused.
        const QStringList grown = everyTable();
        for (const QString& from : {source, file})
            QCOMPARE(admin({u"copy"_s, from, source}), 1);
        QCOMPARE(everyTable(), grown);
        QCOMPARE(filesIn(harness.path(u"Backup"_s)), QStringList());
        // A source that is no database: nothing is made of it.
        QCOMPARE(admin({u"copy"_s, u"--replace"_s, harness.path(u"nothing.mdb"_s), file}), 1);
        QCOMPARE(everyTable(target), original);
        // A row the target refuses after the customers are in: all of it comes back.
        target.execute(u"create trigger refuse before insert on San_Uriage begin "
                       "select raise(abort, 'refused'); end"_s);
        QCOMPARE(admin({u"copy"_s, u"--replace"_s, source, file}), 1);
        QVERIFY2(output.contains(u"元のまま"_s), qPrintable(output));
        QCOMPARE(everyTable(target), original);
        // Rows the target adds on its own fail the count check.
        target.execute(u"drop trigger refuse"_s);
        target.execute(u"create trigger extra after insert on San_Meka begin insert "
                       "into San_Item values('X' || new.Meka_No, 'x'); end"_s);
        QCOMPARE(admin({u"copy"_s, u"--replace"_s, source, file}), 1);
        QVERIFY2(output.contains(u"件数が一致しません: San_Item"_s), qPrintable(output));
        // Each replacement saved the target first, as it was.
        const QStringList saved = filesIn(harness.path(u"Backup"_s)).filter(u"-before-copy"_s);
        QCOMPARE(saved.size(), 2);
        Connection kept;
        kept.open(harness.path(u"Backup/"_s + saved[1]));
        QCOMPARE(everyTable(kept), original);

        // Onto a server with its customers, when asked: replaced and backed up.
        target.execute(u"drop trigger extra"_s);
        target.execute(u"delete from San_User where User_No = 1"_s);
        if (Harness::onServer()) {
            QVERIFY2(admin({u"copy"_s, u"--replace"_s, file, source}) == 0, qPrintable(output));
            QCOMPARE(everyTable(), everyTable(target));
            QCOMPARE(filesIn(harness.path(u"Backup"_s)).filter(u"-before-copy.dump"_s).size(), 1);
        }
    }

    // Every column in its own name, the masters' names beside their codes (empty for a deleted
    // maker), reals in plain decimal; no shop fails.
    void theShopWrittenOutAsCsv() {
        InsertCustomer({.no = 2, .name = u"O'Neil, \"花子\""_s, .nen = 0, .mon = 0, .day = 0});
        InsertCustomer({.no = 1, .tel = QString()});
        InsertPurchase({.user = 2, .lensMaker = u"008"_s, .syohou = u"遠近\n両用"_s});
        InsertPurchase({.user = 1, .seq = 3, .youto = u"009"_s, .frameMaker = {}});
        gCon.execute(u"delete from San_Meka where Meka_No = '008'"_s);
        const QString out = harness.path(u"out/csv"_s);
        QVERIFY2(admin({u"export-csv"_s, harness.folder(), out}) == 0, qPrintable(output));
        QVERIFY2(output.contains(u"顧客 2 件、売上 2 件、受注 0 件、入金 0 件を書き出しました"_s),
                 qPrintable(output));
        const QByteArray customers = ReadFile(out + u"/customers.csv"_s);
        QVERIFY(customers.startsWith("\xEF\xBB\xBFUser_No,User_Name,User_Kana,"));
        QVERIFY(customers.endsWith(
            "User_Entry2,User_Dlt_F\r\n"
            "1,山田 太郎,やまだ たろう,060-0042,札幌市中央区大通西,1-2-3,,,,,,0,0,1,45,5,3,"
            "2020/04/01,2020/04/01,\r\n"
            "2,\"O'Neil, \"\"花子\"\"\",やまだ たろう,060-0042,札幌市中央区大通西,1-2-3,"
            "011-222-3333,,,,,0,0,1,0,0,0,2020/04/01,2020/04/01,\r\n"));
        const QByteArray purchases = ReadFile(out + u"/purchases.csv"_s);
        const QByteArray eye = "0,0,0,0,,0,,0,0,0,0,0", eyes = "-1.25," + eye + ",-1.5," + eye;
        QCOMPARE(
            purchases.mid(purchases.indexOf("\r\n") + 2),
            "1,3,20260101,001,メガネ,009,その他,,,F-1,20000,52,黒,002,ニコン,L-1,18000,38000," +
                eyes + ",遠近,,\r\n" +
                "2,1,20260101,001,メガネ,001,遠用,001,HOYA,F-1,20000,52,黒,008,,L-1,18000,"
                "38000," +
                eyes + ",\"遠近\n両用\",,\r\n");
        QCOMPARE(admin({u"export-csv"_s, harness.path(u"nowhere"_s), out}), 1);
    }

    // A backup made while the program has the database open gives back the whole shop. Nothing
    // is put back while the program runs in the folder (named through a link), from a file that
    // is no whole shop (the customers alone), or on a server while a terminal is connected to
    // it; the database replaced is saved first.
    void backupThenRestoreGivesBackTheWholeShop() {
        gCon.execute(u"insert into ZipList values (60, 42, '北海道', '札幌市中央区', '大通西')"_s);
        QCOMPARE(GenerateShop(gCon, 10000).customers, 10000);
        const QStringList shop = everyTable();
        QVERIFY2(admin({u"backup"_s, harness.folder()}) == 0, qPrintable(output));
        const QStringList made = filesIn(harness.path(u"Backup"_s));
        QCOMPARE(made.size(), 1);
        const QString backup = harness.path(u"Backup/"_s + made[0]);

        // The day goes on: a purchase gone, a master added.
        gCon.execute(u"delete from San_Uriage where Uri_UserNo = 5000"_s);
        gCon.execute(u"insert into San_Meka values('099', 'x')"_s);
        const QStringList later = everyTable();
        const QString foreign = harness.path(u"foreign"_s);
        if (Harness::onServer()) {
            QCOMPARE(
                QProcess::execute(u"pg_dump"_s, {u"--format=custom"_s, u"--table=san_user"_s,
                                                 u"--file="_s + foreign,
                                                 u"--dbname="_s + Harness::serverConnection()}),
                0);
        } else {
            Connection other;
            other.create(foreign);
            other.execute(u"create table San_User (User_No integer)"_s);
        }
        gCon.close();
        {
            SingleInstance running;
            QVERIFY(!running.anotherIsRunning()); // takes the folder's lock
            QVERIFY(QFile::link(harness.folder(), harness.path(u"linked"_s)));
            QCOMPARE(admin({u"restore"_s, backup, harness.path(u"linked"_s)}), 1);
            QVERIFY2(output.contains(u"起動中"_s), qPrintable(output));
        }
        QCOMPARE(admin({u"restore"_s, foreign, harness.folder()}), 1);
        QVERIFY2(output.contains(u"店のデータベースのバックアップではありません"_s),
                 qPrintable(output));
        if (Harness::onServer()) {
            OtherTerminal terminal(harness.folder());
            QCOMPARE(admin({u"restore"_s, backup, harness.folder()}), 1);
            QVERIFY2(output.contains(u"ほかに 1 件の接続"_s), qPrintable(output));
        }
        QCOMPARE(filesIn(harness.path(u"Backup"_s)), made); // nothing was replaced
        OpenDatabase();
        QCOMPARE(everyTable(), later);
        gCon.close();

        QVERIFY2(admin({u"restore"_s, backup, harness.folder()}) == 0, qPrintable(output));
        OpenDatabase();
        QCOMPARE(everyTable(), shop);
        QCOMPARE(filesIn(harness.path(u"Backup"_s)).filter(u"-before-restore."_s).size(), 1);
    }

    // A full disk: the shop's CSV files, a printed PDF and the day's backup each
    // fail with their message and leave no file; the day's backup is told at the end of the day.
    void aFullDiskIsNeverReportedAsWritten() {
        InsertCustomer({.no = 1});
        InsertPurchase({.user = 1});
        FULL_DISK(disk, harness.path(u"full"_s));

        QCOMPARE(admin({u"export-csv"_s, harness.folder(), disk.path(u"."_s)}), 1);
        QVERIFY2(output.contains(u"書き出せませんでした"_s) &&
                     !output.contains(u"書き出しました"_s),
                 qPrintable(output));
        const ListedCustomer listed{1, u"山田"_s, {}, {}, u"札幌市"_s, {}, {}, 0, 0, 0, {}};

        QVERIFY(QFile::link(disk.path(u"."_s), harness.path(u"Print"_s)));
        harness.msgs.expect(OpeQes_009, Answer::Yes);
        harness.msgs.expectBox(PdfNotWrittenText, u"印刷選択"_s);
        FrmPrint print({{listed, listed, true}}, true);
        Find<QPushButton>(print, u"cmdPrint"_s, 0).click();

        QVERIFY(QFile::link(disk.path(u"."_s), harness.path(u"Backup"_s)));
        gCon.close();
        harness.screens.expect<FrmPsw>([](FrmPsw& screen) {
            Find<xPass>(screen, u"txtPSW"_s).setText(u"tavinoru"_s);
            QTest::keyClick(&Find<xPass>(screen, u"txtPSW"_s), Qt::Key_Return);
        });
        harness.screens.expect<FrmMenu>([](FrmMenu& menu) { menu.close(); });
        harness.msgs.expectBoxStartingWith(DailyBackupFailedText, AppTitle);
        QCOMPARE(Main(), 0);
        QCOMPARE(filesIn(disk.path(u"."_s)), QStringList{u"filler"_s});
    }

    // A backup stands under its name only when it is whole: one killed while it is written
    // (the database held by a terminal's long write, so the moment is sure) leaves its
    // temporary file only, and the server's pg_dump ends with the tool. The day still gets its
    // backup, and backups and exports are for their owner only.
    void anInterruptedBackupIsNoBackup() {
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
        QString partial; // its temporary file, within ten seconds
        for (int i = 0; i < 1000 && partial.isEmpty(); ++i) {
            QThread::msleep(10);
            partial = filesIn(backups).filter(PartialBackupSuffix).value(0);
        }
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
        QCOMPARE(access(MakeDailyBackup(harness.folder(), Harness::FixedNow)), OwnerOnly);
        QCOMPARE(admin({u"export-csv"_s, harness.folder(), harness.path(u"out"_s)}), 0);
        QCOMPARE(access(harness.path(u"out/customers.csv"_s)), OwnerOnly);
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
