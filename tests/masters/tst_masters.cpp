// The master screens: rows added, renamed and deleted; the number field's checks; duplicate
// numbers refused with the table unchanged.
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "masters/FrmMaster.h"
#include "platform/controls/GridView.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xField.h"
#include "platform/ui/ShowModal.h"
#include "shell/FrmMenu.h"
#include "support/Harness.h"

#include <QLabel>
#include <QPushButton>
#include <QtTest>

namespace {

QStringList makers() {
    RecordSet rows = gCon.execute(QStringLiteral("select * from San_Meka order by Meka_No"));
    QStringList all;
    for (; !rows.eof(); rows.moveNext())
        all << rows.field(0).toString() + QLatin1Char(':') + rows.field(1).toString();
    return all;
}

void typeNumber(FrmMaster& s, const QString& number) {
    s.txtTNo->setFocus();
    s.txtTNo->setText(number);
    s.txtName->setFocus(); // leaving the number field
}

} // namespace

class TestMasters : public QObject {
    Q_OBJECT
    Harness harness;

    void openMakers(const std::function<void(FrmMaster&)>& drive) {
        FrmMstMeka screen;
        harness.screens.expect<FrmMstMeka>([drive](FrmMstMeka& s) { drive(s); });
        ShowModal(screen);
    }

private slots:
    void init() {
        HARNESS_INIT(harness);
        gCon.execute(QStringLiteral("delete from San_Meka"));
        gCon.execute(QStringLiteral("insert into San_Meka values('001','HOYA')"));
        gCon.execute(QStringLiteral("insert into San_Meka values('002','ニコン')"));
    }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void aRowIsAddedWithItsNumberPadded() {
        harness.msgs.expect(OpeErr_004);
        harness.msgs.expect(OpeInf_001);
        openMakers([](FrmMaster& s) {
            QCOMPARE(s.windowTitle(), QStringLiteral("メーカーマスタ保守"));
            QCOMPARE(
                s.spdData->gridModel()->headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(),
                QStringLiteral("ﾒ-ｶｰ№"));
            QCOMPARE(s.Label1->text(), QStringLiteral("ﾒｰｶｰ№"));
            QCOMPARE(s.spdData->rowCount(), 2);
            QVERIFY(!s.cmdFnuc[7]->isEnabled());
            typeNumber(s, QStringLiteral("x"));
            QCOMPARE(s.focusWidget(), s.txtTNo);
            typeNumber(s, QStringLiteral("5"));
            QCOMPARE(s.txtTNo->text(), QStringLiteral("005"));
            s.txtName->setText(QStringLiteral(" O'Neil 光学 "));
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(s.spdData->rowCount(), 3);
            QCOMPARE(s.spdData->gridModel()->index(2, 0).data().toString(), QStringLiteral("005"));
            QCOMPARE(s.txtTNo->text(), QString());
            QCOMPARE(s.mode(), 0);
            QCOMPARE(s.focusWidget(), s.txtTNo);
        });
        QCOMPARE(makers().last(), QStringLiteral("005:O'Neil 光学"));
    }

    void emptyFieldsAndDuplicateNumbersAreRefused() {
        harness.msgs.expect(OpeErr_001);
        harness.msgs.expect(OpeErr_001);
        harness.msgs.expectBox(QStringLiteral("不正な処理です。"), QStringLiteral("Mirvane"));
        openMakers([](FrmMaster& s) {
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(s.focusWidget(), s.txtTNo);
            typeNumber(s, QStringLiteral("2"));
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(s.focusWidget(), s.txtName);
            s.txtName->setText(QStringLiteral("二番目"));
            QTest::keyClick(&s, Qt::Key_F5);
            // The input stays for the user to correct.
            QCOMPARE(s.txtTNo->text(), QStringLiteral("002"));
            QCOMPARE(s.mode(), 0);
        });
        QCOMPARE(makers(), (QStringList{QStringLiteral("001:HOYA"), QStringLiteral("002:ニコン")}));
        QVERIFY(!gCon.inTransaction());
    }

    void aSelectedRowIsRenamedAndDeleted() {
        harness.msgs.expect(OpeInf_001);
        harness.msgs.expect(OpeQes_002, Answer::No);
        harness.msgs.expect(OpeQes_002, Answer::Yes);
        harness.msgs.expect(OpeInf_002);
        harness.msgs.expect(OpeQes_002, Answer::Yes);
        harness.msgs.expect(OpeInf_002);
        openMakers([](FrmMaster& s) {
            s.spdData->clicked(2, 2);
            QCOMPARE(s.mode(), 1);
            QVERIFY(!s.txtTNo->isEnabled());
            QVERIFY(s.cmdFnuc[7]->isEnabled());
            QCOMPARE(s.focusWidget(), s.txtName);
            s.txtName->setText(QStringLiteral("ニコン・エシロール"));
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(makers().last(), QStringLiteral("002:ニコン・エシロール"));
            QVERIFY(s.txtTNo->isEnabled());

            s.spdData->clicked(1, 1);
            QTest::keyClick(&s, Qt::Key_F8); // No: nothing deleted, the row stays chosen
            QCOMPARE(s.mode(), 1);
            QCOMPARE(s.txtTNo->text(), QStringLiteral("001"));
            QTest::keyClick(&s, Qt::Key_F8);
            s.spdData->clicked(1, 1);
            QTest::keyClick(&s, Qt::Key_F8);
            QCOMPARE(s.spdData->rowCount(), 0); // the last row gone
            QVERIFY(!s.cmdFnuc[7]->isEnabled());
        });
        QCOMPARE(makers(), QStringList());
    }

    void clearStartsANewRow() {
        openMakers([](FrmMaster& s) {
            s.spdData->clicked(1, 1);
            QTest::keyClick(&s, Qt::Key_F6);
            QCOMPARE(s.mode(), 0);
            QVERIFY(s.txtTNo->isEnabled());
            QCOMPARE(s.txtName->text(), QString());
            QCOMPARE(s.focusWidget(), s.txtTNo);
            QTest::keyClick(&s, Qt::Key_F1);
            QVERIFY(!s.isVisible());
        });
    }

    void theOtherTwoScreensKeepTheirOwnTables() {
        harness.msgs.expect(OpeInf_001);
        harness.msgs.expect(OpeInf_001);
        FrmMenu menu;
        harness.screens.expect<FrmMstItem>([](FrmMstItem& s) {
            QCOMPARE(s.windowTitle(), QStringLiteral("アイテムマスタ保守"));
            typeNumber(s, QStringLiteral("99"));
            s.txtName->setText(QStringLiteral("新アイテム"));
            QTest::keyClick(&s, Qt::Key_F5);
        });
        QTest::mouseClick(menu.cmdMst[0], Qt::LeftButton);
        harness.screens.expect<FrmMstYouto>([](FrmMstYouto& s) {
            QCOMPARE(s.Label2->text(), QStringLiteral("用途名"));
            typeNumber(s, QStringLiteral("98"));
            s.txtName->setText(QStringLiteral("新用途"));
            QTest::keyClick(&s, Qt::Key_F5);
        });
        QTest::mouseClick(menu.cmdMst[1], Qt::LeftButton);
        harness.screens.expect<FrmMstMeka>(
            [](FrmMstMeka& s) { QCOMPARE(s.spdData->rowCount(), 2); });
        QTest::mouseClick(menu.cmdMst[2], Qt::LeftButton);
        QCOMPARE(QueryValue(QStringLiteral("select Item_Name from San_Item where Item_No = '099'"))
                     .toString(),
                 QStringLiteral("新アイテム"));
        QCOMPARE(
            QueryValue(QStringLiteral("select Youto_Name from San_Youto where Youto_No = '098'"))
                .toString(),
            QStringLiteral("新用途"));
        QCOMPARE(makers().size(), 2);
    }
};

QTEST_MAIN(TestMasters)
#include "tst_masters.moc"
