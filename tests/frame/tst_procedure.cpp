// The standard handling of a screen procedure (trace line, rollback of what it began, the
// screen's own message or the standard box, and the error line), catalogue messages through
// CmnDspMsg, the daily log (the line's exact form, the file per day of the month, appending, an
// earlier month moved aside, a log that cannot be written) and the shared field helpers: null
// defaults, prescription number texts, enabling with colours and the master drop-down lists.
#include "data/Lookups.h"
#include "frame/BasCmnSubFun.h"
#include "frame/Globals.h"
#include "frame/Log.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xNum.h"
#include "platform/controls/xPass.h"
#include "platform/ui/Clock.h"
#include "support/Harness.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

QStringList logLines() {
    QStringList lines = QString::fromUtf8(ReadFile(LogFilePath())).split(u"\r\n"_s);
    lines.removeLast();
    return lines;
}

const char TraceLine[] = "\"2026/11/22 \",\"10:15:30 \",\"メーカーマスタ保守\",\"SaveMaster\","
                         "\"ｴﾗ-No.()\",\"マスター保存処理\"\r\n";

void writeTrace() {
    CmnWriteLog(u"メーカーマスタ保守"_s, u"SaveMaster"_s, u"マスター保存処理"_s, QString());
}

// The trace line as written at another moment ("yyyy/MM/dd", "HH:mm:ss").
QByteArray traceAt(const char* date, const char* time) {
    return QByteArray(TraceLine).replace("2026/11/22", date).replace("10:15:30", time);
}

void writeTraceAt(const char* date, const char* time) {
    FixClock(QDateTime::fromString(QString::fromLatin1(date) + QString::fromLatin1(time),
                                   u"yyyy/MM/ddHH:mm:ss"_s));
    writeTrace();
}

// The shop's zone, Japan's, set before Qt first reads it: log lines must not be written in UTC.
const bool ShopTimeZone = qputenv("TZ", "Asia/Tokyo");

const QString Where = u"顧客登録"_s, Name = u"Save_User"_s, Description = u"顧客マスター保存処理"_s;

} // namespace

class TestProcedure : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    // A procedure writes its trace line. On a failure it rolls back what it began, shows the
    // standard box (the screen's own message for the error it names), writes the error line and
    // leaves the connection usable; a transaction its caller began is left to the caller.
    void aProcedureWritesItsTraceLineAndOnFailureRollsBackWhatItBegan() {
        const QString line = u"\"2026/11/22 \",\"10:15:30 \",\"顧客登録\",\"Save_User\","
                             "\"ｴﾗ-No.(%1)\",\"%2\""_s;
        QVERIFY(Procedure(Where, Name, Description, [] {}));
        harness.msgs.expectFailure(u"在庫がありません"_s, 13);
        QVERIFY(!Procedure(Where, Name, Description, [] {
            gCon.beginTrans();
            gCon.execute(u"insert into San_User (User_No) values (1)"_s);
            throw Failure(13, u"在庫がありません"_s);
        }));
        QCOMPARE(harness.msgs.shown().last().icon, MsgIcon::Critical);
        QVERIFY(!gCon.inTransaction());
        QCOMPARE(QueryCount(u"select * from San_User"_s), 0);
        QCOMPARE(logLines(),
                 (QStringList{line.arg(QString(), Description), line.arg(QString(), Description),
                              line.arg(u"13"_s, u"在庫がありません"_s)}));

        // The screen's own message for the error it names writes no error line (the register's
        // tests show a broken key rolled back under it).
        const ProcedureOptions own{.ownMessage =
                                       MessageOnError(ErrorNumber::DatabaseFailed, OpeErr_010)};
        harness.msgs.expect(OpeErr_010);
        QVERIFY(!Procedure(
            Where, Name, Description, [] { throw Failure(ErrorNumber::DatabaseFailed, u"x"_s); },
            own));
        QCOMPARE(logLines().size(), 4); // its trace line only

        // Another error, here not even a Failure, still gets the standard box.
        gCon.beginTrans();
        harness.msgs.expectFailure(u"bad"_s, -2147418113);
        Procedure(
            Where, Name, Description, [] { throw std::runtime_error("bad"); }, own);
        QVERIFY(gCon.inTransaction());
        gCon.rollbackTrans();
    }

    void eachKindHasItsIconButtonsAndTitle() {
        const std::tuple<const char*, MsgIcon, MsgButtons, int> cases[] = {
            {"OpeInf_001保存しました", MsgIcon::Information, MsgButtons::OK, Answer::OK},
            {"OpeErr_005誤りです", MsgIcon::Exclamation, MsgButtons::OK, Answer::OK},
            {"SysErr_002起動済み", MsgIcon::Critical, MsgButtons::OK, Answer::OK},
            {"OpeQes_009よろしいですか", MsgIcon::Question, MsgButtons::YesNo, Answer::Yes},
            {"OpeQes_002削除しますか", MsgIcon::Question, MsgButtons::YesNo, Answer::No}};
        for (const auto& [msg, icon, buttons, press] : cases) {
            harness.msgs.expect(QString::fromUtf8(msg), press); // text and title
            QCOMPARE(CmnDspMsg(QString::fromUtf8(msg)), press);
            QCOMPARE(harness.msgs.shown().last().icon, icon);
            QCOMPARE(harness.msgs.shown().last().buttons, buttons);
        }
        // No message gives 0; an unknown kind (compared exactly) is a development error.
        harness.msgs.expectBox(u"メッセージコードが未設定です。"_s, u"注意"_s);
        QCOMPARE(CmnDspMsg(QString()), 0);
        harness.msgs.expectBox(u"指定のメッセージが存在しません。"_s, u"開発エラー"_s);
        CmnDspMsg(u"Opeerr_001未入力です。"_s);
        QCOMPARE(harness.msgs.shown().last().icon, MsgIcon::Critical);

        // The text is trimmed and cut at fifty characters.
        harness.msgs.expectBox(QString(50, QChar(0x3042)), u"ｵﾍﾟﾚｰｼｮﾝ ｴﾗｰ No.123"_s);
        CmnDspMsg(u"OpeErr_123"_s + QString(60, QChar(0x3042)));
        harness.msgs.expectBox(u"前後の空白"_s, u"ｲﾝﾌｫﾒｰｼｮﾝ No.999"_s);
        CmnDspMsg(u"OpeInf_999  前後の空白  "_s);
    }

    void logLinesHaveSixQuotedFieldsInAFilePerDayOfTheMonth() {
        writeTrace();
        CmnWriteLog(u"BasCmnSubFun"_s, u"CmnGetMaster"_s, u"no such table: \"San_Meka\""_s,
                    u"-2147217900"_s);
        QCOMPARE(LogFilePath(), harness.path(u"Log/22day.log"_s));
        QCOMPARE(ReadFile(LogFilePath()),
                 QByteArray(TraceLine) +
                     QByteArray("\"2026/11/22 \",\"10:15:30 \",\"BasCmnSubFun\",\"CmnGetMaster\","
                                "\"ｴﾗ-No.(-2147217900)\",\"no such table: \"San_Meka\"\"\r\n"));

        // Each day's file collects that day of the month; a missing folder is created. The
        // first line of a later month moves the earlier month's file aside, compressed.
        QVERIFY(QDir(harness.path(u"Log"_s)).removeRecursively());
        writeTraceAt("2026/12/01", "08:05:09");
        writeTraceAt("2026/12/01", "23:59:59");
        writeTraceAt("2027/01/02", "00:00:00");
        const QByteArray december =
            traceAt("2026/12/01", "08:05:09") + traceAt("2026/12/01", "23:59:59");
        QCOMPARE(ReadFile(harness.path(u"Log/01day.log"_s)), december);
        QCOMPARE(ReadFile(harness.path(u"Log/02day.log"_s)), traceAt("2027/01/02", "00:00:00"));

        // Of the months moved aside the last twelve are kept.
        for (const char* name : {"2025-12-05day.log.gz", "2026-01-05day.log.gz"}) {
            QFile old(harness.path(u"Log/old/"_s + QLatin1String(name)));
            QVERIFY(QDir().mkpath(QFileInfo(old).absolutePath()) && old.open(QIODevice::WriteOnly));
        }
        writeTraceAt("2027/01/01", "07:00:00");
        QCOMPARE(ReadFile(LogFilePath()), traceAt("2027/01/01", "07:00:00"));
        QCOMPARE(QDir(harness.path(u"Log/old"_s)).entryList(QDir::Files),
                 (QStringList{u"2026-01-05day.log.gz"_s, u"2026-12-01day.log.gz"_s}));
        QProcess gunzip;
        gunzip.start(u"gzip"_s, {u"-dc"_s, harness.path(u"Log/old/2026-12-01day.log.gz"_s)});
        QVERIFY(gunzip.waitForFinished());
        QCOMPARE(gunzip.readAllStandardOutput(), december);
        QCOMPARE(gunzip.exitCode(), 0);

        // In a batch the lines wait for its end, or for a line of another day's file.
        QVERIFY(QDir(harness.path(u"Log"_s)).removeRecursively());
        {
            LogBatch batch;
            for (const char* time : {"23:59:57", "23:59:58", "23:59:59"})
                writeTraceAt("2027/02/03", time);
            QVERIFY(!QFile::exists(harness.path(u"Log/03day.log"_s)));
            writeTraceAt("2027/02/04", "00:00:00");
            QVERIFY(!QFile::exists(harness.path(u"Log/04day.log"_s)));
        }
        QCOMPARE(ReadFile(harness.path(u"Log/03day.log"_s)), traceAt("2027/02/03", "23:59:57") +
                                                                 traceAt("2027/02/03", "23:59:58") +
                                                                 traceAt("2027/02/03", "23:59:59"));
        QCOMPARE(ReadFile(harness.path(u"Log/04day.log"_s)), traceAt("2027/02/04", "00:00:00"));

        // With the clock running a line carries the local time, here Japan's (UTC + 9).
        QVERIFY(ShopTimeZone && QDateTime::currentDateTime().offsetFromUtc() == 9 * 3600);
        FixClock(std::nullopt);
        const QDateTime before = QDateTime::currentDateTime();
        writeTrace();
        const QByteArray last = ReadFile(LogFilePath()).split('\n').at(0);
        const QDateTime written = QDateTime::fromString(
            QString::fromLatin1(last.mid(1, 10) + last.mid(16, 8)), u"yyyy/MM/ddHH:mm:ss"_s);
        QVERIFY2(qAbs(before.secsTo(written)) <= 2, last.constData());
    }

    void aLogThatCannotBeWrittenIsReportedOnceUntilItWorksAgain() {
        // A file where the folder should be: nothing can be written below it.
        QFile blocker(harness.path(u"Log"_s));
        const auto block = [&] {
            QVERIFY(QDir(blocker.fileName()).removeRecursively());
            QVERIFY(blocker.open(QIODevice::WriteOnly));
            blocker.close();
            harness.msgs.expectFailure(
                u"ログファイルに書き込めません: "_s + harness.path(u"Log/22day.log"_s), 75);
        };
        block();
        writeTrace();
        writeTrace();
        QCOMPARE(harness.msgs.shown().size(), 1);

        QVERIFY(blocker.remove());
        writeTrace();
        QCOMPARE(ReadFile(LogFilePath()), QByteArray(TraceLine));

        block();
        writeTrace();
        QCOMPARE(harness.msgs.shown().size(), 2);
        QVERIFY(blocker.remove());
    }

    void nullDefaultsAndPrescriptionNumberTexts() {
        gCon.execute(u"insert into San_User (User_No) values (1)"_s);
        const QVariant nullRead = QueryValue(u"select User_Name from San_User"_s);
        for (const QVariant& empty : {QVariant(), QVariant(QString()), nullRead})
            QCOMPARE(CmnNvl(empty, 7), QVariant(7));
        for (const QVariant& kept : {QVariant(u"0.25"_s), QVariant(u" "_s), QVariant(0.0)})
            QCOMPARE(CmnNvl(kept, 7), kept);

        // 1.005 is held as 1.00499999...; a written half still goes up.
        const std::tuple<double, const char*, const char*> numbers[] = {
            {0, "+", ""},         {0, "2", ""},           {1.25, "+", "+1.25"},
            {-0.5, "+", "-0.50"}, {0.5, "2", "0.50"},     {-1.25, "1", "-1.3"},
            {1.005, "2", "1.01"}, {-2.675, "+", "-2.68"}, {0.004, "+", "+0.00"},
            {12.5, "x", "12.50"}};
        for (const auto& [value, kind, text] : numbers)
            QCOMPARE(CmnFmtNum(value, QString::fromLatin1(kind)), QString::fromLatin1(text));
    }

    void enablingColoursInputAreasAndMasterListsHoldCodeAndNameInOrder() {
        QWidget screen;
        const QList<QWidget*> inputs{new xNum(&screen), new xDate(&screen), new QLineEdit(&screen),
                                     new QComboBox(&screen)};
        const QList<QWidget*> others{new xCmdBtn(Qt::Key_F5, u"登録"_s, &screen),
                                     new QRadioButton(&screen), new QGroupBox(&screen)};
        // A password field and a label are left as they are.
        const QList<QWidget*> untouched{new xPass(&screen), new QLabel(&screen)};
        for (QWidget* control : inputs + others + untouched) {
            CmnCtlEnabled(control, false);
            QCOMPARE(control->isEnabled(), untouched.contains(control));
            if (inputs.contains(control))
                QCOMPARE(control->palette().color(QPalette::Active, QPalette::Base),
                         QColor(0xC0, 0xC0, 0xC0));
        }
        for (QWidget* control : {inputs[0], inputs[3]}) {
            CmnCtlEnabled(control, true);
            QVERIFY(control->isEnabled());
            QCOMPARE(control->palette().color(QPalette::Active, QPalette::Base), QColor(Qt::white));
        }

        // Master lists hold code and name in code order, or nothing.
        gCon.execute(u"delete from San_Meka"_s);
        for (const char* row : {"('010','ツァイス')", "('002','O''Neil')", "('001','HOYA')"})
            gCon.execute(u"insert into San_Meka values"_s + QString::fromUtf8(row));
        QComboBox list;
        list.addItem(u"古い項目"_s);
        MasterNames masters;
        // The list's items after it is filled with a master.
        const auto filled = [&](MasterKind kind) {
            CmnSetMstCombo(&list, [&] { return masters.listEntries(kind); });
            QStringList items;
            for (int i = 0; i < list.count(); ++i)
                items << list.itemText(i);
            return items.join(u'|');
        };
        QCOMPARE(filled(MasterKind::Meka), u"001:HOYA|002:O'Neil|010:ツァイス"_s);
        QVERIFY(filled(MasterKind::Item).startsWith(u"001:メガネ|002:"_s));
        gCon.execute(u"delete from San_Youto"_s);
        QCOMPARE(filled(MasterKind::Youto), QString());

        // A list that cannot be read stays empty: the wide title and no log line. The
        // description is the database's own wording.
        list.addItem(u"古い項目"_s);
        harness.msgs.expectBoxStartingWith(u"障害発生！ サポート先までご連絡お願い致します。\r\r"_s,
                                           u" ＶＢエラ－ No.-2147217900"_s);
        CmnSetMstCombo(&list, [] {
            gCon.execute(u"select * from san_Nothing"_s);
            return CodeEntries{};
        });
        QCOMPARE(list.count(), 0);
        QVERIFY(!QFile::exists(LogFilePath()));
    }
};

QTEST_MAIN(TestProcedure)
#include "tst_procedure.moc"
