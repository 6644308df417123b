// Catalogue messages through CmnDspMsg (icon, buttons, title and the button given back), the
// failure box, and the daily log: the line's exact form, the file per day of the month,
// appending, and a log that cannot be written.
#include "frame/Log.h"
#include "frame/Messages.h"
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

const QString FailureFirstLine = QStringLiteral("障害発生！ サポート先までご連絡お願い致します。");

const char TraceLine[] = "\"2026/11/22 \",\"10:15:30 \",\"メーカーマスタ保守\",\"SaveMaster\","
                         "\"ｴﾗ-No.()\",\"マスター保存処理\"\r\n";

void writeTrace() {
    CmnWriteLog(QStringLiteral("メーカーマスタ保守"), QStringLiteral("SaveMaster"),
                QStringLiteral("マスター保存処理"), QString());
}

} // namespace

class TestMessages : public QObject {
    Q_OBJECT
    Harness harness;

    const MsgRequest& lastShown() const { return harness.msgs.shown().last(); }

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void eachKindHasItsIconButtonsAndTitle() {
        // No message gives 0; an unknown kind (compared exactly) is a development error.
        const struct {
            const char *msg, *text, *title;
            MsgIcon icon;
            MsgButtons buttons;
            int press, given;
        } cases[] = {{"OpeInf_001保存しました", "保存しました", "ｲﾝﾌｫﾒｰｼｮﾝ No.001",
                      MsgIcon::Information, MsgButtons::OK, Answer::OK, 1},
                     {"OpeErr_005誤りです", "誤りです", "ｵﾍﾟﾚｰｼｮﾝ ｴﾗｰ No.005", MsgIcon::Exclamation,
                      MsgButtons::OK, Answer::OK, 1},
                     {"SysErr_002起動済み", "起動済み", "ｼｽﾃﾑ ｴﾗｰ No.002", MsgIcon::Critical,
                      MsgButtons::OK, Answer::OK, 1},
                     {"OpeQes_009よろしいですか", "よろしいですか", "問い合わせ No.009",
                      MsgIcon::Question, MsgButtons::YesNo, Answer::Yes, 6},
                     {"OpeQes_002削除しますか", "削除しますか", "問い合わせ No.002",
                      MsgIcon::Question, MsgButtons::YesNo, Answer::No, 7},
                     {"", "メッセージコードが未設定です。", "注意", MsgIcon::Critical,
                      MsgButtons::OK, Answer::OK, 0},
                     {"Opeerr_001未入力です。", "指定のメッセージが存在しません。", "開発エラー",
                      MsgIcon::Critical, MsgButtons::OK, Answer::OK, 1}};
        for (const auto& c : cases) {
            harness.msgs.expectBox(QString::fromUtf8(c.text), QString::fromUtf8(c.title), c.press);
            QCOMPARE(CmnDspMsg(QString::fromUtf8(c.msg)), c.given);
            QCOMPARE(lastShown().icon, c.icon);
            QCOMPARE(lastShown().buttons, c.buttons);
        }

        // The text is trimmed and cut at fifty characters.
        harness.msgs.expectBox(QString(50, QChar(0x3042)), QStringLiteral("ｵﾍﾟﾚｰｼｮﾝ ｴﾗｰ No.123"));
        CmnDspMsg(QStringLiteral("OpeErr_123") + QString(60, QChar(0x3042)));
        harness.msgs.expectBox(QStringLiteral("前後の空白"), QStringLiteral("ｲﾝﾌｫﾒｰｼｮﾝ No.999"));
        CmnDspMsg(QStringLiteral("OpeInf_999  前後の空白  "));
    }

    void theFailureBoxCarriesTheDescriptionAndNumber() {
        harness.msgs.expectBox(FailureFirstLine + QStringLiteral("\r\rディスクが一杯です"),
                               QStringLiteral(" VB ERROR No.61"));
        ShowFailureBox(61, QStringLiteral("ディスクが一杯です"));
        harness.msgs.expectBox(FailureFirstLine + QStringLiteral("\r\rx"),
                               QStringLiteral(" ＶＢエラ－ No.-2147467259"));
        ShowFailureBox(-2147467259, QStringLiteral("x"), VbErrorTitleWide);
        QCOMPARE(lastShown().icon, MsgIcon::Critical);
    }

    void logLinesHaveSixQuotedFieldsInAFilePerDayOfTheMonth() {
        writeTrace();
        CmnWriteLog(QStringLiteral("BasCmnSubFun"), QStringLiteral("CmnGetMaster"),
                    QStringLiteral("no such table: \"San_Meka\""), QStringLiteral("-2147217900"));
        QCOMPARE(LogFilePath(), harness.path(QStringLiteral("Log/22day.log")));
        QCOMPARE(readFile(LogFilePath()),
                 QByteArray(TraceLine) +
                     QByteArray("\"2026/11/22 \",\"10:15:30 \",\"BasCmnSubFun\",\"CmnGetMaster\","
                                "\"ｴﾗ-No.(-2147217900)\",\"no such table: \"San_Meka\"\"\r\n"));

        // Each day's file collects that day of every month; a missing folder is created.
        QVERIFY(QDir(harness.path(QStringLiteral("Log"))).removeRecursively());
        FixClock(QDateTime(QDate(2026, 12, 1), QTime(8, 5, 9)));
        writeTrace();
        FixClock(QDateTime(QDate(2027, 1, 1), QTime(23, 59, 59)));
        writeTrace();
        FixClock(QDateTime(QDate(2027, 1, 2), QTime(0, 0, 0)));
        writeTrace();
        const QList<QByteArray> lines =
            readFile(harness.path(QStringLiteral("Log/01day.log"))).split('\n');
        QCOMPARE(lines.size(), 3); // two lines and the empty rest after the last break
        QVERIFY(lines[0].startsWith("\"2026/12/01 \",\"08:05:09 \""));
        QVERIFY(lines[1].startsWith("\"2027/01/01 \",\"23:59:59 \""));
        QVERIFY(readFile(harness.path(QStringLiteral("Log/02day.log")))
                    .startsWith("\"2027/01/02 \",\"00:00:00 \""));
    }

    void aLogThatCannotBeWrittenIsReportedOnceUntilItWorksAgain() {
        // A file where the folder should be: nothing can be written below it.
        QFile blocker(harness.path(QStringLiteral("Log")));
        const auto block = [&] {
            QVERIFY(QDir(blocker.fileName()).removeRecursively());
            QVERIFY(blocker.open(QIODevice::WriteOnly));
            blocker.close();
            harness.msgs.expectBox(FailureFirstLine +
                                       QStringLiteral("\r\rログファイルに書き込めません: ") +
                                       harness.path(QStringLiteral("Log/22day.log")),
                                   QStringLiteral(" VB ERROR No.75"));
        };
        block();
        writeTrace();
        writeTrace();
        QCOMPARE(harness.msgs.shown().size(), 1);

        QVERIFY(blocker.remove());
        writeTrace();
        QCOMPARE(readFile(LogFilePath()), QByteArray(TraceLine));

        block();
        writeTrace();
        QCOMPARE(harness.msgs.shown().size(), 2);
        QVERIFY(blocker.remove());
    }
};

QTEST_MAIN(TestMessages)
#include "tst_messages.moc"
