// The sales history: pages of three purchases, corrections saved in one transaction, and the
// register's key that opens it. Full-width digits in the number fields of the history and of
// the screens beside it.
#include "customer/FrmKokyaku.h"
#include "customer/PurchaseGrid.h"
#include "data/MasterStore.h"
#include "data/PurchaseStore.h"
#include "frame/Globals.h"
#include "frame/Log.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "history/FrmRireki.h"
#include "history/UriageBlock.h"
#include "masters/FrmMaster.h"
#include "pickers/FrmZipList.h"
#include "platform/Failure.h"
#include "platform/controls/GridView.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xLabel.h"
#include "platform/controls/xNum.h"
#include "platform/db/Connection.h"
#include "platform/ui/ShowModal.h"
#include "support/Controls.h"
#include "support/Roads.h"
#include "support/ShopData.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QtTest>

using namespace Qt::Literals::StringLiterals;

namespace {

// A block of the history (0 upper, 1 middle, 2 lower), and a control of a block by its name.
UriageBlock& block(const FrmRireki& s, int index) {
    return Find<UriageBlock>(s, u"FraUriage"_s, index);
}
template <class Control = xField> Control& in(const UriageBlock& b, const QString& name) {
    return Find<Control>(b, name);
}

QList<int> shownSeqs(const FrmRireki& s) {
    return {block(s, 0).seq(), block(s, 1).seq(), block(s, 2).seq()};
}

// Per block: the caption and the previous Sph of one eye.
QString previousSph(const FrmRireki& s, const QString& eye) {
    QStringList texts;
    for (int i = 0; i < 3; ++i)
        texts << in<QLabel>(block(s, i), u"lblZenkai"_s + eye).text() + u' ' +
                     in<QLabel>(block(s, i), u"lblZenkaiSph_"_s + eye).text();
    return texts.join(u'|');
}

// Whether the log holds an error's line (one with its number).
bool loggedAnError() {
    static const QRegularExpression errorLine(u"ｴﾗ-No\\.\\([^)]"_s);
    return QString::fromUtf8(ReadFile(LogFilePath())).contains(errorLine);
}

// The history of customer 1 driven; gives back Koushin.
bool openHistory(Harness& harness, const std::function<void(FrmRireki&)>& drive) {
    FrmRireki screen;
    screen.setKokNo(1);
    harness.screens.expect<FrmRireki>(drive);
    ShowModal(screen);
    return screen.Koushin();
}

} // namespace

class TestRireki : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() {
        HARNESS_INIT(harness);
        InsertCustomer({.no = 1});
        InsertCustomer({.no = 2});
        // Five purchases of customer 1, two of them on one day.
        InsertPurchase({.seq = 1, .ymd = 20260101, .item = u"003"_s});
        InsertPurchase({.seq = 2, .ymd = 20250601, .total = 20000});
        InsertPurchase({.seq = 3, .ymd = 20240101, .frameMaker = QString()});
        InsertPurchase({.seq = 4, .ymd = 20250601, .total = 30000});
        InsertPurchase({.seq = 5, .ymd = 20230101});
    }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    // Three a page, newest first, ties by number, up to the day asked (the screen's road below
    // pages on and asks for days); no other customer's.
    void historyPages() {
        const std::tuple<qint64, qint64, int, QList<int>> cases[] = {
            {1, 20261122, 1, {1, 2, 4}}, {1, 20221231, 1, {}}, {2, 20261122, 1, {}}};
        for (const auto& [customer, ymd, pageNo, expected] : cases) {
            const PurchaseStore::HistoryPage page =
                PurchaseStore::ReadHistoryPage(customer, ymd, pageNo);
            QList<int> seqs;
            for (const Purchase& p : page.purchases)
                seqs << p.seq;
            QCOMPARE(seqs, expected);
            QCOMPARE(page.name, seqs.isEmpty() ? QString() : u"山田 太郎"_s);
            QCOMPARE(page.total, seqs.isEmpty() ? 0 : 38000 * 3 + 20000 + 30000);
        }
        // A page that cannot be read is a failure, told and logged, not the end of the data.
        gCon.execute(u"drop view V_San_User"_s);
        harness.msgs.expectBoxStartingWith(
            u"障害発生！"_s, VbErrorTitle + QString::number(ErrorNumber::StatementFailed));
        openHistory(harness, [](FrmRireki& s) {
            QVERIFY(s.readFailed() && Find<xLabel>(s, u"lblKokNo"_s).text().isEmpty());
            QTest::keyClick(&s, Qt::Key_F1);
        });
        QVERIFY(ReadFile(LogFilePath()).contains("\"DispUriage\""));
    }

    // Paging back and forth, the day search, and a save that fails: one block that cannot be
    // written rolls back the others, and the corrections stay on the screen.
    // Under each block the prescription before its purchase: above it among those of its day,
    // or on a later page; one without a prescription is passed over, the oldest has none, and a
    // power 0.50 or more away is marked with its direction.
    void pagingThePreviousPrescriptionsAndAFailingSave() {
        gCon.execute(u"update San_Uriage set Uri_R_Sph = 0, Uri_L_Sph = 0 where "
                     "Uri_UserNo = 1 and Uri_Seq = 3"_s);
        gCon.execute(
            u"update San_Uriage set Uri_R_Sph = -2 where Uri_UserNo = 1 and Uri_Seq = 2"_s);
        // Past the last page, before the first; dates that are none; the question.
        ExpectBoxes(harness,
                    {OpeErr_014, OpeErr_014, OpeErr_003, OpeErr_003, OpeErr_001, OpeQes_001});
        harness.msgs.expectBox(
            u"障害発生！ サポート先までご連絡お願い致します。\r\r型が一致しません。"_s,
            u" VB ERROR No.13"_s);
        harness.msgs.expect(OpeQes_008, Answer::No);
        harness.msgs.expect(OpeQes_008, Answer::Yes);
        QVERIFY(!openHistory(harness, [](FrmRireki& s) {
            auto& day = Find<xDate>(s, u"txtKensakuDay"_s);
            auto& search = Find<QPushButton>(s, u"cmdKensaku"_s);
            UriageBlock& upper = block(s, 0);
            auto& date = in<xDate>(upper, u"txtUriDate"_s);
            QCOMPARE(shownSeqs(s), (QList<int>{1, 2, 4}));
            QCOMPARE(in<QComboBox>(upper, u"cboItem"_s).currentText(), u"003:コンタクトレンズ"_s);
            QVERIFY(!upper.isEnabled());
            QCOMPARE(previousSph(s, u"R"_s), u"前回 2025/06/01 -1.25|前回 2023/01/01 ▼-1.25|"
                                             u"前回 2025/06/01 ▲-2.00"_s);
            // A page reads its purchases alone: the masters were read once with the screen.
            const qint64 before = Connection::statementsSent();
            QTest::keyClick(&s, Qt::Key_F12);
            QCOMPARE(Connection::statementsSent() - before, 1);
            QCOMPARE(shownSeqs(s), (QList<int>{3, 5, 0}));
            QCOMPARE(in<QComboBox>(block(s, 1), u"cboItem"_s).count(), 7);
            QCOMPARE(previousSph(s, u"L"_s), u"前回 2023/01/01 -1.50|前回なし | "_s);
            QCOMPARE(in<QComboBox>(upper, u"cboFm_Meka"_s).currentIndex(), -1);
            // An empty block is not corrected: paging on asks nothing.
            QTest::keyClick(&s, Qt::Key_F7);
            QTest::keyClick(&s, Qt::Key_F12);
            QCOMPARE(shownSeqs(s), (QList<int>{0, 0, 0}));
            QTest::keyClick(&s, Qt::Key_F11);
            QTest::keyClick(&s, Qt::Key_F11);
            QCOMPARE(shownSeqs(s), (QList<int>{1, 2, 4}));
            QTest::keyClick(&s, Qt::Key_F11);
            QCOMPARE(s.page(), 1);
            // "以前の照会" starts again at the first page, up to its day.
            QTest::keyClick(&s, Qt::Key_F12);
            Retype(&day, u"20240230"_s);
            QTest::mouseClick(&search, Qt::LeftButton);
            QCOMPARE(shownSeqs(s), (QList<int>{3, 5, 0}));
            QCOMPARE(s.focusWidget(), &day);
            day.setDate(QDate(2025, 12, 31));
            QTest::mouseClick(&search, Qt::LeftButton);
            QCOMPARE(shownSeqs(s), (QList<int>{2, 4, 3}));

            QTest::keyClick(&s, Qt::Key_F5);
            in(upper, u"txtFm_Name"_s).setText(u"上段を変更"_s);
            QTest::keyClick(&s, Qt::Key_F7);
            in(block(s, 2), u"txtAx_R"_s).setText(u"abc"_s);
            // A corrected date that is none, or none at all, is refused before the question.
            for (const char* typed : {"20241301", ""}) {
                Retype(&date, QString::fromLatin1(typed));
                QTest::keyClick(&s, Qt::Key_F4);
                QCOMPARE(s.focusWidget(), &date);
            }
            date.setDate(QDate(2025, 6, 1));
            QTest::keyClick(&s, Qt::Key_F4);
            QVERIFY(upper.editing && block(s, 2).editing);
            QTest::keyClick(&s, Qt::Key_F1); // No: the corrections stay
            QCOMPARE(in(upper, u"txtFm_Name"_s).text(), u"上段を変更"_s);
            QTest::keyClick(&s, Qt::Key_F1);
            QVERIFY(!s.isVisible());
        }));
        QCOMPARE(PurchaseTexts(1, 2, u"Uri_Fm_Name"_s), u"F-1"_s);
    }

    // The register opens in five statements (three masters, the customer, his purchases); its
    // key opens the history. The block is written as its fields hold it, a maker whose master
    // row is gone keeps its code; after the save the page shows what is stored. A second
    // correction is stored too, full-width digits, signs and points (pasted or committed by an
    // input method) read as digits; the register shows it afterwards.
    void aCorrectedBlockIsStored() {
        MasterStore::Remove(MasterKind::Meka, MasterStore::Entries(MasterKind::Meka)[1]);
        ExpectBoxes(harness, {OpeQes_001, OpeInf_001, OpeQes_001, OpeInf_001});
        const qint64 opened = Connection::statementsSent();
        QVERIFY(OpenRegister(harness, 1, [&](FrmKokyaku& s) {
            QCOMPARE(Connection::statementsSent() - opened, 6);
            harness.screens.expect<FrmRireki>([](FrmRireki& history) {
                UriageBlock &upper = block(history, 0), &middle = block(history, 1);
                xField& frameName = in(middle, u"txtFm_Name"_s);
                QTest::keyClick(&history, Qt::Key_F6);
                QCOMPARE(history.focusWidget(), &frameName);
                // Tab runs along the block as shown: the frame, the lens, the prescription.
                in(middle, u"txtFm_Color"_s).setFocus();
                for (const char* next :
                     {"txtFm_Kinga", "cboLz_Meka", "txtLz_Name", "txtLz_Kinga", "txtSph_R"}) {
                    QTest::keyClick(history.focusWidget(), Qt::Key_Tab);
                    QCOMPARE(history.focusWidget(), &in<QWidget>(middle, QLatin1String(next)));
                }
                frameName.setFocus();
                QTest::keyClicks(&frameName, u" O'Brien "_s);
                in<xDate>(middle, u"txtUriDate"_s).setDate(QDate(2025, 6, 2));
                in<xNum>(middle, u"txtKinga"_s).setValue(21000);
                QTest::keyClick(&in<QComboBox>(middle, u"cboFm_Meka"_s), Qt::Key_Delete);
                in(middle, u"txtCyl_R"_s).setText(u"-0.5"_s);
                in(middle, u"txtB1_L"_s).setText(u"IN"_s);
                QTest::keyClick(&history, Qt::Key_F4);
                QCOMPARE(PurchaseTexts(1, 2,
                                       u"Uri_Date Uri_Fm_Name Uri_Fm_MekaNo Uri_Lz_MekaNo "
                                       "Uri_KingaKei Uri_R_Sph Uri_R_Cyl Uri_L_B1 Uri_Syohou"_s),
                         u"20250602|F-1 O'Brien ||002|21000|-1.25|-0.5|IN|遠近"_s);
                // The page is read again: the stored block, read-only under its own caption.
                QCOMPARE(middle.title() + u' ' + in(middle, u"txtCyl_R"_s).text(), u"中段 -0.50"_s);
                QVERIFY(!middle.isEnabled() && !history.ChkEditData());
                QTest::keyClick(&history, Qt::Key_F6);
                frameName.setText(u"二度目"_s);
                QTest::keyClick(&history, Qt::Key_F5);
                xNum& amount = in<xNum>(upper, u"txtKinga"_s);
                xDate& date = in<xDate>(upper, u"txtUriDate"_s);
                xField &cyl = in(upper, u"txtCyl_R"_s), &ax = in(upper, u"txtAx_L"_s);
                Paste(&amount, u"２１，０００"_s);
                Commit(&cyl, u"－０．５"_s);
                Commit(&ax, u"１２"_s);
                Paste(&date, u"２０２６０１０２"_s);
                QTest::keyClick(&history, Qt::Key_F4);
                const QStringList shown{frameName.text(), amount.text(), cyl.text(), ax.text(),
                                        date.text()};
                QCOMPARE(shown.join(u'|'), u"二度目|21,000|-0.50|12|2026/01/02"_s);
                QTest::keyClick(&history, Qt::Key_F1);
            });
            QTest::keyClick(&s, Qt::Key_F12);
            QCOMPARE(Find<PurchaseGrid>(s, u"spdData"_s).cellText(2, PurchaseGrid::FmName),
                     u"二度目"_s);
        }));
        QCOMPARE(PurchaseTexts(1, 2, u"Uri_Date Uri_Fm_Name Uri_Fm_MekaNo Uri_R_Cyl Uri_L_B1"_s),
                 u"20250602|二度目||-0.5|IN"_s);
        QCOMPARE(PurchaseTexts(1, 1, u"Uri_KingaKei Uri_R_Cyl Uri_L_Ax Uri_Date"_s),
                 u"21000|-0.5|12|20260102"_s);
        QCOMPARE(PurchaseTexts(1, 4, u"Uri_Fm_Name"_s), u"F-1"_s);
        QVERIFY(!loggedAnError());
    }

    // Full-width digits committed by an input method are digits in the postal search and a
    // master's number: shown and stored as such, never a failure box or an error line.
    void fullWidthDigitsAreReadAsDigits() {
        for (const char* row : {"(60, 1, '北海道', '札幌市中央区', '北一条西')",
                                "(60, 42, '北海道', '札幌市中央区', '大通西')"})
            gCon.execute(u"insert into ZipList values "_s + QString::fromUtf8(row));
        QString found;
        harness.screens.expect<FrmZipList>([&](FrmZipList& s) {
            auto& zip = Find<xField>(s, u"txtZip1"_s);
            Commit(&zip, u"０６０"_s);
            QTest::mouseClick(&Find<QPushButton>(s, u"cmdKensak"_s), Qt::LeftButton);
            found = zip.text() + u'|' + ColumnTexts(Find<GridView>(s, u"spdZipList"_s), 1);
            QTest::mouseClick(&Find<QPushButton>(s, u"cmdCAN"_s), Qt::LeftButton);
        });
        FrmZipList postal;
        ShowModal(postal);
        QCOMPARE(found, u"060|060-0001|060-0042"_s);
        harness.msgs.expect(OpeInf_001);
        harness.screens.expect<FrmMstMeka>([&](FrmMstMeka& s) {
            Commit(&Find<xField>(s, u"txtTNo"_s), u"１２"_s);
            Commit(&Find<xField>(s, u"txtName"_s), u"眼鏡"_s);
            found = Find<xField>(s, u"txtTNo"_s).text();
            QTest::keyClick(&s, Qt::Key_F5);
            QTest::keyClick(&s, Qt::Key_F1);
        });
        FrmMstMeka makers;
        ShowModal(makers);
        QCOMPARE(found, u"012"_s);
        QCOMPARE(QueryValue(u"select Meka_Name from San_Meka where Meka_No = '012'"_s).toString(),
                 u"眼鏡"_s);
        QVERIFY(!loggedAnError());
    }
};

QTEST_MAIN(TestRireki)
#include "tst_rireki.moc"
