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
        const QString order = table == QLatin1String("ZipList") ? QStringLiteral("1, 2, 3, 4, 5")
                                                                : QStringLiteral("1, 2");
        for (RecordSet rows =
                 gCon.execute(QStringLiteral("select * from %1 order by %2").arg(table, order));
             !rows.eof(); rows.moveNext(), ++count) {
            for (int i = 0; i < rows.fieldCount(); ++i)
                digest.addData((rows.field(i).toString() + QLatin1Char('\t')).toUtf8());
            digest.addData("\n");
        }
        tables << QStringLiteral("%1 %2 %3")
                      .arg(table)
                      .arg(count)
                      .arg(QString::fromLatin1(digest.result().toHex()));
    }
    return tables;
}

QStringList backupsIn(const QString& folder) {
    return QDir(folder + QStringLiteral("/Backup")).entryList(QDir::Files, QDir::Name);
}

} // namespace

class TestCopy : public QObject {
    Q_OBJECT
    Harness harness;
    QString output;

    // The admin tool as installed in the test's program folder: what it backs up goes to that
    // folder's Backup/.
    int admin(const QStringList& arguments) {
        const QString installed = harness.path(QStringLiteral("mirvane-admin"));
        if (!QFile::exists(installed))
            QFile::copy(QStringLiteral(MIRVANE_ADMIN_PROGRAM), installed);
        QProcess tool;
        tool.start(installed, arguments);
        tool.waitForFinished(120000);
        output = QString::fromUtf8(tool.readAllStandardOutput() + tool.readAllStandardError());
        return tool.exitCode();
    }
    int copy(const QString& from, const QString& to) {
        return admin({QStringLiteral("copy"), from, to});
    }
    int replace(const QString& from, const QString& to) {
        return admin({QStringLiteral("copy"), QStringLiteral("--replace"), from, to});
    }

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void copiesAndFailedCopies() {
        InsertCustomer({.no = 1});
        InsertCustomer(
            {.no = 2, .name = QStringLiteral("O'Neil 花子"), .dltF = QStringLiteral("")});
        InsertPurchase(
            {.user = 2, .seq = 2, .rightSph = -0.75, .syohou = QStringLiteral("遠近\t両用")});
        const QStringList original = contentOf(gCon);
        const QString source =
            Harness::onServer() ? Harness::serverConnection() : harness.databaseFile();
        const QString file = harness.path(QStringLiteral("copy.mdb"));
        QVERIFY2(copy(source, file) == 0, qPrintable(output));
        QVERIFY(output.contains(QStringLiteral("件数は元と一致しました")));
        Connection target;
        target.open(file);
        QCOMPARE(contentOf(target), original);
        if (Harness::onServer()) { // and back onto an empty server: the tables are made first
            gCon.execute(QStringLiteral("drop schema public cascade"));
            gCon.execute(QStringLiteral("create schema public"));
            QVERIFY2(copy(file, source) == 0, qPrintable(output));
            QCOMPARE(contentOf(gCon), original);
        }

        InsertCustomer({.no = 3});
        // The arguments swapped, or a copy onto itself: a target with customers is refused.
        const QStringList grown = contentOf(gCon);
        for (const QString& from : {source, file}) {
            QCOMPARE(copy(from, source), 1);
            QCOMPARE(contentOf(gCon), grown);
        }
        QVERIFY2(output.contains(QStringLiteral("元のまま")), qPrintable(output));
        QCOMPARE(backupsIn(harness.folder()), QStringList());
        // A source that is no database: nothing is made of it.
        QCOMPARE(replace(harness.path(QStringLiteral("nothing.mdb")), file), 1);
        QCOMPARE(contentOf(target), original);
        // A row the target refuses after the customers are in: all of it comes back.
        target.execute(QStringLiteral("create trigger refuse before insert on San_Uriage begin "
                                      "select raise(abort, 'refused'); end"));
        QCOMPARE(replace(source, file), 1);
        QVERIFY2(output.contains(QStringLiteral("元のまま")), qPrintable(output));
        QCOMPARE(contentOf(target), original);
        // Rows the target adds on its own fail the count check.
        target.execute(QStringLiteral("drop trigger refuse"));
        target.execute(QStringLiteral("create trigger extra after insert on San_Meka begin insert "
                                      "into San_Item values('X' || new.Meka_No, 'x'); end"));
        QCOMPARE(replace(source, file), 1);
        QVERIFY2(output.contains(QStringLiteral("件数が一致しません: San_Item")),
                 qPrintable(output));
        // Each replacement saved the target first, as it was.
        const QStringList saved = backupsIn(harness.folder());
        QCOMPARE(saved.size(), 2);
        for (const QString& name : saved) {
            QVERIFY(name.contains(QStringLiteral("-before-copy")));
            Connection kept;
            kept.open(harness.path(QStringLiteral("Backup/") + name));
            QCOMPARE(contentOf(kept), original);
        }

        // Onto a server with its customers, when asked: replaced, backed up, and analyzed.
        target.execute(QStringLiteral("drop trigger extra"));
        target.execute(QStringLiteral("delete from San_User where User_No = 1"));
        if (Harness::onServer()) {
            QVERIFY2(replace(file, source) == 0, qPrintable(output));
            QCOMPARE(contentOf(gCon), contentOf(target));
            QCOMPARE(backupsIn(harness.folder()).filter(QStringLiteral("-before-copy.dump")).size(),
                     1);
            QVERIFY(!QueryValue(QStringLiteral("select last_analyze from pg_stat_user_tables "
                                               "where relname = 'san_uriage'"))
                         .isNull());
        }
    }

    void backupThenRestoreGivesBackTheWholeShop() {
        for (const char* zip : {"(60, 42, '北海道', '札幌市中央区', '大通西')",
                                "(100, 1, '東京都', '千代田区', '千代田')"})
            gCon.execute(QStringLiteral("insert into ZipList values ") + QString::fromUtf8(zip));
        QCOMPARE(GenerateShop(gCon, 10000).customers, 10000);
        const QStringList shop = everyTable();

        // Made while the program has the database open.
        QVERIFY2(admin({QStringLiteral("backup"), harness.folder()}) == 0, qPrintable(output));
        const QStringList made = backupsIn(harness.folder());
        QCOMPARE(made.size(), 1);
        QVERIFY(made[0].endsWith(Harness::onServer() ? u".dump" : u".mdb"));

        // The day goes on: a purchase gone, a customer changed, a master added.
        gCon.execute(QStringLiteral("delete from San_Uriage where Uri_UserNo = 5000"));
        gCon.execute(QStringLiteral("update San_User set User_Name = 'x' where User_No = 7"));
        gCon.execute(QStringLiteral("insert into San_Meka values('099', 'x')"));
        const QStringList later = everyTable();
        gCon.close();

        // Not while the program runs in the folder.
        const QString backup = harness.path(QStringLiteral("Backup/") + made[0]);
        QLockFile running(SingleInstance::lockFilePath());
        QVERIFY(running.tryLock(0));
        QCOMPARE(admin({QStringLiteral("restore"), backup, harness.folder()}), 1);
        QVERIFY2(output.contains(QStringLiteral("起動中")), qPrintable(output));
        running.unlock();
        OpenDatabase();
        QCOMPARE(everyTable(), later);
        gCon.close();

        QVERIFY2(admin({QStringLiteral("restore"), backup, harness.folder()}) == 0,
                 qPrintable(output));
        OpenDatabase();
        QCOMPARE(everyTable(), shop);
        // The database it replaced was saved first.
        const QStringList after = backupsIn(harness.folder());
        QCOMPARE(after.size(), 2);
        QVERIFY(after.filter(QStringLiteral("-before-restore.")).size() == 1);
        // A file that is no backup changes nothing.
        gCon.close();
        QCOMPARE(admin({QStringLiteral("restore"), harness.path(QStringLiteral("DB")),
                        harness.folder()}),
                 1);
        OpenDatabase();
        QCOMPARE(everyTable(), shop);
    }
};

QTEST_MAIN(TestCopy)
#include "tst_copy.moc"
