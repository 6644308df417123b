// Copying a whole database between a file and a server with the admin tool, and backing it up
// and putting it back: a shop that grows from one terminal to several keeps its data, a copy
// never wipes a shop by accident, and a copy that fails leaves the target as it was.
#include "ShopGenerator.h"
#include "data/DatabaseCopy.h"
#include "data/ShopDatabase.h"
#include "frame/Globals.h"
#include "platform/ui/SingleInstance.h"
#include "support/Harness.h"
#include "support/ShopData.h"

#include <QCryptographicHash>
#include <QProcess>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

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
    int admin(const QStringList& arguments) {
        const QString installed = harness.path(u"mirvane-admin"_s);
        if (!QFile::exists(installed))
            QFile::copy(QStringLiteral(MIRVANE_ADMIN_PROGRAM), installed);
        QProcess tool;
        tool.start(installed, arguments);
        tool.waitForFinished(120000);
        output = QString::fromUtf8(tool.readAllStandardOutput() + tool.readAllStandardError());
        return tool.exitCode();
    }

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void copiesAndFailedCopies() {
        InsertCustomer({.no = 1});
        InsertCustomer({.no = 2, .name = u"O'Neil 花子"_s, .dltF = u""_s});
        InsertPurchase({.user = 2, .seq = 2, .rightSph = -0.75, .syohou = u"遠近\t両用"_s});
        const QStringList original = contentOf(gCon);
        const QString source =
            Harness::onServer() ? Harness::serverConnection() : harness.databaseFile();
        const QString file = harness.path(u"copy.mdb"_s);
        QVERIFY2(admin({u"copy"_s, source, file}) == 0, qPrintable(output));
        QVERIFY(output.contains(u"件数は元と一致しました"_s));
        Connection target;
        target.open(file);
        QCOMPARE(contentOf(target), original);
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

        // Not while the program runs in the folder.
        const QString backup = harness.path(u"Backup/"_s + made[0]);
        QLockFile running(SingleInstance::lockFilePath());
        QVERIFY(running.tryLock(0));
        QCOMPARE(admin({u"restore"_s, backup, harness.folder()}), 1);
        QVERIFY2(output.contains(u"起動中"_s), qPrintable(output));
        running.unlock();
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
};

QTEST_MAIN(TestCopy)
#include "tst_copy.moc"
