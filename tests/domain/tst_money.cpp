// The money rules of a receipt: the tax a tax-included amount holds, rounded as the shop
// chooses and computed once per rate; the rate of the day; the revenue stamp's threshold by
// method; and the invoice registration number's shape and check digit.
#include "domain/Receipt.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class TestMoney : public QObject {
    Q_OBJECT

private slots:
    void theIncludedTaxIsRoundedAsTheShopChooses() {
        const struct {
            qint64 amount;
            int percent;
            qint64 down, halfUp, up;
        } cases[] = {
            {1100, 10, 100, 100, 100}, {38000, 10, 3454, 3455, 3455},     {1000, 8, 74, 74, 75},
            {105, 10, 9, 10, 10},      {-38000, 10, -3454, -3455, -3455}, {0, 10, 0, 0, 0},
        };
        for (const auto& c : cases) {
            QCOMPARE(IncludedTax(c.amount, c.percent, TaxRounding::Down), c.down);
            QCOMPARE(IncludedTax(c.amount, c.percent, TaxRounding::HalfUp), c.halfUp);
            QCOMPARE(IncludedTax(c.amount, c.percent, TaxRounding::Up), c.up);
        }
    }

    // Two lines of 105 yen hold 9 yen each when rounded down line by line, but the receipt's
    // 210 yen holds 19: the tax is computed once per rate.
    void theTaxIsComputedOncePerRate() {
        const std::vector<ReceiptLine> lines{
            {u"フレーム"_s, 105, 10}, {u"レンズ"_s, 105, 10}, {u"ケース"_s, 1000, 8}};
        const std::vector<RateTotal> expected{{10, 210, 19}, {8, 1000, 74}};
        QCOMPARE(TaxPerRate(lines, TaxRounding::Down), expected);
        QCOMPARE(IncludedTax(105, 10, TaxRounding::Down) * 2, 18);
    }

    void theRateIsTheOneOfTheDay() {
        const std::vector<TaxRate> rates{{QDate(2019, 10, 1), 10}, {QDate(2014, 4, 1), 8}};
        QCOMPARE(TaxPercentOn(rates, QDate(2019, 9, 30)), 8);
        QCOMPARE(TaxPercentOn(rates, QDate(2019, 10, 1)), 10);
        QCOMPARE(TaxPercentOn(rates, QDate(2014, 3, 31)), 0);
    }

    // A receipt is for the whole purchase or for one payment (a refund takes none), and no money
    // is receipted twice while a receipt covering it is not cancelled.
    void eachPaymentOrTheWholePurchaseIsReceiptedOnce() {
        const QDate day(2026, 11, 2);
        const std::vector<Payment> payments{
            {1, day, 20000, PaymentMethod::Cash, PaymentKind::Deposit},
            {2, day, 5000, PaymentMethod::Cash, PaymentKind::Refund},
            {3, day, 62000, PaymentMethod::Credit, PaymentKind::Balance}};
        const std::vector<ReceiptTarget> ordered{{0, 77000, PaymentMethod::Cash, QDate()},
                                                 {1, 20000, PaymentMethod::Cash, day},
                                                 {3, 62000, PaymentMethod::Credit, day}};
        QCOMPARE(ReceiptTargets(77000, true, payments), ordered);
        QVERIFY(ReceiptTargets(77000, true, {}).empty()); // an order paid nothing yet
        const std::vector<ReceiptTarget> sold{{0, 38000, PaymentMethod::Cash, QDate()}};
        QCOMPARE(ReceiptTargets(38000, false, {}), sold);

        const auto receipt = [](qint64 no, int paymentNo, bool cancelled) {
            Receipt r;
            r.no = no, r.paymentNo = paymentNo, r.cancelled = cancelled;
            return r;
        };
        const struct {
            std::vector<Receipt> issued;
            int paymentNo;
            qint64 covering;
        } cases[] = {
            {{}, 0, 0},
            {{receipt(4, 1, false)}, 1, 4},
            {{receipt(4, 1, false)}, 3, 0},
            {{receipt(4, 1, false)}, 0, 4},
            {{receipt(4, 1, true), receipt(6, 0, false)}, 3, 6},
            {{receipt(4, 1, true)}, 1, 0},
        };
        for (const auto& c : cases)
            QCOMPARE(ReceiptCovering(c.issued, c.paymentNo), c.covering);
    }

    // 50,000 yen or more without the tax stated, received as money: a card is no receipt of
    // money.
    void aRevenueStampForMoneyOfFiftyThousandWithoutTheTax() {
        const struct {
            qint64 received, tax;
            PaymentMethod method;
            bool stamp;
        } cases[] = {
            {55000, 5000, PaymentMethod::Cash, true},
            {54999, 4999, PaymentMethod::Transfer, true},
            {54989, 4999, PaymentMethod::Cash, false},
            {200000, 18181, PaymentMethod::Credit, false},
            {200000, 18181, PaymentMethod::Electronic, false},
        };
        for (const auto& c : cases)
            QCOMPARE(NeedsRevenueStamp(c.received, c.tax, c.method), c.stamp);
    }

    void theRegistrationNumberIsTAnd13DigitsWithItsCheckDigit() {
        const struct {
            QString typed;
            RegistrationCheck check;
        } cases[] = {
            {u"T7000012050002"_s, RegistrationCheck::Valid},
            {u"ｔ１１８０－３０１０－１８７７１"_s, RegistrationCheck::Valid},
            {u"T7000012050003"_s, RegistrationCheck::CheckDigitDiffers},
            {u"7000012050002"_s, RegistrationCheck::NotTAnd13Digits},
            {u"T700001205000"_s, RegistrationCheck::NotTAnd13Digits},
            {u"T70000120500O2"_s, RegistrationCheck::NotTAnd13Digits},
        };
        for (const auto& c : cases)
            QCOMPARE(CheckRegistrationNumber(RegistrationNumberOf(c.typed)), c.check);
        QCOMPARE(RegistrationNumberOf(u"ｔ１１８０－３０１０－１８７７１"_s), u"T1180301018771"_s);
    }
};

QTEST_MAIN(TestMoney)
#include "tst_money.moc"
