// The day's closing: a hand-made day of sales, deposits, balances, a refund and receipts, with
// payments and receipts the day before and after that must not count, reckoned by hand and
// compared on screen, on paper and in the CSV file; and the outstanding balance's rule alone.
#include "data/OrderStore.h"
#include "data/ReceiptStore.h"
#include "data/ShopStore.h"
#include "domain/DailyClosing.h"
#include "domain/Ymd.h"
#include "frame/MessageCatalogue.h"
#include "orders/FrmNikkei.h"
#include "platform/CsvText.h"
#include "platform/controls/GridView.h"
#include "platform/controls/xDate.h"
#include "platform/report/Report.h"
#include "shell/FrmMenu.h"
#include "support/Controls.h"
#include "support/OtherTerminal.h"
#include "support/Papers.h"
#include "support/Roads.h"
#include "support/ShopData.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

const QString Title = u"日計表"_s;
const QDate Day(2026, 11, 20);

QDateTime at(int dayOffset, int hour) {
    return QDateTime(Day.addDays(dayOffset), QTime(hour, 0));
}

Payment pay(int dayOffset, qint64 amount, PaymentMethod method, PaymentKind kind) {
    return {
        .no = 0, .date = Day.addDays(dayOffset), .amount = amount, .method = method, .kind = kind};
}

// A purchase dated `dayOffset` from the closing's day, with an order and its payments.
void orderedSale(qint64 customerNo, int seq, int dayOffset, qint64 total,
                 const std::vector<Payment>& payments) {
    InsertPurchase({.user = customerNo,
                    .seq = seq,
                    .ymd = int(YmdOf(Day.addDays(dayOffset))),
                    .total = int(total)});
    OrderStore::Create(customerNo, seq, total, Order{}, payments, at(dayOffset, 10));
}

qint64 receipt(qint64 no, qint64 customerNo, qint64 received, const QDateTime& issued) {
    InsertReceipt({.no = no, .user = customerNo, .received = received, .issued = issued});
    return no;
}

// Five customers around 2026/11/20 (the day, "D"):
// 1 山田: a sale without an order on D (12,000), another the day before (5,000).
// 2 佐藤: an order taken on D (38,000) with a cash deposit (10,000); 5,000 by QR on D+1.
// 3 鈴木: an order of 11/01 (50,000): a cash deposit (20,000) then, a transfer (5,000) on D-1,
//         the balance by card on D (25,000).
// 4 高橋: an order of 11/10 (30,000), a card deposit (15,000) then; cancelled on D and the
//         deposit refunded in cash on D.
// 5 伊藤: an order of 11/15 (20,000), 3,000 by QR then; another order on D+1 (9,000).
// Receipts: 5,000 issued on D-1 and cancelled on D; 12,000 and 25,000 issued on D, the second
// cancelled on D+1.
void handMadeDay() {
    for (int no = 1; no <= 5; ++no)
        InsertCustomer({.no = no});
    InsertPurchase({.user = 1, .seq = 1, .ymd = 20261120, .total = 12000});
    InsertPurchase({.user = 1, .seq = 2, .ymd = 20261119, .total = 5000});
    orderedSale(2, 1, 0, 38000,
                {pay(0, 10000, PaymentMethod::Cash, PaymentKind::Deposit),
                 pay(1, 5000, PaymentMethod::Electronic, PaymentKind::Balance)});
    orderedSale(3, 1, -19, 50000,
                {pay(-19, 20000, PaymentMethod::Cash, PaymentKind::Deposit),
                 pay(-1, 5000, PaymentMethod::Transfer, PaymentKind::Balance),
                 pay(0, 25000, PaymentMethod::Credit, PaymentKind::Balance)});
    orderedSale(4, 1, -10, 30000, {pay(-10, 15000, PaymentMethod::Credit, PaymentKind::Deposit)});
    OrderStore::SetStatus(4, 1, Order{}, OrderStatus::Cancelled, at(0, 14));
    OrderStore::AddPayment(4, 1, pay(0, 15000, PaymentMethod::Cash, PaymentKind::Refund));
    orderedSale(5, 1, -5, 20000, {pay(-5, 3000, PaymentMethod::Electronic, PaymentKind::Deposit)});
    orderedSale(5, 2, 1, 9000, {});
    ReceiptStore::Cancel(receipt(1, 3, 5000, at(-1, 16)), at(0, 9));
    receipt(2, 1, 12000, at(0, 11));
    ReceiptStore::Cancel(receipt(3, 3, 25000, at(0, 15)), at(1, 9));
    ShopStore::Write({}, {u"Mirvane Optical メガネの松本 札幌駅前本店 ＪＲタワー店"_s,
                          u"北海道札幌市中央区北五条西二丁目５番地 ＪＲタワーオフィスプラザさっぽろ"
                          u"１５階 総合受付横 Tel 011-555-1234"_s,
                          u"011-555-1234"_s, QString(), TaxRounding::Down});
}

// The closing of D as reckoned by hand: 区分|項目|件数|金額, the section named on its first line.
const QStringList DayByHand = {
    u"売上|売上合計|2|50,000"_s, // 山田 12,000 + 佐藤 38,000
    u"|うち受注|1|38,000"_s,
    u"入金|現金|1|10,000"_s,   // 佐藤's deposit
    u"|クレジット|1|25,000"_s, // 鈴木's balance
    u"|電子マネー/QR|0|0"_s,   // 佐藤's 5,000 came on D+1
    u"|振込|0|0"_s,            // 鈴木's 5,000 came on D-1
    u"|その他|0|0"_s,
    u"|受注なしの売上|1|12,000"_s, // 山田
    u"|入金合計|3|47,000"_s,       // 10,000 + 25,000 + 12,000
    u"返金|現金|1|15,000"_s,       // 高橋's deposit back
    u"|クレジット|0|0"_s,
    u"|電子マネー/QR|0|0"_s,
    u"|振込|0|0"_s,
    u"|その他|0|0"_s,
    u"|返金合計|1|15,000"_s,
    u"差引|入金合計－返金合計||32,000"_s, // 47,000 - 15,000
    u"領収書|発行|2|37,000"_s,            // 12,000 + 25,000 (its cancelling is D+1's)
    u"|取消|1|5,000"_s,                   // issued on D-1
    u"残金|前日末|3|57,000"_s, // 鈴木 50,000-25,000, 高橋 30,000-15,000, 伊藤 20,000-3,000
    u"|当日末|2|45,000"_s,     // 佐藤 38,000-10,000, 伊藤 17,000; 鈴木 paid, 高橋 cancelled
    u"|増減||-12,000"_s,       // 45,000 - 57,000
};

QStringList shownLines(const GridView& grid) {
    QStringList lines;
    for (int row = 1; row <= grid.rowCount(); ++row) {
        QStringList cells;
        for (int column = 1; column <= 4; ++column)
            cells << grid.cellText(row, column);
        lines << cells.join(u'|');
    }
    return lines;
}

} // namespace

class TestNikkei : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    // From the menu: today at first; a date that is none or nothing refused; D shown with F5 as
    // reckoned by hand. Another terminal's payment meanwhile is on the paper (F9), which holds
    // every line, the shop and the day whole in their fields; F10 writes the same lines to CSV,
    // and a file that cannot be written is told, never said to be written.
    void theDayOnScreenOnPaperAndInTheCsv() {
        handMadeDay();
        const QString csv = harness.path(u"Export/日計表_20261120.csv"_s);
        const QString blocked = harness.path(u"blocked"_s);
        QFile(blocked).open(QIODevice::WriteOnly);
        harness.saveAnswers = QStringList{blocked + u"/日計表.csv"_s, csv};
        harness.msgs.expect(OpeErr_003);
        harness.msgs.expect(OpeErr_001);
        harness.msgs.expectBoxStartingWith(u"ＰＤＦファイルに出力しました。\r"_s, Title);
        harness.msgs.expectBoxStartingWith(u"ＣＳＶファイルを書き出せませんでした。\r"_s, Title);
        harness.msgs.expectBox(u"ＣＳＶファイルに出力しました。\r"_s + csv, Title);
        QStringList paid = DayByHand;
        paid[5] = u"|振込|1|1,000"_s; // the other terminal's
        paid[8] = u"|入金合計|4|48,000"_s;
        paid[15] = u"差引|入金合計－返金合計||33,000"_s;
        paid[19] = u"|当日末|2|44,000"_s; // 伊藤 16,000 now
        paid[20] = u"|増減||-13,000"_s;
        harness.screens.expect<FrmNikkei>([&](FrmNikkei& s) {
            auto& date = Find<xDate>(s, u"txtDate"_s);
            auto& grid = Find<GridView>(s, u"spdData"_s);
            auto& day = Find<QLabel>(s, u"lblDay"_s);
            // 11/22: 佐藤 23,000 after D+1's payment, 伊藤 17,000 and 9,000.
            QCOMPARE(date.text() + u' ' + day.text() + u' ' + shownLines(grid).value(19),
                     u"2026/11/22 2026/11/22 の日計 |当日末|3|49,000"_s);
            for (const QString& typed : {u"20261131"_s, QString()}) {
                Retype(&date, typed);
                QTest::keyClick(&s, Qt::Key_F5);
                QCOMPARE(day.text(), u"2026/11/22 の日計"_s);
                QCOMPARE(s.focusWidget(), &date);
            }
            Retype(&date, u"20261120"_s);
            QTest::keyClick(&date, Qt::Key_Return);
            QCOMPARE(day.text(), u"2026/11/20 の日計"_s);
            QCOMPARE(shownLines(grid), DayByHand);
            OtherTerminal(harness.folder()).act([] {
                OrderStore::AddPayment(5, 1,
                                       pay(0, 1000, PaymentMethod::Transfer, PaymentKind::Balance));
            });
            QTest::keyClick(&s, Qt::Key_F9);
            QCOMPARE(shownLines(grid), paid);
            QTest::keyClick(&s, Qt::Key_F10); // refused
            QTest::keyClick(&s, Qt::Key_F10);
        });
        FrmMenu menu;
        menu.show();
        QTest::mouseClick(&Find<QPushButton>(menu, u"cmdNikkei"_s), Qt::LeftButton);

        QCOMPARE(ReportJobs().size(), 1);
        const ReportJobRecord& job = ReportJobs().first();
        QCOMPARE(job.documentName + job.forms.join(u','), u"日計表PrnSan008.jfm"_s);
        QCOMPARE(job.pages.size(), 1);
        QCOMPARE(job.pageSizes.first().toSize(), QSize(148, 210));
        const QHash<QString, QString>& page = job.pages.first();
        QCOMPARE(page.value(u"Day"_s) + u' ' + page.value(u"PrintedAt"_s),
                 u"2026年11月20日（金） 印刷 2026/11/22 10:15"_s);
        QCOMPARE(page.value(u"Note"_s), OutstandingDefinition);
        for (int row = 1; row <= paid.size(); ++row) {
            const QStringList cells = paid[row - 1].split(u'|');
            const QString n = QString::number(row);
            QCOMPARE((QStringList{page.value(u"Sec_"_s + n), page.value(u"Item_"_s + n),
                                  page.value(u"Count_"_s + n), page.value(u"Amount_"_s + n)}),
                     (QStringList{cells[0], cells[1], cells[2], cells[3] + u"円"_s}));
        }
        QCOMPARE(FirstCutOff(job), QString());
        const QString text = PdfText(job.output, true);
        for (const QString& shown :
             {u"Mirvane Optical"_s, u"48,000"_s, u"-13,000"_s, u"2026/11/22 10:15"_s})
            QVERIFY2(text.contains(shown), qPrintable(shown + u'\n' + text.left(600)));

        const QByteArray bytes = ReadFile(csv);
        QVERIFY(bytes.startsWith(Utf8Bom));
        QStringList records = QString::fromUtf8(bytes.mid(Utf8Bom.size())).split(u"\r\n"_s);
        QCOMPARE(records.takeLast(), QString());
        QCOMPARE(records.takeFirst(), u"日付,区分,項目,件数,金額"_s);
        QCOMPARE(records.size(), paid.size());
        for (int i = 0; i < records.size(); ++i) {
            QStringList cells = paid[i].split(u'|');
            QString section = cells[0];
            for (int j = i; section.isEmpty(); --j)
                section = paid[j].section(u'|', 0, 0);
            cells[0] = section;
            cells[3].remove(u',');
            QCOMPARE(CsvFields(records[i]), QStringList{u"2026/11/20"_s} + cells);
        }
        QVERIFY(!QFileInfo::exists(blocked + u"/日計表.csv"_s));
    }

    // What is owed at a day's end: only purchases dated by then and not cancelled by then, less
    // their payments by then (refunds owed again), never below nothing.
    void theOutstandingBalanceRule() {
        const QDate d = Day;
        const auto sale = [&](int dated, qint64 total, std::vector<Payment> payments,
                              std::optional<int> cancelled = {}) {
            return OrderedSale{d.addDays(dated), total, cancelled ? d.addDays(*cancelled) : QDate(),
                               std::move(payments)};
        };
        const Payment deposit = pay(0, 8000, PaymentMethod::Cash, PaymentKind::Deposit);
        const Payment refund = pay(0, 3000, PaymentMethod::Cash, PaymentKind::Refund);
        const struct {
            OrderedSale sale;
            Owed before, after; // at the end of d-1 and of d
        } cases[] = {
            {sale(0, 10000, {deposit}), {0, 0}, {1, 2000}},              // taken on d
            {sale(-3, 10000, {deposit}), {1, 10000}, {1, 2000}},         // paid on d
            {sale(-3, 10000, {deposit, refund}), {1, 10000}, {1, 5000}}, // 3,000 paid back
            {sale(-3, 10000, {}, 0), {1, 10000}, {0, 0}},                // cancelled on d
            {sale(-3, 10000, {}, 1), {1, 10000}, {1, 10000}},            // cancelled after d
            {sale(1, 10000, {}), {0, 0}, {0, 0}},                        // bought after d
            {sale(-3, 5000, {deposit}), {1, 5000}, {0, 0}},              // never below 0
            {sale(-3, 10000, {pay(1, 10000, PaymentMethod::Credit, PaymentKind::Balance)}),
             {1, 10000},
             {1, 10000}}, // paid after d
        };
        std::vector<OrderedSale> all;
        for (const auto& c : cases) {
            QCOMPARE(OutstandingAt({c.sale}, d.addDays(-1)), c.before);
            QCOMPARE(OutstandingAt({c.sale}, d), c.after);
            all.push_back(c.sale);
        }
        // Together: 2,000 + 2,000 + 5,000 + 10,000 + 10,000 at the end of d.
        QCOMPARE(OutstandingAt(all, d), (Owed{5, 29000}));
    }
};

QTEST_MAIN(TestNikkei)
#include "tst_nikkei.moc"
