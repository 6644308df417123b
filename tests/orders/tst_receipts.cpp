// Receipts as issued: the items, the tax of the amount received and the stamp it needs; numbers
// taken by two terminals one after the other and never given twice; a reprint that is the
// receipt as issued after the purchase was corrected; a cancellation marked and kept, with the
// customer gone too.
#include "data/PurchaseStore.h"
#include "data/ReceiptStore.h"
#include "data/Schema.h"
#include "frame/Globals.h"
#include "platform/Failure.h"
#include "platform/ui/Clock.h"
#include "support/Harness.h"
#include "support/OtherTerminal.h"
#include "support/ShopData.h"

#include <QtTest>

using namespace Qt::StringLiterals;

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
        InsertPurchase({.user = 1, .frame = 32000, .lens = 40000, .total = 77000});
        Receipt r = ReceiptFor(PurchaseStore::OfCustomer(1).front(), 55000, PaymentMethod::Cash, 10,
                               TaxRounding::Down);
        const std::vector<ReceiptLine> lines{
            {u"フレーム"_s, 32000, 10}, {u"レンズ"_s, 40000, 10}, {u"その他"_s, 5000, 10}};
        const std::vector<RateTotal> taxes{{10, 55000, 5000}};
        QCOMPARE(r.lines, lines);
        QCOMPARE(r.taxes, taxes);
        QVERIFY(r.stamp); // 50,000 yen without the tax it states, in cash
        r.customerNo = 1;
        r.addressee = u"山田 太郎"_s;
        r.invoiceNo = u"T7000012050002"_s;

        const Receipt first = ReceiptStore::Issue(r, Now());
        OtherTerminal other(harness.folder());
        Receipt theirs;
        other.act([&] { theirs = ReceiptStore::Issue(r, Now()); });
        const Receipt third = ReceiptStore::Issue(r, Now());
        QCOMPARE(QList<qint64>({first.no, theirs.no, third.no}), QList<qint64>({1, 2, 3}));
        gCon.execute(u"delete from San_Receipt where Rcp_No = 3"_s);
        QCOMPARE(ReceiptStore::Issue(r, Now()).no, 4);

        gCon.execute(u"update San_Uriage set Uri_Fm_Kinga = 1, Uri_KingaKei = 45001"_s);
        Receipt reprint = ReceiptStore::Reprint(first.no);
        QCOMPARE(reprint.reprints, 1);
        reprint.reprints = 0;
        QCOMPARE(reprint, first);

        ReceiptStore::Cancel(first.no, Now());
        QCOMPARE(FailureNumber([&] { ReceiptStore::Cancel(first.no, Now()); }),
                 ErrorNumber::RowChanged);
        other.deleteCustomer(1);
        const std::optional<Receipt> kept = ReceiptStore::Find(first.no);
        QVERIFY(kept && kept->cancelled && kept->cancelledAt == Now());
        QCOMPARE(ReceiptStore::OfPurchase(1, 1).size(), std::size_t(3));
    }
};

QTEST_MAIN(TestReceipts)
#include "tst_receipts.moc"
