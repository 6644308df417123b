// The calendar picker hands a date back only when closed with OK.
#include "pickers/FrmCalender.h"
#include "platform/controls/xClndr.h"
#include "platform/ui/ShowModal.h"
#include "support/Harness.h"

#include <QCalendarWidget>
#include <QPushButton>
#include <QtTest>

class TestCalender : public QObject {
    Q_OBJECT
    Harness harness;

    // A caller's date field, as the search screen uses the picker.
    QDate pickInto(QDate field, const std::function<void(FrmCalender&)>& drive) {
        FrmCalender calendar;
        calendar.setInDate(field);
        harness.screens.expect<FrmCalender>(drive);
        ShowModal(calendar);
        return calendar.EndType() ? calendar.ResultDate() : field;
    }

private slots:
    void init() { HARNESS_INIT(harness, {.createDatabase = false, .openDatabase = false}); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void okHandsBackThePickedDate() {
        const QDate picked = pickInto(QDate(2026, 11, 22), [](FrmCalender& s) {
            QCOMPARE(s.windowTitle(), QStringLiteral("カレンダー"));
            QCOMPARE(s.xClndr1->Value(), QDate(2026, 11, 22));
            QCOMPARE(s.xClndr1->heading(), QStringLiteral("2026年 １１月"));
            QCOMPARE(xClndr::monthName(1) + xClndr::monthName(12), QStringLiteral("１月１２月"));
            s.xClndr1->days()->setSelectedDate(QDate(2026, 10, 3));
            QTest::mouseClick(s.cmdSelect[0], Qt::LeftButton);
        });
        QCOMPARE(picked, QDate(2026, 10, 3));
    }

    void okWithoutPickingHandsBackTheDateGiven() {
        const QDate picked = pickInto(QDate(2025, 1, 31), [](FrmCalender& s) {
            QTest::mouseClick(s.cmdSelect[0], Qt::LeftButton);
            QVERIFY(s.EndType());
        });
        QCOMPARE(picked, QDate(2025, 1, 31));
    }

    void cancelAndTheCloseBoxLeaveTheFieldAsItWas() {
        QCOMPARE(pickInto(QDate(2026, 11, 22),
                          [](FrmCalender& s) {
                              s.xClndr1->days()->setSelectedDate(QDate(2026, 11, 1));
                              QTest::mouseClick(s.cmdSelect[1], Qt::LeftButton);
                          }),
                 QDate(2026, 11, 22));
        QCOMPARE(pickInto(QDate(2026, 11, 22),
                          [](FrmCalender& s) {
                              s.xClndr1->days()->setSelectedDate(QDate(2026, 11, 2));
                              QVERIFY(s.close());
                          }),
                 QDate(2026, 11, 22));
        QCOMPARE(pickInto(QDate(2026, 11, 22),
                          [](FrmCalender& s) { QTest::keyClick(&s, Qt::Key_Escape); }),
                 QDate(2026, 11, 22));
    }

    void theButtonsTabCancelFirst() {
        FrmCalender calendar;
        QCOMPARE(calendar.cmdSelect[0]->text(), QStringLiteral("ＯＫ"));
        QCOMPARE(calendar.cmdSelect[1]->text(), QStringLiteral("ｷｬﾝｾﾙ"));
        QCOMPARE(calendar.cmdSelect[1]->nextInFocusChain(), calendar.cmdSelect[0]);
    }
};

QTEST_MAIN(TestCalender)
#include "tst_calender.moc"
