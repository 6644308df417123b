// The pick-up board: open orders by promised date with the late ones marked, the filters, an
// order moved on after its question with the time stored, another terminal's change met, the
// customer's register opened, and the call list printed whole over as many pages as it needs.
#include "customer/FrmKokyaku.h"
#include "data/OrderStore.h"
#include "frame/Conflicts.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "orders/FrmJyuchu.h"
#include "orders/FrmOwatasi.h"
#include "platform/controls/GridView.h"
#include "platform/controls/xNum.h"
#include "platform/report/Report.h"
#include "platform/ui/Clock.h"
#include "platform/ui/ShowModal.h"
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

const QString Title = u"お渡し管理"_s;

// The customer's purchase with an order at the status, promised `days` from today (0: none).
void order(qint64 customerNo, int seq, int days, OrderStatus status, qint64 deposit = 0) {
    InsertPurchase({.user = customerNo, .seq = seq});
    Order o;
    o.status = status;
    o.due = days == 0 ? QDate() : Today().addDays(days);
    std::vector<Payment> paid;
    if (deposit > 0)
        paid.push_back({.date = Today(), .amount = deposit, .kind = PaymentKind::Deposit});
    OrderStore::Create(customerNo, seq, 38000, o, paid, Now().addDays(-10));
}

// Two customers' orders: one without a date, one late, one handed over (not on the board).
void shop() {
    InsertCustomer({.no = 1});
    InsertCustomer({.no = 2, .name = u"佐藤 花子"_s, .tel = u"011-999-0000"_s});
    order(1, 1, 0, OrderStatus::Taken, 5000);
    order(2, 1, 2, OrderStatus::Arrived);
    order(2, 2, -3, OrderStatus::Fitted, 38000);
    order(1, 2, -1, OrderStatus::HandedOver);
    order(1, 3, 1, OrderStatus::Ordered);
}

QString question(const QString& name, const QString& status, const QString& more = {}) {
    return name + u" 様の F-1 / L-1 を「"_s + status + u"」にします。\r"_s + more +
           u"よろしいですか？"_s;
}

} // namespace

class TestOwatasi : public QObject {
    Q_OBJECT
    Harness harness;

    // Opens the board from the menu, whose button tells the late and the ready orders, and
    // drives it.
    void onBoard(const std::function<void(FrmOwatasi&, GridView&)>& drive,
                 const QString& menuCaption = {}) {
        harness.screens.expect<FrmOwatasi>(
            [&](FrmOwatasi& s) { drive(s, Find<GridView>(s, u"spdData"_s)); });
        FrmMenu menu;
        menu.show();
        auto& button = Find<QPushButton>(menu, u"cmdOwatasi"_s);
        if (!menuCaption.isEmpty())
            QCOMPARE(button.text(), menuCaption);
        QTest::mouseClick(&button, Qt::LeftButton);
    }

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    // By promised date, none last; the late line marked in text and colour; each filter shows
    // its lines at once, the status one chosen from its list with the keys; the counts are of
    // every open order.
    void theLinesTheirOrderAndTheFilters() {
        shop();
        onBoard(
            [](FrmOwatasi& s, GridView& grid) {
                QCOMPARE(ColumnTexts(grid, 1), u"2026/11/19|2026/11/23|2026/11/24|"_s);
                QCOMPARE(ColumnTexts(grid, 2), u"★3日|||"_s);
                QCOMPARE(ColumnTexts(grid, 3), u"佐藤 花子|山田 太郎|佐藤 花子|山田 太郎"_s);
                QCOMPARE(ColumnTexts(grid, 5) + ColumnTexts(grid, 8),
                         u"メガネ|メガネ|メガネ|メガネ加工済|発注済|入荷|受注"_s);
                QCOMPARE(ColumnTexts(grid, 9), u"0|38,000|38,000|33,000"_s);
                const auto colour = [&](int row) {
                    return grid.gridModel()->index(row - 1, 0).data(Qt::BackgroundRole);
                };
                QVERIFY(colour(1).value<QColor>().red() > colour(1).value<QColor>().green() &&
                        !colour(2).isValid());
                auto& count = Find<QLabel>(s, u"lblCount"_s);
                QCOMPARE(count.text(), u"件数 4件　　遅れ 1件　　連絡待ち 2件"_s);
                const std::pair<int, QString> filters[] = {
                    {1, u"2026/11/19|2026/11/24"_s},
                    {2, u"2026/11/19"_s},
                    {0, u"2026/11/19|2026/11/23|2026/11/24|"_s}};
                for (const auto& [option, dates] : filters) {
                    Find<QRadioButton>(s, u"optFilter"_s, option).click();
                    QCOMPARE(ColumnTexts(grid, 1), dates);
                }
                auto& status = Find<QComboBox>(s, u"cboStatus"_s);
                status.setFocus();
                QTest::keyClick(&status, Qt::Key_Down); // 作り直し: none
                QVERIFY(Find<QRadioButton>(s, u"optFilter"_s, 3).isChecked());
                QCOMPARE(grid.rowCount(), 0);
                QTest::keyClick(&status, Qt::Key_Down);
                QCOMPARE(ColumnTexts(grid, 1), u"2026/11/23"_s);
                QCOMPARE(count.text(), u"件数 1件（全 4件）　　遅れ 1件　　連絡待ち 2件"_s);
            },
            u"お渡し管理（遅れ 1件・連絡待ち 2件）"_s);
    }

    // F5 asks, naming the customer, the goods and the new status; each step is stored with
    // its time and the line stays current, so F5 walks it on. The hand-over says what is owed
    // and Enter declines it. Another terminal moved an order on or deleted its sale meanwhile:
    // nothing is stored, and the board is read again on はい.
    void f5MovesTheOrderOnAndMeetsAnotherTerminal() {
        shop();
        harness.msgs.expectBox(question(u"佐藤 花子"_s, u"連絡済"_s), Title, Answer::Yes);
        harness.msgs.expectBox(question(u"佐藤 花子"_s, u"お渡し済"_s), Title, MsgScript::Enter);
        harness.msgs.expectBox(question(u"山田 太郎"_s, u"入荷"_s), Title, Answer::Yes);
        ExpectConflict(
            harness,
            u"顧客番号 1 の売上（No.3）の受注は、この画面に表示した後で他の端末が変更しました"_s,
            Answer::Yes);
        harness.msgs.expectBox(question(u"佐藤 花子"_s, u"加工済"_s), Title, Answer::Yes);
        ExpectConflict(
            harness,
            u"顧客番号 2 の売上（No.1）の受注は、この画面に表示した後で他の端末が削除しました"_s,
            Answer::No);
        harness.msgs.expectBox(
            question(u"山田 太郎"_s, u"お渡し済"_s, u"残金 33,000円 が未入金です。\r"_s), Title,
            Answer::Yes);
        onBoard([&](FrmOwatasi& s, GridView& grid) {
            QTest::keyClick(&s, Qt::Key_F5); // the late line, 加工済
            QTest::keyClick(&s, Qt::Key_F5); // on to the hand-over: declined
            QCOMPARE(harness.msgs.shown().last().defaultButton, MsgDefault::Second);
            QCOMPARE(harness.msgs.shown().first().defaultButton, MsgDefault::First);
            QCOMPARE(ColumnTexts(grid, 8), u"連絡済|発注済|入荷|受注"_s);
            OtherTerminal other(harness.folder());
            other.act([] {
                OrderStore::SetStatus(1, 3, *OrderStore::OfPurchase(1, 3).order,
                                      OrderStatus::Arrived, Now());
            });
            grid.setActiveCell(2, 1);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(ColumnTexts(grid, 8), u"連絡済|入荷|入荷|受注"_s);
            other.deleteSale(2, 1);
            grid.setActiveCell(3, 1);
            QTest::keyClick(&s, Qt::Key_F5); // いいえ: the board stays as it was read
            QCOMPARE(grid.rowCount(), 4);
            QTest::keyClick(&s, Qt::Key_F12);
            QCOMPARE(ColumnTexts(grid, 3), u"佐藤 花子|山田 太郎|山田 太郎"_s);
            OrderStore::SetStatus(1, 1, *OrderStore::OfPurchase(1, 1).order, OrderStatus::Called,
                                  Now());
            QTest::keyClick(&s, Qt::Key_F12);
            grid.setActiveCell(3, 1);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(ColumnTexts(grid, 3), u"佐藤 花子|山田 太郎"_s);
        });
        const Order walked = *OrderStore::OfPurchase(2, 2).order;
        QCOMPARE(walked.status, OrderStatus::Called);
        QCOMPARE(walked.steps.back(), (StatusStep{OrderStatus::Called, Harness::FixedNow}));
        QCOMPARE(OrderStore::OfPurchase(1, 3).order->steps.size(), std::size_t(2));
        QCOMPARE(OrderStore::OfPurchase(1, 1).order->status, OrderStatus::HandedOver);
    }

    // F7 opens the current line's customer; what was changed there shows on the board after.
    void f7OpensTheRegister() {
        shop();
        onBoard([this](FrmOwatasi& s, GridView& grid) {
            harness.screens.expect<FrmKokyaku>([](FrmKokyaku& r) {
                QCOMPARE(r.shownNo(), 1);
                gCon.execute(u"update San_User set User_Name = '山田 一郎' where User_No = 1"_s);
            });
            grid.setActiveCell(2, 3);
            QTest::keyClick(&s, Qt::Key_F7);
            QCOMPARE(ColumnTexts(grid, 3), u"佐藤 花子|山田 一郎|佐藤 花子|山田 一郎"_s);
            // F6: the line's payments; the balance paid there shows on the board.
            harness.screens.expect<FrmJyuchu>([this](FrmJyuchu& d) {
                harness.msgs.expect(OpeInf_001);
                Find<QComboBox>(d, u"cboPayKind"_s).setCurrentIndex(int(PaymentKind::Balance));
                Find<xNum>(d, u"txtPayAmount"_s).setValue(38000);
                QTest::keyClick(&d, Qt::Key_F9);
            });
            grid.setActiveCell(2, 3);
            QTest::keyClick(&s, Qt::Key_F6);
            QCOMPARE(grid.cellText(2, 9), u"0"_s);
        });
    }

    // F9 prints the lines shown, 30 a page, long names and goods whole in their fields and
    // the amounts readable in the PDF; with no line shown there is nothing to print.
    void f9PrintsTheCallList() {
        const QString names[] = {u"勅使河原 左衛門三郎太郎兵衛之助"_s, u"O'Neil Mary"_s,
                                 u"西園寺公望之介右衛門三郎左衛門尉"_s};
        for (int no = 1; no <= 31; ++no) {
            InsertCustomer({.no = no, .name = names[no % 3], .tel = u"0123-45-6789"_s});
            order(no, 1, no <= 5 ? no - 6 : no, no % 2 ? OrderStatus::Arrived : OrderStatus::Taken,
                  no * 100);
        }
        gCon.execute(u"update San_Uriage set Uri_Fm_Name = 'ラインアート シャルマン XL1234 "
                     u"マットブラック', Uri_Lz_Name = 'HOYA ハイルックス 1.74 両面非球面 ブルー"
                     u"カット'"_s);
        harness.msgs.expectBoxStartingWith(u"ＰＤＦファイルに出力しました。\r"_s, Title);
        harness.msgs.expectBox(u"印刷する受注がありません。"_s, Title);
        onBoard([](FrmOwatasi& s, GridView&) {
            QTest::keyClick(&s, Qt::Key_F9);
            Find<QRadioButton>(s, u"optFilter"_s, 3).click();      // 受注: 15 lines
            Find<QComboBox>(s, u"cboStatus"_s).setCurrentIndex(1); // 作り直し: none
            QTest::keyClick(&s, Qt::Key_F9);
        });
        QCOMPARE(ReportJobs().size(), 1);
        const ReportJobRecord& job = ReportJobs().first();
        QCOMPARE(job.documentName + job.forms.join(u','), u"連絡リストPrnSan006.jfm"_s);
        QCOMPARE(job.pages.size(), 2);
        const auto field = [&](int page, const QString& name) {
            return job.pages[page].value(name, u"-"_s);
        };
        QCOMPARE((QStringList{field(0, u"Due_1"_s), field(0, u"Name_1"_s), field(0, u"Hin_1"_s),
                              field(0, u"Status_1"_s), field(0, u"Zan_1"_s), field(1, u"Page"_s),
                              field(1, u"Name_1"_s), field(1, u"Name_2"_s)}),
                 (QStringList{u"2026/11/17"_s, u"O'Neil Mary"_s,
                              u"ラインアート シャルマン XL1234 マットブラック / HOYA ハイルックス "
                              u"1.74 両面非球面 ブルーカット"_s,
                              u"入荷"_s, u"37,900"_s, u"2"_s, u"O'Neil Mary"_s, u"-"_s}));
        QCOMPARE(FirstCutOff(job), QString());
        const QString text = PdfText(job.output);
        QVERIFY2(text.contains(u"2026/11/17"_s) && text.contains(u"37,900"_s) &&
                     text.contains(u"0123-45-6789"_s),
                 qPrintable(text.left(400)));
        QCOMPARE(text.count(QLatin1Char('\f')), 2);
    }
};

QTEST_MAIN(TestOwatasi)
#include "tst_owatasi.moc"
