// The quick search: the statement, the three outcomes (no hit, one, several), the buttons and
// what the screen looks like after the register closes.
#include "customer/CustomerList.h"
#include "customer/FrmKokyaku.h"
#include "data/CustomerStore.h"
#include "frame/MessageCatalogue.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xField.h"
#include "platform/controls/xKana.h"
#include "platform/controls/xLabel.h"
#include "platform/ui/ShowModal.h"
#include "search/FrmKensaku.h"
#include "shell/FrmMenu.h"
#include "support/Harness.h"
#include "support/ShopData.h"

#include <QPushButton>
#include <QTableView>
#include <QtTest>

namespace {

QStringList listedNumbers(const FrmKensaku& s) {
    QStringList numbers;
    for (int row = 1; row <= s.spdData->maxRows(); ++row)
        numbers << s.spdData->cellText(row, 1);
    return numbers;
}

void seedCustomers() {
    InsertCustomer({.no = 1,
                    .name = QStringLiteral("鈴木 一郎"),
                    .kana = QStringLiteral("すずき いちろう"),
                    .tel = QStringLiteral("011-111-1111")});
    InsertCustomer({.no = 2,
                    .name = QStringLiteral("青木 花子"),
                    .kana = QStringLiteral("あおき はなこ"),
                    .tel = QStringLiteral("011-222-1111"),
                    .jusyo1 = QStringLiteral("  札幌市  ")});
    InsertCustomer({.no = 3,
                    .name = QStringLiteral("鈴木 次郎"),
                    .kana = QStringLiteral("すずき じろう"),
                    .tel = QStringLiteral("03-3333-3333")});
}

} // namespace

class TestKensaku : public QObject {
    Q_OBJECT
    Harness harness;

    void runSearch(const std::function<void(FrmKensaku&)>& drive) {
        FrmKensaku search;
        harness.screens.expect<FrmKensaku>(drive);
        ShowModal(search);
    }

private slots:
    void init() {
        HARNESS_INIT(harness);
        seedCustomers();
    }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void theStatementHasOneLikeConditionPerFilledField() {
        const QString base = QStringLiteral("select * from San_User");
        const QString order = QStringLiteral(" Order By User_Kana");
        QCOMPARE(CustomerStore::QuickSearchSql(QString(), QStringLiteral("011")),
                 base + QStringLiteral(" where User_Tel Like '%011%'") + order);
        QCOMPARE(CustomerStore::QuickSearchSql(QStringLiteral(" き "), QStringLiteral("1'1")),
                 base +
                     QStringLiteral(" where User_Kana Like '% き %' and User_Tel Like '%1''1%'") +
                     order);
        QCOMPARE(CustomerStore::QuickSearchSql(QStringLiteral("  "), QStringLiteral(" ")),
                 base + order);
    }

    void noHitOpensANewCustomerWithTheTypedTelephone() {
        harness.screens.expect<FrmKensaku>([this](FrmKensaku& s) {
            harness.screens.expect<FrmKokyaku>([](FrmKokyaku& reg) {
                QCOMPARE(reg.Syori(), 0);
                QCOMPARE(reg.EditMode, 0);
                QCOMPARE(reg.txtTel->text(), QStringLiteral("090-9"));
            });
            s.txtTel->setText(QStringLiteral(" 090-9 "));
            QTest::keyClick(&s, Qt::Key_F12);
            QVERIFY(!s.cmdBtn[1]->isEnabled());
            QCOMPARE(s.focusWidget(), s.txtTel);
            QCOMPARE(s.txtTel->text(), QStringLiteral(" 090-9 "));
        });
        FrmKensaku search;
        ShowModal(search);
    }

    void oneHitOpensThatCustomerAtOnce() {
        harness.screens.expect<FrmKensaku>([this](FrmKensaku& s) {
            harness.screens.expect<FrmKokyaku>([](FrmKokyaku& reg) {
                QCOMPARE(reg.Syori(), 2);
                QCOMPARE(reg.txtName->text(), QStringLiteral("青木 花子"));
            });
            QTest::keyClicks(s.txtTel, QStringLiteral("222"));
            QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
            // The list stays as it was.
            QCOMPARE(listedNumbers(s), QStringList{QStringLiteral("2")});
            QCOMPARE(s.spdData->cellText(1, 4), QStringLiteral("札幌市1-2-3"));
            QCOMPARE(s.txtTel->text(), QStringLiteral("222"));
        });
        FrmKensaku search;
        ShowModal(search);
    }

    void severalHitsAreListedInKanaOrderForTheUserToChoose() {
        harness.screens.expect<FrmKensaku>([this](FrmKensaku& s) {
            QVERIFY(!s.cmdBtn[1]->isEnabled());
            s.txtKana->setText(QStringLiteral("すずき"));
            QTest::keyClick(&s, Qt::Key_F12);
            // い comes before じ.
            QCOMPARE(listedNumbers(s), (QStringList{QStringLiteral("1"), QStringLiteral("3")}));
            QVERIFY(s.cmdBtn[1]->isEnabled());
            QCOMPARE(s.focusWidget(), s.spdData->view());

            harness.screens.expect<FrmKokyaku>(
                [](FrmKokyaku& reg) { QCOMPARE(reg.lblNo->text(), QStringLiteral("3")); });
            s.spdData->setActiveCell(2, 3);
            QTest::keyClick(&s, Qt::Key_F5);
            // Back from the register: an empty screen, the telephone field ready.
            QCOMPARE(s.spdData->maxRows(), 0);
            QCOMPARE(s.txtKana->text(), QString());
            QCOMPARE(s.focusWidget(), s.txtTel);
            QVERIFY(s.cmdBtn[1]->isEnabled());
        });
        FrmKensaku search;
        ShowModal(search);
    }

    void aDoubleClickOpensTheRowAndLeavesTheListAsItWas() {
        harness.screens.expect<FrmKensaku>([this](FrmKensaku& s) {
            s.txtTel->setText(QStringLiteral("1111"));
            QTest::keyClick(&s, Qt::Key_F12);
            QCOMPARE(listedNumbers(s), (QStringList{QStringLiteral("2"), QStringLiteral("1")}));
            harness.screens.expect<FrmKokyaku>(
                [](FrmKokyaku& reg) { QCOMPARE(reg.lblNo->text(), QStringLiteral("1")); });
            QWidget* cells = s.spdData->view()->viewport();
            const QPoint centre =
                s.spdData->view()->visualRect(s.spdData->gridModel()->index(1, 1)).center();
            QTest::mouseClick(cells, Qt::LeftButton, {}, centre);
            QTest::mouseDClick(cells, Qt::LeftButton, {}, centre);
            QCOMPARE(s.spdData->maxRows(), 2);
            QCOMPARE(s.txtTel->text(), QStringLiteral("1111"));
        });
        FrmKensaku search;
        ShowModal(search);
    }

    void emptyFieldsAndTheButtons() {
        harness.msgs.expect(OpeErr_001);
        harness.msgs.expect(OpeErr_002);
        harness.screens.expect<FrmKensaku>([this](FrmKensaku& s) {
            s.txtKana->setFocus();
            QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
            QCOMPARE(s.focusWidget(), s.txtTel);
            s.cmdBtn[1]->setEnabled(true);
            QTest::keyClick(&s, Qt::Key_F5); // nothing listed to open
            // Blanks count as typed: no condition, every customer listed.
            s.txtKana->setText(QStringLiteral(" "));
            QTest::keyClick(&s, Qt::Key_F12);
            QCOMPARE(s.spdData->maxRows(), 3);

            harness.screens.expect<FrmKokyaku>([](FrmKokyaku& reg) {
                QCOMPARE(reg.Syori(), 0);
                QCOMPARE(reg.txtTel->text(), QStringLiteral("099"));
            });
            s.txtTel->setText(QStringLiteral("099 "));
            QTest::keyClick(&s, Qt::Key_F1);
            QCOMPARE(s.spdData->maxRows(), 0);
            QCOMPARE(s.txtTel->text(), QString());
            QTest::keyClick(&s, Qt::Key_Escape);
            QVERIFY(!s.isVisible());
        });
        FrmKensaku search;
        QCOMPARE(ShowModal(search), int(QDialog::Rejected));
    }

    void theMenuLeadsToTheSearch() {
        FrmMenu menu;
        QVERIFY(menu.cmdMenu[0]->isEnabled());
        harness.screens.expect<FrmKensaku>([](FrmKensaku& s) {
            QCOMPARE(s.windowTitle(), QStringLiteral("顧客検索"));
            QTest::mouseClick(s.cmdBtn[2], Qt::LeftButton);
        });
        menu.cmdMenu_Click(0);
    }
};

QTEST_MAIN(TestKensaku)
#include "tst_kensaku.moc"
