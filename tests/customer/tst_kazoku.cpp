// The family list: customers with the same telephone, and the register reopened for one.
#include "customer/CustomerList.h"
#include "customer/FrmKazoku.h"
#include "customer/FrmKokyaku.h"
#include "frame/MessageCatalogue.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xLabel.h"
#include "platform/ui/ShowModal.h"
#include "support/Harness.h"
#include "support/ShopData.h"

#include <QTableView>
#include <QtTest>

class TestKazoku : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() {
        HARNESS_INIT(harness);
        const QString tel = QStringLiteral("011-222-3333");
        InsertCustomer({.no = 1,
                        .name = QStringLiteral("山田 太郎"),
                        .kana = QStringLiteral("やまだ たろう"),
                        .tel = tel});
        InsertCustomer({.no = 2,
                        .name = QStringLiteral("山田 花子"),
                        .kana = QStringLiteral("やまだ はなこ"),
                        .tel = tel,
                        .dltF = QStringLiteral("1")});
        InsertCustomer({.no = 3,
                        .name = QStringLiteral("山田 一郎"),
                        .kana = QStringLiteral("やまだ いちろう"),
                        .tel = tel});
        InsertCustomer({.no = 4,
                        .name = QStringLiteral("隣の人"),
                        .kana = QStringLiteral("となり"),
                        .tel = QStringLiteral("011-2223333")});
        InsertCustomer({.no = 5,
                        .name = QStringLiteral("一人"),
                        .kana = QStringLiteral("ひとり"),
                        .tel = QStringLiteral("099-0000")});
    }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void theHouseholdIsListedInKanaOrderByTheExactTelephone() {
        FrmKazoku family;
        family.setTEL(QStringLiteral("011-222-3333"));
        harness.screens.expect<FrmKazoku>([](FrmKazoku& s) {
            QCOMPARE(s.windowTitle(), QStringLiteral("家族照会"));
            QStringList numbers;
            for (int row = 1; row <= s.spdData->maxRows(); ++row)
                numbers << s.spdData->cellText(row, 1);
            // Marked-deleted members too; another spelling of the number is not the same.
            QCOMPARE(numbers,
                     (QStringList{QStringLiteral("3"), QStringLiteral("1"), QStringLiteral("2")}));
            QVERIFY(s.cmdBtn[1]->isEnabled());
            QTest::keyClick(&s, Qt::Key_Escape);
        });
        ShowModal(family);
        QCOMPARE(family.chosenCustomer(), 0);
    }

    void withNobodyListedTheDetailKeyStaysOff() {
        FrmKazoku family;
        family.setTEL(QStringLiteral("000"));
        harness.msgs.expect(OpeErr_002);
        harness.screens.expect<FrmKazoku>([](FrmKazoku& s) {
            QCOMPARE(s.spdData->maxRows(), 0);
            QVERIFY(!s.cmdBtn[1]->isEnabled());
            s.cmdBtn_Click(1);
            QVERIFY(s.isVisible());
            QTest::mouseClick(s.cmdBtn[2], Qt::LeftButton);
        });
        ShowModal(family);
    }

    void choosingAMemberReopensTheRegisterForHim() {
        FrmKokyaku reg;
        reg.setSyori(1);
        harness.screens.expect<FrmKokyaku>([this](FrmKokyaku& s) {
            s.txtName->setText(QStringLiteral("書きかけ")); // dropped without a question
            harness.screens.expect<FrmKazoku>([](FrmKazoku& family) {
                QCOMPARE(family.spdData->maxRows(), 3);
                family.spdData->setActiveCell(1, 2);
                QTest::keyClick(&family, Qt::Key_F5);
            });
            harness.screens.expect<FrmKokyaku>([](FrmKokyaku& again) {
                QCOMPARE(again.lblNo->text(), QStringLiteral("3"));
                QCOMPARE(again.txtName->text(), QStringLiteral("山田 一郎"));
                QTest::keyClick(&again, Qt::Key_F1);
            });
            QTest::keyClick(&s, Qt::Key_F3);
            QVERIFY(!s.isVisible());
        });
        ShowModal(reg);
        QCOMPARE(harness.screens.opened(),
                 (QStringList{QStringLiteral("FrmKokyaku"), QStringLiteral("FrmKazoku"),
                              QStringLiteral("FrmKokyaku")}));
        QCOMPARE(QueryValue(QStringLiteral("select User_Name from San_User where User_No = 1"))
                     .toString(),
                 QStringLiteral("山田 太郎"));
    }

    void aDoubleClickChoosesAndCancelKeepsTheRegister() {
        FrmKokyaku reg;
        reg.setSyori(3);
        harness.screens.expect<FrmKokyaku>([this](FrmKokyaku& s) {
            harness.screens.expect<FrmKazoku>(
                [](FrmKazoku& family) { QTest::keyClick(&family, Qt::Key_Escape); });
            QTest::keyClick(&s, Qt::Key_F3);
            QVERIFY(s.isVisible());
            QCOMPARE(s.focusWidget(), s.txtDate);

            harness.screens.expect<FrmKazoku>([](FrmKazoku& family) {
                QWidget* cells = family.spdData->view()->viewport();
                const QPoint centre = family.spdData->view()
                                          ->visualRect(family.spdData->gridModel()->index(1, 0))
                                          .center();
                QTest::mouseClick(cells, Qt::LeftButton, {}, centre);
                QTest::mouseDClick(cells, Qt::LeftButton, {}, centre);
            });
            harness.screens.expect<FrmKokyaku>(
                [](FrmKokyaku& again) { QCOMPARE(again.lblNo->text(), QStringLiteral("1")); });
            QTest::keyClick(&s, Qt::Key_F3);
        });
        ShowModal(reg);
    }

    void anEmptyTelephoneOpensNoList() {
        FrmKokyaku reg;
        harness.screens.expect<FrmKokyaku>([](FrmKokyaku& s) {
            s.cmdFnuc[2]->setEnabled(true);
            QTest::keyClick(&s, Qt::Key_F3);
        });
        ShowModal(reg);
        QCOMPARE(harness.screens.opened(), QStringList{QStringLiteral("FrmKokyaku")});
    }
};

QTEST_MAIN(TestKazoku)
#include "tst_kazoku.moc"
