// Orders from the order to the hand-over: the statuses reached and when, deposits, balances and
// refunds that never go below nothing or over what is owed, the pick-up board's open orders in
// promised order, another terminal's work never overwritten, and older databases that gain the
// tables and show their past sales as completed.
#include "customer/FrmKokyaku.h"
#include "customer/PurchaseGrid.h"
#include "customer/UriageEntry.h"
#include "data/DatabaseCopy.h"
#include "data/OrderStore.h"
#include "data/Schema.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "orders/FrmJyuchu.h"
#include "platform/Failure.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xNum.h"
#include "platform/ui/Clock.h"
#include "support/Controls.h"
#include "support/Harness.h"
#include "support/OtherTerminal.h"
#include "support/Roads.h"
#include "support/ShopData.h"

#include <QComboBox>
#include <QLabel>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

Payment pay(qint64 amount, PaymentKind kind, PaymentMethod method = PaymentMethod::Cash) {
    return {.no = 0, .date = Today(), .amount = amount, .method = method, .kind = kind};
}

Order due(int days, OrderStatus status = OrderStatus::Taken) {
    Order order;
    order.status = status;
    order.due = days == 0 ? QDate() : Today().addDays(days);
    return order;
}

// The customer's purchase with an order, created as the register creates it.
void orderedSale(qint64 customerNo, int seq, const Order& order,
                 const std::vector<Payment>& payments = {}, qint64 total = 38000) {
    InsertPurchase({.user = customerNo, .seq = seq, .total = int(total)});
    OrderStore::Create(customerNo, seq, total, order, payments, Now());
}

// In the order dialog: a payment of the kind typed and recorded with F9.
void typePayment(FrmJyuchu& s, qint64 amount, PaymentKind kind) {
    Find<QComboBox>(s, u"cboPayKind"_s).setCurrentIndex(int(kind));
    Find<xNum>(s, u"txtPayAmount"_s).setValue(double(amount));
    QTest::keyClick(&s, Qt::Key_F9);
}

QString statusesOf(const Order& order) {
    QStringList texts;
    for (const StatusStep& step : order.steps)
        texts << OrderStatusText(step.status) + step.at.toString(u" HH:mm"_s);
    return texts.join(u'|');
}

} // namespace

class TestOrders : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    // What may be paid: never over what is owed, a refund never over what was paid.
    void paymentsAreRefusedOverTheBalanceAndRefundsOverWhatWasPaid() {
        const std::vector<Payment> deposit{pay(10000, PaymentKind::Deposit)};
        const struct {
            OrderStatus status;
            std::vector<Payment> before;
            Payment payment;
            QString refusal;
        } cases[] = {
            {OrderStatus::Taken, {}, pay(38000, PaymentKind::Deposit), {}},
            {OrderStatus::Taken,
             {},
             pay(38001, PaymentKind::Deposit),
             u"入金額が残金（38,000円）を超えています。"_s},
            {OrderStatus::Called, deposit, pay(28001, PaymentKind::Balance),
             u"入金額が残金（28,000円）を超えています。"_s},
            {OrderStatus::Taken, deposit, pay(0, PaymentKind::Balance),
             u"金額を入力してください。"_s},
            {OrderStatus::Cancelled, deposit, pay(10000, PaymentKind::Refund), {}},
            {OrderStatus::Cancelled, deposit, pay(10001, PaymentKind::Refund),
             u"返金額が入金済の額（10,000円）を超えています。"_s},
            {OrderStatus::Cancelled, deposit, pay(1, PaymentKind::Balance),
             u"キャンセルした受注には入金できません。"_s},
        };
        for (const auto& c : cases)
            QCOMPARE(PaymentRefusal(38000, c.status, c.before, c.payment), c.refusal);
        // A cancelled order owes nothing; what was paid never goes below nothing.
        QCOMPARE(OutstandingAmount(38000, OrderStatus::Cancelled, deposit), 0);
        QCOMPARE(PaidAmount({pay(5000, PaymentKind::Deposit), pay(9000, PaymentKind::Refund)}), 0);
        QCOMPARE(OutstandingAmount(38000, OrderStatus::Fitted, deposit), 28000);
    }

    // 受注 with a deposit, each status in turn with its time, the balance paid at お渡し; the
    // order leaves the board, and the copy of the shop carries all of it.
    void anOrderIsWalkedToTheHandOverWithItsDepositAndBalance() {
        InsertCustomer({.no = 1});
        orderedSale(1, 1, due(8), {pay(10000, PaymentKind::Deposit)});
        QCOMPARE(OrderStore::OpenOrders().size(), std::size_t(1));
        Order shown = *OrderStore::OfPurchase(1, 1).order;
        for (int minute = 1; NextStatus(shown.status); ++minute) {
            const OrderStatus next = *NextStatus(shown.status);
            if (next == OrderStatus::HandedOver)
                OrderStore::AddPayment(1, 1,
                                       pay(28000, PaymentKind::Balance, PaymentMethod::Credit));
            OrderStore::SetStatus(1, 1, shown, next, Now().addSecs(60 * minute));
            shown = *OrderStore::OfPurchase(1, 1).order;
        }
        const OrderStore::OrderState state = OrderStore::OfPurchase(1, 1);
        QCOMPARE(statusesOf(*state.order),
                 u"受注 10:15|発注済 10:16|入荷 10:17|加工済 10:18|連絡済 10:19|お渡し済 10:20"_s);
        QCOMPARE(PaidAmount(state.payments), 38000);
        QCOMPARE(state.payments.back().method, PaymentMethod::Credit);
        QCOMPARE(FailureNumber([] { OrderStore::AddPayment(1, 1, pay(1, PaymentKind::Balance)); }),
                 ErrorNumber::PaymentRefused);
        QVERIFY(OrderStore::OpenOrders().empty());

        const QString copy = harness.path(u"copy.mdb"_s);
        CreateDatabase(copy);
        Connection target;
        target.open(copy);
        for (const CopiedTable& table : CopyDatabase(gCon, target))
            if (table.table.startsWith(u"San_Order"_s) || table.table == u"San_Payment"_s)
                QCOMPARE(table.rows, table.table == u"San_Order"_s     ? 1
                                     : table.table == u"San_Payment"_s ? 2
                                                                       : 6);
        QCOMPARE(target.execute(u"select sum(Pay_Amount) from San_Payment"_s).field(0).toLongLong(),
                 38000);
    }

    // A cancelled order refunds its deposit; a remake points to what it makes again and goes on
    // like an order taken.
    void aCancellationRefundsAndARemakeGoesOnFromItsOwnStatus() {
        InsertCustomer({.no = 1});
        orderedSale(1, 1, due(3), {pay(10000, PaymentKind::Deposit)});
        OrderStore::SetStatus(1, 1, due(3), OrderStatus::Cancelled, Now());
        QCOMPARE(
            FailureNumber([] { OrderStore::AddPayment(1, 1, pay(10001, PaymentKind::Refund)); }),
            ErrorNumber::PaymentRefused);
        OrderStore::AddPayment(1, 1, pay(10000, PaymentKind::Refund));
        QCOMPARE(PaidAmount(OrderStore::OfPurchase(1, 1).payments), 0);

        Order remake = due(5, OrderStatus::Remake);
        remake.remakeOf = 1;
        orderedSale(1, 2, remake, {}, 0);
        const std::vector<OrderStore::BoardLine> board = OrderStore::OpenOrders();
        QCOMPARE(board.size(), std::size_t(1));
        QCOMPARE(board[0].order.remakeOf, 1);
        QCOMPARE(OrderStatusText(board[0].order.status), u"作り直し"_s);
        QCOMPARE(NextStatus(OrderStatus::Remake), OrderStatus::Ordered);
    }

    // The board lists open orders by promised date, late ones first and those without a date
    // last, with each one's balance; the menu's counts agree.
    void theBoardListsOpenOrdersByPromisedDate() {
        InsertCustomer({.no = 1});
        InsertCustomer({.no = 2, .name = u"佐藤 花子"_s, .tel = u"011-999-0000"_s});
        orderedSale(1, 1, due(0), {pay(5000, PaymentKind::Deposit)});
        orderedSale(2, 1, due(2, OrderStatus::Arrived));
        orderedSale(2, 2, due(-3, OrderStatus::Fitted), {pay(38000, PaymentKind::Deposit)});
        orderedSale(1, 2, due(-1, OrderStatus::HandedOver));
        QStringList listed;
        for (const OrderStore::BoardLine& line : OrderStore::OpenOrders())
            listed << u"%1-%2 %3 %4 %5"_s.arg(line.customerNo)
                          .arg(line.seq)
                          .arg(DaysLate(line.order, Today()))
                          .arg(line.name)
                          .arg(line.outstanding);
        QCOMPARE(listed.join(u'|'),
                 u"2-2 3 佐藤 花子 0|2-1 0 佐藤 花子 38000|1-1 0 山田 太郎 33000"_s);
        const OrderStore::BoardCounts counts = OrderStore::CountOpenOrders(Today());
        QCOMPARE(counts.late, 1);
        QCOMPARE(counts.ready, 2);
    }

    // Another terminal moved the order on, changed its date, or deleted the sale: nothing of
    // this terminal's stale save is stored.
    void anotherTerminalsWorkOnAnOrderIsNeverOverwritten() {
        InsertCustomer({.no = 1});
        orderedSale(1, 1, due(3));
        const Order shown = *OrderStore::OfPurchase(1, 1).order;
        OtherTerminal other(harness.folder());
        other.act([&] {
            OrderStore::SetStatus(1, 1, shown, OrderStatus::Ordered, Now());
            Order later = shown;
            later.due = Today().addDays(10);
            OrderStore::Update(1, 1, shown, later);
        });
        QCOMPARE(FailureNumber(
                     [&] { OrderStore::SetStatus(1, 1, shown, OrderStatus::Cancelled, Now()); }),
                 ErrorNumber::RowChanged);
        Order mine = shown;
        mine.due = Today().addDays(4);
        QCOMPARE(FailureNumber([&] { OrderStore::Update(1, 1, shown, mine); }),
                 ErrorNumber::RowChanged);
        // Another field changed here is kept beside the other terminal's date.
        mine = shown;
        mine.note = u"特急"_s;
        OrderStore::Update(1, 1, shown, mine);
        const Order stored = *OrderStore::OfPurchase(1, 1).order;
        QCOMPARE(stored.status, OrderStatus::Ordered);
        QCOMPARE(stored.due, Today().addDays(10));
        QCOMPARE(stored.note, u"特急"_s);

        other.deleteSale(1, 1);
        QCOMPARE(
            FailureNumber([] { OrderStore::AddPayment(1, 1, pay(100, PaymentKind::Deposit)); }),
            ErrorNumber::RowDeleted);
        QCOMPARE(QueryCount(u"select * from San_Order"_s) +
                     QueryCount(u"select * from San_OrderLog"_s),
                 0);
    }

    // In the register: a new sale takes its promised date and a deposit from the order dialog
    // and is stored with them in one registration; the stored sale then moves on and its
    // balance is paid from the same dialog, each step stored at once.
    void theRegisterTakesAnOrderWithItsDepositAndThenItsBalance() {
        InsertCustomer({.no = 1});
        const auto owed = [](FrmKokyaku& s) {
            auto& grid = Find<PurchaseGrid>(s, u"spdData"_s);
            return grid.cellText(1, PurchaseGrid::Progress) + u'|' +
                   grid.cellText(1, PurchaseGrid::Owed) + u'|' +
                   Find<QLabel>(s, u"lblZankin"_s).text();
        };
        OpenRegister(harness, 1, [&](FrmKokyaku& s) {
            EnterPurchase(Find<UriageEntry>(s, u"FraUriage"_s), Today(), 0, 0, 30000, 8000);
            harness.screens.expect<FrmJyuchu>([&](FrmJyuchu& d) {
                Find<xDate>(d, u"txtDueDate"_s).setDate(Today().addDays(7));
                harness.msgs.expectBox(u"入金額が残金（38,000円）を超えています。"_s,
                                       u"受注・入金"_s);
                typePayment(d, 40000, PaymentKind::Deposit);
                typePayment(d, 10000, PaymentKind::Deposit);
                QTest::keyClick(&d, Qt::Key_F5);
            });
            QTest::keyClick(&s, Qt::Key_F9);
            QCOMPARE(owed(s), u"受注|28,000|残金合計 28,000円"_s);
            QCOMPARE(QueryCount(u"select * from San_Order"_s), 0); // waits for the registration
            // The line's amount made smaller than its deposit: the registration stores nothing.
            auto& entry = Find<UriageEntry>(s, u"FraUriage"_s);
            const auto amounts = [&](int frame, int lens) {
                s.spdData_Click(1, 1);
                EnterPurchase(entry, Today(), 0, 0, frame, lens);
            };
            amounts(3000, 2000);
            harness.msgs.expect(OpeQes_001, Answer::Yes);
            harness.msgs.expectBox(
                u"入金額が残金（5,000円）を超えています。\n明細の金額か入金額を直してください。"_s,
                s.windowTitle());
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(QueryCount(u"select * from San_Uriage"_s), 0);
            amounts(30000, 8000);
            ExpectSaved(harness);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(owed(s), u"受注|28,000|残金合計 28,000円"_s);

            Find<PurchaseGrid>(s, u"spdData"_s).setActiveCell(1, 1);
            harness.screens.expect<FrmJyuchu>([&](FrmJyuchu& d) {
                harness.msgs.expectBox(u"状態を「発注済」に進めますか？"_s, u"受注・入金"_s,
                                       Answer::Yes);
                harness.msgs.expect(OpeInf_001);
                QTest::keyClick(&d, Qt::Key_F6);
                harness.msgs.expect(OpeInf_001);
                typePayment(d, 28000, PaymentKind::Balance);
                QVERIFY(d.stored());
                QTest::keyClick(&d, Qt::Key_F1);
            });
            QTest::keyClick(&s, Qt::Key_F9);
            QCOMPARE(owed(s), u"発注済||"_s);
        });
        const OrderStore::OrderState state = OrderStore::OfPurchase(1, 1);
        QCOMPARE(state.order->due, Today().addDays(7));
        QCOMPARE(statusesOf(*state.order), u"受注 10:15|発注済 10:15"_s);
        QCOMPARE(PaidAmount(state.payments), 38000);
    }

    // A database made before orders gains their tables when opened; its past sales stay
    // completed: no order, nothing owed, not on the board.
    void anOlderDatabaseGainsTheTablesAndItsSalesStayCompleted() {
        InsertCustomer({.no = 1});
        InsertPurchase({.user = 1, .seq = 1});
        for (const QString& table : OrderStore::Tables())
            gCon.execute(u"drop table "_s + table);
        UpgradeSchema(gCon);
        QVERIFY(OrderStore::OfCustomer(1).empty());
        QVERIFY(OrderStore::OpenOrders().empty());
        orderedSale(1, 2, due(1), {pay(1000, PaymentKind::Deposit)});
        QCOMPARE(OrderStore::OfCustomer(1).size(), std::size_t(1));
    }
};

QTEST_MAIN(TestOrders)
#include "tst_orders.moc"
