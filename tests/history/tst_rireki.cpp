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
#include "pickers/AddressList.h"
#include "pickers/FrmZipList.h"
#include "platform/Failure.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xLabel.h"
#include "platform/controls/xNum.h"
#include "platform/db/Connection.h"
#include "platform/ui/ShowModal.h"
#include "support/Roads.h"
#include "support/ShopData.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QtTest>

using namespace Qt::Literals::StringLiterals;

namespace {

enum { Sph, Cyl, Ax, S, P1, B1 };

QList<int> shownSeqs(const FrmRireki& s) {
    QList<int> seqs;
    for (const UriageBlock* block : s.FraUriage)
        seqs << block->seq();
    return seqs;
}

// Per block: the caption and the previous Sph of one eye.
QString previousSph(const FrmRireki& s, const QString& eye) {
    QStringList texts;
    for (const UriageBlock* block : s.FraUriage) {
        const auto* date = block->findChild<QLabel*>(u"lblZenkai"_s + eye);
        const auto* sph = block->findChild<QLabel*>(u"lblZenkaiSph_"_s + eye);
        texts << (date && sph ? date->text() + u' ' + sph->text() : u"<none>"_s);
    }
    return texts.join(u'|');
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

    // Three a page, newest first, ties by number, up to the day asked; no other customer's.
    void historyPages() {
        const std::tuple<qint64, qint64, int, QList<int>> cases[] = {
            {1, 20261122, 1, {1, 2, 4}}, {1, 20261122, 2, {3, 5}}, {1, 20261122, 3, {}},
            {1, 20251231, 1, {2, 4, 3}}, {1, 20221231, 1, {}},     {2, 20261122, 1, {}}};
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
            QVERIFY(s.readFailed() && s.lblKokNo->text().isEmpty());
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
            QCOMPARE(shownSeqs(s), (QList<int>{1, 2, 4}));
            QCOMPARE(s.FraUriage[0]->cboItem->currentText(), u"003:コンタクトレンズ"_s);
            QVERIFY(!s.FraUriage[0]->isEnabled());
            QCOMPARE(previousSph(s, u"R"_s), u"前回 2025/06/01 -1.25|前回 2023/01/01 ▼-1.25|"
                                             u"前回 2025/06/01 ▲-2.00"_s);
            // A page reads its purchases alone: the masters were read once with the screen.
            const qint64 before = Connection::statementsSent();
            QTest::keyClick(&s, Qt::Key_F12);
            QCOMPARE(Connection::statementsSent() - before, 1);
            QCOMPARE(shownSeqs(s), (QList<int>{3, 5, 0}));
            QCOMPARE(s.FraUriage[1]->cboItem->count(), 7);
            QCOMPARE(previousSph(s, u"L"_s), u"前回 2023/01/01 -1.50|前回なし | "_s);
            QCOMPARE(s.FraUriage[0]->cboFm_Meka->currentIndex(), -1);
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
            Retype(s.txtKensakuDay, u"20240230"_s);
            QTest::mouseClick(s.cmdKensaku, Qt::LeftButton);
            QCOMPARE(shownSeqs(s), (QList<int>{3, 5, 0}));
            QCOMPARE(s.focusWidget(), s.txtKensakuDay);
            s.txtKensakuDay->setDate(QDate(2025, 12, 31));
            QTest::mouseClick(s.cmdKensaku, Qt::LeftButton);
            QCOMPARE(shownSeqs(s), (QList<int>{2, 4, 3}));

            QTest::keyClick(&s, Qt::Key_F5);
            s.FraUriage[0]->txtFm_Name->setText(u"上段を変更"_s);
            QTest::keyClick(&s, Qt::Key_F7);
            s.FraUriage[2]->prescription(0, Ax)->setText(u"abc"_s);
            // A corrected date that is none, or none at all, is refused before the question.
            for (const char* typed : {"20241301", ""}) {
                Retype(s.FraUriage[0]->txtUriDate, QString::fromLatin1(typed));
                QTest::keyClick(&s, Qt::Key_F4);
                QCOMPARE(s.focusWidget(), s.FraUriage[0]->txtUriDate);
            }
            s.FraUriage[0]->txtUriDate->setDate(QDate(2025, 6, 1));
            QTest::keyClick(&s, Qt::Key_F4);
            QVERIFY(s.FraUriage[0]->editing && s.FraUriage[2]->editing);
            QTest::keyClick(&s, Qt::Key_F1); // No: the corrections stay
            QCOMPARE(s.FraUriage[0]->txtFm_Name->text(), u"上段を変更"_s);
            QTest::keyClick(&s, Qt::Key_F1);
            QVERIFY(!s.isVisible());
        }));
        QCOMPARE(PurchaseTexts(1, 2, u"Uri_Fm_Name"_s), u"F-1"_s);
    }

    // The register's key opens the history; the block is written as its fields hold it, a maker
    // whose master row is gone keeps its code; after the save the page shows what is stored and
    // a second correction is stored too; the register shows the correction afterwards.
    void aCorrectedBlockIsStored() {
        MasterStore::Remove(MasterKind::Meka, MasterStore::Entries(MasterKind::Meka)[1]);
        ExpectBoxes(harness, {OpeQes_001, OpeInf_001, OpeQes_001, OpeInf_001});
        QVERIFY(OpenRegister(harness, 1, [this](FrmKokyaku& s) {
            harness.screens.expect<FrmRireki>([](FrmRireki& history) {
                UriageBlock& middle = *history.FraUriage[1];
                QTest::keyClick(&history, Qt::Key_F6);
                QCOMPARE(history.focusWidget(), middle.txtFm_Name);
                // Tab runs along the block as shown: the frame, the lens, the prescription.
                middle.txtFm_Color->setFocus();
                for (QWidget* next : std::initializer_list<QWidget*>{
                         middle.txtFm_Kinga, middle.cboLz_Meka, middle.txtLz_Name,
                         middle.txtLz_Kinga, middle.prescription(0, Sph)}) {
                    QTest::keyClick(history.focusWidget(), Qt::Key_Tab);
                    QCOMPARE(history.focusWidget(), next);
                }
                middle.txtFm_Name->setFocus();
                QTest::keyClicks(middle.txtFm_Name, u" O'Brien "_s);
                middle.txtUriDate->setDate(QDate(2025, 6, 2));
                middle.txtKinga->setValue(21000);
                QTest::keyClick(middle.cboFm_Meka, Qt::Key_Delete);
                middle.prescription(0, Cyl)->setText(u"-0.5"_s);
                middle.prescription(1, B1)->setText(u"IN"_s);
                QTest::keyClick(&history, Qt::Key_F4);
                QCOMPARE(PurchaseTexts(1, 2,
                                       u"Uri_Date Uri_Fm_Name Uri_Fm_MekaNo Uri_Lz_MekaNo "
                                       "Uri_KingaKei Uri_R_Sph Uri_R_Cyl Uri_L_B1 Uri_Syohou"_s),
                         u"20250602|F-1 O'Brien ||002|21000|-1.25|-0.5|IN|遠近"_s);
                // The page is read again: the stored block, read-only under its own caption.
                QCOMPARE(middle.title() + u' ' + middle.prescription(0, Cyl)->text(),
                         u"中段 -0.50"_s);
                QVERIFY(!middle.isEnabled() && !history.ChkEditData());
                // A second correction is stored as well.
                QTest::keyClick(&history, Qt::Key_F6);
                middle.txtFm_Name->setText(u"二度目"_s);
                QTest::keyClick(&history, Qt::Key_F4);
                QCOMPARE(middle.txtFm_Name->text(), u"二度目"_s);
                QTest::keyClick(&history, Qt::Key_F1);
            });
            QTest::keyClick(&s, Qt::Key_F12);
            QCOMPARE(s.spdData->cellText(2, PurchaseGrid::FmName), u"二度目"_s);
        }));
        QCOMPARE(PurchaseTexts(1, 2, u"Uri_Date Uri_Fm_Name Uri_Fm_MekaNo Uri_R_Cyl Uri_L_B1"_s),
                 u"20250602|二度目||-0.5|IN"_s);
        QCOMPARE(PurchaseTexts(1, 4, u"Uri_Fm_Name"_s), u"F-1"_s);
    }

    // A screen reads each master once: the register opens in five statements (three masters,
    // the customer, his purchases).
    void eachMasterIsReadOncePerScreen() {
        const qint64 opened = Connection::statementsSent();
        // Nothing is changed: the register tells so.
        QVERIFY(!OpenRegister(
            harness, 1, [&](FrmKokyaku&) { QCOMPARE(Connection::statementsSent() - opened, 5); }));
    }

    // Full-width digits, signs and points, committed by an input method or pasted, are digits
    // in every number field: shown and stored as such, never a failure box or an error line.
    void fullWidthDigitsAreReadAsDigits() {
        for (const char* row : {"(60, 1, '北海道', '札幌市中央区', '北一条西')",
                                "(60, 42, '北海道', '札幌市中央区', '大通西')"})
            gCon.execute(u"insert into ZipList values "_s + QString::fromUtf8(row));
        // The postal search.
        QString found;
        harness.screens.expect<FrmZipList>([&](FrmZipList& s) {
            Commit(s.txtZip1, u"０６０"_s);
            QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
            found = s.txtZip1->text() + QLatin1Char('|') + ColumnTexts(*s.spdZipList, 1);
            QTest::mouseClick(s.cmdCAN, Qt::LeftButton);
        });
        FrmZipList postal;
        ShowModal(postal);
        QCOMPARE(found, u"060|060-0001|060-0042"_s);
        // A master's number.
        harness.msgs.expect(OpeInf_001);
        harness.screens.expect<FrmMstMeka>([&](FrmMstMeka& s) {
            Commit(s.txtTNo, u"１２"_s);
            Commit(s.txtName, u"眼鏡"_s);
            found = s.txtTNo->text();
            QTest::keyClick(&s, Qt::Key_F5);
            QTest::keyClick(&s, Qt::Key_F1);
        });
        FrmMstMeka makers;
        ShowModal(makers);
        QCOMPARE(found, u"012"_s);
        QCOMPARE(QueryValue(u"select Meka_Name from San_Meka where Meka_No = '012'"_s).toString(),
                 u"眼鏡"_s);
        // The upper purchase (number 1) corrected: the amount, a signed and a whole prescription
        // value, the date; shown after the save and stored.
        ExpectSaved(harness);
        openHistory(harness, [&](FrmRireki& s) {
            UriageBlock& b = *s.FraUriage[0];
            QTest::keyClick(&s, Qt::Key_F5);
            Paste(b.txtKinga, u"２１，０００"_s);
            Commit(b.prescription(0, Cyl), u"－０．５"_s);
            Commit(b.prescription(1, Ax), u"１２"_s);
            Paste(b.txtUriDate, u"２０２５０６０２"_s);
            QTest::keyClick(&s, Qt::Key_F4);
            found = QStringList{b.txtKinga->text(), b.prescription(0, Cyl)->text(),
                                b.prescription(1, Ax)->text(), b.txtUriDate->text()}
                        .join(QLatin1Char('|'));
            QTest::keyClick(&s, Qt::Key_F1);
        });
        QCOMPARE(found, u"21,000|-0.50|12|2025/06/02"_s);
        QCOMPARE(PurchaseTexts(1, 1, u"Uri_KingaKei Uri_R_Cyl Uri_L_Ax Uri_Date"_s),
                 u"21000|-0.5|12|20250602"_s);
        static const QRegularExpression errorLine(u"ｴﾗ-No\\.\\([^)]"_s);
        QVERIFY(!QString::fromUtf8(ReadFile(LogFilePath())).contains(errorLine));
    }
};

QTEST_MAIN(TestRireki)
#include "tst_rireki.moc"
