// Purchases on the register: lines entered, changed, marked and unmarked in the grid, written
// with the customer in one transaction, and shown again as stored. The entry always writes to
// the line it shows, whichever way the current line was moved.
#include "customer/FrmKokyaku.h"
#include "customer/PurchaseGrid.h"
#include "customer/UriageEntry.h"
#include "data/MasterStore.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "history/FrmRireki.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xNum.h"
#include "prescription/PrescriptionReference.h"
#include "support/Roads.h"
#include "support/ShopData.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QtTest>

using namespace Qt::StringLiterals;

class TestPurchases : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    // What the entry and "明細削除" make of a line: a marked line refuses the entry, a new one
    // is removed instead of marked, and taking the mark back restores the state it had.
    void lineStates() {
        using enum LineState;
        const std::pair<LineState, std::optional<LineState>> entries[] = {
            {Stored, Changed}, {Changed, Changed}, {New, New}, {Deleted, std::nullopt}};
        for (const auto& [before, after] : entries)
            QVERIFY(StateAfterEntry(before) == after);
        for (LineState before : {Stored, Changed}) {
            PurchaseLine line{.id = 1, .purchase = {}, .read = {}, .state = before};
            QVERIFY(ToggleLineDeletion(line) && line.state == Deleted && !line.unmarked);
            QVERIFY(ToggleLineDeletion(line) && line.state == before && line.unmarked);
        }
        PurchaseLine added{.id = 2, .purchase = {}, .read = {}, .state = New};
        QVERIFY(!ToggleLineDeletion(added));
    }

    // A new customer's purchases typed in: the required lists, Enter through the entry, the
    // total worked out from the amounts, a date that is none refused on leaving it and at the
    // line, the lines newest first, consecutive numbers stored.
    void newLinesGetConsecutiveNumbersWithTheNewCustomer() {
        ExpectBoxes(harness,
                    {OpeErr_001, OpeErr_001, OpeErr_003, OpeErr_003, OpeQes_001, OpeInf_001});
        OpenRegister(harness, 0, [](FrmKokyaku& s) {
            UriageEntry& e = *s.FraUriage;
            PurchaseGrid& grid = *s.spdData;
            s.txtName->setText(u"田中 一"_s);
            QTest::mouseClick(e.cmdOk, Qt::LeftButton);
            QCOMPARE(s.focusWidget(), e.cboItem);
            e.cboItem->setCurrentIndex(0);
            QTest::mouseClick(e.cmdOk, Qt::LeftButton);
            QVERIFY(s.focusWidget() == e.cboYoto && grid.isHidden());
            e.cboMeka[1]->setCurrentIndex(2);
            e.cboMeka[1]->setFocus();
            QTest::keyClick(e.cboMeka[1], Qt::Key_Delete);
            QTest::keyClick(e.cboMeka[1], Qt::Key_Return);
            QVERIFY(e.cboMeka[1]->currentIndex() == -1 && s.focusWidget() == e.txtLz_Kinga);
            e.txtMemo->setFocus();
            QTest::keyClick(e.txtMemo, Qt::Key_Return);
            QCOMPARE(s.focusWidget(), e.txtSph[0]);
            Retype(e.txtFm_Kinga, u"20000"_s);
            e.txtLz_Kinga->setFocus();
            QCOMPARE(e.txtKingaKci->Value(), 20000.0);
            Retype(e.txtLz_Kinga, u"18000"_s);
            e.txtSyohou->setFocus();
            QCOMPARE(e.txtKingaKci->Value(), 38000.0);
            e.cboYoto->setCurrentIndex(0);
            Retype(e.txtDatc, u"20240230"_s);
            QTest::keyClick(e.txtDatc, Qt::Key_Tab);
            QCOMPARE(s.focusWidget(), e.txtDatc);
            QTest::mouseClick(e.cmdOk, Qt::LeftButton);
            QVERIFY(grid.isHidden() && s.focusWidget() == e.txtDatc);
            e.txtDatc->setDate(QDate(2026, 10, 1));
            QTest::mouseClick(e.cmdOk, Qt::LeftButton);
            QVERIFY(grid.isVisible());
            EnterPurchase(e, QDate(2026, 11, 20), 1, 1, 15000);
            EnterPurchase(e, QDate(2025, 1, 5), 2, 2);
            QCOMPARE(ColumnTexts(grid, PurchaseGrid::Date), u"2026/11/20|2026/10/01|2025/01/05"_s);
            QCOMPARE(ColumnTexts(grid, PurchaseGrid::Status), u"新規|新規|新規"_s);
            QCOMPARE(ColumnTexts(grid, PurchaseGrid::Total), u"15,000|38,000|0"_s);
            QCOMPARE(grid.cellText(1, PurchaseGrid::Item), u"サングラス"_s);
            QCOMPARE(grid.rowColor(2), QColor(128, 255, 255));
            // The entry is empty again for the next purchase.
            QVERIFY(e.cboItem->currentIndex() == -1 && s.focusWidget() == e.txtDatc);
            QTest::keyClick(&s, Qt::Key_F5);
        });
        QCOMPARE(StoredSeqs(1), (QList<int>{1, 2, 3}));
        QCOMPARE(PurchaseTexts(1, 2,
                               u"Uri_Date Uri_ItemNo Uri_YoutoNo Uri_Lz_MekaNo "
                               "Uri_Fm_Kinga Uri_Lz_Kinga Uri_KingaKei"_s),
                 u"20261001|001|001||20000|18000|38000"_s);
    }

    // The lens amount left by Enter or Tab goes on to the total, selected so that what is typed
    // replaces it; a click elsewhere goes where it was aimed and the total keeps the sum.
    void theLensAmountGoesOnToTheTotalByTheKeysOnly_data() {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("stored");
        QTest::newRow("click into S度数") << 0 << u"15000|1.25"_s;
        QTest::newRow("Enter") << int(Qt::Key_Return) << u"125|0"_s;
        QTest::newRow("Tab") << int(Qt::Key_Tab) << u"125|0"_s;
    }
    void theLensAmountGoesOnToTheTotalByTheKeysOnly() {
        QFETCH(int, key);
        QFETCH(QString, stored);
        InsertCustomer({.no = 2});
        ExpectSaved(harness);
        OpenRegister(harness, 2, [key](FrmKokyaku& s) {
            UriageEntry& e = *s.FraUriage;
            QTest::mouseClick(e.txtLz_Kinga, Qt::LeftButton);
            QTest::keyClicks(e.txtLz_Kinga, u"15000"_s);
            QWidget* next = key == 0 ? static_cast<QWidget*>(e.txtSph[0]) : e.txtKingaKci;
            if (key == 0)
                QTest::mouseClick(e.txtSph[0], Qt::LeftButton);
            else
                QTest::keyClick(e.txtLz_Kinga, Qt::Key(key));
            QCOMPARE(s.focusWidget(), next);
            QCOMPARE(e.txtKingaKci->Value(), 15000.0);
            QTest::keyClicks(next, u"125"_s);
            e.cboItem->setCurrentIndex(0);
            e.cboYoto->setCurrentIndex(0);
            QTest::mouseClick(e.cmdOk, Qt::LeftButton);
            QTest::keyClick(&s, Qt::Key_F5);
        });
        QCOMPARE(PurchaseTexts(2, 1, u"Uri_KingaKei Uri_R_Sph"_s), stored);
    }

    // "明細削除" marks a stored line and takes the mark back, a marked line refuses a change, a
    // new line is simply removed; on saving the marked line is deleted, the changed one written.
    void markedLinesAreDeletedAndChangedOnesWritten() {
        InsertCustomer({.no = 5});
        InsertPurchase({.user = 5, .seq = 1, .ymd = 20250101});
        InsertPurchase({.user = 5, .seq = 2, .ymd = 20240101});
        harness.msgs.expect(OpeErr_017);
        ExpectSaved(harness);
        OpenRegister(harness, 5, [](FrmKokyaku& s) {
            PurchaseGrid& grid = *s.spdData;
            UriageEntry& e = *s.FraUriage;
            e.txtMemo->setText(u"変えた"_s); // line 1 was shown on opening
            QTest::mouseClick(e.cmdOk, Qt::LeftButton);
            QCOMPARE(grid.rowColor(1), QColor(255, 255, 128));
            s.spdData_Click(2, 3);
            QTest::mouseClick(e.cmdCancel, Qt::LeftButton);
            QCOMPARE(ColumnTexts(grid, PurchaseGrid::Status), u"変更|削除"_s);
            QCOMPARE(grid.rowColor(2), QColor(255, 128, 128));
            s.spdData_Click(2, 3);
            QTest::mouseClick(e.cmdOk, Qt::LeftButton);
            QTest::mouseClick(e.cmdCancel, Qt::LeftButton);
            QCOMPARE(ColumnTexts(grid, PurchaseGrid::Status), u"変更|"_s);
            QCOMPARE(grid.rowColor(2), QColor(255, 255, 128));
            grid.setActiveCell(2, 1);
            QTest::mouseClick(e.cmdCancel, Qt::LeftButton);
            EnterPurchase(e, QDate(2026, 11, 22), 0, 0);
            grid.setActiveCell(1, 1);
            QTest::mouseClick(e.cmdCancel, Qt::LeftButton);
            QCOMPARE(ColumnTexts(grid, PurchaseGrid::Status), u"変更|削除"_s);
            QCOMPARE(s.focusWidget(), e.txtDatc);
            QTest::keyClick(&s, Qt::Key_F5);
        });
        QCOMPARE(StoredSeqs(5), QList<int>{1});
        QCOMPARE(PurchaseTexts(5, 1, u"Uri_Date Uri_Memo"_s), u"20250101|変えた"_s);
    }

    void aFailingLineRollsBackTheCustomerChangeToo() {
        InsertCustomer({.no = 8});
        InsertPurchase({.user = 8, .seq = 1});
        // Another terminal wrote the same purchase number first.
        CreateBeforeInsertTrigger(u"same_seq"_s, u"San_Uriage"_s,
                                  u"insert into San_Uriage (Uri_UserNo, Uri_Seq, Uri_Date) "
                                  "values (new.Uri_UserNo, new.Uri_Seq, 0)"_s);
        ExpectBoxes(harness, {OpeQes_001, OpeErr_010, OpeQes_007});
        OpenRegister(harness, 8, [](FrmKokyaku& s) {
            s.txtName->setText(u"名前を変えた"_s);
            QTest::mouseClick(s.FraUriage->cmdOk, Qt::LeftButton); // line 1 changed
            EnterPurchase(*s.FraUriage, QDate(2026, 11, 22), 0, 0);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(ColumnTexts(*s.spdData, PurchaseGrid::Status), u"新規|変更"_s);
            QTest::keyClick(&s, Qt::Key_F1);
        });
        QCOMPARE(CustomerTexts(8, u"User_Name"_s), u"山田 太郎"_s);
        QCOMPARE(StoredSeqs(8), QList<int>{1});
        QCOMPARE(PurchaseTexts(8, 1, u"Uri_Date"_s), u"20260101"_s);
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
        ExpectSaved(harness);
        OpenRegister(harness, 3, [byDrag](FrmKokyaku& s) {
            QWidget* cells = s.spdData->view()->viewport();
            UriageEntry& e = *s.FraUriage;
            QCOMPARE(e.txtDatc->date(), QDate(2026, 3, 1));
            if (byDrag) {
                QTest::mousePress(cells, Qt::LeftButton, {}, RowCentre(*s.spdData, 1));
                QTest::mouseMove(cells, RowCentre(*s.spdData, 2));
                QTest::mouseRelease(cells, Qt::LeftButton, {}, RowCentre(*s.spdData, 2));
            } else {
                s.spdData->view()->setFocus();
                QTest::keyClick(s.spdData->view(), Qt::Key_Down);
            }
            QCOMPARE(e.txtDatc->date(), QDate(2024, 3, 1));
            e.txtMemo->setText(u"鼻あて交換"_s);
            QTest::mouseClick(e.cmdOk, Qt::LeftButton);
            QTest::keyClick(&s, Qt::Key_F5);
        });
        const QString columns = u"Uri_Date Uri_KingaKei Uri_Memo"_s;
        QCOMPARE(PurchaseTexts(3, 1, columns), u"20260301|50000|"_s);
        QCOMPARE(PurchaseTexts(3, 2, columns), u"20240301|12000|鼻あて交換"_s);
    }

    // Under each eye the prescription before the purchase shown: one without a prescription is
    // passed over, a new line comes after every line, the one waiting too. A power typed 0.50
    // or more away from it is marked by colour and sign, a smaller change is not.
    void thePreviousPrescriptionStandsUnderTheEntry() {
        InsertCustomer({.no = 4});
        InsertPurchase({.user = 4, .seq = 1, .ymd = 20240512}); // R -1.25, L -1.50
        InsertPurchase({.user = 4, .seq = 2, .ymd = 20250101, .rightSph = 0, .leftSph = 0});
        InsertPurchase({.user = 4, .seq = 3, .ymd = 20260101});
        OpenRegister(harness, 4, [this](FrmKokyaku& s) {
            UriageEntry& e = *s.FraUriage;
            const auto shown = [&e](const char* name) {
                const auto* label = e.findChild<QLabel*>(QLatin1String(name));
                return label ? label->text() : u"<none>"_s;
            };
            QCOMPARE(shown("lblZenkaiR") + shown("lblZenkaiSph_R") + shown("lblZenkaiSph_L"),
                     u"前回 2024/05/12-1.25-1.50"_s);
            Retype(e.txtSph[0], u"-2"_s);
            Retype(e.txtSph[1], u"-1.25"_s);
            e.txtCyl[1]->setFocus();
            QCOMPARE(e.txtSph[0]->text() + shown("lblZenkaiSph_R") + shown("lblZenkaiSph_L"),
                     u"-2.00▼-1.25-1.50"_s);
            QCOMPARE(e.txtSph[0]->InputAreaColor(), PrescriptionReference::MarkColor);
            QCOMPARE(e.txtSph[1]->InputAreaColor(), QColor(Qt::white));
            harness.msgs.expect(OpeQes_008, Answer::Yes); // what was typed over line 1 goes
            s.spdData_Click(2, 1);
            QCOMPARE(shown("lblZenkaiL"), u"前回 2024/05/12"_s);
            s.spdData_Click(3, 1);
            QCOMPARE(shown("lblZenkaiL") + shown("lblZenkaiSph_L"), u"前回なし"_s);
            QTest::mouseClick(e.cmdClear, Qt::LeftButton);
            QCOMPARE(shown("lblZenkaiR"), u"前回 2026/01/01"_s);
            Retype(e.txtSph[0], u"-3"_s);
            EnterPurchase(e, QDate(2026, 11, 1), 0, 0);
            QCOMPARE(shown("lblZenkaiR") + shown("lblZenkaiSph_R"), u"前回 2026/11/01-3.00"_s);
        });
    }

    // Stored texts longer than their fields let a person type are shown and stored again
    // whole when only the colour is changed; the previous prescription's caption moves no
    // field. After the save no line is current: focus arriving in the grid by Tab loads none,
    // and a line chosen with the arrows over a sale typed in the entry asks first (No keeps
    // the sale); F12 and back leaves Koushin true.
    void longTextsSurviveAndFocusLoadsNoLine() {
        const QString name42 = QString(42, u'長'), frame60 = QString(60, u'枠');
        const QString note120 = QString(120, u'処');
        InsertCustomer({.no = 5, .name = name42});
        InsertPurchase({.user = 5, .seq = 1, .ymd = 20250101, .rightSph = 0, .leftSph = 0});
        InsertPurchase({.user = 5, .seq = 2, .ymd = 20260101, .syohou = note120});
        gCon.execute(u"update San_Uriage set Uri_Fm_Name = '%1' where Uri_Seq = 2"_s.arg(frame60));
        ExpectSaved(harness);
        harness.msgs.expect(OpeQes_008, Answer::No);
        QVERIFY(OpenRegister(harness, 5, [&](FrmKokyaku& s) {
            UriageEntry& e = *s.FraUriage;
            QCOMPARE(s.txtName->text(), name42);
            QCOMPARE(e.txtFm_Name->text() + e.txtSyohou->text(), frame60 + note120);
            const int fieldAt = e.txtSph[0]->mapTo(&s, QPoint()).x();
            s.spdData_Click(2, 1); // 前回なし under the older line
            QCOMPARE(e.txtSph[0]->mapTo(&s, QPoint()).x(), fieldAt);
            s.spdData_Click(1, 1);
            e.txtFm_Color->setText(u"青"_s);
            QTest::mouseClick(e.cmdOk, Qt::LeftButton);
            QTest::keyClick(&s, Qt::Key_F5);
            QVERIFY(!s.spdData->view()->currentIndex().isValid());
            e.cboItem->setCurrentIndex(0); // a sale typed, not put into the grid
            e.txtFm_Name->setText(u"新しい枠"_s);
            s.txtTanjo_Day->setFocus();
            QTest::keyClick(s.txtTanjo_Day, Qt::Key_Tab);
            QCOMPARE(s.focusWidget(), s.spdData->view());
            QVERIFY(e.holdsTypedEntry() && e.shownLineId() == 0);
            QTest::keyClick(s.spdData->view(), Qt::Key_Down);
            QVERIFY(e.holdsTypedEntry() && e.shownLineId() == 0);
            harness.screens.expect<FrmRireki>(
                [](FrmRireki& history) { QTest::keyClick(&history, Qt::Key_F1); });
            QTest::keyClick(&s, Qt::Key_F12);
        }));
        QCOMPARE(CustomerTexts(5, u"User_Name"_s), name42);
        QCOMPARE(PurchaseTexts(5, 2, u"Uri_Fm_Name Uri_Syohou Uri_Fm_Color"_s),
                 frame60 + u'|' + note120 + u"|青"_s);
    }

    // Masters with gaps: a stored code selects its own entry, and a code whose master row was
    // deleted is shown as the code alone and written back unchanged; no purchase is hidden.
    // A frame name pasted from a spreadsheet holds a tab: it is stored as pasted and every
    // other column, the prescription's numbers too, keeps its own value.
    void codesSurviveDeletedMastersAndAPastedTabNeverShiftsAColumn() {
        gCon.execute(u"delete from San_Item where Item_No = '002'"_s);
        gCon.execute(u"delete from San_Meka where Meka_No = '002'"_s);
        InsertCustomer({.no = 6});
        InsertPurchase({.user = 6, .seq = 1, .ymd = 20260301});
        InsertPurchase({.user = 6,
                        .seq = 2,
                        .ymd = 20200301,
                        .item = u"003"_s,
                        .frameMaker = u"002"_s,
                        .lensMaker = u"004"_s});
        ExpectSaved(harness);
        OpenRegister(harness, 6, [](FrmKokyaku& s) {
            UriageEntry& e = *s.FraUriage;
            QCOMPARE(s.spdData->cellText(2, PurchaseGrid::FmMaker), u"002:"_s);
            s.spdData_Click(2, 1);
            QCOMPARE(e.cboItem->currentText() + e.cboMeka[0]->currentText() +
                         e.cboMeka[1]->currentText(),
                     u"003:コンタクトレンズ002:004:東海光学"_s);
            e.txtMemo->setText(u"メモだけ変更"_s);
            QTest::mouseClick(e.cmdOk, Qt::LeftButton);
            QCOMPARE(s.spdData->lineCount(), 2);
            // A cleared entry offers no deleted code to a new purchase.
            QCOMPARE(e.cboMeka[0]->findText(u"002:"_s), -1);
            Paste(e.txtFm_Name, u"FRAME\tX"_s);
            Retype(e.txtSph[0], u"-2.5"_s);
            Retype(e.txtSph[1], u"125"_s); // hundredths: +1.25
            e.txtMemo->setFocus();
            EnterPurchase(e, QDate(2026, 11, 1), 0, 0, 20000, 8000);
            QCOMPARE(s.spdData->cellText(1, PurchaseGrid::FmName), u"FRAME\tX"_s);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(s.spdData->cellText(1, 29), u"+1.25"_s); // as read back
        });
        QCOMPARE(PurchaseTexts(6, 2, u"Uri_ItemNo Uri_Fm_MekaNo Uri_Lz_MekaNo Uri_Memo"_s),
                 u"003|002|004|メモだけ変更"_s);
        QCOMPARE(PurchaseTexts(6, 3,
                               u"Uri_Fm_Name Uri_Fm_Kinga Uri_Fm_Size Uri_Lz_Kinga "
                               "Uri_R_Sph Uri_L_Sph Uri_Memo"_s),
                 u"FRAME\tX|20000||8000|-2.5|1.25|"_s);
    }
};

QTEST_MAIN(TestPurchases)
#include "tst_purchases.moc"
