// Two terminals on one database: another terminal (its own connection to the same file or
// server) changes and deletes rows while a screen still shows them. Its work is never undone:
// a save writes only what its screen changed, and where that meets the other terminal's work
// nothing of the save is stored and the screen says so, keeping what was typed until the
// staff ask for the stored state.
#include "customer/FrmKokyaku.h"
#include "customer/PurchaseGrid.h"
#include "customer/UriageEntry.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "history/FrmRireki.h"
#include "history/UriageBlock.h"
#include "masters/FrmMaster.h"
#include "platform/controls/GridView.h"
#include "platform/controls/xField.h"
#include "platform/controls/xLabel.h"
#include "platform/ui/ShowModal.h"
#include "search/FrmIchiran.h"
#include "search/FrmTotalKensaku.h"
#include "search/ListGrid.h"
#include "support/Controls.h"
#include "support/OtherTerminal.h"
#include "support/Roads.h"
#include "support/ShopData.h"

#include <QPushButton>
#include <QTableView>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

// Customer 1 with purchases 1 (2025) and 2 (2026), newest first in the grid.
void insertCustomerWithTwoSales() {
    InsertCustomer({.no = 1});
    InsertPurchase({.user = 1, .seq = 1, .ymd = 20250101, .memo = u"一回目"_s});
    InsertPurchase({.user = 1, .seq = 2, .ymd = 20260101, .memo = u"二回目"_s});
}

// A control of a screen by its name.
template <class Control = xField> Control& at(const QObject& screen, const char* name) {
    return Find<Control>(screen, QLatin1String(name));
}

// The line of the register's grid that shows a purchase number clicked, then a button of the
// entry; the memo corrected first when one is given.
void onLine(FrmKokyaku& s, int seq, const char* button, const QString& memo = {}) {
    const auto& grid = at<PurchaseGrid>(s, "spdData");
    for (int row = 1; row <= grid.lineCount(); ++row)
        if (grid.line(row).purchase.seq == seq)
            s.spdData_Click(row, 1);
    if (!memo.isNull())
        at(s, "txtMemo").setText(memo);
    QTest::mouseClick(&at<QPushButton>(s, button), Qt::LeftButton);
}

// A sale as another terminal's register stores it.
Purchase sale(qint64 total) {
    Purchase p;
    p.date = QDate(2026, 11, 22), p.itemNo = u"001"_s, p.total = total;
    return p;
}

// What a save's box says of a row another terminal changed or deleted after it was shown.
QString told(const QString& row, const QString& did) {
    return row + u"は、この画面に表示した後で他の端末が"_s + did;
}

void editCell(ListGrid& grid, int row, int column, const QString& value) {
    grid.gridModel()->setData(grid.gridModel()->index(row - 1, column - 1), value, Qt::EditRole);
}

} // namespace

class TestTerminals : public QObject {
    Q_OBJECT
    Harness harness;
    std::unique_ptr<OtherTerminal> other;

private slots:
    void init() {
        HARNESS_INIT(harness);
        other = std::make_unique<OtherTerminal>(harness.folder());
    }
    void cleanup() {
        other.reset();
        HARNESS_TEARDOWN(harness);
    }

    // Different fields of one customer and of one purchase, and different customers: both
    // terminals keep their change, quietly. Then a field both changed: nothing of the save is
    // stored, a new line included; No keeps what was typed on the screen, Yes reads the stored
    // customer with the new line still waiting, and it is saved.
    void changesMeetOnlyInTheSameField() {
        insertCustomerWithTwoSales();
        InsertCustomer({.no = 2, .name = u"隣の客"_s});
        const QString conflict = told(u"顧客番号 1「山田 太郎」"_s, u"変更しました（ＴＥＬ）"_s);
        ExpectSaved(harness);
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        ExpectConflict(harness, conflict, Answer::No);
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        ExpectConflict(harness, conflict, Answer::Yes);
        ExpectSaved(harness);
        OpenRegister(harness, 1, [this](FrmKokyaku& s) {
            other->execute(u"update San_User set User_Tel = '099-1' where User_No = 1"_s);
            other->execute(u"update San_Uriage set Uri_Fm_Color = '赤' where Uri_Seq = 2"_s);
            other->execute(u"update San_User set User_Name = '隣の客 改' where User_No = 2"_s);
            xField& tel = at(s, "txtTel");
            const auto shown = [&] {
                return tel.text() + u' ' + ColumnTexts(at<PurchaseGrid>(s, "spdData"), 1);
            };
            at(s, "txtJusyo2").setText(u"4-5-6"_s);
            onLine(s, 2, "cmdOk", u"この端末のメモ"_s);
            QTest::keyClick(&s, Qt::Key_F5);
            // The screen shows what is stored now, the other terminal's work included.
            QCOMPARE(tel.text(), u"099-1"_s);
            EnterPurchase(at<UriageEntry>(s, "FraUriage"), QDate(2026, 11, 22), 0, 0, 5000);
            tel.setText(u"011-000-0000"_s);
            other->execute(u"update San_User set User_Tel = '099-2' where User_No = 1"_s);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(shown(), u"011-000-0000 新規||"_s);
            QCOMPARE(StoredSeqs(1), (QList<int>{1, 2}));
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(shown(), u"099-2 新規||"_s);
            QTest::keyClick(&s, Qt::Key_F5);
        });
        QCOMPARE(CustomerTexts(1, u"User_Tel User_Jusyo2"_s), u"099-2|4-5-6"_s);
        QCOMPARE(PurchaseTexts(1, 2, u"Uri_Fm_Color Uri_Memo"_s), u"赤|この端末のメモ"_s);
        QCOMPARE(PurchaseTexts(1, 3, u"Uri_Fm_Kinga"_s), u"5000"_s);
        QCOMPARE(CustomerTexts(2, u"User_Name"_s), u"隣の客 改"_s);
    }

    // Purchase lines another terminal deleted or changed: a correction of a sale whose number
    // a new sale could have taken, a deletion of a changed sale. The other terminal's sales
    // stand; a freed number is never given again.
    void aStaleLineNeverReachesAnotherSale() {
        const auto soldAgain = [](OtherTerminal& o) {
            o.deleteSale(1, 2);
            QCOMPARE(o.registerSale(1, sale(99999)), 3);
        };
        const auto memo = [](OtherTerminal& o) {
            o.execute(u"update San_Uriage set Uri_Memo = '他端末' where Uri_Seq = 1"_s);
        };
        const QString sale1 = u"顧客番号 1 の 2025/01/01 の売上（No.1）"_s;
        // What the other terminal did; the line here, its button and memo; what the box says.
        const struct {
            std::function<void(OtherTerminal&)> elsewhere;
            int seq;
            const char* button;
            QString memo, told;
        } roads[] = {
            {soldAgain, 2, "cmdOk", u"古い画面"_s,
             told(u"顧客番号 1 の 2026/01/01 の売上（No.2）"_s, u"削除"_s)},
            {memo, 1, "cmdCancel", {}, told(sale1, u"変更"_s)},
            {memo, 1, "cmdOk", u"この端末"_s, told(sale1, u"変更しました（メモ）"_s)},
        };
        const auto sales = [] {
            return QueryValue(u"select count(*) || '/' || sum(Uri_KingaKei) || '/' || "
                              "max(Uri_Memo) from San_Uriage"_s)
                .toString();
        };
        for (const auto& road : roads) {
            gCon.execute(u"delete from San_Uriage"_s);
            gCon.execute(u"delete from San_User"_s);
            insertCustomerWithTwoSales();
            harness.msgs.expect(OpeQes_001, Answer::Yes);
            ExpectConflict(harness, road.told);
            harness.msgs.expect(OpeQes_007, Answer::Yes);
            QString after;
            OpenRegister(harness, 1, [&](FrmKokyaku& s) {
                road.elsewhere(*other);
                after = sales();
                onLine(s, road.seq, road.button, road.memo);
                QTest::keyClick(&s, Qt::Key_F5);
                // Still waiting, as typed.
                QVERIFY2(at<PurchaseGrid>(s, "spdData").hasMarkedLines(), qPrintable(road.told));
                QTest::keyClick(&s, Qt::Key_F1);
            });
            QCOMPARE(sales(), after);
            QVERIFY2(!after.isEmpty(), qPrintable(road.told));
        }
        QCOMPARE(PurchaseTexts(1, 1, u"Uri_Memo"_s), u"他端末"_s);
    }

    // A customer another terminal deleted, and one whose sales it changed: the stale register
    // neither writes over the new customer who came after him nor deletes a sale it never
    // showed. A freed customer number is never given again.
    void aStaleCustomerNeverReachesAnotherOne() {
        for (int no = 1; no <= 3; ++no)
            InsertCustomer({.no = no, .name = u"客"_s + QString::number(no)});
        harness.msgs.expect(OpeQes_011, Answer::Yes);
        ExpectConflict(harness, told(u"顧客番号 3「客3」"_s, u"削除"_s), Answer::OK);
        OpenRegister(harness, 3, [this](FrmKokyaku& s) {
            other->deleteCustomer(3);
            QCOMPARE(other->registerCustomer(u"新しい客"_s), 4);
            at(s, "txtName").setText(u"古い画面の客"_s);
            QTest::keyClick(&s, Qt::Key_F5);
        });
        QCOMPARE(CustomerTexts(4, u"User_Name"_s), u"新しい客"_s);
        QCOMPARE(QueryCount(u"select * from San_User"_s), 3);

        InsertPurchase({.user = 2, .seq = 1});
        harness.msgs.expect(OpeQes_002, Answer::Yes);
        ExpectConflict(harness, told(u"顧客番号 2「客2」"_s, u"変更しました（売上）"_s));
        OpenRegister(harness, 2, [this](FrmKokyaku& s) {
            other->registerSale(2, sale(1000));
            QTest::keyClick(&s, Qt::Key_F8);
            QCOMPARE(at<xLabel>(s, "lblNo").text(), u"2"_s);
        });
        QCOMPARE(StoredSeqs(2), (QList<int>{1, 2}));
    }

    // The list: one save pass meets a customer deleted and his number's successor, one deleted,
    // one whose name both changed; the row changed in another field is saved. One box names
    // the three; Yes shows them read again, the deleted greyed and closed to editing.
    void theListTellsOfEachRowAndShowsThemReadAgain() {
        for (int no = 1; no <= 5; ++no)
            InsertCustomer({.no = no, .name = u"客"_s + QString::number(no)});
        harness.msgs.expect(OpeInf_008);
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        ExpectConflict(harness,
                       told(u"顧客番号 3「客3」"_s, u"削除しました。\n"_s) +
                           told(u"顧客番号 4「客4」"_s, u"変更しました（氏名）。\n"_s) +
                           told(u"顧客番号 5「客5」"_s, u"削除しました。"_s),
                       Answer::Yes);
        FrmIchiran list;
        harness.screens.expect<FrmIchiran>([this](FrmIchiran& s) {
            harness.screens.expect<FrmTotalKensaku>([](FrmTotalKensaku& c) {
                QTest::mouseClick(&at<QPushButton>(c, "cmdKensaku"), Qt::LeftButton);
            });
            QTest::keyClick(&s, Qt::Key_F6);
            auto& grid = at<ListGrid>(s, "spdData");
            other->execute(u"update San_User set User_Tel = '099' where User_No = 2"_s);
            other->deleteCustomer(3);
            other->execute(u"update San_User set User_Name = '他の名' where User_No = 4"_s);
            other->deleteCustomer(5);
            other->registerSale(other->registerCustomer(u"新しい客"_s), sale(1000));
            editCell(grid, 2, ListGrid::Name, u"客2改"_s);
            editCell(grid, 3, ListGrid::Jusyo1, u"函館市"_s);
            editCell(grid, 4, ListGrid::Name, u"この端末の名"_s);
            grid.setActiveCell(5, 1);
            QTest::keyClick(&s, Qt::Key_F3);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(ColumnTexts(grid, ListGrid::Name), u"客1|客2改|客3|他の名|客5"_s);
            const QColor colours[] = {ListGrid::White, ListGrid::Grey, ListGrid::Blue,
                                      ListGrid::Grey};
            for (int row = 2; row <= 5; ++row)
                QCOMPARE(grid.rowColor(row), colours[row - 2]);
            QVERIFY(!s.hasUnsavedEdits());
            editCell(grid, 3, ListGrid::Name, u"戻らない"_s);
            QTest::keyClick(&s, Qt::Key_F3); // the current row, 5, takes no mark
            QCOMPARE(grid.row(3).now.name + grid.rowColor(5).name(),
                     u"客3"_s + ListGrid::Grey.name());
        });
        ShowModal(list);
        QCOMPARE(CustomerTexts(2, u"User_Name User_Tel"_s), u"客2改|099"_s);
        QCOMPARE(CustomerTexts(4, u"User_Name"_s), u"他の名"_s);
        QCOMPARE(CustomerTexts(6, u"User_Name"_s), u"新しい客"_s);
        QCOMPARE(StoredSeqs(6), QList<int>{1});
    }

    // The history: a block whose purchase another terminal deleted, one whose frame name both
    // changed (read again, the block says so), one changed in another field (kept).
    void theHistoryTellsOfItsBlocks() {
        insertCustomerWithTwoSales();
        InsertPurchase({.user = 1, .seq = 3, .ymd = 20240101});
        const QString deleted = told(u"顧客番号 1 の 2026/01/01 の売上（No.2）"_s, u"削除"_s);
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        ExpectConflict(harness, deleted);
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        ExpectConflict(harness, deleted, Answer::Yes);
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        ExpectConflict(
            harness,
            told(u"顧客番号 1 の 2025/01/01 の売上（No.1）"_s, u"変更しました（ﾌﾚｰﾑ品名）"_s),
            Answer::Yes);
        ExpectSaved(harness);
        FrmRireki history;
        history.setKokNo(1);
        harness.screens.expect<FrmRireki>([this](FrmRireki& s) {
            auto& upper = Find<UriageBlock>(s, u"FraUriage"_s, 0);
            xField& frameName = at(upper, "txtFm_Name");
            QTest::keyClick(&s, Qt::Key_F5);
            frameName.setText(u"消えた売上"_s);
            other->deleteSale(1, 2);
            QTest::keyClick(&s, Qt::Key_F4);
            QVERIFY(s.ChkEditData());
            QCOMPARE(frameName.text(), u"消えた売上"_s);
            QTest::keyClick(&s, Qt::Key_F4);
            QCOMPARE(upper.seq(), 1); // read again: the deleted purchase has left
            QTest::keyClick(&s, Qt::Key_F5);
            frameName.setText(u"この端末"_s);
            other->execute(u"update San_Uriage set Uri_Fm_Name = '他端末' where Uri_Seq = 1"_s);
            QTest::keyClick(&s, Qt::Key_F4);
            QCOMPARE(upper.title() + frameName.text(), u"上段（他の端末で変更されました）他端末"_s);
            QTest::keyClick(&s, Qt::Key_F5);
            at(upper, "txtFm_Color").setText(u"青"_s);
            other->execute(
                u"update San_Uriage set Uri_Lz_Name = '他端末レンズ' where Uri_Seq = 1"_s);
            QTest::keyClick(&s, Qt::Key_F4);
            QTest::keyClick(&s, Qt::Key_F1);
        });
        ShowModal(history);
        QCOMPARE(StoredSeqs(1), (QList<int>{1, 3}));
        QCOMPARE(PurchaseTexts(1, 1, u"Uri_Fm_Name Uri_Fm_Color Uri_Lz_Name"_s),
                 u"他端末|青|他端末レンズ"_s);
    }

    // A master entry another terminal renamed or deleted is neither renamed nor deleted here.
    void aMasterEntryIsChangedOnlyAsShown() {
        ExpectConflict(harness, told(u"メーカー 002「ニコン」"_s, u"変更しました（名称）"_s));
        harness.msgs.expect(OpeQes_002, Answer::Yes);
        ExpectConflict(harness, told(u"メーカー 003「セイコー」"_s, u"削除"_s), Answer::Yes);
        FrmMstMeka screen;
        harness.screens.expect<FrmMstMeka>([this](FrmMstMeka& s) {
            auto& grid = at<GridView>(s, "spdData");
            QWidget* cells = at<QTableView>(grid, "view").viewport();
            xField& name = at(s, "txtName");
            QTest::mouseClick(cells, Qt::LeftButton, {}, RowCentre(grid, 2));
            name.setText(u"Nikon"_s);
            other->execute(u"update San_Meka set Meka_Name = 'NIKON' where Meka_No = '002'"_s);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(name.text(), u"Nikon"_s);
            QTest::mouseClick(cells, Qt::LeftButton, {}, RowCentre(grid, 3));
            other->execute(u"delete from San_Meka where Meka_No = '003'"_s);
            QTest::keyClick(&s, Qt::Key_F8);
            QVERIFY(name.text().isEmpty()); // read again
            QCOMPARE(ColumnTexts(grid, 1).left(11), u"001|002|004"_s);
        });
        ShowModal(screen);
        QCOMPARE(QueryValue(u"select Meka_Name from San_Meka where Meka_No = '002'"_s).toString(),
                 u"NIKON"_s);
    }
};

QTEST_MAIN(TestTerminals)
#include "tst_terminals.moc"
