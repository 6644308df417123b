// The sales history: pages of three purchases, corrections saved in one transaction, and the
// register's key that opens it. Full-width digits in its number fields and a master's.
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
#include "platform/Failure.h"
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

    // Not another customer's purchases; a page that cannot be read is a failure, told and
    // logged, not the end of the data.
    void emptyAndUnreadablePages() {
        QVERIFY(PurchaseStore::ReadHistoryPage(2, 20261122, 1).purchases.empty());
        gCon.execute(u"drop view V_San_User"_s);
        harness.msgs.expectBoxStartingWith(
            u"障害発生！"_s, VbErrorTitle + QString::number(ErrorNumber::StatementFailed));
        openHistory(harness, [](FrmRireki& s) {
            QVERIFY(s.readFailed() && Find<xLabel>(s, u"lblKokNo"_s).text().isEmpty());
            QTest::keyClick(&s, Qt::Key_F1);
        });
        QVERIFY(ReadFile(LogFilePath()).contains("\"DispUriage\""));
    }

    // Paging (ties of a day by number), the day search, the previous prescription under each block
    // (passing over one without, marked ▲▼ 0.50 or more away), and a failing save that rolls back
    // every block.
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
            QCOMPARE(shownSeqs(s), (QList<int>{1, 2, 4})); // three a page, newest first
            QCOMPARE(Find<xLabel>(s, u"lblName"_s).text() + Find<xNum>(s, u"txtKingaKei"_s).text(),
                     u"山田 太郎164,000"_s);
            QCOMPARE(in<QComboBox>(upper, u"cboItem"_s).currentText(), u"003:コンタクトレンズ"_s);
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
            for (int i = 0; i < 3; ++i) // the third is refused
                QTest::keyClick(&s, Qt::Key_F11);
            QVERIFY(s.page() == 1 && shownSeqs(s) == (QList<int>{1, 2, 4}));
            // "以前の照会" starts again at the first page, up to its day.
            QTest::keyClick(&s, Qt::Key_F12);
            Retype(&day, u"20240230"_s);
            QTest::mouseClick(&search, Qt::LeftButton);
            QCOMPARE(s.focusWidget(), &day);
            day.setDate(QDate(2025, 12, 31));
            QTest::mouseClick(&search, Qt::LeftButton);
            QCOMPARE(shownSeqs(s), (QList<int>{2, 4, 3}));

            QTest::keyClick(&s, Qt::Key_F5);
            in(upper, u"txtFm_Name"_s).setText(u"上段を変更"_s);
            QTest::keyClick(&s, Qt::Key_F7);
            in(block(s, 2), u"txtAx_R"_s).setText(u"abc"_s);
            // A corrected date that is none, or empty, is refused before the question.
            for (const char* typed : {"20241301", ""}) {
                Retype(&date, QString::fromLatin1(typed));
                QTest::keyClick(&s, Qt::Key_F4);
                QCOMPARE(s.focusWidget(), &date);
            }
            date.setDate(QDate(2025, 6, 1));
            QTest::keyClick(&s, Qt::Key_F4);
            QTest::keyClick(&s, Qt::Key_F1); // No: the corrections stay
            QCOMPARE(in(upper, u"txtFm_Name"_s).text(), u"上段を変更"_s);
            QTest::keyClick(&s, Qt::Key_F1);
            QVERIFY(!s.isVisible());
        }));
        QCOMPARE(PurchaseTexts(1, 2, u"Uri_Fm_Name"_s), u"F-1"_s);
    }

    // The register opens in six statements and its key opens the history. A block is written as
    // its fields hold it (a maker whose master is gone keeps its code), then shown as stored; a
    // second correction with full-width digits is stored too and the register shows it.
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
                QTest::keyClicks(&frameName, u" O'Brien "_s);
                QTest::keyClick(&in<QComboBox>(middle, u"cboFm_Meka"_s), Qt::Key_Delete);
                QTest::keyClick(&history, Qt::Key_F4);
                QCOMPARE(
                    PurchaseTexts(1, 2, u"Uri_Fm_Name Uri_Fm_MekaNo Uri_Lz_MekaNo Uri_Syohou"_s),
                    u"F-1 O'Brien ||002|遠近"_s);
                // The page is read again: read-only under its own caption.
                QVERIFY(middle.title() == u"中段"_s && !middle.isEnabled() &&
                        !history.ChkEditData());
                QTest::keyClick(&history, Qt::Key_F6);
                frameName.setText(u"二度目"_s);
                QTest::keyClick(&history, Qt::Key_F5);
                xNum& amount = in<xNum>(upper, u"txtKinga"_s);
                xDate& date = in<xDate>(upper, u"txtUriDate"_s);
                xField& cyl = in(upper, u"txtCyl_R"_s);
                Paste(&amount, u"２１，０００"_s);
                Commit(&cyl, u"－０．５"_s);
                Paste(&date, u"２０２６０１０２"_s);
                QTest::keyClick(&history, Qt::Key_F4);
                const QStringList shown{amount.text(), cyl.text(), date.text()};
                QCOMPARE(shown.join(u'|'), u"21,000|-0.50|2026/01/02"_s);
                QTest::keyClick(&history, Qt::Key_F1);
            });
            QTest::keyClick(&s, Qt::Key_F12);
            QCOMPARE(Find<PurchaseGrid>(s, u"spdData"_s).cellText(2, PurchaseGrid::FmName),
                     u"二度目"_s);
        }));
        QCOMPARE(PurchaseTexts(1, 1, u"Uri_KingaKei Uri_R_Cyl Uri_Date"_s),
                 u"21000|-0.5|20260102"_s);
        QVERIFY(!loggedAnError());
    }

    // Full-width digits committed by an input method are a master's number, stored padded.
    void aMastersNumberTakesFullWidthDigits() {
        harness.msgs.expect(OpeInf_001);
        harness.screens.expect<FrmMstMeka>([&](FrmMstMeka& s) {
            Commit(&Find<xField>(s, u"txtTNo"_s), u"１２"_s);
            Commit(&Find<xField>(s, u"txtName"_s), u"眼鏡"_s);
            QTest::keyClick(&s, Qt::Key_F5);
            QTest::keyClick(&s, Qt::Key_F1);
        });
        FrmMstMeka makers;
        ShowModal(makers);
        QCOMPARE(QueryValue(u"select Meka_Name from San_Meka where Meka_No = '012'"_s).toString(),
                 u"眼鏡"_s);
        QVERIFY(!loggedAnError());
    }
};

QTEST_MAIN(TestRireki)
#include "tst_rireki.moc"
