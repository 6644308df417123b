// Copying a whole database between a file and a server with the admin tool: a shop that grows
// from one terminal to several keeps its data.
#include "frame/Globals.h"
#include "support/Harness.h"
#include "support/ShopData.h"

#include <QProcess>
#include <QtTest>

namespace {

QString runCopy(const QString& from, const QString& to, int* exitCode) {
    QProcess tool;
    tool.start(QStringLiteral(MIRVANE_ADMIN_PROGRAM), {QStringLiteral("copy"), from, to});
    tool.waitForFinished(120000);
    *exitCode = tool.exitCode();
    return QString::fromUtf8(tool.readAllStandardOutput() + tool.readAllStandardError());
}

QStringList contentOf(Connection& connection) {
    QStringList content;
    for (const char* sql :
         {"select count(*) from San_User", "select count(*) from San_Uriage",
          "select count(*) from San_Meka", "select User_Name from San_User where User_No = 2",
          "select Uri_R_Sph from San_Uriage where Uri_Seq = 2",
          "select Uri_Syohou from San_Uriage where Uri_Seq = 2"})
        content << connection.execute(QString::fromUtf8(sql)).field(0).toString();
    return content;
}

} // namespace

class TestCopy : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void aWholeDatabaseIsCopiedAndCounted() {
        InsertCustomer({.no = 1});
        InsertCustomer({.no = 2, .name = QStringLiteral("O'Neil 花子")});
        InsertPurchase({.user = 2, .seq = 1});
        InsertPurchase(
            {.user = 2, .seq = 2, .rightSph = -0.75, .syohou = QStringLiteral("遠近\t両用")});
        gCon.execute(
            QStringLiteral("insert into San_Uriage (Uri_UserNo, Uri_Seq, Uri_Date, Uri_Memo) "
                           "values (1, 1, 20200101, NULL)"));
        const QStringList original = contentOf(gCon);
        const QString source =
            Harness::onServer() ? Harness::serverConnection() : harness.databaseFile();
        const QString file = harness.path(QStringLiteral("copy.mdb"));
        int exitCode = -1;
        const QString output = runCopy(source, file, &exitCode);
        QVERIFY2(exitCode == 0, qPrintable(output));
        QVERIFY(output.contains(QStringLiteral("件数は元と一致しました")));
        Connection copied;
        copied.open(file);
        QCOMPARE(contentOf(copied), original);
        QVERIFY(
            copied.execute(QStringLiteral("select Uri_Memo from San_Uriage where Uri_UserNo = 1"))
                .field(0)
                .isNull());
        copied.close();

        if (!Harness::onServer())
            return;
        // And back onto an empty server: the tables are made there first.
        gCon.execute(QStringLiteral("drop schema public cascade"));
        gCon.execute(QStringLiteral("create schema public"));
        QCOMPARE(runCopy(file, source, &exitCode).contains(QStringLiteral("一致しました")), true);
        QCOMPARE(contentOf(gCon), original);
    }

    void aFailedCopyLeavesTheTargetAsItWas() {
        const QString file = harness.path(QStringLiteral("target.mdb"));
        int exitCode = -1;
        runCopy(Harness::onServer() ? Harness::serverConnection() : harness.databaseFile(), file,
                &exitCode);
        QCOMPARE(exitCode, 0);
        InsertCustomer({.no = 5});
        // A source that is not a database copies nothing.
        const QString output =
            runCopy(harness.path(QStringLiteral("nothing.mdb")), file, &exitCode);
        QCOMPARE(exitCode, 1);
        QVERIFY(output.contains(QStringLiteral("元のまま")));
        Connection target;
        target.open(file);
        QCOMPARE(target.execute(QStringLiteral("select count(*) from San_Meka")).field(0).toInt(),
                 8);
    }
};

QTEST_MAIN(TestCopy)
#include "tst_copy.moc"
