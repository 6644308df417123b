// The pickers: what the postal search lists from a seeded directory and hands back on OK,
// double-click, cancel and the close box; the calendar hands a date back only with OK.
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
#include "support/Controls.h"
#include "support/Roads.h"

#include <QCalendarWidget>
#include <QPushButton>
#include <QRegularExpression>
#include <QTableView>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

template <class Control = xField> Control& at(const QObject& screen, const char* name) {
    return Find<Control>(screen, QLatin1String(name));
}

void click(const QObject& screen, const char* name) {
    QTest::mouseClick(&at<QAbstractButton>(screen, name), Qt::LeftButton);
}

// Fills a condition of the postal search and presses 検索実行.
void search(FrmZipList& s, const char* field, const QString& text) {
    at(s, field).setText(text);
    click(s, "cmdKensak");
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
        gCon.execute(u"insert into ZipList values (60, 1, '北海道', '札幌市中央区', '北一条西'), "
                     "(60, 42, '北海道', '札幌市中央区', '大通西'), (100, 1, '東京都', "
                     "'千代田区', '千代田'), (100, 5, '東京都', '千代田区', '丸の内')"_s);
    }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    // The query has one exact condition per filled field. Each road with the prefecture flag,
    // and what the search hands back: the result, the code and the address, "result|code|address".
    void theSearchHandsBackTheRowChosenOrNothing() {
        const QString base = u"select ZIP1,ZIP2,TODO,CITY,TOWN from ZipList where "_s;
        QCOMPARE(ZipSearchSql({{}, {}, {}, u"札幌市"_s, {}}), base + u"CITY = '札幌市'"_s);
        QCOMPARE(ZipSearchSql({u"060"_s, u" 0042 "_s, {}, {}, u"O'Hara"_s}),
                 base + u"ZIP1 = 60 and ZIP2 = 42 and TOWN = 'O''Hara'"_s);
        // No conditions get the box; no match empties the list without one, OK then keeps the
        // screen open; clear empties all; the code takes digits only; OK takes the first row.
        const auto ok = [this](FrmZipList& s) {
            auto& list = at<AddressList>(s, "spdZipList");
            QCOMPARE(list.maxRows(), 0);
            search(s, "txtCity", u"   "_s);
            QCOMPARE(harness.msgs.shown().last().icon, MsgIcon::None);
            search(s, "txtCity", u"札幌市中央区"_s);
            QCOMPARE(list.maxRows(), 2);
            search(s, "txtCity", u"札幌市"_s);
            QCOMPARE(list.maxRows(), 0);
            click(s, "cmdOK");
            QVERIFY(s.isVisible());
            at(s, "txtCity").setText(u"札幌市中央区"_s);
            search(s, "txtZip2", u"1"_s);
            QCOMPARE(list.maxRows(), 1);
            click(s, "cmdClear");
            for (const char* field : {"txtZip1", "txtZip2", "txtTodo", "txtCity", "txtTown"})
                QCOMPARE(at(s, field).text(), QString());
            QCOMPARE(list.maxRows(), 0);
            QTest::keyClicks(&at(s, "txtZip1"), u"0x6"_s);
            QCOMPARE(at(s, "txtZip1").text(), u"06"_s);
            click(s, "cmdKensak");
            QCOMPARE(list.maxRows(), 0);
            search(s, "txtZip1", u"060"_s);
            QCOMPARE(ColumnTexts(list, 1), u"060-0001|060-0042"_s);
            QCOMPARE(list.cellText(2, 4), u"大通西"_s);
            click(s, "cmdOK");
        };
        // Enter searches; a double click chooses; without the prefecture flag from the city.
        const auto doubleClick = [](FrmZipList& s) {
            auto& list = at<AddressList>(s, "spdZipList");
            at(s, "txtTodo").setText(u"東京都"_s);
            at(s, "txtCity").setText(u"千代田区"_s);
            QTest::keyClick(&at(s, "txtCity"), Qt::Key_Return);
            QCOMPARE(list.maxRows(), 2);
            QWidget* cells = at<QTableView>(list, "view").viewport();
            QTest::mouseClick(cells, Qt::LeftButton, {}, RowCentre(list, 2));
            QTest::mouseDClick(cells, Qt::LeftButton, {}, RowCentre(list, 2));
        };
        // A row chosen, then cancel or the close box.
        const auto cancelled = [](bool closeBox) {
            return [closeBox](FrmZipList& s) {
                search(s, "txtZip1", u"100"_s);
                at<AddressList>(s, "spdZipList").setActiveCell(2, 1);
                if (closeBox)
                    QVERIFY(s.close());
                else
                    click(s, "cmdCAN");
            };
        };
        harness.msgs.expectBox(u"検索条件は、必ず１つは入力して下さい。"_s, QString());
        const std::tuple<int, std::function<void(FrmZipList&)>, QString> roads[] = {
            {1, ok, u"1|060-0001|北海道札幌市中央区北一条西"_s},
            {0, doubleClick, u"1|100-0005|千代田区丸の内"_s},
            {1, cancelled(false), u"0||"_s},
            {1, cancelled(true), u"0||"_s}};
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
            QCOMPARE(at<xClndr>(s, "xClndr1").heading(), u"2026年 １１月"_s);
            QCOMPARE(at<QPushButton>(s, "cmdSelect(1)").nextInFocusChain(),
                     &at<QPushButton>(s, "cmdSelect(0)")); // cancel tabs to OK
            at<QCalendarWidget>(s, "days").setSelectedDate(QDate(2026, 10, 3));
            click(s, "cmdSelect(0)");
        });
        QCOMPARE(picked, QDate(2026, 10, 3));

        // An empty field opens on today's month; the year buttons move a year at a time.
        const QDate today = pickInto(xDate::EmptyDate, [](FrmCalender& s) {
            QCOMPARE(at<xClndr>(s, "xClndr1").heading(),
                     Today().toString(u"yyyy年 "_s) + xClndr::monthName(Today().month()));
            for (const char* button : {"previousYear", "previousYear", "nextYear"})
                click(s, button);
            QCOMPARE(at<QCalendarWidget>(s, "days").yearShown(), Today().year() - 1);
            click(s, "cmdSelect(0)");
        });
        QCOMPARE(today, Today());

        // OK without picking; cancel, the close box and Escape after picking another day.
        for (const char* end : {"cmdSelect(0)", "cmdSelect(1)", "close", "Escape"}) {
            const QDate kept = pickInto(field, [end](FrmCalender& s) {
                if (QLatin1String(end) != "cmdSelect(0)"_L1)
                    at<QCalendarWidget>(s, "days").setSelectedDate(QDate(2026, 11, 3));
                if (QLatin1String(end).startsWith("cmd"_L1))
                    click(s, end);
                else if (QLatin1String(end) == "close"_L1)
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
