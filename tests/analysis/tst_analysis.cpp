// The sales analysis on a hand-made shop: every view's figures as the database sums them, and
// the screen walked once as the staff use it: the period chosen and typed, the views switched,
// a view printed over the pages it needs and written to CSV.
#include "analysis/AnalysisViews.h"
#include "analysis/FrmBunseki.h"
#include "domain/Age.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "platform/controls/GridView.h"
#include "platform/controls/xDate.h"
#include "platform/report/Report.h"
#include "shell/FrmMenu.h"
#include "support/Controls.h"
#include "support/Papers.h"
#include "support/Roads.h"
#include "support/ShopData.h"

#include <QtTest>
#include <QtWidgets>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString Title = u"売上分析"_s;
const AnalysisPeriod Period{{2026, 4, 1}, {2026, 9, 30}};

// Four customers: one who bought before the period, two whose first purchase lies in it (born
// on the period's last day and the day after, 40 and 39 years before), one without a birth
// date. Purchases on the period's first and last days and a day outside each end, one on June
// 31 (no calendar date), one without an item or frame maker; two a year before; the lens maker
// 003 deleted since.
void shop() {
    InsertCustomer({.no = 1, .name = u"山田 太郎"_s, .sex = 0, .nen = 45, .mon = 5, .day = 3});
    InsertCustomer({.no = 2, .name = u"佐藤 花子"_s, .sex = 1, .nen = 61, .mon = 9, .day = 30});
    InsertCustomer({.no = 3, .name = u"鈴木 一郎"_s, .sex = 0, .nen = 61, .mon = 10, .day = 1});
    InsertCustomer({.no = 4, .name = u"林 さくら"_s, .sex = 1, .nen = 0, .mon = 0, .day = 0});
    const PurchaseRow sales[] = {
        {1, 1, 20250510, u"001"_s, u"001"_s, u"001"_s, u"002"_s, 20000, 10000, 30000},
        {1, 2, 20260401, u"001"_s, u"003"_s, u"001"_s, u"003"_s, 30000, 50000, 80000},
        {1, 3, 20260331, u"002"_s, u"001"_s, u"001"_s, u"002"_s, 20000, 20000, 40000},
        {2, 1, 20260930, u"002"_s, u"003"_s, u"002"_s, u"002"_s, 10000, 20000, 30000},
        {2, 2, 20261001, u"001"_s, u"001"_s, u"001"_s, u"001"_s, 10000, 10000, 20000},
        {3, 1, 20260631, u""_s, u"002"_s, u""_s, u"003"_s, 5000, 0, 5000},
        {3, 2, 20260615, u"001"_s, u"001"_s, u"003"_s, u"003"_s, 15000, 15000, 30000},
        {4, 1, 20240101, u"003"_s, u"001"_s, u"001"_s, u"001"_s, 0, 10000, 10000},
        {4, 2, 20260701, u"003"_s, u"001"_s, u"001"_s, u"001"_s, 0, 12000, 12000},
        {4, 3, 20250930, u"003"_s, u"002"_s, u"001"_s, u"001"_s, 0, 20000, 20000}};
    for (const PurchaseRow& sale : sales)
        InsertPurchase(sale);
    gCon.execute(u"delete from San_Meka where Meka_No = '003'"_s);
}

// A table's lines as shown, cells joined by '|', lines by ';'.
QString shown(const AnalysisTable& table) {
    QStringList lines;
    for (const TableLine& line : table.lines)
        lines << line.shown.join(u'|');
    return lines.join(u';');
}

} // namespace

class TestAnalysis : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void everyViewsFigures() {
        shop();
        const std::tuple<AnalysisView, QString, QString> views[] = {
            {AnalysisView::Monthly,
             u"2026/04|80,000|1|0|0|;2026/05|0|0|30,000|1|0.0%;2026/06|35,000|2|0|0|;"
             "2026/07|12,000|1|0|0|;2026/08|0|0|0|0|;2026/09|30,000|1|20,000|1|150.0%;"
             "合計|157,000|5|50,000|2|314.0%"_s,
             u"売上合計 157,000円　件数 5件　前年同期 50,000円（前年比 314.0%）"_s},
            {AnalysisView::Item,
             u"001 メガネ|110,000|2|70.1%;002 サングラス|30,000|1|19.1%;"
             "003 コンタクトレンズ|12,000|1|7.6%;（なし）|5,000|1|3.2%;合計|157,000|5|100.0%"_s,
             u"売上金額合計 157,000円　件数 5件"_s},
            {AnalysisView::Purpose,
             u"003 遠近両用|110,000|2|70.1%;001 遠用|42,000|2|26.8%;002 近用|5,000|1|3.2%;"
             "合計|157,000|5|100.0%"_s,
             u"売上金額合計 157,000円　件数 5件"_s},
            {AnalysisView::FrameMaker,
             u"001 HOYA|30,000|2|50.0%;003|15,000|1|25.0%;002 ニコン|10,000|1|16.7%;"
             "（なし）|5,000|1|8.3%;合計|60,000|5|100.0%"_s,
             u"フレーム金額合計 60,000円　件数 5件"_s},
            {AnalysisView::LensMaker,
             u"003|65,000|3|67.0%;002 ニコン|20,000|1|20.6%;001 HOYA|12,000|1|12.4%;"
             "合計|97,000|5|100.0%"_s,
             u"レンズ金額合計 97,000円　件数 5件"_s},
            {AnalysisView::Customers,
             u"10歳未満|0|0|0|0|0;10代|0|0|0|0|0;20代|0|0|0|0|0;30代|1|0|0|0|1;40代|0|1|0|0|1;"
             "50代|0|0|1|0|1;60代|0|0|0|0|0;70代|0|0|0|0|0;80代|0|0|0|0|0;"
             "90歳以上|0|0|0|0|0;不明|0|0|0|1|1;合計|1|1|1|1|4"_s,
             u"来店客 4人（新規 2人・再来 2人）"_s},
            {AnalysisView::Overview,
             u"山田 太郎|1|1|80,000;鈴木 一郎|3|2|35,000;佐藤 花子|2|1|30,000;林 さくら|4|1|12,000"_s,
             u"売上合計 157,000円　件数 5件　平均単価 31,400円　来店客数 4人"_s}};
        for (const auto& [view, table, summary] : views) {
            const ViewData data = ReadView(view, Period);
            QCOMPARE(shown(TableOf(data)), table);
            QCOMPARE(SummaryText(data), summary);
        }
        // The progressive lenses stand out; the top list stops at its count.
        QVERIFY(TableOf(ReadView(AnalysisView::Purpose, Period)).lines[0].marked);
        QCOMPARE(ReadView(AnalysisView::Overview, {{2020, 1, 1}, {2026, 12, 31}}).top.size(),
                 std::size_t(4));
        for (int no = 5; no < 30; ++no)
            InsertPurchase({.user = no, .ymd = 20260501, .total = 100});
        QCOMPARE(ReadView(AnalysisView::Overview, Period).top.size(),
                 std::size_t(TopCustomerCount));
    }

    void theScreenAsStaffUseIt() {
        shop();
        const QString csv = harness.path(u"Export/用途別.csv"_s);
        const QString blocked = harness.path(u"blocked"_s);
        QFile(blocked).open(QIODevice::WriteOnly);
        harness.saveAnswers = QStringList{blocked + u"/a.csv"_s, csv};
        harness.msgs.expect(OpeErr_003);
        harness.msgs.expectBoxStartingWith(u"ＰＤＦファイルに出力しました。\r"_s, Title);
        harness.msgs.expectBoxStartingWith(u"ＣＳＶファイルを書き出せませんでした。\r"_s, Title);
        harness.msgs.expectBox(u"ＣＳＶファイルに出力しました。\r"_s + csv, Title);
        harness.msgs.expectBoxStartingWith(u"ＰＤＦファイルに出力しました。\r"_s, Title);
        harness.screens.expect<FrmBunseki>([](FrmBunseki& s) {
            auto& shownPeriod = Find<QLabel>(s, u"lblKikan"_s);
            auto& from = Find<xDate>(s, u"txtKikanFrom"_s);
            auto& to = Find<xDate>(s, u"txtKikanTo"_s);
            auto& grid = Find<GridView>(s, u"spdData"_s);
            QCOMPARE(shownPeriod.text(), u"表示中の期間：2025/12/01〜2026/11/22"_s);
            QTest::mouseClick(&Find<QPushButton>(s, u"cmdKikan"_s, 0), Qt::LeftButton);
            QCOMPARE(shownPeriod.text(), u"表示中の期間：2026/11/01〜2026/11/22"_s);
            // A period that ends before it begins is refused and nothing is read.
            Retype(&from, u"20261001"_s);
            Retype(&to, u"20260930"_s);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(s.focusWidget(), &from);
            Retype(&from, u"20260401"_s);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(Find<QLabel>(s, u"lblSummary"_s).text(),
                     u"売上合計 157,000円　件数 5件　前年同期 50,000円（前年比 314.0%）"_s);
            QTest::keyClick(&s, Qt::Key_F7);
            QTest::keyClick(&s, Qt::Key_F7);
            QCOMPARE(ColumnTexts(grid, 1), u"003 遠近両用|001 遠用|002 近用|合計"_s);
            QTest::keyClick(&s, Qt::Key_F9);
            QTest::keyClick(&s, Qt::Key_F10); // refused by the folder, then written
            QTest::keyClick(&s, Qt::Key_F10);
            // Thirty-three months and the totals: the table goes on to a second page.
            Retype(&from, u"20240101"_s);
            QTest::keyClick(&s, Qt::Key_F5);
            Find<QTabBar>(s, u"tabView"_s).setCurrentIndex(0);
            QCOMPARE(grid.rowCount(), 34);
            QTest::keyClick(&s, Qt::Key_F9);
        });
        FrmMenu menu;
        menu.show();
        QTest::mouseClick(&Find<QPushButton>(menu, u"cmdBunseki"_s), Qt::LeftButton);

        QCOMPARE(harness.savesAsked[1].suggested,
                 harness.path(u"Export/売上分析_用途別_20260401-20260930.csv"_s));
        QCOMPARE(ReadFile(csv), "\xEF\xBB\xBFコード,名称,売上金額,件数,構成比(%)\r\n"
                                "003,遠近両用,110000,2,70.1\r\n001,遠用,42000,2,26.8\r\n"
                                "002,近用,5000,1,3.2\r\n,合計,157000,5,100.0\r\n"_ba);
        QCOMPARE(ReportJobs().size(), 2);
        const ReportJobRecord purpose = ReportJobs()[0];
        QCOMPARE(purpose.documentName + purpose.forms.join(u','),
                 u"売上分析_用途別PrnSan009.jfm"_s);
        QCOMPARE(purpose.pages.size(), 1);
        QVERIFY(QFile::exists(purpose.output));
        const QHash<QString, QString>& page = purpose.pages[0];
        QCOMPARE((QStringList{page[u"Title"_s], page[u"Kikan"_s], page[u"H1"_s], page[u"C1_1"_s],
                              page[u"C4_1"_s], page[u"C1_4"_s], page[u"Chart"_s]}),
                 (QStringList{u"売上分析　用途別"_s, u"期間　2026/04/01〜2026/09/30"_s, u"用途"_s,
                              u"003 遠近両用"_s, u"70.1%"_s, u"合計"_s, u"用途別"_s}));
        // The chart was drawn over its box; no text is cut, and the PDF holds the table.
        const auto chart = std::find_if(purpose.drawn[0].begin(), purpose.drawn[0].end(),
                                        [](const DrawnText& d) { return d.field == u"Chart"_s; });
        QVERIFY(chart != purpose.drawn[0].end());
        QCOMPARE(chart->box, purpose.fieldBoxes.value(u"Chart"_s));
        QCOMPARE(FirstCutOff(purpose) + FirstCutOff(ReportJobs()[1]), QString());
        QVERIFY(PdfText(purpose.output).contains(u"110,000"_s));
        const ReportJobRecord& monthly = ReportJobs()[1];
        QCOMPARE(monthly.pages.size(), 2);
        QCOMPARE((QStringList{monthly.pages[0][u"C1_25"_s], monthly.pages[1][u"C1_1"_s],
                              monthly.pages[1][u"C1_9"_s], monthly.pages[1][u"Page"_s]}),
                 (QStringList{u"2026/01"_s, u"2026/02"_s, u"合計"_s, u"2"_s}));
        QVERIFY(monthly.pages[0].contains(u"Chart"_s) && !monthly.pages[1].contains(u"Chart"_s));
    }
};

QTEST_MAIN(TestAnalysis)
#include "tst_analysis.moc"
