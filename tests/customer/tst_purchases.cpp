// Purchases on the register: lines entered, changed, marked and unmarked in the grid, written
// with the customer in one transaction, and shown again as stored.
#include "customer/FrmKokyaku.h"
#include "customer/UriageEntry.h"
#include "customer/UriageGrid.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xNum.h"
#include "platform/ui/ShowModal.h"
#include "support/Harness.h"
#include "support/ShopData.h"

#include <QComboBox>
#include <QPushButton>
#include <QtTest>

namespace {

enum { Sph, Cyl, Ax, S, P1, B1, P2, B2, Gai, Tama, Pd, Ragan, Kyosei };

// Types one purchase into the entry as the staff do, and registers it into the grid.
void enterLine(UriageEntry& e, const QDate& date, int item, int youto, int frameAmount = 0,
               int lensAmount = 0) {
    e.txtDatc->setDate(date);
    e.cboItem->setCurrentIndex(item);
    e.cboYoto->setCurrentIndex(youto);
    e.txtFm_Kinga->setValue(frameAmount);
    e.txtLz_Kinga->setValue(lensAmount);
    e.txtKingaKci->setValue(frameAmount + lensAmount);
    QTest::mouseClick(e.cmdOk, Qt::LeftButton);
}

QStringList column(const UriageGrid& grid, int col) {
    QStringList cells;
    for (int row = 1; row <= grid.maxRows(); ++row)
        cells << grid.text(row, col);
    return cells;
}

QList<int> storedSeqs(qint64 user) {
    RecordSet rows = gCon.execute(
        QStringLiteral("select Uri_Seq from San_Uriage where Uri_UserNo = %1 order by Uri_Seq")
            .arg(user));
    QList<int> seqs;
    for (; !rows.eof(); rows.moveNext())
        seqs << rows.field(0).toInt();
    return seqs;
}

} // namespace

class TestPurchases : public QObject {
    Q_OBJECT
    Harness harness;

    void openRegister(qint64 customerNo, const std::function<void(FrmKokyaku&)>& drive) {
        FrmKokyaku screen;
        screen.setSyori(customerNo);
        harness.screens.expect<FrmKokyaku>(drive);
        ShowModal(screen);
    }

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void threeNewLinesGetConsecutiveNumbersWithTheNewCustomer() {
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        harness.msgs.expect(OpeInf_001);
        openRegister(0, [](FrmKokyaku& s) {
            s.txtName->setText(QStringLiteral("田中 一"));
            UriageEntry& e = *s.FraUriage;
            enterLine(e, QDate(2026, 10, 1), 0, 0, 20000, 18000);
            QVERIFY(s.spdData->isVisible());
            enterLine(e, QDate(2026, 11, 20), 1, 1, 15000);
            enterLine(e, QDate(2025, 1, 5), 2, 2);
            // Newest first, each line new and light cyan.
            QCOMPARE(column(*s.spdData, 2),
                     (QStringList{QStringLiteral("2026/11/20"), QStringLiteral("2026/10/01"),
                                  QStringLiteral("2025/01/05")}));
            QCOMPARE(column(*s.spdData, 1), QStringList(3, QStringLiteral("新規")));
            QCOMPARE(s.spdData->rowColor(2), QColor(128, 255, 255));
            QCOMPARE(s.spdData->text(2, 3), QStringLiteral("38000"));
            QCOMPARE(s.spdData->text(1, 5), QStringLiteral("サングラス"));
            QCOMPARE(e.LineMode, 0);
            QCOMPARE(e.cboItem->currentIndex(), -1);
            QCOMPARE(s.focusWidget(), e.txtDatc);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(s.spdData->maxRows(), 3);
            QVERIFY(!s.spdData->hasMarkedLines());
        });
        QCOMPARE(storedSeqs(1), (QList<int>{1, 2, 3}));
        QCOMPARE(RowTexts(QStringLiteral("select * from San_Uriage where Uri_Seq = 2"),
                          {QStringLiteral("Uri_Date"), QStringLiteral("Uri_ItemNo"),
                           QStringLiteral("Uri_YoutoNo"), QStringLiteral("Uri_Fm_MekaNo"),
                           QStringLiteral("Uri_Fm_Kinga"), QStringLiteral("Uri_Lz_Kinga"),
                           QStringLiteral("Uri_KingaKei")}),
                 (QStringList{QStringLiteral("20261001"), QStringLiteral("001"),
                              QStringLiteral("001"), QString(), QStringLiteral("20000"),
                              QStringLiteral("18000"), QStringLiteral("38000")}));
    }

    void aLineAddedAndRemovedNeverReachesTheDatabase() {
        InsertCustomer({.no = 4});
        harness.msgs.expect(OpeQes_011, Answer::Yes);
        harness.msgs.expect(OpeInf_001);
        openRegister(4, [](FrmKokyaku& s) {
            enterLine(*s.FraUriage, QDate(2026, 11, 22), 0, 0);
            QCOMPARE(s.spdData->maxRows(), 1);
            s.spdData->setActiveCell(1, 1);
            QTest::mouseClick(s.FraUriage->cmdCancel, Qt::LeftButton);
            QCOMPARE(s.spdData->maxRows(), 0);
            QTest::keyClick(&s, Qt::Key_F5); // nothing marked: the customer alone
        });
        QCOMPARE(storedSeqs(4), QList<int>());
    }

    void markingAndUnmarkingRestoresTheLinesState() {
        InsertCustomer({.no = 5});
        InsertPurchase({.user = 5, .seq = 1, .ymd = 20250101});
        InsertPurchase({.user = 5, .seq = 2, .ymd = 20240101});
        harness.msgs.expect(OpeErr_017);
        openRegister(5, [](FrmKokyaku& s) {
            UriageGrid& grid = *s.spdData;
            UriageEntry& e = *s.FraUriage;
            // Line 1 changed through the fields, then marked and unmarked: changed again.
            QTest::mouseClick(e.cmdOk, Qt::LeftButton); // line 1 was loaded on opening
            QCOMPARE(grid.status(1), QStringLiteral("変更"));
            QCOMPARE(grid.rowColor(1), QColor(255, 255, 128));
            grid.setActiveCell(1, 1);
            QTest::mouseClick(e.cmdCancel, Qt::LeftButton);
            QCOMPARE(grid.status(1), QStringLiteral("削除"));
            QCOMPARE(grid.text(1, 47), QStringLiteral("変更"));
            QCOMPARE(grid.rowColor(1), QColor(255, 128, 128));
            // A line marked for deletion cannot be changed.
            s.spdData_Click(1, 3);
            QTest::mouseClick(e.cmdOk, Qt::LeftButton);
            QCOMPARE(grid.status(1), QStringLiteral("削除"));
            grid.setActiveCell(1, 1);
            QTest::mouseClick(e.cmdCancel, Qt::LeftButton);
            QCOMPARE(grid.status(1), QStringLiteral("変更"));
            QCOMPARE(grid.text(1, 47), QString());
            // An unchanged line marked and unmarked: no status, but light yellow.
            grid.setActiveCell(2, 1);
            QTest::mouseClick(e.cmdCancel, Qt::LeftButton);
            QCOMPARE(grid.status(2), QStringLiteral("削除"));
            grid.setActiveCell(2, 1);
            QTest::mouseClick(e.cmdCancel, Qt::LeftButton);
            QCOMPARE(grid.status(2), QString());
            QCOMPARE(grid.rowColor(2), QColor(255, 255, 128));
            QCOMPARE(s.focusWidget(), e.txtDatc);
            s.spdData->setText(1, 1, QString()); // nothing to ask on closing
        });
    }

    void aDateAndAnEmptyPrescriptionAreStoredAndShownAgain() {
        InsertCustomer({.no = 6});
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        harness.msgs.expect(OpeInf_001);
        openRegister(6, [](FrmKokyaku& s) {
            UriageEntry& e = *s.FraUriage;
            enterLine(e, QDate(2024, 3, 5), 0, 0, 12000);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(s.spdData->text(1, 2), QStringLiteral("2024/03/05"));
            s.spdData_Click(1, 1);
            for (int eye = 0; eye < 2; ++eye)
                for (int i = 0; i < 13; ++i)
                    QCOMPARE(e.prescriptionField(eye, i)->text(), QString());
            QCOMPARE(e.txtDatc->date(), QDate(2024, 3, 5));
        });
        RecordSet row =
            gCon.execute(QStringLiteral("select * from San_Uriage where Uri_UserNo = 6"));
        QCOMPARE(row.field(QStringLiteral("Uri_Date")).toLongLong(), 20240305);
        for (int i = 14; i < 40; ++i) {
            const bool base = i == 19 || i == 21 || i == 32 || i == 34;
            QCOMPARE(row.field(i).toString(), base ? QString() : QStringLiteral("0"));
        }
    }

    void aTypedPrescriptionIsStoredAsNumbers() {
        InsertCustomer({.no = 7});
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        harness.msgs.expect(OpeInf_001);
        openRegister(7, [](FrmKokyaku& s) {
            UriageEntry& e = *s.FraUriage;
            e.txtSph[0]->setFocus();
            QTest::keyClicks(e.txtSph[0], QStringLiteral("-2.5"));
            e.txtSph[1]->setFocus();
            QTest::keyClicks(e.txtSph[1], QStringLiteral("125")); // hundredths: +1.25
            e.txtCyl[0]->setFocus();
            QTest::keyClicks(e.txtCyl[0], QStringLiteral("-0.5"));
            e.txtB1[1]->setFocus();
            QTest::keyClicks(e.txtB1[1], QStringLiteral("IN"));
            e.txtPd[1]->setFocus();
            QTest::keyClicks(e.txtPd[1], QStringLiteral("62"));
            e.txtAx[1]->setFocus();
            QCOMPARE(e.txtPd[1]->text(), QStringLiteral("62.0"));
            enterLine(e, QDate(2026, 11, 1), 0, 0);
            QCOMPARE(s.spdData->text(1, 20), QStringLiteral("-2.50"));
            QCOMPARE(s.spdData->text(1, 33), QStringLiteral("+1.25"));
            QTest::keyClick(&s, Qt::Key_F5);
        });
        QCOMPARE(RowTexts(QStringLiteral("select * from San_Uriage where Uri_UserNo = 7"),
                          {QStringLiteral("Uri_R_Sph"), QStringLiteral("Uri_L_Sph"),
                           QStringLiteral("Uri_R_Cyl"), QStringLiteral("Uri_L_B1"),
                           QStringLiteral("Uri_L_Pd")}),
                 (QStringList{QStringLiteral("-2.5"), QStringLiteral("1.25"),
                              QStringLiteral("-0.5"), QStringLiteral("IN"), QStringLiteral("62")}));
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
        openRegister(8, [](FrmKokyaku& s) {
            s.txtName->setText(QStringLiteral("名前を変えた"));
            QTest::mouseClick(s.FraUriage->cmdOk, Qt::LeftButton); // line 1 changed
            enterLine(*s.FraUriage, QDate(2026, 11, 22), 0, 0);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(s.spdData->maxRows(), 2);
            QVERIFY(s.spdData->hasMarkedLines());
            QTest::keyClick(&s, Qt::Key_F1);
        });
        QCOMPARE(QueryValue(QStringLiteral("select User_Name from San_User where User_No = 8"))
                     .toString(),
                 QStringLiteral("山田 太郎"));
        QCOMPARE(storedSeqs(8), QList<int>{1});
        QCOMPARE(QueryValue(QStringLiteral("select Uri_Date from San_Uriage where Uri_UserNo = 8"))
                     .toInt(),
                 20260101);
    }

    void clickingALineFillsTheFieldsAndSelectsTheMasters() {
        InsertCustomer({.no = 9});
        InsertPurchase({.user = 9,
                        .seq = 1,
                        .ymd = 20260101,
                        .item = QStringLiteral("005"),
                        .youto = QStringLiteral("002"),
                        .frameMaker = QString(),
                        .lensMaker = QStringLiteral("003"),
                        .rightSph = 1.25});
        openRegister(9, [](FrmKokyaku& s) {
            UriageEntry& e = *s.FraUriage;
            QCOMPARE(e.LineMode, 1);
            QCOMPARE(e.cboItem->currentIndex(), 4);
            QCOMPARE(e.cboItem->currentText(), QStringLiteral("005:フレーム交換"));
            QCOMPARE(e.cboYoto->currentIndex(), 1);
            QCOMPARE(e.cboMeka[0]->currentIndex(), -1);
            QCOMPARE(e.cboMeka[1]->currentText(), QStringLiteral("003:セイコー"));
            QCOMPARE(e.txtSph[0]->text(), QStringLiteral("+1.25"));
            QCOMPARE(e.txtSph[1]->text(), QStringLiteral("-1.50"));
            QCOMPARE(e.txtFm_Kinga->text(), QStringLiteral("20,000"));
            QCOMPARE(e.txtSyohou->text(), QStringLiteral("遠近"));
            QTest::mouseClick(e.cmdClear, Qt::LeftButton);
            QCOMPARE(e.LineMode, 0);
            QCOMPARE(e.cboItem->currentIndex(), -1);
            QCOMPARE(e.txtKingaKci->Value(), 0.0);
            QCOMPARE(e.txtDatc->date(), QDate(2026, 11, 22));
            QCOMPARE(s.spdData->maxRows(), 1);
        });
    }

    void requiredListsTotalsAndKeys() {
        harness.msgs.expect(OpeErr_001);
        harness.msgs.expect(OpeErr_001);
        openRegister(0, [](FrmKokyaku& s) {
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

    void anUnknownLensMakerStopsTheListing() {
        InsertCustomer({.no = 10});
        InsertPurchase({.user = 10, .seq = 1, .ymd = 20260301});
        InsertPurchase({.user = 10, .seq = 2, .ymd = 20250301, .lensMaker = QStringLiteral("099")});
        InsertPurchase({.user = 10, .seq = 3, .ymd = 20240301});
        harness.msgs.expect(OpeErr_008);
        openRegister(10, [](FrmKokyaku& s) {
            QCOMPARE(s.spdData->maxRows(), 2);
            QCOMPARE(s.spdData->text(1, 2), QStringLiteral("2026/03/01"));
            QCOMPARE(s.spdData->text(2, 2), QString()); // the line just added stays blank
        });
    }
};

QTEST_MAIN(TestPurchases)
#include "tst_purchases.moc"
