// Copying a whole database between a file and a server with the admin tool: a shop that grows
// from one terminal to several keeps its data, and a copy that fails leaves the target as it was.
#include "frame/Globals.h"
#include "support/Harness.h"
#include "support/ShopData.h"

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

} // namespace

class TestCopy : public QObject {
    Q_OBJECT
    Harness harness;
    QString output;

    int copy(const QString& from, const QString& to) {
        QProcess tool;
        tool.start(QStringLiteral(MIRVANE_ADMIN_PROGRAM), {QStringLiteral("copy"), from, to});
        tool.waitForFinished(120000);
        output = QString::fromUtf8(tool.readAllStandardOutput() + tool.readAllStandardError());
        return tool.exitCode();
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
        // A source that is no database: nothing is made of it.
        QCOMPARE(copy(harness.path(QStringLiteral("nothing.mdb")), file), 1);
        QCOMPARE(contentOf(target), original);
        // A row the target refuses after the customers are in: all of it comes back.
        target.execute(QStringLiteral("create trigger refuse before insert on San_Uriage begin "
                                      "select raise(abort, 'refused'); end"));
        QCOMPARE(copy(source, file), 1);
        QVERIFY2(output.contains(QStringLiteral("元のまま")), qPrintable(output));
        QCOMPARE(contentOf(target), original);
        // Rows the target adds on its own fail the count check.
        target.execute(QStringLiteral("drop trigger refuse"));
        target.execute(QStringLiteral("create trigger extra after insert on San_Meka begin insert "
                                      "into San_Item values('X' || new.Meka_No, 'x'); end"));
        QCOMPARE(copy(source, file), 1);
        QVERIFY2(output.contains(QStringLiteral("件数が一致しません: San_Item")),
                 qPrintable(output));
    }
};

QTEST_MAIN(TestCopy)
#include "tst_copy.moc"
