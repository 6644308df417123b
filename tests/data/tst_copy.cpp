// Copying a whole database between a file and a server with the admin tool, and backing it up
// and putting it back: a shop that grows from one terminal to several keeps its data, a copy
// never wipes a shop by accident, and a copy that fails leaves the target as it was. Writing
// the shop out as CSV files for another system.
#include "ShopGenerator.h"
#include "data/DatabaseCopy.h"
#include "data/ShopDatabase.h"
#include "frame/Globals.h"
#include "platform/ui/SingleInstance.h"
#include "support/Faults.h"
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
        QVERIFY2(output.contains(u"顧客 2 件、売上 2 件を書き出しました"_s), qPrintable(output));
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
};

QTEST_MAIN(TestCopy)
#include "tst_copy.moc"
