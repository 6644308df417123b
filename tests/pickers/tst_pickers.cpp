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
#include "support/Roads.h"

#include <QCalendarWidget>
#include <QPushButton>
#include <QRegularExpression>
#include <QTableView>
#include <QToolButton>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const QString Base = u"select ZIP1,ZIP2,TODO,CITY,TOWN from ZipList"_s;

void seedDirectory() {
    for (const char* row :
         {"(60, 1, '北海道', '札幌市中央区', '北一条西')",
          "(60, 42, '北海道', '札幌市中央区', '大通西')",
          "(100, 1, '東京都', '千代田区', '千代田')", "(100, 5, '東京都', '千代田区', '丸の内')"})
        gCon.execute(u"insert into ZipList values "_s + QString::fromUtf8(row));
}

void search(FrmZipList& s, xField* field, const QString& text) {
    field->setText(text);
    QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
}

} // namespace

class TestPickers : public QObject {
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
    void init() {
        HARNESS_INIT(harness);
        seedDirectory();
    }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void theQueryHasOneExactConditionPerFilledField() {
        QCOMPARE(ZipSearchSql({{}, {}, {}, u"札幌市"_s, {}}), Base + u" where CITY = '札幌市'"_s);
        const ZipConditions conditions{u"060"_s, u" 0042 "_s, {}, {}, u"O'Hara"_s};
        QCOMPARE(ZipSearchSql(conditions),
                 Base + u" where ZIP1 = 60 and ZIP2 = 42 and TOWN = 'O''Hara'"_s);
    }

    // Each road with the prefecture flag, and what the search hands back: the result, the postal
    // code and the address, as "result|code|address".
    void theSearchHandsBackTheRowChosenOrNothing() {
        const std::function<void(FrmZipList&)> ok = [](FrmZipList& s) {
            QCOMPARE(s.spdZipList->maxRows(), 0);
            search(s, s.txtZip1, u"060"_s);
            QCOMPARE(ColumnTexts(*s.spdZipList, 1), u"060-0001|060-0042"_s);
            QCOMPARE(s.spdZipList->cellText(2, 4), u"大通西"_s);
            QTest::mouseClick(s.cmdOK, Qt::LeftButton); // the first row
        };
        // Enter searches; a double click chooses; without the prefecture flag from the city.
        const std::function<void(FrmZipList&)> doubleClick = [](FrmZipList& s) {
            s.txtTodo->setText(u"東京都"_s);
            s.txtCity->setText(u"千代田区"_s);
            QTest::keyClick(s.txtCity, Qt::Key_Return);
            QCOMPARE(s.spdZipList->maxRows(), 2);
            QWidget* cells = s.spdZipList->view()->viewport();
            const QPoint centre = RowCentre(*s.spdZipList, 2);
            QTest::mouseClick(cells, Qt::LeftButton, {}, centre);
            QTest::mouseDClick(cells, Qt::LeftButton, {}, centre);
        };
        // No conditions get the box; no match empties the list without one, and OK then keeps
        // the screen open; clear empties list and fields; the code parts take digits only.
        const std::function<void(FrmZipList&)> cancel = [this](FrmZipList& s) {
            search(s, s.txtCity, u"   "_s);
            QCOMPARE(harness.msgs.shown().last().icon, MsgIcon::None);
            search(s, s.txtCity, u"札幌市中央区"_s);
            QCOMPARE(s.spdZipList->maxRows(), 2);
            search(s, s.txtCity, u"札幌市"_s);
            QCOMPARE(s.spdZipList->maxRows(), 0);
            QTest::mouseClick(s.cmdOK, Qt::LeftButton);
            QVERIFY(s.isVisible());
            s.txtCity->setText(u"札幌市中央区"_s);
            search(s, s.txtZip2, u"1"_s);
            QCOMPARE(s.spdZipList->maxRows(), 1);
            QTest::mouseClick(s.cmdClear, Qt::LeftButton);
            for (xField* field : {s.txtZip1, s.txtZip2, s.txtTodo, s.txtCity, s.txtTown})
                QCOMPARE(field->text(), QString());
            QCOMPARE(s.spdZipList->maxRows(), 0);
            QTest::keyClicks(s.txtZip1, u"0x6"_s);
            QCOMPARE(s.txtZip1->text(), u"06"_s);
            QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
            QCOMPARE(s.spdZipList->maxRows(), 0);
            search(s, s.txtZip1, u"100"_s);
            s.spdZipList->setActiveCell(2, 1);
            QTest::mouseClick(s.cmdCAN, Qt::LeftButton);
        };
        const std::function<void(FrmZipList&)> closeBox = [](FrmZipList& s) {
            search(s, s.txtZip1, u"100"_s);
            s.spdZipList->setActiveCell(2, 1);
            QVERIFY(s.close());
        };
        harness.msgs.expectBox(u"検索条件は、必ず１つは入力して下さい。"_s, QString());
        const std::tuple<int, std::function<void(FrmZipList&)>, QString> roads[] = {
            {1, ok, u"1|060-0001|北海道札幌市中央区北一条西"_s},
            {0, doubleClick, u"1|100-0005|千代田区丸の内"_s},
            {1, cancel, u"0||"_s},
            {1, closeBox, u"0||"_s}};
        for (const auto& [todoFlg, drive, handedBack] : roads) {
            FrmZipList screen;
            screen.setTodoFlg(todoFlg);
            harness.screens.expect<FrmZipList>(drive);
            const int result = ShowModal(screen);
            QCOMPARE(QStringList({QString::number(result), screen.Zip(), screen.Addr()}).join(u'|'),
                     handedBack);
        }
        const QString lines = QString::fromUtf8(ReadFile(LogFilePath()));
        QVERIFY(
            lines.contains(u"\"FrmZipList\",\"AddrRead\",\"ｴﾗ-No.()\",\"郵便・住所の取得処理\""_s));
        QVERIFY(!lines.contains(QRegularExpression(u"ｴﾗ-No\\.\\([^)]"_s)));
    }

    void theCalendarHandsBackADateOnlyWhenClosedWithOk() {
        const QDate field(2026, 11, 22);
        const QDate picked = pickInto(field, [](FrmCalender& s) {
            QCOMPARE(s.xClndr1->heading(), u"2026年 １１月"_s);
            QCOMPARE(s.cmdSelect[1]->nextInFocusChain(), s.cmdSelect[0]); // cancel tabs to OK
            s.xClndr1->days()->setSelectedDate(QDate(2026, 10, 3));
            QTest::mouseClick(s.cmdSelect[0], Qt::LeftButton);
        });
        QCOMPARE(picked, QDate(2026, 10, 3));

        // An empty field opens on today's month; the year buttons move a year at a time.
        const QDate today = pickInto(xDate::EmptyDate, [](FrmCalender& s) {
            QCOMPARE(s.xClndr1->heading(),
                     Today().toString(u"yyyy年 "_s) + xClndr::monthName(Today().month()));
            for (const char* button : {"previousYear", "previousYear", "nextYear"})
                QTest::mouseClick(s.findChild<QToolButton*>(QLatin1String(button)), Qt::LeftButton);
            QCOMPARE(s.xClndr1->days()->yearShown(), Today().year() - 1);
            QTest::mouseClick(s.cmdSelect[0], Qt::LeftButton);
        });
        QCOMPARE(today, Today());

        // OK without picking; cancel, the close box and Escape after picking another day.
        for (int road = 0; road < 4; ++road) {
            const QDate kept = pickInto(field, [road](FrmCalender& s) {
                if (road > 0)
                    s.xClndr1->days()->setSelectedDate(QDate(2026, 11, road));
                if (road < 2)
                    QTest::mouseClick(s.cmdSelect[road], Qt::LeftButton);
                else if (road == 2)
                    QVERIFY(s.close());
                else
                    QTest::keyClick(&s, Qt::Key_Escape);
            });
            QCOMPARE(kept, field);
        }
    }
};

QTEST_MAIN(TestPickers)
#include "tst_pickers.moc"
