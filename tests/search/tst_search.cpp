// The customer search over one seeded shop: the conditions judged by the customers that come back
// (so the statements are proven on the engine the run uses), the rules and statements of the list
// and the quick search, and the screens driven through their keys: the list with its conditions
// screen, the register and the sales inquiry, and the quick search.
#include "customer/FrmKokyaku.h"
#include "data/CustomerQueries.h"
#include "data/CustomerSearch.h"
#include "data/CustomerStore.h"
#include "domain/PostalCode.h"
#include "domain/PrintMarks.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xInput.h"
#include "platform/controls/xNum.h"
#include "platform/report/Report.h"
#include "platform/ui/ShowModal.h"
#include "print/FrmPrint.h"
#include "search/FrmIchiran.h"
#include "search/FrmIchiranSub.h"
#include "search/FrmKensaku.h"
#include "search/FrmTotalKensaku.h"
#include "search/ListCsv.h"
#include "search/ListGrid.h"
#include "shell/FrmMenu.h"
#include "support/Controls.h"
#include "support/Roads.h"
#include "support/ShopData.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

// The condition cases name only the values they set; the rest keep their defaults.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

namespace {

using C = SearchConditions;
using Numbers = QList<qint64>;
const QDate Jan1(2024, 1, 1), Dec31(2024, 12, 31);
const QString none;

// Conditions as the screen gives them: the named ones ticked.
C when(std::initializer_list<C::Condition> ticked, C c = {}) {
    for (C::Condition condition : ticked)
        c.on[condition] = true;
    return c;
}

void click(QWidget& control) {
    QTest::mouseClick(&control, Qt::LeftButton);
}

// A box of the conditions screen clicked (the conditions' own order, 13 all, 14 the family).
void tick(FrmTotalKensaku& c, int index) {
    click(Find<QCheckBox>(c, u"chkJoken"_s, index));
}

// Both controls of a from-to pair of the conditions screen.
template <class Control> std::array<Control*, 2> fromTo(FrmTotalKensaku& c, const QString& name) {
    return {&Find<Control>(c, name, 0), &Find<Control>(c, name, 1)};
}

// The list's grid, its counters and its function keys, found once.
struct List {
    FrmIchiran& s;
    ListGrid& grid = Find<ListGrid>(s, u"spdData"_s);
    QTableView& view = Find<QTableView>(grid, u"view"_s);
    QLabel& count = Find<QLabel>(s, u"lblTaisyouCnt"_s);
    QLabel& marked = Find<QLabel>(s, u"lblPrintCnt"_s);

    bool enabled(int key) const { return Find<QPushButton>(s, u"cmdFnuc"_s, key).isEnabled(); }
    void press(Qt::Key key) { QTest::keyClick(&s, key); }
    // The middle of a cell (counted from 1), where the mouse is put on it.
    QPoint at(int row, int column) const {
        return view.visualRect(grid.gridModel()->index(row - 1, column - 1)).center();
    }
    void edit(int row, int column, const QString& value) {
        grid.gridModel()->setData(grid.gridModel()->index(row - 1, column - 1), value);
    }
};

// A row of the conditions' table.
void add(const char* name, const C& conditions, const Numbers& expected) {
    QTest::newRow(name) << conditions << expected;
}

// For each family category (代表, 家族, 個人, DM不要) whether the rule marks the row.
QString byFamily(const std::function<bool(int)>& rule) {
    QString marks;
    for (int kazok = 0; kazok < 4; ++kazok)
        marks += rule(kazok) ? QLatin1Char('1') : QLatin1Char('0');
    return marks;
}

} // namespace

class TestSearch : public QObject {
    Q_OBJECT
    Harness harness;

    // Searches with the conditions the driver enters on the list's conditions screen; unless
    // the driver started the search itself, "検索開始" starts it.
    void search(List& list, const std::function<void(FrmTotalKensaku&)>& enter = {}) {
        harness.screens.expect<FrmTotalKensaku>([enter](FrmTotalKensaku& s) {
            if (enter)
                enter(s);
            if (s.isVisible())
                click(Find<QPushButton>(s, u"cmdKensaku"_s));
        });
        list.press(Qt::Key_F6);
    }

    void openList(const std::function<void(List&)>& drive) {
        FrmIchiran screen;
        harness.screens.expect<FrmIchiran>([&drive](FrmIchiran& s) {
            List list{s};
            drive(list);
        });
        ShowModal(screen);
    }

    // The register opened next: for the customer (0 a new one), showing the telephone.
    void expectRegister(qint64 no, const QString& tel) {
        harness.screens.expect<FrmKokyaku>([no, tel](FrmKokyaku& reg) {
            QCOMPARE(reg.Syori(), no);
            QCOMPARE(Find<xInput>(reg, u"txtTel"_s).text(), tel);
        });
    }

private slots:
    void init() {
        HARNESS_INIT(harness);
        // no, name, kana, tel, postal code, address lines, sex, family, era, year, month, day
        InsertCustomer({1, u"青木"_s, u"あおき"_s, u"011-111"_s, u"060-0001"_s, u"札幌市中央区"_s,
                        u"1-2-3"_s, 0, 0, 1, 30, 5, 3});
        InsertCustomer({2, u"伊藤"_s, u"いとう"_s, u"011-222"_s, u"040-0001"_s, u"  函館市  "_s,
                        u"札幌通"_s, 1, 1, 2, 1, 8, 3});
        InsertCustomer({3, u"上田"_s, none, u"0166-33 Ext_1\\2%"_s, u"070-0001"_s,
                        u"札幌市中央区"_s, u"A\\B_1%"_s, 0, 3, 3, 1960, 5, 4});
        InsertCustomer(
            {4, u"江藤"_s, u"えとう"_s, u"0138-44"_s, none, none, none, 1, 2, 1, 0, 0, 0});
        // customer, number, date, item, purpose, frame maker, lens maker, frame, lens, total
        InsertPurchase({.user = 1, .seq = 1, .ymd = 20240110, .total = 30000});
        InsertPurchase({1, 2, 20240110, none, u"002"_s, none, u"003"_s, 0, 0, 5000});
        InsertPurchase({.user = 1, .seq = 3, .ymd = 20230505, .total = 12000});
        InsertPurchase({2, 1, 20240301, u"001"_s, u"003"_s, u"004"_s, u"004"_s, 0, 0, 50000});
        InsertPurchase({3, 1, 20220101, u"003"_s, u"001"_s, u"002"_s, none, 0, 0, 50000});
        gCon.execute(u"update San_Uriage set Uri_Fm_Name = 'Ray-Ban' where Uri_UserNo = 1 and "
                     u"Uri_Seq = 2"_s);
        gCon.execute(u"update San_Uriage set Uri_Lz_Name = 'Wood' where Uri_UserNo = 2"_s);
    }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void theCustomersFound_data() {
        QTest::addColumn<C>("conditions");
        QTest::addColumn<Numbers>("expected");
        add("everyone by kana, the empty kana first", C{}, {3, 1, 2, 4});
        add("kana", when({C::Kana}, {.kana = u"とう"_s}), {2, 4});
        add("empty kana", when({C::Kana}), {3});
        add("either address line", when({C::Jusyo}, {.jusyo1 = u"札幌"_s}), {3, 1, 2});
        add("two postal codes",
            when({C::Yubin}, {.yubin = {u"040-0001"_s, none, none, none, none, u"060-0001"_s}}),
            {1, 2});
        add("no postal code", when({C::Yubin}), {4});
        add("telephone", when({C::Tel}, {.tel = u"011"_s}), {1, 2});
        add("sex", when({C::Sex}, {.sex = 1}), {2, 4});
        add("birthday", when({C::Birthday}, {.month = 5, .day = 4}), {3});
        // 平成 1 is 1989, 35 in 2024; both bounds count.
        add("one age", when({C::Age}, {.ageFrom = 35, .ageTo = 35}), {2});
        add("visit", when({C::Visit}, {.visitFrom = Jan1, .visitTo = Dec31}), {1, 2});
        add("two purposes", when({C::Youto}, {.youto = {u"003"_s, none, none, none, u"002"_s}}),
            {1, 2});
        // The fields left empty find the purchase without an item too.
        add("item", when({C::Item}, {.item = {u"003"_s}}), {3, 1});
        add("maker of frame or lens", when({C::Meka}, {.meka = {none, none, none, u"002"_s}}),
            {3, 1});
        add("lens name", when({C::HinName}, {.hinName = {none, u"ood"_s}}), {2});
        // Texts are found ignoring ASCII case; a backslash, % and _ stand for themselves.
        add("name in capitals",
            when({C::HinName}, {.hinName = {none, none, none, none, none, u"RAY-BAN"_s}}), {1});
        add("a backslash", when({C::Jusyo}, {.jusyo1 = u"a\\b"_s}), {3});
        add("no wildcard underscore", when({C::Jusyo}, {.jusyo1 = u"A_B"_s}), {});
        add("no wildcard percent", when({C::Jusyo}, {.jusyo1 = u"1%"_s}), {3});
        // 1 has 47000 in all, 35000 in 2024: the bound counts, and only the visits counted.
        add("amount", when({C::Amount}, {.amountFrom = 20000, .amountTo = 47000}), {1});
        const C inYear{
            .sex = 1, .visitFrom = Jan1, .visitTo = Dec31, .amountFrom = 35000, .amountTo = 35000};
        add("amount within the visits", when({C::Amount, C::Visit}, inYear), {1});
        add("and a woman", when({C::Amount, C::Visit, C::Sex}, inYear), {});
        // The last visit, with the absentees added: 11, 14 and 15 on 2023/12/31, 12 on 2024/01/01
        // (after a visit in 2023), 13 never. Both bounds count.
        const QDate Eve(2023, 12, 31); // the eve of 2024
        add("not seen since 2024, never bought too", when({C::LastVisit}, {.lastVisitTo = Eve}),
            {3, 4, 11, 13, 14, 15});
        add("and bought in 2023",
            when({C::LastVisit, C::Visit},
                 {.visitFrom = QDate(2023, 1, 1), .visitTo = Eve, .lastVisitTo = Eve}),
            {11, 14, 15});
        add("seen since 2024, never bought not",
            when({C::LastVisit}, {.lastVisitFrom = Jan1, .lastVisitTo = Dec31}), {1, 2, 12});
    }
    void theCustomersFound() {
        QFETCH(C, conditions);
        QFETCH(Numbers, expected);
        // Customers not seen for a while: no, kana, purchase dates.
        const std::tuple<qint64, QString, QList<int>> absentees[] = {
            {11, u"かとう"_s, {20231231}},
            {12, u"きむら"_s, {20230601, 20240101}},
            {13, u"くどう"_s, {}},
            {14, u"けんざき"_s, {20231231}},
            {15, u"こばやし"_s, {20231231}}};
        for (const auto& [no, kana, visits] : absentees) {
            if (!conditions.on[C::LastVisit])
                break; // the seeded shop alone
            InsertCustomer({.no = no, .kana = kana});
            for (int seq = 1; seq <= visits.size(); ++seq)
                InsertPurchase({.user = no, .seq = seq, .ymd = visits[seq - 1]});
        }
        Numbers found;
        SearchCustomers(conditions, 2024, [&](const ListedCustomer& c) { found << c.no; });
        QCOMPARE(found, expected);
    }

    // The quick search: both fields at once, a quote as typed, blanks as typed. The inquiry's
    // maker condition keeps the terms of the empty choices: a purchase without a lens maker is
    // shown whatever maker is asked for; the list does not count it.
    void theStatementsAndRulesOfTheSearchAndTheList() {
        const std::tuple<QString, QString, Numbers> typed[] = {
            {u"とう"_s, u"0'1"_s, {}}, {u"とう"_s, u"011"_s, {2}}, {u"とう "_s, none, {}}};
        for (const auto& [kana, tel, expected] : typed) {
            Numbers found;
            for (const Customer& c : CustomerStore::QuickSearch(kana, tel))
                found << c.no;
            QCOMPARE(found, expected);
        }
        const C maker = when({C::Meka}, {.meka = {u"001"_s}});
        QCOMPARE(QueryCount(InquiryQuery(maker, 3)), 1);
        QCOMPARE(QueryCount(PurchaseCustomersQuery(maker)), 2); // two purchases of customer 1
        // The marks a search gives and a family change leaves; F3 twice giving a row back the
        // state it had (a pending change too).
        const QString address = u"札幌市"_s;
        QCOMPARE(byFamily([&](int k) { return MarkedOnSearch(address, k, 1, false); }), u"1010"_s);
        QCOMPARE(byFamily([&](int k) { return MarkedOnSearch(address, k, 1, true); }), u"1110"_s);
        QCOMPARE(byFamily([](int k) { return MarkedOnSearch(u" "_s, k, 1, true); }), u"0000"_s);
        QCOMPARE(byFamily([](int k) { return MarkAfterFamilyChange(k, 1); }), u"1110"_s);
        QCOMPARE(byFamily([](int k) { return MarkAfterFamilyChange(k, 2); }), u"1010"_s);
        for (ListState before : {ListState::Unchanged, ListState::Changed}) {
            ListRow row;
            row.state = before;
            ToggleRowDeletion(row);
            QVERIFY(row.state == ListState::ToDelete && !HasUnsavedEdit(row));
            ToggleRowDeletion(row);
            QCOMPARE(row.state, before);
        }
    }

    // One road through the list: a family search started with Enter, a search finding nobody,
    // everyone listed and sorted, written to CSV in the order shown (a folder that cannot be
    // written is told and leaves nothing; without rows there is nothing to write), marks
    // toggled with the mouse, a row corrected and two deleted in one save pass.
    void listingSortingMarkingTheCsvAndTheSavePass() {
        const QString path = harness.path(u"Export/顧客一覧_20261122_1015.csv"_s);
        const QString blocked = harness.path(u"blocked"_s);
        QFile(blocked).open(QIODevice::WriteOnly);
        harness.saveAnswers = QStringList{path, blocked + u"/一覧.csv"_s, QString()};
        ExpectBoxes(harness, {OpeInf_008, OpeErr_012, OpeInf_008});
        harness.msgs.expectBox(u"ＣＳＶファイルに出力しました。\r"_s + path, u"顧客一覧照会"_s);
        harness.msgs.expectBoxStartingWith(u"ＣＳＶファイルを書き出せませんでした。\r"_s,
                                           u"顧客一覧照会"_s);
        ExpectBoxes(harness, {OpeErr_015, OpeQes_001, OpeQes_001, OpeErr_012});
        openList([this](List& l) {
            ListGrid& grid = l.grid;
            search(l, [](FrmTotalKensaku& c) {
                auto& tel = Find<xInput>(c, u"txtTel"_s);
                tick(c, C::Tel);
                tick(c, 14); // the family mode
                tel.setFocus();
                QTest::keyClicks(&tel, u"011"_s);
                QTest::keyClick(&tel, Qt::Key_Return); // Enter starts the search
                QVERIFY(!c.isVisible());
            });
            QCOMPARE(ColumnTexts(grid, ListGrid::Mark), u"●|●"_s);
            search(l, [](FrmTotalKensaku& c) { Find<xInput>(c, u"txtTel"_s).setText(u"099"_s); });
            QCOMPARE(QString::number(grid.maxRows()) + u' ' + l.count.text(), u"0 0"_s);
            QVERIFY(!l.enabled(1) && !l.enabled(2));
            l.press(Qt::Key_F2);
            // Unticking the last condition drops the family mode: a search of everyone.
            search(l, [](FrmTotalKensaku& c) { tick(c, C::Tel); });
            QVERIFY(l.s.shownSearch().result == 2 && !GlbKazokTaisyou);
            QCOMPARE(ColumnTexts(grid, ListGrid::No), u"3|1|2|4"_s);
            // All customers: representatives and individuals with an address are marked.
            QCOMPARE(ColumnTexts(grid, ListGrid::Mark) + l.count.text() + l.marked.text(),
                     u"|●||41"_s);
            // Equal addresses keep their order; equal sales go by kana.
            const std::pair<Qt::Key, QString> orders[] = {{Qt::Key_F10, u"4|2|3|1"_s},
                                                          {Qt::Key_F11, u"3|2|1|4"_s},
                                                          {Qt::Key_F9, u"3|1|2|4"_s}};
            for (const auto& [key, order] : orders) {
                l.press(key);
                QCOMPARE(ColumnTexts(grid, ListGrid::No), order);
                for (int i = 0; key == Qt::Key_F11 && i < 3; ++i)
                    l.press(Qt::Key_F2); // written, refused, cancelled
            }
            // A block dragged toggles its rows once; a click inside it toggles its own mark.
            QWidget* area = l.view.viewport();
            QTest::mousePress(area, Qt::LeftButton, {}, l.at(1, ListGrid::Mark));
            QTest::mouseMove(area, l.at(2, ListGrid::Name));
            QTest::mouseRelease(area, Qt::LeftButton, {}, l.at(2, ListGrid::Name));
            QCOMPARE(ColumnTexts(grid, ListGrid::Mark) + u' ' + l.marked.text(), u"●||| 1"_s);
            QTest::mouseClick(area, Qt::LeftButton, {}, l.at(1, ListGrid::Mark));
            QCOMPARE(ColumnTexts(grid, ListGrid::Mark) + u' ' + l.marked.text(), u"||| 0"_s);
            // Row 2 corrected in place (trimmed); as an individual now it is marked again.
            l.edit(2, ListGrid::Name, u" O'Neil "_s);
            QCOMPARE(grid.rowColor(2), ListGrid::Yellow);
            l.edit(2, ListGrid::Kazok, u"2"_s);
            QCOMPARE(l.marked.text(), u"1"_s);
            l.press(Qt::Key_F9); // sorting waits until the edit is saved
            for (int row : {3, 4}) {
                grid.setActiveCell(row, 1);
                l.press(Qt::Key_F3);
                QCOMPARE(grid.rowColor(row), ListGrid::Red);
            }
            l.press(Qt::Key_F5);
            QCOMPARE(ColumnTexts(grid, ListGrid::No) + u' ' + l.count.text(), u"3|1 2"_s);
            QCOMPARE(grid.rowColor(2), ListGrid::White);
            l.press(Qt::Key_F5); // nothing left to save
        });
        QCOMPARE(harness.savesAsked.size(), 3);
        QCOMPARE(harness.savesAsked[0].suggested, path);
        QCOMPARE(ReadFile(path),
                 "\xEF\xBB\xBF顧客№,印刷,氏 名,かな名,郵便番号,住所１,住所２,T E L,家族,売上累計,"
                 "最終来店,誕生日,年齢\r\n"
                 "3,0,上田,,070-0001,札幌市中央区,A\\B_1%,0166-33 Ext_1\\2%,DM不要,50000,"
                 "2022/01/01,1960年5月4日,66\r\n"
                 "2,0,伊藤,いとう,040-0001,  函館市  ,札幌通,011-222,家族,50000,2024/03/01,"
                 "平成元年8月3日,37\r\n"
                 "1,1,青木,あおき,060-0001,札幌市中央区,1-2-3,011-111,代表,47000,2024/01/10,"
                 "昭和30年5月3日,71\r\n"
                 "4,0,江藤,えとう,,,,0138-44,個人,0,,,\r\n"_ba);
        QCOMPARE(CustomerTexts(1, u"User_Name User_Kazok_F User_Entry2"_s),
                 u"O'Neil|2|2026/11/22"_s);
        QCOMPARE(QueryCount(u"select * from San_User"_s), 2);
        QCOMPARE(QueryCount(u"select * from San_Uriage where Uri_UserNo = 2"_s), 0);
        QCOMPARE(QueryCount(u"select * from San_Uriage where Uri_UserNo = 1"_s), 3);
    }

    // Conditions edited and then cancelled change nothing: printing and the inquiry work from
    // the search the list shows. Then the conditions cleared for a search by the last visit.
    void cancelledConditionsLeaveTheShownSearch() {
        InsertPurchase({.user = 1, .seq = 4, .ymd = 20250230, .total = 1000});
        ExpectBoxes(harness, {OpeInf_008, OpeErr_001, OpeErr_003, OpeErr_003, OpeQes_009});
        harness.msgs.expectBoxStartingWith(u"ＰＤＦファイルに出力しました。"_s, u"印刷選択"_s);
        ExpectBoxes(harness, {OpeErr_003, OpeInf_008});
        openList([this](List& l) {
            search(l); // everyone
            harness.screens.expect<FrmTotalKensaku>([](FrmTotalKensaku& c) {
                const auto age = fromTo<xNum>(c, u"txtToshi"_s);
                const auto visit = fromTo<xDate>(c, u"txtRaiten"_s);
                tick(c, C::Youto);
                QTest::keyClick(&Find<QCheckBox>(c, u"chkJoken"_s, C::Youto), Qt::Key_Return);
                QCOMPARE(c.focusWidget(), &Find<QComboBox>(c, u"cboYoto"_s, 0)); // none chosen
                tick(c, C::Youto);
                tick(c, C::Age);
                QTest::keyClicks(age[0], u"30"_s);
                age[1]->setFocus(); // the to-age takes the from-age
                QCOMPARE(age[1]->Value(), 30.0);
                age[1]->setValue(20);
                QTest::keyClick(age[1], Qt::Key_Enter);
                QCOMPARE(c.focusWidget(), age[0]);
                // A visit date that is none is refused, the focus on it.
                tick(c, C::Visit);
                age[1]->setValue(40);
                Retype(visit[1], u"20240230"_s);
                click(Find<QPushButton>(c, u"cmdKensaku"_s));
                QVERIFY(c.isVisible() && c.focusWidget() == visit[1]);
                visit[1]->setDate(QDate(2026, 11, 22));
                c.close(); // the close box is キャンセル: neither checked nor run
            });
            l.press(Qt::Key_F6);
            QCOMPARE(l.grid.maxRows(), 4);
            // Every purchase of 1, newest first, a stored date that is no calendar date as stored;
            // two on one day are one visit.
            harness.screens.expect<FrmIchiranSub>([](FrmIchiranSub& inquiry) {
                QCOMPARE(ColumnTexts(Find<GridView>(inquiry, u"spdData"_s), 1),
                         u"2025/02/30|2024/01/10|2024/01/10|2023/05/05"_s);
                QCOMPARE(Find<QLabel>(inquiry, u"lblKaisu"_s).text() + u' ' +
                             Find<QLabel>(inquiry, u"lblKinga"_s).text(),
                         u"3 \\48,000"_s);
            });
            l.grid.setActiveCell(2, 1);
            l.press(Qt::Key_F8);
            harness.screens.expect<FrmPrint>(
                [](FrmPrint& print) { click(Find<QPushButton>(print, u"cmdPrint"_s, 0)); });
            l.press(Qt::Key_F4);
            // クリア, then the last visit alone: the family mode stays on with it. A from-date
            // after the to-date is refused; a bound left empty is open.
            search(l, [](FrmTotalKensaku& c) {
                const auto last = fromTo<xDate>(c, u"txtSaisyuRaiten"_s);
                click(Find<QPushButton>(c, u"cmdClear"_s));
                tick(c, FrmTotalKensaku::boxOf(C::LastVisit));
                QTest::keyClicks(last[0], u"20240101"_s);
                tick(c, 14);
                last[1]->setDate(QDate(2023, 12, 31));
                click(Find<QPushButton>(c, u"cmdKensaku"_s));
                QVERIFY(c.isVisible() && c.focusWidget() == last[0]);
                last[1]->clear();
            });
            // 2 is one of the family: marked in the family mode of a search with conditions.
            QCOMPARE(ColumnTexts(l.grid, ListGrid::No), u"1|2"_s);
            QCOMPARE(ColumnTexts(l.grid, ListGrid::Mark), u"●|●"_s);
        });
        // The head of the household in a list of everyone is written to as the family.
        QCOMPARE(ReportJobs().size(), 1);
        QCOMPARE(ReportJobs()[0].pages[0].value(u"Sama"_s), u"御家族様"_s);
    }

    // The list's cells take the register fields' rules: a postal code read as one (full-width
    // digits too) or refused with a box, a long stored name shown whole in its editor and not
    // lengthened. The CSV keeps formula-like texts as text.
    void theListsCellsTakeTheRegistersRules() {
        QCOMPARE(PostalCodeOf(u" "_s), QString()); // no code, not a refused one
        for (const auto& [cell, written] : {std::pair{u"=1+1 渡辺"_s, u"'=1+1 渡辺"_s},
                                            {u"山田 -1"_s, u"山田 -1"_s},
                                            {QString(), QString()}})
            QCOMPARE(SpreadsheetText(cell), written);
        const QString long42(42, u'長');
        gCon.execute(u"update San_User set User_Name = '%1' where User_No = 2"_s.arg(long42));
        ExpectBoxes(harness, {OpeInf_008});
        harness.msgs.expectBox(ListGrid::PostalCodeRefused, u"顧客一覧照会"_s);
        ExpectBoxes(harness, {OpeQes_001, OpeQes_011, OpeInf_001, OpeInf_007, OpeQes_002,
                              OpeInf_002, OpeInf_007, OpeQes_001});
        openList([&](List& l) {
            search(l); // rows: 3, 1, 2, 4
            l.edit(2, ListGrid::Yubin, u" １５０ー０００１ "_s);
            l.edit(4, ListGrid::Yubin, u"abc"_s);
            QCOMPARE(l.grid.row(4).now.yubin, QString());
            l.view.edit(l.grid.gridModel()->index(3 - 1, ListGrid::Name - 1));
            auto* editor = l.view.findChild<xInput*>();
            QVERIFY(editor);
            QCOMPARE(editor->text(), long42);
            editor->setFocus();
            QTest::keyClick(editor, Qt::Key_End);
            QTest::keyClicks(editor, u"x"_s);
            QCOMPARE(editor->text(), long42);
            QTest::keyClick(editor, Qt::Key_Escape);
            l.press(Qt::Key_F5);
            QCOMPARE(CustomerTexts(2, u"User_Name"_s), long42);
            // A customer renamed in the register comes back read again: a later correction in
            // the list writes only what was changed there and never puts the old name back. A
            // customer deleted in the register leaves the list.
            l.grid.setActiveCell(2, 3);
            harness.screens.expect<FrmKokyaku>([](FrmKokyaku& reg) {
                Find<xInput>(reg, u"txtName"_s).setText(u"青木 新姓"_s);
                QTest::keyClick(&reg, Qt::Key_F5);
                QTest::keyClick(&reg, Qt::Key_F1);
            });
            l.press(Qt::Key_F7);
            QCOMPARE(l.grid.cellText(2, ListGrid::Name), u"青木 新姓"_s);
            l.grid.setActiveCell(3, 3);
            harness.screens.expect<FrmKokyaku>([](FrmKokyaku& reg) {
                QCOMPARE(reg.Syori(), 2);
                QTest::keyClick(&reg, Qt::Key_F8);
            });
            l.press(Qt::Key_F7);
            QCOMPARE(ColumnTexts(l.grid, ListGrid::No) + u' ' + l.count.text(), u"3|1|4 3"_s);
            l.edit(2, ListGrid::Jusyo2, u"2階"_s);
            l.press(Qt::Key_F5);
        });
        QCOMPARE(CustomerTexts(1, u"User_Yubin User_Name User_Jusyo2"_s),
                 u"150-0001|青木 新姓|2階"_s);
    }

    // The quick search from the menu through its three outcomes (no hit, one, several), the
    // buttons and what the screen looks like after the register closes.
    void theQuickSearchFromTheMenu() {
        ExpectBoxes(harness, {OpeErr_001});
        FrmMenu menu;
        harness.screens.expect<FrmKensaku>([this](FrmKensaku& s) {
            auto& kana = Find<xInput>(s, u"txtKana"_s);
            auto& tel = Find<xInput>(s, u"txtTel"_s);
            auto& open = Find<QPushButton>(s, u"cmdBtn"_s, 1);
            GridView& grid = Find<GridView>(s, u"spdData"_s);
            QTableView& view = Find<QTableView>(grid, u"view"_s);
            kana.setFocus();
            QTest::keyClick(&s, Qt::Key_F12); // nothing typed
            QVERIFY(s.focusWidget() == &tel && !open.isEnabled());
            // No hit: a new customer with the typed telephone; the screen stays as it was.
            expectRegister(0, u"090-9"_s);
            tel.setText(u" 090-9 "_s);
            QTest::keyClick(&s, Qt::Key_F12);
            QVERIFY(!open.isEnabled() && tel.text() == u" 090-9 "_s);
            // One hit opens that customer at once and stays listed.
            expectRegister(2, u"011-222"_s);
            tel.setText(u"222"_s);
            QTest::keyClick(&s, Qt::Key_F12);
            QCOMPARE(ColumnTexts(grid, 1) + u' ' + grid.cellText(1, 4), u"2 函館市札幌通"_s);
            // Several are listed for the user to choose.
            tel.clear();
            kana.setText(u"とう"_s);
            QTest::keyClick(&s, Qt::Key_F12);
            QCOMPARE(ColumnTexts(grid, 1), u"2|4"_s);
            QVERIFY(open.isEnabled() && s.focusWidget() == &view);
            expectRegister(4, u"0138-44"_s); // a double click leaves the list
            const QPoint centre = RowCentre(grid, 2);
            QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, centre);
            QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, centre);
            QCOMPARE(ColumnTexts(grid, 1), u"2|4"_s);
            expectRegister(2, u"011-222"_s); // F5 empties the screen after
            grid.setActiveCell(1, 3);
            QTest::keyClick(&s, Qt::Key_F5);
            QVERIFY(grid.rowCount() == 0 && kana.text().isEmpty() && s.focusWidget() == &tel);
            // Blanks alone are no condition: every customer listed by kana.
            kana.setText(u" "_s);
            QTest::keyClick(&s, Qt::Key_F12);
            QCOMPARE(ColumnTexts(grid, 1), u"3|1|2|4"_s);
        });
        menu.cmdMenu_Click(0);
    }
};

QTEST_MAIN(TestSearch)
#include "tst_search.moc"
