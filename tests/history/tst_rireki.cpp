// The sales history: paging three at a time, the date search, correcting blocks and saving
// them in one transaction, and the register's key that opens it.
#include "customer/FrmKokyaku.h"
#include "customer/PurchaseGrid.h"
#include "customer/UriageEntry.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "history/FrmRireki.h"
#include "history/UriageBlock.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xLabel.h"
#include "platform/controls/xNum.h"
#include "platform/ui/ShowModal.h"
#include "support/Harness.h"
#include "support/ShopData.h"

#include <QComboBox>
#include <QPushButton>
#include <QtTest>

namespace {

enum { Sph, Cyl, Ax, S, P1, B1, P2, B2, Gai, Tama, Pd, Ragan, Kyosei };

QStringList shownDates(const FrmRireki& s) {
    QStringList dates;
    for (const UriageBlock* block : s.FraUriage)
        dates << block->txtUriDate->text();
    return dates;
}

QList<int> shownSeqs(const FrmRireki& s) {
    QList<int> seqs;
    for (const UriageBlock* block : s.FraUriage)
        seqs << block->seq();
    return seqs;
}

} // namespace

class TestRireki : public QObject {
    Q_OBJECT
    Harness harness;

    bool openHistory(qint64 customerNo, const std::function<void(FrmRireki&)>& drive) {
        FrmRireki screen;
        screen.setKokNo(customerNo);
        harness.screens.expect<FrmRireki>(drive);
        ShowModal(screen);
        return screen.Koushin();
    }

private slots:
    void init() {
        HARNESS_INIT(harness);
        InsertCustomer({.no = 1});
        // Five purchases, two of them on one day.
        InsertPurchase({.user = 1, .seq = 1, .ymd = 20260101, .item = QStringLiteral("003")});
        InsertPurchase({.user = 1, .seq = 2, .ymd = 20250601, .total = 20000});
        InsertPurchase({.user = 1, .seq = 3, .ymd = 20240101, .frameMaker = QString()});
        InsertPurchase({.user = 1, .seq = 4, .ymd = 20250601, .total = 30000});
        InsertPurchase({.user = 1, .seq = 5, .ymd = 20230101});
    }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void pagesShowThreePurchasesNewestFirst() {
        harness.msgs.expect(OpeErr_014);
        harness.msgs.expect(OpeErr_014);
        openHistory(1, [](FrmRireki& s) {
            QCOMPARE(s.windowTitle(), QStringLiteral("顧客履歴照会"));
            QCOMPARE(s.lblKokNo->text(), QStringLiteral("1"));
            QCOMPARE(s.lblName->text(), QStringLiteral("山田 太郎"));
            QCOMPARE(s.txtKingaKei->Value(), 38000.0 * 3 + 20000 + 30000);
            QCOMPARE(s.txtKensakuDay->date(), QDate(2026, 11, 22));
            QCOMPARE(shownSeqs(s), (QList<int>{1, 2, 4}));
            QCOMPARE(shownDates(s),
                     (QStringList{QStringLiteral("2026/01/01"), QStringLiteral("2025/06/01"),
                                  QStringLiteral("2025/06/01")}));
            QVERIFY(s.cmdFnuc[4]->isEnabled());
            QVERIFY(!s.FraUriage[0]->isEnabled());

            QTest::keyClick(&s, Qt::Key_F12);
            QCOMPARE(s.page(), 2);
            QCOMPARE(shownSeqs(s), (QList<int>{3, 5, 0}));
            QCOMPARE(s.FraUriage[2]->txtUriDate->text(), QString());
            QCOMPARE(s.FraUriage[2]->txtKinga->Value(), 0.0);

            QTest::keyClick(&s, Qt::Key_F12); // nothing more
            QCOMPARE(s.page(), 3);
            QCOMPARE(shownSeqs(s), (QList<int>{0, 0, 0}));
            QCOMPARE(s.lblKokNo->text(), QString());
            QVERIFY(!s.cmdFnuc[3]->isEnabled());

            QTest::keyClick(&s, Qt::Key_F11);
            QCOMPARE(shownSeqs(s), (QList<int>{3, 5, 0}));
            QTest::keyClick(&s, Qt::Key_F11);
            QTest::keyClick(&s, Qt::Key_F11); // page 1: nothing newer
            QCOMPARE(s.page(), 1);
            QCOMPARE(shownSeqs(s), (QList<int>{1, 2, 4}));
        });
    }

    void theDateSearchStartsAgainAtTheFirstPage() {
        harness.msgs.expect(OpeErr_014);
        openHistory(1, [](FrmRireki& s) {
            QTest::keyClick(&s, Qt::Key_F12);
            // A new date with F12 pages on from the current page.
            s.txtKensakuDay->setDate(QDate(2025, 12, 31));
            QTest::keyClick(&s, Qt::Key_F12);
            QCOMPARE(s.page(), 3);
            QCOMPARE(shownSeqs(s), (QList<int>{0, 0, 0}));
            // "以前の照会" starts at page 1 up to the date.
            QTest::mouseClick(s.cmdKensaku, Qt::LeftButton);
            QCOMPARE(s.page(), 1);
            QCOMPARE(shownSeqs(s), (QList<int>{2, 4, 3}));
        });
        harness.msgs.expect(OpeErr_014);
        openHistory(1, [](FrmRireki& s) {
            s.txtKensakuDay->setDate(QDate(2022, 12, 31));
            QTest::mouseClick(s.cmdKensaku, Qt::LeftButton);
            QCOMPARE(shownSeqs(s), (QList<int>{0, 0, 0}));
        });
    }

    void aCorrectedBlockIsStored() {
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        harness.msgs.expect(OpeInf_001);
        const bool koushin = openHistory(1, [](FrmRireki& s) {
            UriageBlock& middle = *s.FraUriage[1];
            QTest::keyClick(&s, Qt::Key_F6);
            QVERIFY(middle.isEnabled());
            QVERIFY(middle.editing);
            QCOMPARE(middle.title(), QStringLiteral("中段（修正中）"));
            QCOMPARE(s.focusWidget(), middle.txtFm_Name);
            QTest::keyClicks(middle.txtFm_Name, QStringLiteral(" O'Brien "));
            middle.txtUriDate->setDate(QDate(2025, 6, 2));
            middle.txtKinga->setValue(21000);
            middle.cboFm_Meka->setCurrentIndex(-1);
            middle.prescription(0, Cyl)->setFocus();
            QTest::keyClicks(middle.prescription(0, Cyl), QStringLiteral("-0.5"));
            middle.prescription(1, B1)->setFocus();
            QTest::keyClicks(middle.prescription(1, B1), QStringLiteral("IN"));
            middle.prescription(1, Pd)->setFocus();
            QTest::keyClicks(middle.prescription(1, Pd), QStringLiteral("30"));
            middle.txtFm_Size->setFocus();
            QCOMPARE(middle.prescription(0, Cyl)->text(), QStringLiteral("-0.50"));
            QTest::keyClick(&s, Qt::Key_F4);
            QVERIFY(!middle.editing);
            QVERIFY(middle.isEnabled());
        });
        QVERIFY(koushin);
        QCOMPARE(
            RowTexts(QStringLiteral("select * from San_Uriage where Uri_Seq = 2"),
                     {QStringLiteral("Uri_Date"), QStringLiteral("Uri_Fm_Name"),
                      QStringLiteral("Uri_Fm_MekaNo"), QStringLiteral("Uri_KingaKei"),
                      QStringLiteral("Uri_R_Sph"), QStringLiteral("Uri_R_Cyl"),
                      QStringLiteral("Uri_L_B1"), QStringLiteral("Uri_L_Pd"),
                      QStringLiteral("Uri_Syohou")}),
            (QStringList{QStringLiteral("20250602"), QStringLiteral("F-1 O'Brien "), QString(),
                         QStringLiteral("21000"), QStringLiteral("-1.25"), QStringLiteral("-0.5"),
                         QStringLiteral("IN"), QStringLiteral("30"), QStringLiteral("遠近")}));
        // The other purchases are untouched.
        QCOMPARE(QueryValue(QStringLiteral("select Uri_Fm_Name from San_Uriage where Uri_Seq = 4"))
                     .toString(),
                 QStringLiteral("F-1"));
    }

    void aFailingSaveRollsBackEveryBlockAndKeepsTheFlags() {
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        harness.msgs.expectBox(
            QStringLiteral("障害発生！ サポート先までご連絡お願い致します。\r\r型が一致しません。"),
            QStringLiteral(" VB ERROR No.13"));
        harness.msgs.expect(OpeQes_008, Answer::No);
        harness.msgs.expect(OpeQes_008, Answer::Yes);
        const bool koushin = openHistory(1, [](FrmRireki& s) {
            QTest::keyClick(&s, Qt::Key_F5);
            s.FraUriage[0]->txtFm_Name->setText(QStringLiteral("上段を変更"));
            QTest::keyClick(&s, Qt::Key_F7);
            // An axis that is not a number stays as typed and fails on saving.
            s.FraUriage[2]->prescription(0, Ax)->setText(QStringLiteral("abc"));
            QTest::keyClick(&s, Qt::Key_F4);
            QVERIFY(s.FraUriage[0]->editing);
            QVERIFY(s.FraUriage[2]->editing);
            QVERIFY(!gCon.inTransaction());
            QTest::keyClick(&s, Qt::Key_F1); // No: the corrections stay on the screen
            QVERIFY(s.isVisible());
            QCOMPARE(s.FraUriage[0]->txtFm_Name->text(), QStringLiteral("上段を変更"));
            QTest::keyClick(&s, Qt::Key_F1);
        });
        QVERIFY(!koushin);
        QCOMPARE(QueryValue(QStringLiteral("select Uri_Fm_Name from San_Uriage where Uri_Seq = 1"))
                     .toString(),
                 QStringLiteral("F-1"));
    }

    void correctionKeysOnEmptyBlocksAndSavingNothing() {
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        harness.msgs.expect(OpeInf_001);
        const bool koushin = openHistory(1, [](FrmRireki& s) {
            QTest::keyClick(&s, Qt::Key_F12); // page 2: the lower block is empty
            QTest::keyClick(&s, Qt::Key_F7);
            QVERIFY(!s.FraUriage[2]->editing);
            QVERIFY(!s.FraUriage[2]->isEnabled());
            QTest::keyClick(&s, Qt::Key_F4); // nothing in correction: still a success
            QTest::keyClick(&s, Qt::Key_F1);
        });
        QVERIFY(koushin);
    }

    void listsAndAnEmptyMakerCode() {
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        harness.msgs.expect(OpeInf_001);
        openHistory(1, [](FrmRireki& s) {
            QCOMPARE(s.FraUriage[0]->cboItem->currentIndex(), 2);
            QCOMPARE(s.FraUriage[0]->cboItem->currentText(),
                     QStringLiteral("003:コンタクトレンズ"));
            QTest::keyClick(&s, Qt::Key_F12);
            UriageBlock& upper = *s.FraUriage[0]; // seq 3, no frame maker
            QCOMPARE(upper.cboFm_Meka->currentIndex(), -1);
            QTest::keyClick(&s, Qt::Key_F5);
            upper.cboLz_Meka->setFocus();
            QTest::keyClick(upper.cboLz_Meka, Qt::Key_Delete);
            QCOMPARE(upper.cboLz_Meka->currentIndex(), -1);
            QTest::keyClick(upper.cboLz_Meka, Qt::Key_Return);
            QCOMPARE(s.focusWidget(), upper.txtLz_Kinga);
            QTest::keyClick(&s, Qt::Key_F4);
        });
        QCOMPARE(RowTexts(QStringLiteral("select * from San_Uriage where Uri_Seq = 3"),
                          {QStringLiteral("Uri_Fm_MekaNo"), QStringLiteral("Uri_Lz_MekaNo"),
                           QStringLiteral("Uri_ItemNo")}),
                 (QStringList{QString(), QString(), QStringLiteral("001")}));
    }

    void aCustomerWithoutPurchasesShowsAnEmptyHeader() {
        InsertCustomer({.no = 2});
        harness.msgs.expect(OpeErr_014);
        openHistory(2, [](FrmRireki& s) {
            QCOMPARE(s.lblKokNo->text(), QString());
            QCOMPARE(s.lblName->text(), QString());
            QCOMPARE(s.txtKingaKei->Value(), 0.0);
            for (int key : {3, 4, 5, 6})
                QVERIFY(!s.cmdFnuc[key]->isEnabled());
        });
    }

    void theRegistersHistoryKeyOpensAndReloads() {
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        harness.msgs.expect(OpeInf_001);
        FrmKokyaku reg;
        reg.setSyori(1);
        harness.screens.expect<FrmKokyaku>([this](FrmKokyaku& s) {
            QVERIFY(s.cmdFnuc[11]->isEnabled());
            harness.screens.expect<FrmRireki>([](FrmRireki& history) {
                QCOMPARE(history.lblKokNo->text(), QStringLiteral("1"));
                QTest::keyClick(&history, Qt::Key_F5);
                history.FraUriage[0]->txtFm_Name->setText(QStringLiteral("履歴で直した"));
                QTest::keyClick(&history, Qt::Key_F4);
                QTest::keyClick(&history, Qt::Key_F1);
            });
            QTest::keyClick(&s, Qt::Key_F12);
            QCOMPARE(s.spdData->cellText(1, PurchaseGrid::FmName), QStringLiteral("履歴で直した"));
            QCOMPARE(s.FraUriage->txtFm_Name->text(), QStringLiteral("履歴で直した"));
        });
        ShowModal(reg);
        QVERIFY(reg.Koushin());
    }
};

QTEST_MAIN(TestRireki)
#include "tst_rireki.moc"
