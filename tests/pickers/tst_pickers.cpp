// The pickers. The postal search: the query for each combination of fields, what it lists from
// a seeded directory, and what it hands back on OK, double-click, cancel and the close box. The
// calendar: it hands a date back only when closed with OK.
#include "data/ZipSearch.h"
#include "frame/Globals.h"
#include "frame/Log.h"
#include "pickers/AddressList.h"
#include "pickers/FrmCalender.h"
#include "pickers/FrmZipList.h"
#include "platform/controls/xClndr.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/ui/Clock.h"
#include "platform/ui/ShowModal.h"
#include "support/Harness.h"

#include <QCalendarWidget>
#include <QPushButton>
#include <QRegularExpression>
#include <QTableView>
#include <QToolButton>
#include <QtTest>

namespace {

const QString Base = QStringLiteral("select ZIP1,ZIP2,TODO,CITY,TOWN from ZipList");

void seedDirectory() {
    for (const char* row :
         {"(60, 1, '北海道', '札幌市中央区', '北一条西')",
          "(60, 42, '北海道', '札幌市中央区', '大通西')",
          "(100, 1, '東京都', '千代田区', '千代田')", "(100, 5, '東京都', '千代田区', '丸の内')"})
        gCon.execute(QStringLiteral("insert into ZipList values ") + QString::fromUtf8(row));
}

QString listedCodes(const FrmZipList& screen) {
    QStringList codes;
    for (int row = 1; row <= screen.spdZipList->maxRows(); ++row)
        codes << screen.spdZipList->cellText(row, 1);
    return codes.join(u' ');
}

} // namespace

class TestPickers : public QObject {
    Q_OBJECT
    Harness harness;

    // Opens the search with the prefecture flag given and lets drive work it; gives the result,
    // the postal code and the address handed back, as "result|code|address".
    QString pick(int todoFlg, const std::function<void(FrmZipList&)>& drive) {
        FrmZipList screen;
        screen.setTodoFlg(todoFlg);
        harness.screens.expect<FrmZipList>(drive);
        const int result = ShowModal(screen);
        return QStringList{QString::number(result), screen.Zip(), screen.Addr()}.join(u'|');
    }

    // A caller's date field, as the search screen uses the picker.
    QDate pickInto(QDate field, const std::function<void(FrmCalender&)>& drive) {
        FrmCalender calendar;
        calendar.setInDate(field);
        harness.screens.expect<FrmCalender>(drive);
        ShowModal(calendar);
        return calendar.EndType() ? calendar.ResultDate() : field;
    }

private slots:
    void init() {
        HARNESS_INIT(harness);
        seedDirectory();
    }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void theQueryHasOneExactConditionPerFilledField() {
        QCOMPARE(ZipSearchSql({{}, {}, {}, QStringLiteral("札幌市"), {}}),
                 Base + QStringLiteral(" where CITY = '札幌市'"));
        ZipConditions conditions;
        conditions.zip1 = QStringLiteral("060");
        conditions.zip2 = QStringLiteral(" 0042 ");
        conditions.town = QStringLiteral("O'Hara");
        QCOMPARE(ZipSearchSql(conditions),
                 Base + QStringLiteral(" where ZIP1 = 60 and ZIP2 = 42 and TOWN = 'O''Hara'"));
    }

    void okTakesTheFirstRowAndADoubleClickTheRowClicked() {
        QCOMPARE(pick(1,
                      [](FrmZipList& s) {
                          QCOMPARE(s.windowTitle(), QStringLiteral("郵便番号・住所検索"));
                          QCOMPARE(s.spdZipList->maxRows(), 0);
                          s.txtZip1->setText(QStringLiteral("060"));
                          QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
                          QCOMPARE(listedCodes(s), QStringLiteral("060-0001 060-0042"));
                          QCOMPARE(s.spdZipList->cellText(2, 4), QStringLiteral("大通西"));
                          QTest::mouseClick(s.cmdOK, Qt::LeftButton);
                      }),
                 QStringLiteral("1|060-0001|北海道札幌市中央区北一条西"));

        // Enter searches; a double click chooses; without the prefecture flag from the city.
        QCOMPARE(pick(0,
                      [](FrmZipList& s) {
                          s.txtTodo->setText(QStringLiteral("東京都"));
                          s.txtCity->setText(QStringLiteral("千代田区"));
                          QTest::keyClick(s.txtCity, Qt::Key_Return);
                          QCOMPARE(s.spdZipList->maxRows(), 2);
                          QWidget* cells = s.spdZipList->view()->viewport();
                          const QPoint centre =
                              s.spdZipList->view()
                                  ->visualRect(s.spdZipList->gridModel()->index(1, 2))
                                  .center();
                          QTest::mouseClick(cells, Qt::LeftButton, {}, centre);
                          QTest::mouseDClick(cells, Qt::LeftButton, {}, centre);
                      }),
                 QStringLiteral("1|100-0005|千代田区丸の内"));
    }

    void cancelAndTheCloseBoxHandBackNothing() {
        for (bool closeBox : {false, true})
            QCOMPARE(pick(1,
                          [closeBox](FrmZipList& s) {
                              s.txtZip1->setText(QStringLiteral("100"));
                              QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
                              s.spdZipList->setActiveCell(2, 1);
                              if (closeBox)
                                  QVERIFY(s.close());
                              else
                                  QTest::mouseClick(s.cmdCAN, Qt::LeftButton);
                          }),
                     QStringLiteral("0||"));
    }

    void searchingWithoutConditionsOrMatchesClearingAndACodeThatIsNotANumber() {
        harness.msgs.expectBox(QStringLiteral("検索条件は、必ず１つは入力して下さい。"), QString());
        QCOMPARE(
            pick(1,
                 [this](FrmZipList& s) {
                     s.txtCity->setText(QStringLiteral("   "));
                     QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
                     QCOMPARE(harness.msgs.shown().last().icon, MsgIcon::None);

                     s.txtCity->setText(QStringLiteral("札幌市中央区"));
                     QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
                     QCOMPARE(s.spdZipList->maxRows(), 2);
                     // No match: the list empties, no message.
                     s.txtCity->setText(QStringLiteral("札幌市"));
                     QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
                     QCOMPARE(s.spdZipList->maxRows(), 0);
                     // OK with nothing listed keeps the screen open.
                     QTest::mouseClick(s.cmdOK, Qt::LeftButton);
                     QVERIFY(s.isVisible());

                     s.txtCity->setText(QStringLiteral("札幌市中央区"));
                     s.txtZip2->setText(QStringLiteral("1"));
                     QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
                     QCOMPARE(s.spdZipList->maxRows(), 1);
                     QTest::mouseClick(s.cmdClear, Qt::LeftButton);
                     QCOMPARE(s.spdZipList->maxRows(), 0);
                     for (xField* field : {s.txtZip1, s.txtZip2, s.txtTodo, s.txtCity, s.txtTown})
                         QCOMPARE(field->text(), QString());

                     // Only digits can be typed into the postal code parts.
                     QTest::keyClicks(s.txtZip1, QStringLiteral("0x6"));
                     QCOMPARE(s.txtZip1->text(), QStringLiteral("06"));
                     QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
                     QCOMPARE(s.spdZipList->maxRows(), 0);
                     QTest::mouseClick(s.cmdCAN, Qt::LeftButton);
                 }),
            QStringLiteral("0||"));
        const QString lines = QString::fromUtf8(ReadFile(LogFilePath()));
        QVERIFY(lines.contains(
            QStringLiteral("\"FrmZipList\",\"AddrRead\",\"ｴﾗ-No.()\",\"郵便・住所の取得処理\"")));
        QVERIFY(!lines.contains(QRegularExpression(QStringLiteral("ｴﾗ-No\\.\\([^)]"))));
    }

    void theCalendarHandsBackADateOnlyWhenClosedWithOk() {
        const QDate field(2026, 11, 22);
        const QDate picked = pickInto(field, [](FrmCalender& s) {
            QCOMPARE(s.windowTitle(), QStringLiteral("カレンダー"));
            QCOMPARE(s.xClndr1->heading(), QStringLiteral("2026年 １１月"));
            // The buttons tab from cancel to OK.
            QCOMPARE(s.cmdSelect[0]->text() + s.cmdSelect[1]->text(), QStringLiteral("ＯＫｷｬﾝｾﾙ"));
            QCOMPARE(s.cmdSelect[1]->nextInFocusChain(), s.cmdSelect[0]);
            s.xClndr1->days()->setSelectedDate(QDate(2026, 10, 3));
            QTest::mouseClick(s.cmdSelect[0], Qt::LeftButton);
        });
        QCOMPARE(picked, QDate(2026, 10, 3));

        // An empty field opens on today's month; the year buttons move a year at a time.
        QCOMPARE(
            pickInto(
                xDate::EmptyDate,
                [](FrmCalender& s) {
                    QCOMPARE(s.xClndr1->heading(), Today().toString(QStringLiteral("yyyy年 ")) +
                                                       xClndr::monthName(Today().month()));
                    QTest::mouseClick(s.findChild<QToolButton*>(QStringLiteral("previousYear")),
                                      Qt::LeftButton);
                    QTest::mouseClick(s.findChild<QToolButton*>(QStringLiteral("previousYear")),
                                      Qt::LeftButton);
                    QTest::mouseClick(s.findChild<QToolButton*>(QStringLiteral("nextYear")),
                                      Qt::LeftButton);
                    QCOMPARE(s.xClndr1->days()->yearShown(), Today().year() - 1);
                    QTest::mouseClick(s.cmdSelect[0], Qt::LeftButton);
                }),
            Today());

        // OK without picking; cancel, the close box and Escape after picking another day.
        for (int road = 0; road < 4; ++road)
            QCOMPARE(pickInto(field,
                              [road](FrmCalender& s) {
                                  if (road > 0)
                                      s.xClndr1->days()->setSelectedDate(QDate(2026, 11, road));
                                  if (road < 2)
                                      QTest::mouseClick(s.cmdSelect[road], Qt::LeftButton);
                                  else if (road == 2)
                                      QVERIFY(s.close());
                                  else
                                      QTest::keyClick(&s, Qt::Key_Escape);
                              }),
                     field);
    }
};

QTEST_MAIN(TestPickers)
#include "tst_pickers.moc"
