// Purchases on the register: lines entered, changed, marked and unmarked in the grid, written
// with the customer in one transaction, and shown again as stored. The entry always writes to
// the line it shows, whichever way the current line was moved.
#include "customer/FrmKokyaku.h"
#include "customer/PurchaseGrid.h"
#include "customer/UriageEntry.h"
#include "data/MasterStore.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xNum.h"
#include "support/Roads.h"
#include "support/ShopData.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QPushButton>
#include <QTableView>
#include <QtTest>

namespace {

QStringList column(const PurchaseGrid& grid, int col) {
    QStringList cells;
    for (int row = 1; row <= grid.lineCount(); ++row)
        cells << grid.cellText(row, col);
    return cells;
}

QStringList stored(qint64 user, int seq, const QStringList& columns) {
    return RowTexts(
        QStringLiteral("select * from San_Uriage where Uri_UserNo = %1 and Uri_Seq = %2")
            .arg(user)
            .arg(seq),
        columns);
}

QPoint rowPoint(const PurchaseGrid& grid, int row) {
    return grid.view()->visualRect(grid.view()->model()->index(row - 1, 1)).center();
}

} // namespace

class TestPurchases : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void threeNewLinesGetConsecutiveNumbersWithTheNewCustomer() {
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        harness.msgs.expect(OpeInf_001);
        OpenRegister(harness, 0, [](FrmKokyaku& s) {
            s.txtName->setText(QStringLiteral("田中 一"));
            UriageEntry& e = *s.FraUriage;
            EnterPurchase(e, QDate(2026, 10, 1), 0, 0, 20000, 18000);
            QVERIFY(s.spdData->isVisible());
            EnterPurchase(e, QDate(2026, 11, 20), 1, 1, 15000);
            EnterPurchase(e, QDate(2025, 1, 5), 2, 2);
            // Newest first, each line new and light cyan.
            QCOMPARE(column(*s.spdData, PurchaseGrid::Date),
                     (QStringList{QStringLiteral("2026/11/20"), QStringLiteral("2026/10/01"),
                                  QStringLiteral("2025/01/05")}));
            QCOMPARE(column(*s.spdData, PurchaseGrid::Status),
                     QStringList(3, QStringLiteral("新規")));
            QCOMPARE(s.spdData->rowColor(2), QColor(128, 255, 255));
            QCOMPARE(s.spdData->cellText(2, PurchaseGrid::Total), QStringLiteral("38,000"));
            QCOMPARE(s.spdData->cellText(1, PurchaseGrid::Item), QStringLiteral("サングラス"));
            QCOMPARE(e.LineMode(), 0);
            QCOMPARE(e.cboItem->currentIndex(), -1);
            QCOMPARE(s.focusWidget(), e.txtDatc);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(s.spdData->lineCount(), 3);
            QVERIFY(!s.spdData->hasMarkedLines());
        });
        QCOMPARE(StoredSeqs(1), (QList<int>{1, 2, 3}));
        QCOMPARE(stored(1, 2,
                        {QStringLiteral("Uri_Date"), QStringLiteral("Uri_ItemNo"),
                         QStringLiteral("Uri_YoutoNo"), QStringLiteral("Uri_Fm_MekaNo"),
                         QStringLiteral("Uri_Fm_Kinga"), QStringLiteral("Uri_Lz_Kinga"),
                         QStringLiteral("Uri_KingaKei")}),
                 (QStringList{QStringLiteral("20261001"), QStringLiteral("001"),
                              QStringLiteral("001"), QString(), QStringLiteral("20000"),
                              QStringLiteral("18000"), QStringLiteral("38000")}));
    }

    void markingAndUnmarkingRestoresTheLinesState() {
        InsertCustomer({.no = 5});
        InsertPurchase({.user = 5, .seq = 1, .ymd = 20250101});
        InsertPurchase({.user = 5, .seq = 2, .ymd = 20240101});
        harness.msgs.expect(OpeErr_017);
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        harness.msgs.expect(OpeInf_001);
        OpenRegister(harness, 5, [](FrmKokyaku& s) {
            PurchaseGrid& grid = *s.spdData;
            UriageEntry& e = *s.FraUriage;
            const auto status = [&](int row) {
                return grid.cellText(row, PurchaseGrid::Status);
            };
            // Line 1 changed through the fields, then marked and unmarked: changed again.
            QTest::mouseClick(e.cmdOk, Qt::LeftButton); // line 1 was loaded on opening
            QCOMPARE(status(1), QStringLiteral("変更"));
            QCOMPARE(grid.rowColor(1), QColor(255, 255, 128));
            grid.setActiveCell(1, 1);
            QTest::mouseClick(e.cmdCancel, Qt::LeftButton);
            QCOMPARE(status(1), QStringLiteral("削除"));
            QCOMPARE(grid.rowColor(1), QColor(255, 128, 128));
            // A line marked for deletion cannot be changed.
            s.spdData_Click(1, 3);
            QTest::mouseClick(e.cmdOk, Qt::LeftButton);
            QCOMPARE(status(1), QStringLiteral("削除"));
            QTest::mouseClick(e.cmdCancel, Qt::LeftButton);
            QCOMPARE(status(1), QStringLiteral("変更"));
            // An unchanged line marked and unmarked: no status, but light yellow.
            grid.setActiveCell(2, 1);
            QTest::mouseClick(e.cmdCancel, Qt::LeftButton);
            QCOMPARE(status(2), QStringLiteral("削除"));
            grid.setActiveCell(2, 1);
            QTest::mouseClick(e.cmdCancel, Qt::LeftButton);
            QCOMPARE(status(2), QString());
            QCOMPARE(grid.rowColor(2), QColor(255, 255, 128));
            QCOMPARE(s.focusWidget(), e.txtDatc);
            // A new line taken back with "明細削除" leaves the grid and never reaches the file.
            EnterPurchase(e, QDate(2026, 11, 22), 0, 0);
            QCOMPARE(grid.lineCount(), 3);
            grid.setActiveCell(1, 1);
            QCOMPARE(status(1), QStringLiteral("新規"));
            QTest::mouseClick(e.cmdCancel, Qt::LeftButton);
            QCOMPARE(grid.lineCount(), 2);
            grid.setActiveCell(1, 1);
            QTest::mouseClick(e.cmdCancel, Qt::LeftButton); // the changed line marked again
            QTest::mouseClick(e.cmdCancel, Qt::LeftButton); // and unmarked: changed, stored
            QTest::keyClick(&s, Qt::Key_F5);
        });
        QCOMPARE(StoredSeqs(5), (QList<int>{1, 2}));
    }

    void thePrescriptionIsStoredAsNumbersAndShownAgain() {
        InsertCustomer({.no = 7});
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        harness.msgs.expect(OpeInf_001);
        OpenRegister(harness, 7, [](FrmKokyaku& s) {
            UriageEntry& e = *s.FraUriage;
            e.txtSph[0]->setFocus();
            QTest::keyClicks(e.txtSph[0], QStringLiteral("-2.5"));
            e.txtSph[1]->setFocus();
            QTest::keyClicks(e.txtSph[1], QStringLiteral("125")); // hundredths: +1.25
            e.txtB1[1]->setFocus();
            QTest::keyClicks(e.txtB1[1], QStringLiteral("IN"));
            e.txtPd[1]->setFocus();
            QTest::keyClicks(e.txtPd[1], QStringLiteral("62"));
            e.txtAx[1]->setFocus();
            QCOMPARE(e.txtPd[1]->text(), QStringLiteral("62.0"));
            EnterPurchase(e, QDate(2024, 3, 5), 0, 0);
            QCOMPARE(s.spdData->cellText(1, 16), QStringLiteral("-2.50"));
            QCOMPARE(s.spdData->cellText(1, 29), QStringLiteral("+1.25"));
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(s.spdData->cellText(1, PurchaseGrid::Date), QStringLiteral("2024/03/05"));
            s.spdData_Click(1, 1);
            QCOMPARE(e.txtDatc->date(), QDate(2024, 3, 5));
            QCOMPARE(e.txtSph[1]->text(), QStringLiteral("+1.25"));
            QCOMPARE(e.txtCyl[0]->text(), QString()); // 0 is shown empty
        });
        RecordSet row =
            gCon.execute(QStringLiteral("select * from San_Uriage where Uri_UserNo = 7"));
        QCOMPARE(row.field(QStringLiteral("Uri_Date")).toLongLong(), 20240305);
        QCOMPARE(row.field(QStringLiteral("Uri_R_Sph")).toDouble(), -2.5);
        QCOMPARE(row.field(QStringLiteral("Uri_L_Sph")).toDouble(), 1.25);
        QCOMPARE(row.field(QStringLiteral("Uri_L_B1")).toString(), QStringLiteral("IN"));
        QCOMPARE(row.field(QStringLiteral("Uri_L_Pd")).toDouble(), 62.0);
        QCOMPARE(row.field(QStringLiteral("Uri_R_Cyl")).toDouble(), 0.0);
        QCOMPARE(row.field(QStringLiteral("Uri_R_B2")).toString(), QString());
    }

    void aFailingLineRollsBackTheCustomerChangeToo() {
        InsertCustomer({.no = 8});
        InsertPurchase({.user = 8, .seq = 1});
        // Another terminal wrote the same purchase number first.
        CreateBeforeInsertTrigger(
            QStringLiteral("same_seq"), QStringLiteral("San_Uriage"),
            QStringLiteral("insert into San_Uriage (Uri_UserNo, Uri_Seq, Uri_Date) "
                           "values (new.Uri_UserNo, new.Uri_Seq, 0)"));
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        harness.msgs.expect(OpeErr_010);
        harness.msgs.expect(OpeQes_007, Answer::Yes);
        OpenRegister(harness, 8, [](FrmKokyaku& s) {
            s.txtName->setText(QStringLiteral("名前を変えた"));
            QTest::mouseClick(s.FraUriage->cmdOk, Qt::LeftButton); // line 1 changed
            EnterPurchase(*s.FraUriage, QDate(2026, 11, 22), 0, 0);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(s.spdData->lineCount(), 2);
            QVERIFY(s.spdData->hasMarkedLines());
            QTest::keyClick(&s, Qt::Key_F1);
        });
        QCOMPARE(QueryValue(QStringLiteral("select User_Name from San_User where User_No = 8"))
                     .toString(),
                 QStringLiteral("山田 太郎"));
        QCOMPARE(StoredSeqs(8), QList<int>{1});
        QCOMPARE(QueryValue(QStringLiteral("select Uri_Date from San_Uriage where Uri_UserNo = 8"))
                     .toInt(),
                 20260101);
    }

    void clickingALineFillsTheFieldsAndSelectsTheMasters() {
        InsertCustomer({.no = 9});
        InsertPurchase({.user = 9,
                        .item = QStringLiteral("005"),
                        .youto = QStringLiteral("002"),
                        .frameMaker = QString(),
                        .lensMaker = QStringLiteral("003"),
                        .rightSph = 1.25});
        OpenRegister(harness, 9, [](FrmKokyaku& s) {
            UriageEntry& e = *s.FraUriage;
            QCOMPARE(e.LineMode(), 1);
            QCOMPARE(e.cboItem->currentText(), QStringLiteral("005:フレーム交換"));
            QCOMPARE(e.cboYoto->currentIndex(), 1);
            QCOMPARE(e.cboMeka[0]->currentIndex(), -1);
            QCOMPARE(e.cboMeka[1]->currentText(), QStringLiteral("003:セイコー"));
            QCOMPARE(e.txtSph[0]->text(), QStringLiteral("+1.25"));
            QCOMPARE(e.txtFm_Kinga->text(), QStringLiteral("20,000"));
            QCOMPARE(e.txtSyohou->text(), QStringLiteral("遠近"));
            QTest::mouseClick(e.cmdClear, Qt::LeftButton);
            QCOMPARE(e.LineMode(), 0);
            QCOMPARE(e.cboItem->currentIndex(), -1);
            QCOMPARE(e.txtKingaKci->Value(), 0.0);
            QCOMPARE(e.txtDatc->date(), QDate(2026, 11, 22));
            QCOMPARE(s.spdData->lineCount(), 1);
        });
    }

    void requiredListsTotalsAndKeys() {
        harness.msgs.expect(OpeErr_001);
        harness.msgs.expect(OpeErr_001);
        OpenRegister(harness, 0, [](FrmKokyaku& s) {
            UriageEntry& e = *s.FraUriage;
            QTest::mouseClick(e.cmdOk, Qt::LeftButton);
            QCOMPARE(s.focusWidget(), e.cboItem);
            e.cboItem->setCurrentIndex(0);
            QTest::mouseClick(e.cmdOk, Qt::LeftButton);
            QCOMPARE(s.focusWidget(), e.cboYoto);
            QVERIFY(s.spdData->isHidden());

            e.txtFm_Kinga->setFocus();
            QTest::keyClicks(e.txtFm_Kinga, QStringLiteral("30000"));
            e.txtLz_Kinga->setFocus();
            QCOMPARE(e.txtKingaKci->Value(), 30000.0);
            QTest::keyClicks(e.txtLz_Kinga, QStringLiteral("12500"));
            e.txtSyohou->setFocus();
            QCOMPARE(e.txtKingaKci->Value(), 42500.0);
            QCOMPARE(s.focusWidget(), e.txtKingaKci);

            e.cboItem->setFocus();
            QTest::keyClick(e.cboItem, Qt::Key_Return);
            QCOMPARE(s.focusWidget(), e.cboYoto);
            e.cboMeka[1]->setCurrentIndex(2);
            e.cboMeka[1]->setFocus();
            QTest::keyClick(e.cboMeka[1], Qt::Key_Delete);
            QCOMPARE(e.cboMeka[1]->currentIndex(), -1);
            QTest::keyClick(e.cboMeka[1], Qt::Key_Return);
            QCOMPARE(s.focusWidget(), e.txtLz_Kinga);
            e.txtMemo->setFocus();
            QTest::keyClick(e.txtMemo, Qt::Key_Return);
            QCOMPARE(s.focusWidget(), e.txtSph[0]);
        });
    }

    // Moving the current line by the arrow key or by a drag loads that line, so the memo typed
    // next is written to the purchase the fields show, never over the first one.
    void theEntryWritesToTheLineItShows_data() {
        QTest::addColumn<bool>("byDrag");
        QTest::newRow("Down arrow") << false;
        QTest::newRow("press on one line, release on another") << true;
    }
    void theEntryWritesToTheLineItShows() {
        QFETCH(bool, byDrag);
        InsertCustomer({.no = 3});
        InsertPurchase({.user = 3, .seq = 1, .ymd = 20260301, .total = 50000});
        InsertPurchase({.user = 3, .seq = 2, .ymd = 20240301, .total = 12000});
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        harness.msgs.expect(OpeInf_001);
        OpenRegister(harness, 3, [byDrag](FrmKokyaku& s) {
            QTableView* view = s.spdData->view();
            UriageEntry& e = *s.FraUriage;
            QCOMPARE(e.txtDatc->date(), QDate(2026, 3, 1));
            if (byDrag) {
                QTest::mousePress(view->viewport(), Qt::LeftButton, {}, rowPoint(*s.spdData, 1));
                QTest::mouseMove(view->viewport(), rowPoint(*s.spdData, 2));
                QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, rowPoint(*s.spdData, 2));
            } else {
                view->setFocus();
                QTest::keyClick(view, Qt::Key_Down);
            }
            QCOMPARE(e.txtDatc->date(), QDate(2024, 3, 1));
            QCOMPARE(e.txtKingaKci->Value(), 12000.0);
            e.txtMemo->setText(QStringLiteral("鼻あて交換"));
            QTest::mouseClick(e.cmdOk, Qt::LeftButton);
            QTest::keyClick(&s, Qt::Key_F5);
        });
        const QStringList columns{QStringLiteral("Uri_Date"), QStringLiteral("Uri_KingaKei"),
                                  QStringLiteral("Uri_Memo")};
        QCOMPARE(stored(3, 1, columns),
                 (QStringList{QStringLiteral("20260301"), QStringLiteral("50000"), QString()}));
        QCOMPARE(stored(3, 2, columns),
                 (QStringList{QStringLiteral("20240301"), QStringLiteral("12000"),
                              QStringLiteral("鼻あて交換")}));
    }

    // A frame name pasted from a spreadsheet holds a tab: it is stored as pasted and every
    // other column keeps its own value.
    void aPastedTabNeverShiftsAColumn() {
        InsertCustomer({.no = 4});
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        harness.msgs.expect(OpeInf_001);
        OpenRegister(harness, 4, [](FrmKokyaku& s) {
            UriageEntry& e = *s.FraUriage;
            QApplication::clipboard()->setText(QStringLiteral("FRAME\tX"));
            e.txtFm_Name->setFocus();
            QTest::keyClick(e.txtFm_Name, Qt::Key_V, Qt::ControlModifier);
            e.txtFm_Size->setText(QStringLiteral("52"));
            e.txtFm_Color->setText(QStringLiteral("黒"));
            e.txtLz_Name->setText(QStringLiteral("非球面"));
            EnterPurchase(e, QDate(2026, 11, 1), 0, 0, 20000, 8000);
            QCOMPARE(s.spdData->cellText(1, PurchaseGrid::FmName), QStringLiteral("FRAME\tX"));
            QTest::keyClick(&s, Qt::Key_F5);
        });
        QCOMPARE(
            stored(4, 1,
                   {QStringLiteral("Uri_Fm_Name"), QStringLiteral("Uri_Fm_Kinga"),
                    QStringLiteral("Uri_Fm_Size"), QStringLiteral("Uri_Fm_Color"),
                    QStringLiteral("Uri_Lz_Name"), QStringLiteral("Uri_Lz_Kinga")}),
            (QStringList{QStringLiteral("FRAME\tX"), QStringLiteral("20000"), QStringLiteral("52"),
                         QStringLiteral("黒"), QStringLiteral("非球面"), QStringLiteral("8000")}));
    }

    // Masters with gaps: a stored code selects its own entry, and a code whose master row was
    // deleted is shown as the code alone and written back unchanged; no purchase is hidden.
    void codesSurviveDeletedMasters() {
        MasterStore::Remove(MasterKind::Item, QStringLiteral("002"));
        MasterStore::Remove(MasterKind::Meka, QStringLiteral("002"));
        InsertCustomer({.no = 6});
        InsertPurchase({.user = 6, .seq = 1, .ymd = 20260301});
        InsertPurchase({.user = 6,
                        .seq = 2,
                        .ymd = 20200301,
                        .item = QStringLiteral("003"),
                        .frameMaker = QStringLiteral("002"),
                        .lensMaker = QStringLiteral("004")});
        InsertPurchase({.user = 6, .seq = 3, .ymd = 20100301});
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        harness.msgs.expect(OpeInf_001);
        OpenRegister(harness, 6, [](FrmKokyaku& s) {
            QCOMPARE(s.spdData->lineCount(), 3);
            QCOMPARE(s.spdData->cellText(2, PurchaseGrid::FmMaker), QStringLiteral("002:"));
            s.spdData_Click(2, 1);
            UriageEntry& e = *s.FraUriage;
            QCOMPARE(e.cboItem->currentText(), QStringLiteral("003:コンタクトレンズ"));
            QCOMPARE(e.cboMeka[0]->currentText(), QStringLiteral("002:"));
            QCOMPARE(e.cboMeka[1]->currentText(), QStringLiteral("004:東海光学"));
            e.txtMemo->setText(QStringLiteral("メモだけ変更"));
            QTest::mouseClick(e.cmdOk, Qt::LeftButton);
            // A cleared entry offers no deleted code to a new purchase.
            QCOMPARE(e.cboMeka[0]->findText(QStringLiteral("002:")), -1);
            QTest::keyClick(&s, Qt::Key_F5);
        });
        QCOMPARE(stored(6, 2,
                        {QStringLiteral("Uri_ItemNo"), QStringLiteral("Uri_Fm_MekaNo"),
                         QStringLiteral("Uri_Lz_MekaNo"), QStringLiteral("Uri_Memo")}),
                 (QStringList{QStringLiteral("003"), QStringLiteral("002"), QStringLiteral("004"),
                              QStringLiteral("メモだけ変更")}));
    }
};

QTEST_MAIN(TestPurchases)
#include "tst_purchases.moc"
