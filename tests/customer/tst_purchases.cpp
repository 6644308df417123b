// Purchases on the register: lines entered, changed, marked and unmarked in the grid, written
// with the customer in one transaction, and shown again as stored. The entry always writes to
// the line it shows, whichever way the current line was moved.
#include "customer/FrmKokyaku.h"
#include "customer/PurchaseGrid.h"
#include "customer/UriageEntry.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "history/FrmRireki.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xNum.h"
#include "prescription/PrescriptionReference.h"
#include "support/Controls.h"
#include "support/Roads.h"
#include "support/ShopData.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

// The register's entry and grid, and a control of the entry by its name ("txtSph", 0).
struct Register {
    explicit Register(FrmKokyaku& screen) : s(screen) {}
    template <class Control = xField> Control& at(const char* name, int index = -1) const {
        const QString named = QLatin1String(name);
        return index < 0 ? Find<Control>(e, named) : Find<Control>(e, named, index);
    }
    void click(const char* button) const {
        QTest::mouseClick(&at<QPushButton>(button), Qt::LeftButton);
    }

    FrmKokyaku& s;
    UriageEntry& e = Find<UriageEntry>(s, u"FraUriage"_s);
    PurchaseGrid& grid = Find<PurchaseGrid>(s, u"spdData"_s);
    QTableView& cells = Find<QTableView>(grid, u"view"_s);
};

} // namespace

class TestPurchases : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    // A new customer's purchases typed in: the required lists, Enter through the entry, the
    // total worked out from the amounts, a date that is none refused on leaving it and at the
    // line, the lines newest first, consecutive numbers stored. The lens amount left by Enter or
    // Tab goes on to the total, selected to be typed over; a click elsewhere goes where aimed.
    void newLinesGetConsecutiveNumbersWithTheNewCustomer() {
        ExpectBoxes(harness, {OpeErr_001, OpeErr_001, OpeErr_003, OpeErr_003, OpeQes_001,
                              OpeInf_001, OpeQes_001, OpeInf_001});
        OpenRegister(harness, 0, [](FrmKokyaku& s) {
            const Register r(s);
            QComboBox& lensMaker = r.at<QComboBox>("cboMeka", 1);
            xNum &frame = r.at<xNum>("txtFm_Kinga"), &lens = r.at<xNum>("txtLz_Kinga");
            xNum& total = r.at<xNum>("txtKingaKci");
            xDate& date = r.at<xDate>("txtDatc");
            Find<xField>(s, u"txtName"_s).setText(u"田中 一"_s);
            r.click("cmdOk");
            QCOMPARE(s.focusWidget(), &r.at<QComboBox>("cboItem"));
            r.at<QComboBox>("cboItem").setCurrentIndex(0);
            r.click("cmdOk");
            QVERIFY(s.focusWidget() == &r.at<QComboBox>("cboYoto") && r.grid.isHidden());
            lensMaker.setCurrentIndex(2);
            lensMaker.setFocus();
            QTest::keyClick(&lensMaker, Qt::Key_Delete);
            QTest::keyClick(&lensMaker, Qt::Key_Return);
            QVERIFY(lensMaker.currentIndex() == -1 && s.focusWidget() == &lens);
            r.at("txtMemo").setFocus();
            QTest::keyClick(&r.at("txtMemo"), Qt::Key_Return);
            QCOMPARE(s.focusWidget(), &r.at("txtSph", 0));
            Retype(&frame, u"20000"_s);
            lens.setFocus();
            QCOMPARE(total.Value(), 20000.0);
            Retype(&lens, u"18000"_s);
            r.at("txtSyohou").setFocus();
            QCOMPARE(total.Value(), 38000.0);
            r.at<QComboBox>("cboYoto").setCurrentIndex(0);
            Retype(&date, u"20240230"_s);
            QTest::keyClick(&date, Qt::Key_Tab);
            QCOMPARE(s.focusWidget(), &date);
            r.click("cmdOk");
            QVERIFY(r.grid.isHidden() && s.focusWidget() == &date);
            date.setDate(QDate(2026, 10, 1));
            r.click("cmdOk");
            QVERIFY(r.grid.isVisible());
            EnterPurchase(r.e, QDate(2026, 11, 20), 1, 1, 15000);
            EnterPurchase(r.e, QDate(2025, 1, 5), 2, 2);
            QCOMPARE(ColumnTexts(r.grid, PurchaseGrid::Date),
                     u"2026/11/20|2026/10/01|2025/01/05"_s);
            QCOMPARE(ColumnTexts(r.grid, PurchaseGrid::Status), u"新規|新規|新規"_s);
            QCOMPARE(ColumnTexts(r.grid, PurchaseGrid::Total), u"15,000|38,000|0"_s);
            QCOMPARE(r.grid.cellText(1, PurchaseGrid::Item), u"サングラス"_s);
            QCOMPARE(r.grid.rowColor(2), QColor(128, 255, 255));
            // The entry is empty again for the next purchase.
            QVERIFY(r.at<QComboBox>("cboItem").currentIndex() == -1 && s.focusWidget() == &date);
            QTest::keyClick(&s, Qt::Key_F5);
            // The lens amount left by a click into S度数, by Enter, by Tab; then typed on.
            const std::pair<int, QString> leaves[] = {
                {0, u"125"_s}, {Qt::Key_Return, u"126"_s}, {Qt::Key_Tab, u"127"_s}};
            for (const auto& [key, typed] : leaves) {
                QTest::mouseClick(&lens, Qt::LeftButton);
                QTest::keyClicks(&lens, u"15000"_s);
                QWidget* next = key == 0 ? static_cast<QWidget*>(&r.at("txtSph", 0)) : &total;
                key ? QTest::keyClick(&lens, Qt::Key(key))
                    : QTest::mouseClick(next, Qt::LeftButton);
                QCOMPARE(s.focusWidget(), next);
                QCOMPARE(total.Value(), 15000.0);
                QTest::keyClicks(next, typed);
                r.at<QComboBox>("cboItem").setCurrentIndex(0);
                r.at<QComboBox>("cboYoto").setCurrentIndex(0);
                r.click("cmdOk");
            }
            QTest::keyClick(&s, Qt::Key_F5);
        });
        QCOMPARE(StoredSeqs(1), (QList<int>{1, 2, 3, 4, 5, 6}));
        QCOMPARE(PurchaseTexts(1, 2,
                               u"Uri_Date Uri_ItemNo Uri_YoutoNo Uri_Lz_MekaNo "
                               "Uri_Fm_Kinga Uri_Lz_Kinga Uri_KingaKei"_s),
                 u"20261001|001|001||20000|18000|38000"_s);
        QStringList lensLines;
        for (int seq : {4, 5, 6})
            lensLines << PurchaseTexts(1, seq, u"Uri_KingaKei Uri_R_Sph"_s);
        lensLines.sort();
        QCOMPARE(lensLines, (QStringList{u"126|0"_s, u"127|0"_s, u"15000|1.25"_s}));
    }

    // The entry writes to the line it shows, moved to by the arrow key or a drag. A save whose
    // new line fails (another terminal took its number) rolls back the customer and the changed
    // lines. "明細削除" marks a stored or changed line and takes the mark back to the state it
    // had, a marked line refuses a change, a new one is removed; the marked line is deleted.
    void theEntryWritesToTheLineItShowsAndMarkedLinesAreDeleted() {
        InsertCustomer({.no = 5});
        InsertPurchase({.user = 5, .seq = 1, .ymd = 20250101, .total = 50000});
        InsertPurchase({.user = 5, .seq = 2, .ymd = 20240101, .total = 12000});
        InsertPurchase({.user = 5, .seq = 3, .ymd = 20230101});
        CreateBeforeInsertTrigger(u"same_seq"_s, u"San_Uriage"_s,
                                  u"insert into San_Uriage (Uri_UserNo, Uri_Seq, Uri_Date) "
                                  "values (new.Uri_UserNo, new.Uri_Seq, 0)"_s);
        ExpectBoxes(harness, {OpeQes_001, OpeErr_010, OpeErr_017, OpeQes_001, OpeInf_001});
        OpenRegister(harness, 5, [](FrmKokyaku& s) {
            const Register r(s);
            QWidget* cells = r.cells.viewport();
            const auto states = [&r] {
                return ColumnTexts(r.grid, PurchaseGrid::Status);
            };
            xDate& date = r.at<xDate>("txtDatc");
            QCOMPARE(date.date(), QDate(2025, 1, 1));
            r.cells.setFocus();
            QTest::keyClick(&r.cells, Qt::Key_Down);
            QCOMPARE(date.date(), QDate(2024, 1, 1));
            r.at("txtMemo").setText(u"鼻あて交換"_s);
            r.click("cmdOk");
            QTest::mousePress(cells, Qt::LeftButton, {}, RowCentre(r.grid, 2));
            QTest::mouseMove(cells, RowCentre(r.grid, 1));
            QTest::mouseRelease(cells, Qt::LeftButton, {}, RowCentre(r.grid, 1));
            QCOMPARE(date.date(), QDate(2025, 1, 1));
            r.at("txtMemo").setText(u"一度目"_s);
            r.click("cmdOk");
            QCOMPARE(r.grid.rowColor(1), QColor(255, 255, 128));
            Find<xField>(s, u"txtName"_s).setText(u"名前を変えた"_s);
            EnterPurchase(r.e, QDate(2026, 11, 22), 0, 0);
            s.spdData_Click(1, 1);
            r.click("cmdOk"); // a new line stays new
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(states(), u"新規|変更|変更|"_s);
            QCOMPARE(CustomerTexts(5, u"User_Name"_s) + PurchaseTexts(5, 1, u"Uri_Memo"_s),
                     u"山田 太郎"_s);
            QCOMPARE(StoredSeqs(5), (QList<int>{1, 2, 3}));
            r.grid.setActiveCell(1, 1);
            r.click("cmdCancel");
            QVERIFY(states() == u"変更|変更|"_s && s.focusWidget() == &date);
            s.spdData_Click(1, 1);
            r.at("txtMemo").setText(u"変えた"_s);
            r.click("cmdOk"); // a changed line stays changed
            s.spdData_Click(3, 3);
            r.click("cmdCancel");
            QCOMPARE(states(), u"変更|変更|削除"_s);
            QCOMPARE(r.grid.rowColor(3), QColor(255, 128, 128));
            s.spdData_Click(3, 3);
            r.click("cmdOk");
            r.click("cmdCancel");
            QCOMPARE(r.grid.rowColor(3), QColor(255, 255, 128));
            for (int twice = 0; twice < 2; ++twice) {
                s.spdData_Click(2, 1);
                r.click("cmdCancel");
            }
            QCOMPARE(states(), u"変更|変更|"_s);
            r.grid.setActiveCell(3, 1);
            r.click("cmdCancel");
            QCOMPARE(states(), u"変更|変更|削除"_s);
            QTest::keyClick(&s, Qt::Key_F5);
        });
        QCOMPARE(StoredSeqs(5), (QList<int>{1, 2}));
        QCOMPARE(CustomerTexts(5, u"User_Name"_s), u"名前を変えた"_s);
        const QString columns = u"Uri_Date Uri_KingaKei Uri_Memo"_s;
        QCOMPARE(PurchaseTexts(5, 1, columns), u"20250101|50000|変えた"_s);
        QCOMPARE(PurchaseTexts(5, 2, columns), u"20240101|12000|鼻あて交換"_s);
    }

    // Under each eye the prescription before the purchase shown: one without a prescription is
    // passed over, a new line comes after every line, the one waiting too. A power typed 0.50
    // or more away is marked by colour and sign, a smaller change is not; no field moves.
    void thePreviousPrescriptionStandsUnderTheEntry() {
        InsertCustomer({.no = 4});
        InsertPurchase({.user = 4, .seq = 1, .ymd = 20240512}); // R -1.25, L -1.50
        InsertPurchase({.user = 4, .seq = 2, .ymd = 20250101, .rightSph = 0, .leftSph = 0});
        InsertPurchase({.user = 4, .seq = 3, .ymd = 20260101});
        QVERIFY(!OpenRegister(harness, 4, [this](FrmKokyaku& s) {
            const Register r(s);
            xField &right = r.at("txtSph", 0), &left = r.at("txtSph", 1);
            const auto label = [&r](const char* name) {
                return r.at<QLabel>(name).text();
            };
            const int fieldAt = right.mapTo(&s, QPoint()).x();
            QCOMPARE(label("lblZenkaiR") + label("lblZenkaiSph_R") + label("lblZenkaiSph_L"),
                     u"前回 2024/05/12-1.25-1.50"_s);
            Retype(&right, u"-2"_s);
            Retype(&left, u"-1.25"_s);
            r.at("txtCyl", 1).setFocus();
            QCOMPARE(right.text() + label("lblZenkaiSph_R") + label("lblZenkaiSph_L"),
                     u"-2.00▼-1.25-1.50"_s);
            QCOMPARE(right.InputAreaColor(), PrescriptionReference::MarkColor);
            QCOMPARE(left.InputAreaColor(), QColor(Qt::white));
            harness.msgs.expect(OpeQes_008, Answer::Yes); // what was typed over line 1 goes
            s.spdData_Click(2, 1);
            QCOMPARE(label("lblZenkaiL"), u"前回 2024/05/12"_s);
            s.spdData_Click(3, 1);
            QCOMPARE(label("lblZenkaiL") + label("lblZenkaiSph_L"), u"前回なし"_s);
            QCOMPARE(right.mapTo(&s, QPoint()).x(), fieldAt);
            r.click("cmdClear");
            QCOMPARE(label("lblZenkaiR"), u"前回 2026/01/01"_s);
            Retype(&right, u"-3"_s);
            EnterPurchase(r.e, QDate(2026, 11, 1), 0, 0);
            QCOMPARE(label("lblZenkaiR") + label("lblZenkaiSph_R"), u"前回 2026/11/01-3.00"_s);
        }));
    }

    // Texts longer than their fields allow, and codes whose master row is gone (shown as the
    // code alone), are stored again whole; a cleared entry offers no deleted code. A pasted tab
    // is stored as pasted, shifting no column. After the save no line is current: Tab into the
    // grid loads none, the arrows over a typed sale ask first (No keeps it); F12 leaves Koushin.
    void storedTextsAndCodesSurviveAndFocusLoadsNoLine() {
        gCon.execute(u"delete from San_Item where Item_No = '002'"_s);
        gCon.execute(u"delete from San_Meka where Meka_No = '002'"_s);
        const QString name42 = QString(42, u'長'), frame60 = QString(60, u'枠');
        const QString note120 = QString(120, u'処');
        InsertCustomer({.no = 5, .name = name42});
        InsertPurchase({.user = 5, .seq = 1, .ymd = 20200301, .item = u"003"_s});
        InsertPurchase({.user = 5, .seq = 2, .ymd = 20260101, .syohou = note120});
        gCon.execute(u"update San_Uriage set Uri_Fm_MekaNo = '002', Uri_Lz_MekaNo = '004' "
                     "where Uri_Seq = 1"_s);
        gCon.execute(u"update San_Uriage set Uri_Fm_Name = '%1' where Uri_Seq = 2"_s.arg(frame60));
        ExpectSaved(harness);
        harness.msgs.expect(OpeQes_008, Answer::No);
        QVERIFY(OpenRegister(harness, 5, [&](FrmKokyaku& s) {
            const Register r(s);
            xField& frameName = r.at("txtFm_Name");
            xField& birthDay = Find<xField>(s, u"txtTanjo_Day"_s);
            QCOMPARE(Find<xField>(s, u"txtName"_s).text(), name42);
            QCOMPARE(frameName.text() + r.at("txtSyohou").text(), frame60 + note120);
            r.at("txtFm_Color").setText(u"青"_s);
            r.click("cmdOk");
            QCOMPARE(r.grid.cellText(2, PurchaseGrid::FmMaker), u"002:"_s);
            s.spdData_Click(2, 1);
            QCOMPARE(r.at<QComboBox>("cboItem").currentText() +
                         r.at<QComboBox>("cboMeka", 0).currentText() +
                         r.at<QComboBox>("cboMeka", 1).currentText(),
                     u"003:コンタクトレンズ002:004:東海光学"_s);
            r.at("txtMemo").setText(u"メモだけ変更"_s);
            r.click("cmdOk");
            QCOMPARE(r.grid.lineCount(), 2);
            QCOMPARE(r.at<QComboBox>("cboMeka", 0).findText(u"002:"_s), -1);
            Paste(&frameName, u"FRAME\tX"_s);
            Retype(&r.at("txtSph", 0), u"-2.5"_s);
            Retype(&r.at("txtSph", 1), u"125"_s); // hundredths: +1.25
            r.at("txtMemo").setFocus();
            EnterPurchase(r.e, QDate(2026, 11, 1), 0, 0, 20000, 8000);
            QCOMPARE(r.grid.cellText(1, PurchaseGrid::FmName), u"FRAME\tX"_s);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(r.grid.cellText(1, 31), u"+1.25"_s); // as read back
            QVERIFY(!r.cells.currentIndex().isValid());
            r.at<QComboBox>("cboItem").setCurrentIndex(0); // a sale typed, not put into the grid
            frameName.setText(u"新しい枠"_s);
            birthDay.setFocus();
            QTest::keyClick(&birthDay, Qt::Key_Tab);
            QCOMPARE(s.focusWidget(), &r.cells);
            QVERIFY(r.e.holdsTypedEntry() && r.e.shownLineId() == 0);
            QTest::keyClick(&r.cells, Qt::Key_Down);
            QVERIFY(r.e.holdsTypedEntry() && r.e.shownLineId() == 0);
            harness.screens.expect<FrmRireki>(
                [](FrmRireki& history) { QTest::keyClick(&history, Qt::Key_F1); });
            QTest::keyClick(&s, Qt::Key_F12);
        }));
        QCOMPARE(CustomerTexts(5, u"User_Name"_s), name42);
        QCOMPARE(PurchaseTexts(5, 2, u"Uri_Fm_Name Uri_Syohou Uri_Fm_Color"_s),
                 frame60 + u'|' + note120 + u"|青"_s);
        QCOMPARE(PurchaseTexts(5, 1, u"Uri_ItemNo Uri_Fm_MekaNo Uri_Lz_MekaNo Uri_Memo"_s),
                 u"003|002|004|メモだけ変更"_s);
        QCOMPARE(PurchaseTexts(5, 3,
                               u"Uri_Fm_Name Uri_Fm_Kinga Uri_Fm_Size Uri_Lz_Kinga "
                               "Uri_R_Sph Uri_L_Sph Uri_Memo"_s),
                 u"FRAME\tX|20000||8000|-2.5|1.25|"_s);
    }
};

QTEST_MAIN(TestPurchases)
#include "tst_purchases.moc"
