// The masters: each kept in its own table, rows added, renamed and deleted through the screens,
// the number field's checks, and a number already there refused with the table unchanged; a
// lock another terminal holds past the wait is no broken key.
#include "data/MasterStore.h"
#include "frame/Globals.h"
#include "frame/Log.h"
#include "frame/MessageCatalogue.h"
#include "masters/FrmMaster.h"
#include "platform/controls/GridView.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xField.h"
#include "platform/ui/ShowModal.h"
#include "shell/FrmMenu.h"
#include "support/Roads.h"

#include <QPushButton>
#include <QtTest>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// A master's rows as "code:name".
QStringList rowsOf(MasterKind kind) {
    QStringList all;
    for (const MasterEntry& entry : MasterStore::Entries(kind))
        all << entry.code + QLatin1Char(':') + entry.name;
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

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    // Each master's rows are added, renamed and deleted by code, read back through the store
    // (the menu's screens below show that each master reads its own table).
    void eachMasterKeepsItsOwnRows() {
        for (MasterKind kind : {MasterKind::Item, MasterKind::Youto, MasterKind::Meka}) {
            const std::vector<MasterEntry> shown = MasterStore::Entries(kind);
            MasterStore::Insert(kind, {u"099"_s, u"O'Neil"_s});
            MasterStore::Rename(kind, shown[1], u"改名"_s);
            MasterStore::Remove(kind, shown[0]);
            QCOMPARE(rowsOf(kind).first() + u'|' + rowsOf(kind).last(), u"002:改名|099:O'Neil"_s);
        }
    }

    // The menu opens the item, use and maker screens, each over its own table; on the makers a
    // row is added, a number already there refused, a row renamed and one deleted.
    void theMenusMasterScreens() {
        const auto firstRow = [](const QString& name) {
            return [name](FrmMaster& s) {
                QCOMPARE(s.spdData->gridModel()->index(0, 1).data().toString(), name);
            };
        };
        harness.screens.expect<FrmMstItem>(firstRow(u"メガネ"_s));
        harness.screens.expect<FrmMstYouto>(firstRow(u"遠用"_s));
        // Not a number, no name, added; refused; renamed; not deleted, then deleted.
        ExpectBoxes(harness, {OpeErr_004, OpeErr_001, OpeInf_001});
        harness.msgs.expectBox(u"不正な処理です。"_s, u"Mirvane"_s);
        harness.msgs.expect(OpeInf_001);
        harness.msgs.expect(OpeQes_002, Answer::No);
        ExpectBoxes(harness, {OpeQes_002, OpeInf_002});
        harness.screens.expect<FrmMstMeka>([](FrmMstMeka& s) {
            typeNumber(s, u"x"_s);
            QCOMPARE(s.focusWidget(), s.txtTNo);
            typeNumber(s, u"12"_s);
            QCOMPARE(s.txtTNo->text(), u"012"_s);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(s.focusWidget(), s.txtName);
            s.txtName->setText(u" O'Neil 光学 "_s);
            QTest::keyClick(&s, Qt::Key_F5);
            typeNumber(s, u"2"_s);
            s.txtName->setText(u"二番目"_s);
            QTest::keyClick(&s, Qt::Key_F5); // refused; the input stays to be corrected
            QCOMPARE(s.txtTNo->text(), u"002"_s);
            QCOMPARE(rowsOf(MasterKind::Meka).at(1), u"002:ニコン"_s);

            s.spdData->clicked(2, 2);
            QVERIFY(s.entry() == FrmMaster::Entry::Chosen && !s.txtTNo->isEnabled() &&
                    s.cmdFnuc[7]->isEnabled());
            s.txtName->setText(u"ニコン・エシロール"_s);
            QTest::keyClick(&s, Qt::Key_F5);
            s.spdData->clicked(1, 1);
            QTest::keyClick(&s, Qt::Key_F8); // No: the row stays chosen
            QCOMPARE(s.txtTNo->text(), u"001"_s);
            QTest::keyClick(&s, Qt::Key_F8);
            QCOMPARE(s.spdData->rowCount(), 8);
            QVERIFY(!s.cmdFnuc[7]->isEnabled());
            s.spdData->clicked(1, 1);
            QTest::keyClick(&s, Qt::Key_F6); // clear: a new row again
            QVERIFY(s.entry() == FrmMaster::Entry::New && s.txtTNo->isEnabled() &&
                    s.txtName->text().isEmpty());
            QTest::keyClick(&s, Qt::Key_F1);
            QVERIFY(!s.isVisible());
        });
        FrmMenu menu;
        for (QPushButton* button : menu.cmdMst)
            QTest::mouseClick(button, Qt::LeftButton);
        const QStringList makers = rowsOf(MasterKind::Meka);
        QCOMPARE(makers.first() + u'|' + makers.last(),
                 u"002:ニコン・エシロール|012:O'Neil 光学"_s);
    }

    // A number that is no code, F5 pressed before the field is left: refused, nothing saved.
    // The number of a chosen row, its field disabled, reads dark on the grey area.
    void aNumberThatIsNoCodeIsNeverSaved() {
        harness.msgs.expect(OpeErr_004);
        harness.screens.expect<FrmMstMeka>([](FrmMstMeka& s) {
            s.txtTNo->setFocus();
            QTest::keyClicks(s.txtTNo, u"-7"_s);
            s.txtName->setText(u"名前"_s);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(s.focusWidget(), s.txtTNo);
            s.txtTNo->clear();
            s.spdData->clicked(2, 2);
            QVERIFY(!s.txtTNo->isEnabled());
            const QPalette colours = s.txtTNo->palette();
            const auto luminance = [](const QColor& c) {
                const auto channel = [](double v) {
                    return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
                };
                return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) +
                       0.0722 * channel(c.blueF());
            };
            const double text = luminance(colours.color(QPalette::Disabled, QPalette::Text));
            const double area = luminance(colours.color(QPalette::Disabled, QPalette::Base));
            QCOMPARE(colours.color(QPalette::Disabled, QPalette::Base), QColor(0xC0, 0xC0, 0xC0));
            QVERIFY((std::max(text, area) + 0.05) / (std::min(text, area) + 0.05) >= 4.5);
            QTest::keyClick(&s, Qt::Key_F1);
        });
        FrmMstMeka screen;
        ShowModal(screen);
        QCOMPARE(rowsOf(MasterKind::Meka).size(), 8);
    }

    // Another terminal holds the row (on a file, the file's write lock) past the wait: the save
    // asks to be made again, writes the error line, and the typed name waits for the next F5.
    void aLockHeldPastTheWaitAsksToSaveAgain() {
        gCon.setLockWait(300);
        harness.msgs.expect(SysErr_007);
        harness.msgs.expect(OpeInf_001);
        harness.screens.expect<FrmMstMeka>([this](FrmMstMeka& s) {
            s.spdData->clicked(2, 2);
            s.txtName->setText(u"ニコン眼鏡"_s);
            std::unique_ptr<Connection> other = OtherTerminalHolding(
                harness.folder(), u"update San_Meka set Meka_Name = 'x' where Meka_No = '002'"_s);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(s.txtTNo->text() + s.txtName->text(), u"002ニコン眼鏡"_s);
            QVERIFY(ReadFile(LogFilePath()).contains("\"SaveMaster\",\"ｴﾗ-No.(-2147217871)\""));
            other.reset();
            QTest::keyClick(&s, Qt::Key_F5);
            QTest::keyClick(&s, Qt::Key_F1);
        });
        FrmMstMeka screen;
        ShowModal(screen);
        QCOMPARE(rowsOf(MasterKind::Meka).at(1), u"002:ニコン眼鏡"_s);
    }
};

QTEST_MAIN(TestMasters)
#include "tst_masters.moc"
