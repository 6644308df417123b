// What a shop meets on a bad day, and what the program and the admin tool say about it: a full
// disk, a killed backup, the wrong file put back, terminals still connected, a source that
// changes while it is copied, a character nobody can see. No success is reported that did not
// happen, and no file stands under a backup's or an export's name that is not whole.
#include "customer/FrmKokyaku.h"
#include "data/Backup.h"
#include "data/DatabaseCopy.h"
#include "data/Schema.h"
#include "data/ShopDatabase.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "platform/Failure.h"
#include "platform/controls/xField.h"
#include "platform/controls/xPass.h"
#include "platform/db/SqlText.h"
#include "print/FrmPrint.h"
#include "search/ListCsv.h"
#include "shell/BasSubMain.h"
#include "shell/FrmMenu.h"
#include "shell/FrmPsw.h"
#include "support/Faults.h"
#include "support/OtherTerminal.h"
#include "support/Roads.h"
#include "support/ShopData.h"

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

} // namespace

class TestFaults : public QObject {
    Q_OBJECT
    Harness harness;
    QString output;

    int admin(const QStringList& arguments) { return RunAdmin(harness, arguments, &output); }

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

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
        print.cmdPrint[0]->click();

        QVERIFY(QFile::link(disk.path(u"."_s), harness.path(u"Backup"_s)));
        QCOMPARE(FailureNumber([this] { MakeDailyBackup(harness.folder(), Harness::FixedNow); }),
                 ErrorNumber::FileAccess);
        QCOMPARE(filesIn(disk.path(u"."_s)), onDisk);
        gCon.close();
        harness.screens.expect<FrmPsw>([](FrmPsw& psw) {
            psw.txtPSW->setText(u"tavinoru"_s);
            QTest::keyClick(psw.txtPSW, Qt::Key_Return);
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

    // A character nobody can see never reaches the database: NUL and the other control
    // characters are left out of every quoted value; tabs and line breaks stay as pasted.
    void aPastedNulIsLeftOut() {
        QCOMPARE(StorableText(u"山田\u0000太郎\u0007\u007f"_s), u"山田太郎"_s);
        QCOMPARE(StorableText(u"a\tb\r\nc"_s), u"a\tb\r\nc"_s);
        QCOMPARE(SqlStr(u" O'N\u0000eil "_s), u"'O''Neil'"_s);
        harness.msgs.expect(OpeQes_011, Answer::Yes);
        harness.msgs.expect(OpeInf_001);
        OpenRegister(harness, 0, [](FrmKokyaku& s) {
            Paste(s.txtName, u"山田\u0000太郎"_s);
            QTest::keyClick(&s, Qt::Key_F5);
        });
        QCOMPARE(CustomerTexts(1, u"User_Name"_s), u"山田太郎"_s);
    }
};

QTEST_MAIN(TestFaults)
#include "tst_faults.moc"
