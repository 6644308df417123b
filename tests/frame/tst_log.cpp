// The daily log: the line's exact form, the file per day of the month, appending, and a log
// that cannot be written.
#include "frame/Log.h"
#include "platform/ui/Clock.h"
#include "support/Harness.h"

#include <QDir>
#include <QFile>
#include <QtTest>

namespace {

QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const char TraceLine[] = "\"2026/11/22 \",\"10:15:30 \",\"メーカーマスタ保守\",\"SaveMaster\","
                         "\"ｴﾗ-No.()\",\"マスター保存処理\"\r\n";

} // namespace

class TestLog : public QObject {
    Q_OBJECT
    Harness harness;

    void writeTrace() {
        CmnWriteLog(QStringLiteral("メーカーマスタ保守"), QStringLiteral("SaveMaster"),
                    QStringLiteral("マスター保存処理"), QString());
    }

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void traceAndErrorLinesHaveSixQuotedFields() {
        writeTrace();
        CmnWriteLog(QStringLiteral("BasCmnSubFun"), QStringLiteral("CmnGetMaster"),
                    QStringLiteral("no such table: \"San_Meka\""), QStringLiteral("-2147217900"));
        QCOMPARE(LogFilePath(), harness.path(QStringLiteral("Log/22day.log")));
        QCOMPARE(readFile(LogFilePath()),
                 QByteArray(TraceLine) +
                     QByteArray("\"2026/11/22 \",\"10:15:30 \",\"BasCmnSubFun\",\"CmnGetMaster\","
                                "\"ｴﾗ-No.(-2147217900)\",\"no such table: \"San_Meka\"\"\r\n"));
    }

    void eachDayOfTheMonthHasItsFileThatCollectsEveryMonth() {
        FixClock(QDateTime(QDate(2026, 12, 1), QTime(8, 5, 9)));
        writeTrace();
        FixClock(QDateTime(QDate(2027, 1, 1), QTime(23, 59, 59)));
        writeTrace();
        FixClock(QDateTime(QDate(2027, 1, 2), QTime(0, 0, 0)));
        writeTrace();

        const QByteArray first = readFile(harness.path(QStringLiteral("Log/01day.log")));
        const QList<QByteArray> lines = first.split('\n');
        QCOMPARE(lines.size(), 3); // two lines and the empty rest after the last break
        QVERIFY(lines[0].startsWith("\"2026/12/01 \",\"08:05:09 \""));
        QVERIFY(lines[1].startsWith("\"2027/01/01 \",\"23:59:59 \""));
        QVERIFY(readFile(harness.path(QStringLiteral("Log/02day.log")))
                    .startsWith("\"2027/01/02 \",\"00:00:00 \""));
    }

    void aMissingLogFolderIsCreated() {
        QVERIFY(QDir(harness.path(QStringLiteral("Log"))).removeRecursively());
        writeTrace();
        QCOMPARE(readFile(LogFilePath()), QByteArray(TraceLine));
    }

    void aLogThatCannotBeWrittenIsReportedOnceUntilItWorksAgain() {
        // A file where the folder should be: nothing can be written below it.
        QVERIFY(QDir(harness.path(QStringLiteral("Log"))).removeRecursively());
        QFile blocker(harness.path(QStringLiteral("Log")));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();

        const QString failureText = QStringLiteral(
            "障害発生！ サポート先までご連絡お願い致します。\r\rログファイルに書き込めません: ");
        harness.msgs.expectBox(failureText + harness.path(QStringLiteral("Log/22day.log")),
                               QStringLiteral(" VB ERROR No.75"));
        writeTrace();
        writeTrace();
        QCOMPARE(harness.msgs.shown().size(), 1);

        QVERIFY(blocker.remove());
        writeTrace();
        QCOMPARE(readFile(LogFilePath()), QByteArray(TraceLine));

        QVERIFY(QDir(harness.path(QStringLiteral("Log"))).removeRecursively());
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        harness.msgs.expectBox(failureText + harness.path(QStringLiteral("Log/22day.log")),
                               QStringLiteral(" VB ERROR No.75"));
        writeTrace();
        QCOMPARE(harness.msgs.shown().size(), 2);
        QVERIFY(blocker.remove());
    }
};

QTEST_MAIN(TestLog)
#include "tst_log.moc"
