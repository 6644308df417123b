// The standard handling of a screen procedure (trace line, rollback of what it began, the
// screen's own message or the standard box, and the error line) and the shared field helpers
// beside it: null defaults, prescription number texts, enabling with colours and the master
// drop-down lists.
#include "data/Lookups.h"
#include "frame/BasCmnSubFun.h"
#include "frame/Globals.h"
#include "frame/Log.h"
#include "frame/MessageCatalogue.h"
#include "frame/Procedure.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xNum.h"
#include "platform/controls/xPass.h"
#include "support/Harness.h"

#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
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

QColor baseColor(QWidget* widget) {
    return widget->palette().color(QPalette::Active, QPalette::Base);
}

QStringList entries(const QComboBox& list) {
    QStringList items;
    for (int i = 0; i < list.count(); ++i)
        items << list.itemText(i);
    return items;
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

    void aProcedureWritesItsTraceLineAndOnFailureRollsBackWhatItBegan() {
        bool ran = false;
        QVERIFY(Procedure(Where, Name, Description, [&] { ran = true; }));
        QVERIFY(ran);

        harness.msgs.expectBox(FailureFirstLine + QStringLiteral("\r\r在庫がありません"),
                               QStringLiteral(" VB ERROR No.13"));
        QVERIFY(!Procedure(Where, Name, Description, [] {
            gCon.beginTrans();
            insertCustomer(1);
            insertCustomer(2);
            throw Failure(13, QStringLiteral("在庫がありません"));
        }));
        QVERIFY(!gCon.inTransaction());
        QCOMPARE(QueryCount(QStringLiteral("select * from San_User")), 0);
        const QString trace =
            QStringLiteral("\"2026/11/22 \",\"10:15:30 \",\"顧客登録\",\"Save_User\","
                           "\"ｴﾗ-No.()\",\"顧客マスター保存処理\"");
        QCOMPARE(
            logLines(),
            (QStringList{trace, trace,
                         QStringLiteral("\"2026/11/22 \",\"10:15:30 \",\"顧客登録\",\"Save_User\","
                                        "\"ｴﾗ-No.(13)\",\"在庫がありません\"")}));
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

        // Another error, here not even a Failure, still gets the standard box.
        harness.msgs.expectBox(FailureFirstLine + QStringLiteral("\r\rbad"),
                               QStringLiteral(" VB ERROR No.-2147418113"));
        Procedure(Where, Name, Description, [] { throw std::runtime_error("bad"); },
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

    void nvlReplacesOnlyNullAndEmptyText() {
        gCon.execute(QStringLiteral("insert into San_User (User_No) values (1)"));
        const QVariant nullRead = QueryValue(QStringLiteral("select User_Name from San_User"));
        for (const QVariant& empty : {QVariant(), QVariant(QString()), nullRead})
            QCOMPARE(CmnNvl(empty, 7), QVariant(7));
        for (const QVariant& kept :
             {QVariant(QStringLiteral("0.25")), QVariant(QStringLiteral(" ")), QVariant(0.0)})
            QCOMPARE(CmnNvl(kept, 7), kept);
    }

    void prescriptionNumbersShowSignsDecimalsAndRoundHalfAway() {
        // 1.005 is held as 1.00499999...; a written half still goes up.
        const struct {
            double value;
            const char *kind, *text;
        } numbers[] = {{0, "+", ""},         {0, "2", ""},           {1.25, "+", "+1.25"},
                       {-0.5, "+", "-0.50"}, {0.5, "2", "0.50"},     {3, "2", "3.00"},
                       {1.25, "1", "1.3"},   {-1.25, "1", "-1.3"},   {64.25, "1", "64.3"},
                       {1.005, "2", "1.01"}, {-2.675, "+", "-2.68"}, {0.004, "+", "+0.00"},
                       {12.5, "x", "12.50"}};
        for (const auto& n : numbers)
            QCOMPARE(CmnFmtNum(n.value, QString::fromLatin1(n.kind)), QString::fromLatin1(n.text));
    }

    void enablingColoursInputAreasByControlClass() {
        QWidget screen;
        const QList<QWidget*> inputs{new xNum(&screen), new xDate(&screen), new QLineEdit(&screen),
                                     new QComboBox(&screen)};
        const QList<QWidget*> others{new xCmdBtn(Qt::Key_F5, QStringLiteral("登録"), &screen),
                                     new QRadioButton(&screen), new QGroupBox(&screen)};
        // A password field and a label are left as they are.
        const QList<QWidget*> untouched{new xPass(&screen), new QLabel(&screen)};
        for (QWidget* control : inputs + others + untouched)
            CmnCtlEnabled(control, false);
        for (QWidget* control : inputs) {
            QVERIFY(!control->isEnabled());
            QCOMPARE(baseColor(control), QColor(0xC0, 0xC0, 0xC0));
        }
        for (QWidget* control : others)
            QVERIFY(!control->isEnabled());
        for (QWidget* control : untouched)
            QVERIFY(control->isEnabled());
        for (QWidget* control : {inputs[0], inputs[3]}) {
            CmnCtlEnabled(control, true);
            QVERIFY(control->isEnabled());
            QCOMPARE(baseColor(control), QColor(0xFF, 0xFF, 0xFF));
        }
    }

    void masterListsHoldCodeAndNameInCodeOrderOrNothing() {
        gCon.execute(QStringLiteral("delete from San_Meka"));
        gCon.execute(QStringLiteral("insert into San_Meka values('010','ツァイス')"));
        gCon.execute(QStringLiteral("insert into San_Meka values('002','O''Neil')"));
        gCon.execute(QStringLiteral("insert into San_Meka values('001','HOYA')"));
        QComboBox list;
        list.addItem(QStringLiteral("古い項目"));
        CmnSetMstCombo(&list, QStringLiteral("meka"));
        QCOMPARE(entries(list),
                 (QStringList{QStringLiteral("001:HOYA"), QStringLiteral("002:O'Neil"),
                              QStringLiteral("010:ツァイス")}));

        CmnSetMstCombo(&list, QStringLiteral("Item"));
        QCOMPARE(list.itemText(0), QStringLiteral("001:メガネ"));
        gCon.execute(QStringLiteral("delete from San_Youto"));
        CmnSetMstCombo(&list, QStringLiteral("youto"));
        QCOMPARE(list.count(), 0);

        // A list that cannot be read stays empty: the wide title and no log line. The
        // description is the database's own wording.
        list.addItem(QStringLiteral("古い項目"));
        harness.msgs.expectBoxStartingWith(FailureFirstLine + QStringLiteral("\r\r"),
                                           QStringLiteral(" ＶＢエラ－ No.-2147217900"));
        CmnSetMstCombo(&list, QStringLiteral("Nothing"));
        QCOMPARE(list.count(), 0);
        QVERIFY(!QFile::exists(LogFilePath()));
    }
};

QTEST_MAIN(TestProcedure)
#include "tst_procedure.moc"
