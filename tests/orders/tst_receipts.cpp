// Receipts as issued: numbers taken by two terminals one after the other and never given twice,
// no money receipted twice, a purchase changed or deleted meanwhile refused, a reprint that is
// the receipt as issued after the purchase was corrected, a cancellation marked and kept; and
// the receipt screen's road from the order dialog to the printed paper.
#include "data/OrderStore.h"
#include "data/PurchaseStore.h"
#include "data/ReceiptStore.h"
#include "data/Schema.h"
#include "data/ShopStore.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "orders/FrmJyuchu.h"
#include "orders/FrmRyosyu.h"
#include "platform/Failure.h"
#include "platform/controls/GridView.h"
#include "platform/controls/xDate.h"
#include "platform/report/Report.h"
#include "platform/ui/Clock.h"
#include "platform/ui/ShowModal.h"
#include "print/ReceiptPrint.h"
#include "support/Controls.h"
#include "support/Harness.h"
#include "support/OtherTerminal.h"
#include "support/Papers.h"
#include "support/ShopData.h"

#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QProcess>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const ShopDetails Shop{u"メガネの松本 札幌駅前通り本店 北海道最大級の品揃え"_s,
                       u"北海道札幌市中央区北五条西二丁目五番地 ＪＲタワーオフィスプラザさっぽろ"
                       u"十八階 一八〇五号室"_s,
                       u"011-209-5100"_s, u"T7000012050002"_s, TaxRounding::Down};

Purchase purchase(qint64 customerNo, int seq) {
    for (const Purchase& p : PurchaseStore::OfCustomer(customerNo))
        if (p.seq == seq)
            return p;
    return {};
}

// A receipt for the purchase of customer 1, as the screen makes it.
Receipt made(int seq, qint64 received, int paymentNo = 0,
             PaymentMethod method = PaymentMethod::Cash) {
    Receipt r = ReceiptFor(purchase(1, seq), received, method, 10, TaxRounding::Down);
    r.customerNo = 1;
    r.paymentNo = paymentNo;
    r.addressee = u"山田 太郎"_s;
    r.invoiceNo = Shop.invoiceNo;
    return r;
}

Payment pay(int no, qint64 amount, PaymentMethod method, PaymentKind kind) {
    return {.no = no, .date = Today(), .amount = amount, .method = method, .kind = kind};
}

} // namespace

class TestReceipts : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void aReceiptIsStoredAsIssuedNumberedOnceAndKept() {
        for (const QString& table : ReceiptStore::Tables())
            gCon.execute(u"drop table "_s + table); // as a database made before receipts
        UpgradeSchema(gCon);
        InsertCustomer({.no = 1});
        for (int seq = 1; seq <= 7; ++seq)
            InsertPurchase({.user = 1, .seq = seq, .frame = 32000, .lens = 40000, .total = 77000});
        Receipt r = made(1, 77000);
        const std::vector<ReceiptLine> lines{
            {u"フレーム"_s, 32000, 10}, {u"レンズ"_s, 40000, 10}, {u"その他"_s, 5000, 10}};
        const std::vector<RateTotal> taxes{{10, 77000, 7000}};
        QCOMPARE(r.lines, lines);
        QCOMPARE(r.taxes, taxes);
        QVERIFY(r.stamp); // 70,000 yen without the tax it states, in cash

        const Receipt first = ReceiptStore::Issue(r, Now());
        OtherTerminal other(harness.folder());
        Receipt theirs;
        other.act([&] { theirs = ReceiptStore::Issue(made(2, 77000), Now()); });
        const Receipt third = ReceiptStore::Issue(made(3, 77000), Now());
        QCOMPARE(QList<qint64>({first.no, theirs.no, third.no}), QList<qint64>({1, 2, 3}));
        gCon.execute(u"delete from San_Receipt where Rcp_No = 3"_s);
        QCOMPARE(ReceiptStore::Issue(made(4, 77000), Now()).no, 4);

        // Refused, changed meanwhile, deleted meanwhile: nothing stored, no number taken.
        const Receipt stale5 = made(5, 77000), stale6 = made(6, 77000);
        gCon.execute(u"update San_Uriage set Uri_Lz_Kinga = 41000 where Uri_Seq = 5"_s);
        other.execute(u"delete from San_Uriage where Uri_Seq = 6"_s);
        const struct {
            Receipt receipt;
            long failure;
        } refused[] = {{r, ErrorNumber::ReceiptRefused},
                       {stale5, ErrorNumber::RowChanged},
                       {stale6, ErrorNumber::RowDeleted},
                       {made(7, 70000), ErrorNumber::RowChanged}}; // not what was received
        for (const auto& c : refused)
            QCOMPARE(FailureNumber([&] { ReceiptStore::Issue(c.receipt, Now()); }), c.failure);

        gCon.execute(u"update San_Uriage set Uri_Fm_Kinga = 1, Uri_KingaKei = 45001 where "
                     u"Uri_Seq = 1"_s);
        Receipt reprint = ReceiptStore::Reprint(first.no);
        QCOMPARE(reprint.reprints, 1);
        reprint.reprints = 0;
        QCOMPARE(reprint, first);

        ReceiptStore::Cancel(first.no, Now());
        QCOMPARE(FailureNumber([&] { ReceiptStore::Cancel(first.no, Now()); }),
                 ErrorNumber::RowChanged);
        QCOMPARE(ReceiptStore::Issue(made(7, 77000), Now()).no, 5);
        other.deleteCustomer(1);
        const std::optional<Receipt> kept = ReceiptStore::Find(first.no);
        QVERIFY(kept && kept->cancelled && kept->cancelledAt == Now());
        QCOMPARE(ReceiptStore::OfPurchase(1, 1).size(), std::size_t(1));
    }

    // From the order dialog: a medical receipt for the deposit, refused for 上様 and without the
    // prescription's date; another terminal receipted the deposit meanwhile (refused, the list
    // read again), its receipt cancelled here, issued and printed, then reprinted the same.
    void aReceiptIsIssuedPrintedReprintedAndCancelledOnScreen() {
        ShopStore::Write({}, Shop);
        InsertCustomer({.no = 1, .name = u"勅使河原 左衛門三郎太郎兵衛之助"_s});
        InsertPurchase({.user = 1, .frame = 32000, .lens = 40000, .total = 77000});
        gCon.execute(
            u"update San_Uriage set Uri_Fm_Name = 'ラインアート シャルマン XL1234 "
            u"マットブラック', Uri_Lz_Name = 'ハイルックス 1.74 両面非球面 ブルーカット'"_s);
        OrderStore::Create(1, 1, 77000, Order{},
                           {pay(1, 60000, PaymentMethod::Cash, PaymentKind::Deposit),
                            pay(2, 17000, PaymentMethod::Credit, PaymentKind::Balance)},
                           Now());
        OtherTerminal other(harness.folder());
        const QString title = ReceiptTitle;
        harness.screens.expect<FrmJyuchu>([](FrmJyuchu& d) { QTest::keyClick(&d, Qt::Key_F8); });
        harness.screens.expect<FrmRyosyu>([&](FrmRyosyu& s) {
            auto& target = Find<QComboBox>(s, u"cboTarget"_s);
            QCOMPARE(target.count(), 3);
            target.setCurrentIndex(1); // the deposit, in cash
            QCOMPARE(Find<QLabel>(s, u"lblPreview"_s).text(),
                     u"10%対象 ¥60,000（内消費税 ¥5,454）\n収入印紙：必要（貼付欄を印刷します）"_s);
            Find<QComboBox>(s, u"cboKind"_s).setCurrentIndex(1);
            auto& atena = Find<QComboBox>(s, u"cboAtena"_s);
            atena.setCurrentIndex(1); // 上様
            harness.msgs.expectBox(u"医療費控除・療養費用の領収書は、眼鏡を使う方のお名前を宛名に"
                                   u"してください（お子様の療養費ではお子様のお名前）。"_s,
                                   title);
            QTest::keyClick(&s, Qt::Key_F5);
            atena.setEditText(u"勅使河原 花子"_s);
            harness.msgs.expectBox(u"医療費控除・療養費用の領収書には、処方箋の日付を入力して"
                                   u"ください。"_s,
                                   title);
            QTest::keyClick(&s, Qt::Key_F5);
            Find<xDate>(s, u"txtPrescDate"_s).setDate(QDate(2026, 10, 28));

            other.act([] { ReceiptStore::Issue(made(1, 60000, 1), Now()); });
            const QString question =
                u"「勅使河原 花子」宛の領収書（60,000円・現金）を発行して印刷しますか？"_s;
            harness.msgs.expectBox(question, title, Answer::Yes);
            harness.msgs.expectBox(u"この入金には領収書 No.1 を発行済みです。同じ入金の領収書は"
                                   u"二重に発行できません。再発行するか、取り消してから発行して"
                                   u"ください。"_s,
                                   title);
            QTest::keyClick(&s, Qt::Key_F5);
            auto& list = Find<GridView>(s, u"spdReceipts"_s);
            QCOMPARE(list.rowCount(), 1);
            list.setActiveCell(1, 1);
            harness.msgs.expectBox(u"領収書 No.1（60,000円）を取り消しますか？\n取り消した領収書"
                                   u"は「取消」として記録に残ります。"_s,
                                   title, Answer::Yes);
            harness.msgs.expect(OpeInf_001);
            QTest::keyClick(&s, Qt::Key_F7);
            QVERIFY(list.cellText(1, 8).startsWith(u"取消 "_s));

            target.setCurrentIndex(1);
            harness.msgs.expectBox(question, title, Answer::Yes);
            harness.msgs.expectBoxStartingWith(u"ＰＤＦファイルに出力しました。\r"_s, title);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(list.rowCount(), 2);
            list.setActiveCell(2, 1);
            harness.msgs.expectBoxStartingWith(u"ＰＤＦファイルに出力しました。\r"_s, title);
            QTest::keyClick(&s, Qt::Key_F6);
            QCOMPARE(list.cellText(2, 8), u"再発行 1回"_s);
            QTest::keyClick(&s, Qt::Key_F1);
        });
        FrmJyuchu order(1, u"勅使河原 左衛門三郎太郎兵衛之助"_s, purchase(1, 1));
        ShowModal(order);

        QCOMPARE(ReportJobs().size(), 2);
        const ReportJobRecord issued = ReportJobs()[0], reprinted = ReportJobs()[1];
        QCOMPARE(issued.forms, QStringList{u"PrnSan007.jfm"_s});
        QHash<QString, QString> page = issued.pages.first();
        const QStringList fields{u"Title"_s, u"No"_s,    u"Name"_s,  u"Amount"_s,   u"Line1"_s,
                                 u"Tax1"_s,  u"Dates"_s, u"Stamp"_s, u"InvoiceNo"_s};
        QStringList shown;
        for (const QString& field : fields)
            shown << page.value(field);
        QCOMPARE(shown, (QStringList{u"領収書（医療費控除・療養費用）"_s, u"No. 000002"_s,
                                     u"勅使河原 花子  様"_s, u"¥60,000-"_s,
                                     u"フレーム（HOYA ラインアート シャルマン XL1234 "
                                     u"マットブラック）"_s,
                                     u"10%対象 ¥60,000（内消費税 ¥5,454）"_s,
                                     u"お買上げ日 2026年01月01日\n処方箋の日付 2026年10月28日"_s,
                                     u"収入\n印紙"_s, u"登録番号 T7000012050002"_s}));
        page.insert(u"Mark"_s, u"再発行"_s);
        QCOMPARE(reprinted.pages.first(), page);
        QCOMPARE(FirstCutOff(issued) + FirstCutOff(reprinted), QString());
        QCOMPARE(ReceiptStore::Find(1)->cancelled, true);

        // The stamp's box is drawn for cash of 50,000 yen and more, not for a card's payment.
        harness.msgs.expectBoxStartingWith(u"ＰＤＦファイルに出力しました。\r"_s, title);
        PrintReceipt(nullptr, ReceiptStore::Issue(made(1, 17000, 2, PaymentMethod::Credit), Now()),
                     false);
        const auto stampBoxInked = [this](const ReportJobRecord& job) {
            const QString png = harness.path(u"receipt"_s);
            QProcess::execute(u"pdftoppm"_s,
                              {u"-r"_s, u"50"_s, u"-png"_s, u"-singlefile"_s, job.output, png});
            const QImage page(png + u".png"_s);
            const double dots = 50 / 25.4;
            int inked = 0; // along the box's left edge, 110 mm across, 140-156 mm down
            for (int y = int(140 * dots); y < int(156 * dots); ++y)
                for (int x = int(109 * dots); x <= int(111 * dots); ++x)
                    inked += page.pixelColor(x, y).lightness() < 128;
            return inked > 0;
        };
        QVERIFY(stampBoxInked(issued));
        QVERIFY(!stampBoxInked(ReportJobs().last()));
    }
};

QTEST_MAIN(TestReceipts)
#include "tst_receipts.moc"
