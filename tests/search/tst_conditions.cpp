// The search conditions judged by the customers that come back from a seeded shop.
#include "data/CustomerQueries.h"
#include "data/CustomerSearch.h"
#include "frame/Globals.h"
#include "support/Harness.h"
#include "support/ShopData.h"

#include <QtTest>

namespace {

using C = SearchConditions;

QList<qint64> found(const C& c) {
    QList<qint64> numbers;
    SearchCustomers(c, 2024, [&](const ListedCustomer& customer) { numbers << customer.no; });
    return numbers;
}

C with(C::Condition condition, const std::function<void(C&)>& set = {}) {
    C c;
    for (QString& code : c.yubin)
        code = QStringLiteral("***-****");
    c.on[condition] = true;
    if (set)
        set(c);
    return c;
}

using Numbers = QList<qint64>;

} // namespace

class TestConditions : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() {
        HARNESS_INIT(harness);
        InsertCustomer({.no = 1,
                        .name = QStringLiteral("青木"),
                        .kana = QStringLiteral("あおき"),
                        .tel = QStringLiteral("011-111"),
                        .yubin = QStringLiteral("060-0001"),
                        .jusyo1 = QStringLiteral("札幌市中央区"),
                        .sex = 0,
                        .kazok = 0,
                        .tanjoGo = 1,
                        .nen = 30,
                        .mon = 5,
                        .day = 3});
        InsertCustomer({.no = 2,
                        .name = QStringLiteral("伊藤"),
                        .kana = QStringLiteral("いとう"),
                        .tel = QStringLiteral("011-222"),
                        .yubin = QString(),
                        .jusyo1 = QString(),
                        .jusyo2 = QString(),
                        .sex = 1,
                        .kazok = 1,
                        .tanjoGo = 2,
                        .nen = 1,
                        .mon = 8});
        InsertCustomer({.no = 3,
                        .name = QStringLiteral("上田"),
                        .kana = QString(),
                        .tel = QStringLiteral("0166-33"),
                        .yubin = QStringLiteral("070-0001"),
                        .jusyo1 = QStringLiteral("旭川市"),
                        .jusyo2 = QStringLiteral("札幌通"),
                        .sex = 0,
                        .kazok = 2,
                        .tanjoGo = 3,
                        .nen = 1960,
                        .mon = 5,
                        .day = 4});
        InsertCustomer({.no = 4,
                        .name = QStringLiteral("江藤"),
                        .kana = QStringLiteral("えとう"),
                        .tel = QStringLiteral("0138-44"),
                        .yubin = QStringLiteral("040-0001"),
                        .jusyo1 = QStringLiteral("函館市"),
                        .sex = 1,
                        .kazok = 3,
                        .tanjoGo = 1,
                        .nen = 0,
                        .mon = 0,
                        .day = 0});
        InsertPurchase({.user = 1, .seq = 1, .ymd = 20240110, .total = 30000});
        InsertPurchase({.user = 1,
                        .seq = 2,
                        .ymd = 20231205,
                        .item = QStringLiteral("002"),
                        .youto = QStringLiteral("002"),
                        .frameMaker = QString(),
                        .lensMaker = QStringLiteral("003"),
                        .total = 10000});
        InsertPurchase({.user = 2,
                        .seq = 1,
                        .ymd = 20240301,
                        .youto = QStringLiteral("003"),
                        .frameMaker = QStringLiteral("004"),
                        .lensMaker = QStringLiteral("004"),
                        .total = 50000});
        InsertPurchase({.user = 4,
                        .seq = 1,
                        .ymd = 20220101,
                        .item = QStringLiteral("003"),
                        .frameMaker = QStringLiteral("002"),
                        .lensMaker = QString(),
                        .total = 5000});
        // Product names for the name condition.
        gCon.execute(QStringLiteral(
            "update San_Uriage set Uri_Fm_Name = 'Ray' where Uri_UserNo = 1 and Uri_Seq = 2"));
        gCon.execute(
            QStringLiteral("update San_Uriage set Uri_Lz_Name = 'Wood' where Uri_UserNo = 2"));
    }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void customerSideConditions() {
        QCOMPARE(found(C{}), (Numbers{3, 1, 2, 4})); // by kana; the empty kana first
        QCOMPARE(found(with(C::Kana, [](C& c) { c.kana = QStringLiteral("とう"); })),
                 (Numbers{2, 4}));
        QCOMPARE(found(with(C::Kana, [](C& c) { c.kana = QStringLiteral("o'k"); })), Numbers{});
        QCOMPARE(found(with(C::Jusyo, [](C& c) { c.jusyo1 = QStringLiteral("札幌"); })),
                 (Numbers{3, 1}));
        QCOMPARE(found(with(C::Yubin, [](C& c) { c.yubin[2] = QStringLiteral("060-0001"); })),
                 Numbers{1});
        QCOMPARE(found(with(C::Yubin,
                            [](C& c) {
                                c.yubin[0] = QStringLiteral("040-0001");
                                c.yubin[5] = QStringLiteral("060-0001");
                            })),
                 (Numbers{1, 4}));
        QCOMPARE(found(with(C::Tel, [](C& c) { c.tel = QStringLiteral("011"); })), (Numbers{1, 2}));
        QCOMPARE(found(with(C::Sex, [](C& c) { c.sex = 1; })), (Numbers{2, 4}));
        QCOMPARE(found(with(C::Birthday, [](C& c) { c.month = 5; })), (Numbers{3, 1}));
        QCOMPARE(found(with(C::Birthday,
                            [](C& c) {
                                c.month = 5;
                                c.day = 4;
                            })),
                 Numbers{3});
    }

    void emptyTextConditionsSelectTheEmptyValue() {
        QCOMPARE(found(with(C::Kana)), Numbers{3});
        QCOMPARE(found(with(C::Jusyo)), Numbers{2});
        QCOMPARE(found(with(C::Yubin)), Numbers{2});
    }

    void theAgeFilter() {
        // 昭和 30 is 1955, 69 in 2024; 平成 1 is 1989; no year or no era never passes.
        QCOMPARE(found(with(C::Age,
                            [](C& c) {
                                c.ageFrom = 60;
                                c.ageTo = 70;
                            })),
                 Numbers{1});
        QCOMPARE(found(with(C::Age,
                            [](C& c) {
                                c.ageFrom = 0;
                                c.ageTo = 200;
                            })),
                 (Numbers{1, 2}));
        QCOMPARE(found(with(C::Age, [](C& c) { c.ageFrom = c.ageTo = 35; })), Numbers{2});
    }

    void purchaseConditions() {
        QCOMPARE(found(with(C::Visit,
                            [](C& c) {
                                c.visitFrom = QDate(2024, 1, 1);
                                c.visitTo = QDate(2024, 12, 31);
                            })),
                 (Numbers{1, 2}));
        QCOMPARE(found(with(C::Youto, [](C& c) { c.youto[4] = QStringLiteral("002"); })),
                 Numbers{1});
        QCOMPARE(found(with(C::Youto,
                            [](C& c) {
                                c.youto[0] = QStringLiteral("003");
                                c.youto[1] = QStringLiteral("001");
                            })),
                 (Numbers{1, 2, 4}));
        QCOMPARE(found(with(C::Item, [](C& c) { c.item[0] = QStringLiteral("003"); })), Numbers{4});
        // A maker matches as the frame's or as the lens's maker.
        QCOMPARE(found(with(C::Meka, [](C& c) { c.meka[3] = QStringLiteral("002"); })),
                 (Numbers{1, 4}));
        QCOMPARE(found(with(C::Meka, [](C& c) { c.meka[0] = QStringLiteral("003"); })), Numbers{1});
        QCOMPARE(found(with(C::HinName, [](C& c) { c.hinName[1] = QStringLiteral("ood"); })),
                 Numbers{2});
        QCOMPARE(found(with(C::HinName,
                            [](C& c) {
                                c.hinName[0] = QStringLiteral("Ray");
                                c.hinName[5] = QStringLiteral("nothing");
                            })),
                 Numbers{1});
    }

    void amountsInTheVisitRange() {
        QCOMPARE(found(with(C::Amount,
                            [](C& c) {
                                c.amountFrom = 20000;
                                c.amountTo = 40000;
                            })),
                 Numbers{1}); // 1 has 40000 in all; the bound counts
        C inYear = with(C::Amount, [](C& c) {
            c.amountFrom = 30000;
            c.amountTo = 30000;
        });
        inYear.on[C::Visit] = true;
        inYear.visitFrom = QDate(2024, 1, 1);
        inYear.visitTo = QDate(2024, 12, 31);
        QCOMPARE(found(inYear), Numbers{1});
        inYear.on[C::Sex] = true;
        inYear.sex = 1;
        QCOMPARE(found(inYear), Numbers{});
    }

    void fragmentsWhereABlankOrQuoteMatters() {
        C c = with(C::Meka, [](C& c) {
            c.meka[1] = QStringLiteral("002");
            c.meka[4] = QStringLiteral("005");
        });
        QCOMPARE(PurchaseFragments(c, MakerForm::List),
                 QStringLiteral(" and (Uri_Fm_MekaNo = '002' or Uri_Lz_MekaNo = '002' or "
                                "Uri_Fm_MekaNo = '005' or Uri_Lz_MekaNo = '005')"));
        QVERIFY(
            PurchaseFragments(c, MakerForm::Inquiry)
                .startsWith(QStringLiteral(" and (Uri_Fm_MekaNo = '' or Uri_Fm_MekaNo = '002'")));
        QVERIFY(PurchaseFragments(c, MakerForm::Inquiry)
                    .endsWith(QStringLiteral(" or Uri_Lz_MekaNo = '')")));
        c = with(C::HinName, [](C& c) {
            c.hinName[0] = QStringLiteral("a");
            c.hinName[2] = QStringLiteral("b");
        });
        QCOMPARE(PurchaseFragments(c, MakerForm::List),
                 QStringLiteral(" and (Uri_Fm_Name Like '%a%' or Uri_Lz_Name Like '%a%' or "
                                "Uri_Fm_Name Like '%b%' or Uri_Lz_Name Like '%b%')"));
        c = with(C::Birthday, [](C& c) { c.month = 12; });
        QVERIFY(CustomerQuery(c).endsWith(
            QStringLiteral(" and San1.User_Tanjo_Mon= 12 Order By User_Kana")));
    }
};

QTEST_MAIN(TestConditions)
#include "tst_conditions.moc"
