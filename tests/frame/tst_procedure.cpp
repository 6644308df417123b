// The standard handling of a screen procedure: trace line, rollback of what it began, the
// screen's own message or the standard box, and the error line.
#include "frame/Globals.h"
#include "frame/Log.h"
#include "frame/MessageCatalogue.h"
#include "frame/Procedure.h"
#include "support/Harness.h"

#include <QFile>
#include <QtTest>

namespace {

QStringList logLines() {
    QFile file(LogFilePath());
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList lines = QString::fromUtf8(file.readAll()).split(QStringLiteral("\r\n"));
    lines.removeLast();
    return lines;
}

void insertCustomer(int number) {
    gCon.execute(
        QStringLiteral("insert into San_User (User_No, User_Name) values (%1, 'x')").arg(number));
}

const QString Where = QStringLiteral("顧客登録");
const QString Name = QStringLiteral("Save_User");
const QString Description = QStringLiteral("顧客マスター保存処理");
const QString FailureFirstLine = QStringLiteral("障害発生！ サポート先までご連絡お願い致します。");

} // namespace

class TestProcedure : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void aProcedureThatRunsThroughWritesOnlyItsTraceLine() {
        bool ran = false;
        QVERIFY(Procedure(Where, Name, Description, [&] { ran = true; }));
        QVERIFY(ran);
        QCOMPARE(logLines(), QStringList{QStringLiteral(
                                 "\"2026/11/22 \",\"10:15:30 \",\"顧客登録\","
                                 "\"Save_User\",\"ｴﾗ-No.()\",\"顧客マスター保存処理\"")});
        QVERIFY(Procedure(Where, Name, Description, [] {}, {.trace = false}));
        QCOMPARE(logLines().size(), 1);
    }

    void aFailingProcedureRollsBackWhatItBeganAndReportsTheFailure() {
        harness.msgs.expectBox(FailureFirstLine + QStringLiteral("\r\r在庫がありません"),
                               QStringLiteral(" VB ERROR No.13"));
        const bool ranThrough = Procedure(Where, Name, Description, [] {
            gCon.beginTrans();
            insertCustomer(1);
            insertCustomer(2);
            throw Failure(13, QStringLiteral("在庫がありません"));
        });
        QVERIFY(!ranThrough);
        QVERIFY(!gCon.inTransaction());
        QCOMPARE(QueryCount(QStringLiteral("select * from San_User")), 0);
        const QStringList lines = logLines();
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines[1],
                 QStringLiteral("\"2026/11/22 \",\"10:15:30 \",\"顧客登録\",\"Save_User\","
                                "\"ｴﾗ-No.(13)\",\"在庫がありません\""));
        // The connection is usable at once.
        insertCustomer(3);
        QCOMPARE(QueryCount(QStringLiteral("select * from San_User")), 1);
    }

    void aDuplicateKeyShowsTheScreensOwnMessageInstead() {
        insertCustomer(1);
        harness.msgs.expect(OpeErr_010);
        const bool ranThrough =
            Procedure(Where, Name, Description,
                      [] {
                          gCon.beginTrans();
                          insertCustomer(2);
                          insertCustomer(1);
                          gCon.commitTrans();
                      },
                      {.ownMessage = MessageOnError(ErrorNumber::DatabaseFailed, OpeErr_010)});
        QVERIFY(!ranThrough);
        QCOMPARE(QueryCount(QStringLiteral("select * from San_User")), 1);
        QCOMPARE(logLines().size(), 1); // the trace line only

        // Another error number still gets the standard box.
        harness.msgs.expectBox(FailureFirstLine + QStringLiteral("\r\rx"),
                               QStringLiteral(" VB ERROR No.5"));
        Procedure(Where, Name, Description, [] { throw Failure(5, QStringLiteral("x")); },
                  {.ownMessage = MessageOnError(ErrorNumber::DatabaseFailed, OpeErr_010)});
    }

    void aTransactionBegunByTheCallerIsLeftToTheCaller() {
        gCon.beginTrans();
        insertCustomer(1);
        harness.msgs.expectBox(FailureFirstLine + QStringLiteral("\r\rinner"),
                               QStringLiteral(" VB ERROR No.9"));
        Procedure(Where, QStringLiteral("Save_UriData"), Description,
                  [] { throw Failure(9, QStringLiteral("inner")); });
        QVERIFY(gCon.inTransaction());
        gCon.commitTrans();
        QCOMPARE(QueryCount(QStringLiteral("select * from San_User")), 1);
    }

    void startUpStyleHandlingUsesTheWideTitleAndWritesNoErrorLine() {
        harness.msgs.expectBox(FailureFirstLine + QStringLiteral("\r\rbad"),
                               QStringLiteral(" ＶＢエラ－ No.-2147418113"));
        Procedure(
            QStringLiteral("BasCmnSubFun"), QStringLiteral("CmnSetMstCombo"), QString(),
            [] { throw std::runtime_error("bad"); },
            {.trace = false, .logErrors = false, .titlePrefix = QStringLiteral(" ＶＢエラ－ No.")});
        QVERIFY(logLines().isEmpty());
    }
};

QTEST_MAIN(TestProcedure)
#include "tst_procedure.moc"
