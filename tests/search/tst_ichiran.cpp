// The customer list with its conditions screen and sales inquiry, driven through the keys.
#include "customer/FrmKokyaku.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "platform/controls/GridView.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xLabel.h"
#include "platform/controls/xNum.h"
#include "platform/report/Report.h"
#include "platform/ui/ShowModal.h"
#include "print/FrmPrint.h"
#include "search/FrmIchiran.h"
#include "search/FrmIchiranSub.h"
#include "search/FrmTotalKensaku.h"
#include "search/ListGrid.h"
#include "support/Harness.h"
#include "support/ShopData.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QPushButton>
#include <QtTest>

namespace {

QString cell(const GridView& grid, int row, int col) {
    return grid.gridModel()->index(row - 1, col - 1).data().toString();
}

QStringList column(const GridView& grid, int col) {
    QStringList cells;
    for (int row = 1; row <= grid.rowCount(); ++row)
        cells << cell(grid, row, col);
    return cells;
}

const QString Marked = QStringLiteral("●");

void tick(FrmTotalKensaku& s, int index) {
    QTest::mouseClick(s.chkJoken[index], Qt::LeftButton);
}

} // namespace

class TestIchiran : public QObject {
    Q_OBJECT
    Harness harness;

    // Opens the list and searches with the conditions the driver enters.
    void search(FrmIchiran& list, const std::function<void(FrmTotalKensaku&)>& enter) {
        harness.screens.expect<FrmTotalKensaku>([enter](FrmTotalKensaku& s) {
            enter(s);
            QTest::mouseClick(s.cmdKensaku, Qt::LeftButton);
        });
        QTest::keyClick(&list, Qt::Key_F6);
    }

    void openList(const std::function<void(FrmIchiran&)>& drive) {
        FrmIchiran list;
        harness.screens.expect<FrmIchiran>([drive](FrmIchiran& s) { drive(s); });
        ShowModal(list);
    }

private slots:
    void init() {
        HARNESS_INIT(harness);
        InsertCustomer({.no = 1,
                        .name = QStringLiteral("青木"),
                        .kana = QStringLiteral("あおき"),
                        .tel = QStringLiteral("011-1"),
                        .kazok = 0});
        InsertCustomer({.no = 2,
                        .name = QStringLiteral("伊藤"),
                        .kana = QStringLiteral("いとう"),
                        .tel = QStringLiteral("011-1"),
                        .jusyo1 = QStringLiteral("函館市"),
                        .kazok = 1});
        InsertCustomer({.no = 3,
                        .name = QStringLiteral("上田"),
                        .kana = QStringLiteral("うえだ"),
                        .tel = QStringLiteral("022-2"),
                        .jusyo1 = QString(),
                        .kazok = 2});
        InsertCustomer({.no = 4,
                        .name = QStringLiteral("江藤"),
                        .kana = QStringLiteral("えとう"),
                        .tel = QStringLiteral("011-1"),
                        .kazok = 3});
        InsertPurchase({.user = 2, .seq = 1, .ymd = 20240110, .total = 30000});
        InsertPurchase({.user = 2,
                        .seq = 2,
                        .ymd = 20240110,
                        .item = QString(),
                        .frameMaker = QString(),
                        .total = 5000});
        InsertPurchase({.user = 2, .seq = 3, .ymd = 20230505, .total = 12000});
        InsertPurchase({.user = 4, .seq = 1, .ymd = 20250101, .total = 90000});
    }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void allCustomersAreListedWithTotalsVisitsAndMarks() {
        harness.msgs.expect(OpeInf_008);
        openList([this](FrmIchiran& s) {
            QCOMPARE(s.lblTaisyouCnt->text(), QStringLiteral("0"));
            QVERIFY(!s.cmdFnuc[4]->isEnabled());
            QVERIFY(s.cmdFnuc[5]->isEnabled());
            search(s, [](FrmTotalKensaku& c) { QVERIFY(c.FraAll->isVisible()); });
            QCOMPARE(column(*s.spdData, 1),
                     (QStringList{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"),
                                  QStringLiteral("4")}));
            QCOMPARE(s.spdData->cellText(2, 10), QStringLiteral("47,000"));
            QCOMPARE(s.spdData->cellText(2, 11), QStringLiteral("2024/01/10"));
            QCOMPARE(s.spdData->cellText(1, 11), QString());
            QCOMPARE(s.spdData->cellText(3, 9), QStringLiteral("個人"));
            // All customers: representatives and individuals with an address.
            QCOMPARE(column(*s.spdData, 2), (QStringList{Marked, QString(), QString(), QString()}));
            QCOMPARE(s.lblTaisyouCnt->text(), QStringLiteral("4"));
            QCOMPARE(s.lblPrintCnt->text(), QStringLiteral("1"));
            QVERIFY(s.cmdFnuc[2]->isEnabled());
            QVERIFY(s.cmdFnuc[3]->isEnabled());
            QCOMPARE(GlbKazokTaisyou, false);
        });
    }

    void conditionsWithAndWithoutTheFamilyMode() {
        harness.msgs.expect(OpeInf_008);
        harness.msgs.expect(OpeInf_008);
        harness.msgs.expect(OpeErr_012);
        openList([this](FrmIchiran& s) {
            search(s, [](FrmTotalKensaku& c) {
                tick(c, 3);
                c.txtTel->setText(QStringLiteral("011"));
            });
            QCOMPARE(s.conditionsScreen()->Result(), 1);
            // 1 represents the household, 2 is a family member, 4 wants no mail.
            QCOMPARE(column(*s.spdData, 2), (QStringList{Marked, QString(), QString()}));
            search(s, [](FrmTotalKensaku& c) { tick(c, 14); }); // the same conditions, family mode
            QVERIFY(GlbKazokTaisyou);
            QCOMPARE(column(*s.spdData, 2), (QStringList{Marked, Marked, QString()}));
            search(s, [](FrmTotalKensaku& c) { c.txtTel->setText(QStringLiteral("099")); });
            QCOMPARE(s.spdData->maxRows(), 0);
            QCOMPARE(s.lblTaisyouCnt->text(), QStringLiteral("0"));
            QVERIFY(!s.cmdFnuc[2]->isEnabled());
            QVERIFY(s.cmdFnuc[5]->isEnabled());
        });
    }

    void theConditionScreensChecksAndSwitches() {
        harness.msgs.expect(OpeErr_001);
        harness.msgs.expect(OpeErr_003);
        FrmTotalKensaku c;
        harness.screens.expect<FrmTotalKensaku>([](FrmTotalKensaku& s) {
            tick(s, 8);
            QVERIFY(!s.FraAll->isVisible());
            QTest::mouseClick(s.cmdKensaku, Qt::LeftButton);
            QCOMPARE(s.focusWidget(), s.cboYoto[0]);
            tick(s, 8);
            tick(s, 5);
            QCOMPARE(s.focusWidget(), s.txtToshi[0]);
            QTest::keyClicks(s.txtToshi[0], QStringLiteral("30"));
            s.txtToshi[1]->setFocus(); // the to-age takes the from-age
            QCOMPARE(s.txtToshi[1]->Value(), 30.0);
            s.txtToshi[1]->setValue(20);
            QTest::mouseClick(s.cmdKensaku, Qt::LeftButton);
            QCOMPARE(s.focusWidget(), s.txtToshi[0]);
            // Switching a condition off and on again resets it: dates to today.
            tick(s, 7);
            s.txtRaiten[0]->setDate(QDate(2020, 1, 1));
            tick(s, 7);
            tick(s, 7);
            QCOMPARE(s.txtRaiten[0]->date(), QDate(2026, 11, 22));
            QVERIFY(s.txtRaiten[0]->isEnabled());
            // Unticking the last condition drops the family mode: a search of everyone.
            tick(s, 14);
            tick(s, 5);
            tick(s, 7);
            QVERIFY(s.FraAll->isVisible());
            QVERIFY(!s.chkJoken[14]->isChecked());
            QTest::mouseClick(s.cmdKensaku, Qt::LeftButton);
        });
        ShowModal(c);
        QCOMPARE(c.Result(), 2);
        QCOMPARE(GlbKazokTaisyou, false);
    }

    void editingMarkingAndTheSavePass() {
        harness.msgs.expect(OpeInf_008);
        harness.msgs.expect(OpeErr_015);
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        harness.msgs.expect(OpeErr_012);
        openList([this](FrmIchiran& s) {
            search(s, [](FrmTotalKensaku&) {});
            ListGrid& grid = *s.spdData;
            grid.clicked(3, 2);
            QCOMPARE(grid.cellText(3, 2), Marked);
            QCOMPARE(s.lblPrintCnt->text(), QStringLiteral("2"));
            grid.blockSelected(1, 2, 2, 2);
            QCOMPARE(column(grid, 2).mid(0, 2), (QStringList{QString(), Marked}));
            // Row 1 corrected in place; a family change resets its mark.
            grid.gridModel()->setData(grid.gridModel()->index(0, 2), QStringLiteral("青木 改"),
                                      Qt::EditRole);
            QCOMPARE(grid.rowColor(1), ListGrid::Yellow);
            grid.gridModel()->setData(grid.gridModel()->index(0, 8), QStringLiteral("3"),
                                      Qt::EditRole);
            QCOMPARE(grid.cellText(1, 2), QString());
            QTest::keyClick(&s, Qt::Key_F9); // sorting waits until the edit is saved
            // Rows 2 and 3 marked for deletion; row 1 marked and unmarked stays changed.
            for (int row : {2, 3}) {
                grid.setActiveCell(row, 1);
                QTest::keyClick(&s, Qt::Key_F3);
                QCOMPARE(grid.rowColor(row), ListGrid::Red);
            }
            grid.setActiveCell(1, 1);
            QTest::keyClick(&s, Qt::Key_F3);
            QTest::keyClick(&s, Qt::Key_F3);
            QCOMPARE(grid.rowColor(1), ListGrid::Yellow);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(column(grid, 1), (QStringList{QStringLiteral("1"), QStringLiteral("4")}));
            QCOMPARE(grid.rowColor(1), ListGrid::White);
            QCOMPARE(s.lblTaisyouCnt->text(), QStringLiteral("2"));
            QTest::keyClick(&s, Qt::Key_F5); // nothing left to save
        });
        QCOMPARE(RowTexts(QStringLiteral("select * from San_User where User_No = 1"),
                          {QStringLiteral("User_Name"), QStringLiteral("User_Kazok_F"),
                           QStringLiteral("User_Entry2")}),
                 (QStringList{QStringLiteral("青木 改"), QStringLiteral("3"),
                              QStringLiteral("2026/11/22")}));
        QCOMPARE(QueryCount(QStringLiteral("select * from San_User")), 2);
        QCOMPARE(QueryCount(QStringLiteral("select * from San_Uriage where Uri_UserNo = 2")), 0);
        QCOMPARE(QueryCount(QStringLiteral("select * from San_Uriage where Uri_UserNo = 4")), 1);
    }

    void sortingByTheFourKeys() {
        harness.msgs.expect(OpeInf_008);
        openList([this](FrmIchiran& s) {
            search(s, [](FrmTotalKensaku&) {});
            const auto order = [&] {
                return column(*s.spdData, 1).join(QLatin1Char(','));
            };
            QTest::keyClick(&s, Qt::Key_F11); // sales, most first; equal sales by kana
            QCOMPARE(order(), QStringLiteral("4,2,1,3"));
            QTest::keyClick(&s, Qt::Key_F12); // last visit, latest first
            QCOMPARE(order(), QStringLiteral("4,2,1,3"));
            QTest::keyClick(&s, Qt::Key_F10); // first address line; equal ones keep their order
            QCOMPARE(order(), QStringLiteral("3,2,4,1"));
            QTest::keyClick(&s, Qt::Key_F9);
            QCOMPARE(order(), QStringLiteral("1,2,3,4"));
        });
    }

    void theRegisterAndTheInquiryOpenForTheCurrentRow() {
        harness.msgs.expect(OpeInf_008);
        harness.msgs.expect(OpeQes_002, Answer::Yes);
        harness.msgs.expect(OpeInf_002);
        harness.msgs.expect(OpeInf_007);
        openList([this](FrmIchiran& s) {
            search(s, [](FrmTotalKensaku&) {});
            s.spdData->setActiveCell(2, 3);
            harness.screens.expect<FrmKokyaku>([](FrmKokyaku& reg) {
                QCOMPARE(reg.Syori(), 2);
                QTest::keyClick(&reg, Qt::Key_F8); // the customer deleted in the register
            });
            QTest::keyClick(&s, Qt::Key_F7);
            // The deleted customer's row has left the list.
            QCOMPARE(column(*s.spdData, 1).join(QLatin1Char(',')), QStringLiteral("1,3,4"));
            QCOMPARE(s.lblTaisyouCnt->text(), QStringLiteral("3"));
            harness.screens.expect<FrmIchiranSub>([](FrmIchiranSub& inquiry) {
                QCOMPARE(inquiry.spdData->rowCount(), 1);
                QCOMPARE(inquiry.lblKaisu->text(), QStringLiteral("1"));
                QCOMPARE(inquiry.lblKinga->text(), QStringLiteral("\\90,000"));
            });
            s.spdData->setActiveCell(3, 1);
            QTest::keyClick(&s, Qt::Key_F8);
        });
    }

    void theInquiryCountsVisitsByDateAndChecksTheAmount() {
        SearchConditions c;
        FrmIchiranSub inquiry;
        inquiry.setUser(2);
        inquiry.setConditions(c);
        harness.screens.expect<FrmIchiranSub>([](FrmIchiranSub& s) {
            QCOMPARE(s.windowTitle(), QStringLiteral("指定顧客売上履歴照会"));
            QCOMPARE(column(*s.spdData, 1),
                     (QStringList{QStringLiteral("2024/01/10"), QStringLiteral("2024/01/10"),
                                  QStringLiteral("2023/05/05")}));
            QCOMPARE(s.lblKaisu->text(), QStringLiteral("2"));
            QCOMPARE(s.lblKinga->text(), QStringLiteral("\\47,000"));
            QCOMPARE(cell(*s.spdData, 2, 2), QStringLiteral(":"));
            QCOMPARE(cell(*s.spdData, 2, 4), QString());
            QCOMPARE(cell(*s.spdData, 1, 7), QStringLiteral("002:ニコン"));
            QTest::mouseClick(s.cmdEnd, Qt::LeftButton);
        });
        ShowModal(inquiry);

        c.on[SearchConditions::Amount] = true;
        c.amountFrom = 50000;
        c.amountTo = 60000;
        FrmIchiranSub outOfRange;
        outOfRange.setUser(2);
        outOfRange.setConditions(c);
        harness.screens.expect<FrmIchiranSub>([](FrmIchiranSub& s) {
            QCOMPARE(s.spdData->rowCount(), 0);
            QCOMPARE(s.lblKaisu->text(), QStringLiteral("0"));
            QCOMPARE(s.lblKinga->text(), QStringLiteral("\\0"));
        });
        ShowModal(outOfRange);
    }

    // A customer renamed in the register comes back read again: a later correction in the
    // list writes only what was changed there and never puts the old name back.
    void aRowChangedInTheRegisterIsReadAgain() {
        harness.msgs.expect(OpeInf_008);
        harness.msgs.expect(OpeQes_011, Answer::Yes);
        harness.msgs.expect(OpeInf_001);
        harness.msgs.expect(OpeInf_007);
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        openList([this](FrmIchiran& s) {
            search(s, [](FrmTotalKensaku&) {});
            s.spdData->setActiveCell(1, 3);
            harness.screens.expect<FrmKokyaku>([](FrmKokyaku& reg) {
                reg.txtName->setText(QStringLiteral("青木 新姓"));
                QTest::keyClick(&reg, Qt::Key_F5);
                QTest::keyClick(&reg, Qt::Key_F1);
            });
            QTest::keyClick(&s, Qt::Key_F7);
            QCOMPARE(s.spdData->cellText(1, ListGrid::Name), QStringLiteral("青木 新姓"));
            s.spdData->gridModel()->setData(s.spdData->gridModel()->index(0, 6),
                                            QStringLiteral("2階"), Qt::EditRole);
            QTest::keyClick(&s, Qt::Key_F5);
        });
        QCOMPARE(RowTexts(QStringLiteral("select * from San_User where User_No = 1"),
                          {QStringLiteral("User_Name"), QStringLiteral("User_Jusyo2")}),
                 (QStringList{QStringLiteral("青木 新姓"), QStringLiteral("2階")}));
    }

    // Conditions edited and then cancelled change nothing: printing and the inquiry work from
    // the search the list shows.
    void cancelledConditionsLeaveTheShownSearch() {
        harness.msgs.expect(OpeInf_008);
        harness.msgs.expect(OpeQes_009, Answer::Yes);
        openList([this](FrmIchiran& s) {
            search(s, [](FrmTotalKensaku&) {}); // everyone
            harness.screens.expect<FrmTotalKensaku>([](FrmTotalKensaku& c) {
                tick(c, 11);
                c.txtKinga[0]->setValue(1);
                c.txtKinga[1]->setValue(2);
                QTest::mouseClick(c.cmdCancel, Qt::LeftButton);
            });
            QTest::keyClick(&s, Qt::Key_F6);
            QCOMPARE(s.spdData->maxRows(), 4);
            harness.screens.expect<FrmIchiranSub>([](FrmIchiranSub& inquiry) {
                QCOMPARE(inquiry.spdData->rowCount(), 3); // no amount condition
            });
            s.spdData->setActiveCell(2, 1);
            QTest::keyClick(&s, Qt::Key_F8);
            harness.screens.expect<FrmPrint>(
                [](FrmPrint& print) { QTest::mouseClick(print.cmdPrint[0], Qt::LeftButton); });
            QTest::keyClick(&s, Qt::Key_F4);
        });
        // The head of the household in a list of everyone is written to as the family.
        QCOMPARE(ReportJobs().size(), 1);
        QCOMPARE(ReportJobs()[0].pages[0].value(QStringLiteral("Sama")),
                 QStringLiteral("御家族様"));
    }
};

QTEST_MAIN(TestIchiran)
#include "tst_ichiran.moc"
