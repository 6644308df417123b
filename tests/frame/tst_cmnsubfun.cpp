// The shared field helpers: null defaults, prescription number texts, enabling with colours
// and the master drop-down lists.
#include "data/Lookups.h"
#include "frame/BasCmnSubFun.h"
#include "frame/Globals.h"
#include "frame/Log.h"
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
QColor baseColor(QWidget* widget) {
    return widget->palette().color(QPalette::Active, QPalette::Base);
}

QStringList entries(const QComboBox& list) {
    QStringList items;
    for (int i = 0; i < list.count(); ++i)
        items << list.itemText(i);
    return items;
}
} // namespace

class TestCmnSubFun : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void nvlReplacesOnlyNullAndEmptyText() {
        QCOMPARE(CmnNvl(QVariant(), 0), QVariant(0));
        QCOMPARE(CmnNvl(QString(), 0), QVariant(0));
        QCOMPARE(CmnNvl(QStringLiteral("0.25"), 0), QVariant(QStringLiteral("0.25")));
        QCOMPARE(CmnNvl(QStringLiteral(" "), 0), QVariant(QStringLiteral(" ")));
        QCOMPARE(CmnNvl(0.0, 7), QVariant(0.0));
        // A Null read from the database.
        gCon.execute(QStringLiteral("insert into San_User (User_No) values (1)"));
        QCOMPARE(CmnNvl(QueryValue(QStringLiteral("select User_Name from San_User")),
                        QStringLiteral("なし")),
                 QVariant(QStringLiteral("なし")));
    }

    void prescriptionNumbersShowSignsDecimalsAndRoundHalfAway() {
        QCOMPARE(CmnFmtNum(0, QStringLiteral("+")), QString());
        QCOMPARE(CmnFmtNum(0, QStringLiteral("2")), QString());
        QCOMPARE(CmnFmtNum(1.25, QStringLiteral("+")), QStringLiteral("+1.25"));
        QCOMPARE(CmnFmtNum(-0.5, QStringLiteral("+")), QStringLiteral("-0.50"));
        QCOMPARE(CmnFmtNum(0.5, QStringLiteral("2")), QStringLiteral("0.50"));
        QCOMPARE(CmnFmtNum(3, QStringLiteral("2")), QStringLiteral("3.00"));
        QCOMPARE(CmnFmtNum(1.25, QStringLiteral("1")), QStringLiteral("1.3"));
        QCOMPARE(CmnFmtNum(-1.25, QStringLiteral("1")), QStringLiteral("-1.3"));
        QCOMPARE(CmnFmtNum(64.25, QStringLiteral("1")), QStringLiteral("64.3"));
        // 1.005 is held as 1.00499999...; a written half still goes up.
        QCOMPARE(CmnFmtNum(1.005, QStringLiteral("2")), QStringLiteral("1.01"));
        QCOMPARE(CmnFmtNum(-2.675, QStringLiteral("+")), QStringLiteral("-2.68"));
        QCOMPARE(CmnFmtNum(0.004, QStringLiteral("+")), QStringLiteral("+0.00"));
        QCOMPARE(CmnFmtNum(12.5, QStringLiteral("x")), QStringLiteral("12.50"));
    }

    void enablingColoursInputAreasByControlClass() {
        QWidget screen;
        auto* number = new xNum(&screen);
        auto* date = new xDate(&screen);
        auto* plain = new QLineEdit(&screen);
        auto* list = new QComboBox(&screen);
        auto* password = new xPass(&screen);
        auto* key = new xCmdBtn(Qt::Key_F5, QStringLiteral("登録"), &screen);
        auto* option = new QRadioButton(&screen);
        auto* frame = new QGroupBox(&screen);
        auto* label = new QLabel(&screen);

        for (QWidget* control : std::initializer_list<QWidget*>{number, date, plain, list, password,
                                                                key, option, frame, label})
            CmnCtlEnabled(control, false);
        for (QWidget* control : std::initializer_list<QWidget*>{number, date, plain, list}) {
            QVERIFY(!control->isEnabled());
            QCOMPARE(baseColor(control), QColor(0xC0, 0xC0, 0xC0));
        }
        QCOMPARE(number->InputAreaColor(), QColor(0xC0, 0xC0, 0xC0));
        for (QWidget* control : std::initializer_list<QWidget*>{key, option, frame})
            QVERIFY(!control->isEnabled());
        QVERIFY(password->isEnabled());
        QVERIFY(label->isEnabled());

        CmnCtlEnabled(number, true);
        QVERIFY(number->isEnabled());
        QCOMPARE(number->InputAreaColor(), QColor(0xFF, 0xFF, 0xFF));
        CmnCtlEnabled(list, true);
        QCOMPARE(baseColor(list), QColor(0xFF, 0xFF, 0xFF));
    }

    void masterListsHoldCodeAndNameInCodeOrder() {
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
    }

    void aFailedMasterListStaysEmptyWithTheWideTitleAndNoLogLine() {
        QComboBox list;
        list.addItem(QStringLiteral("古い項目"));
        // The description is the database's own wording.
        harness.msgs.expectBoxStartingWith(
            QStringLiteral("障害発生！ サポート先までご連絡お願い致します。\r\r"),
            QStringLiteral(" ＶＢエラ－ No.-2147217900"));
        CmnSetMstCombo(&list, QStringLiteral("Nothing"));
        QCOMPARE(list.count(), 0);
        QVERIFY(!QFile::exists(LogFilePath()));
    }
};

QTEST_MAIN(TestCmnSubFun)
#include "tst_cmnsubfun.moc"
