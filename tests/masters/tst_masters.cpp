// The masters: each kept in its own table, rows added, renamed and deleted through the screens,
// the number field's checks, and a number already there refused with the table unchanged; a
// lock another terminal holds past the wait is no broken key.
#include "data/MasterStore.h"
#include "frame/Globals.h"
#include "frame/Log.h"
#include "frame/MessageCatalogue.h"
#include "masters/FrmMaster.h"
#include "platform/controls/GridView.h"
#include "platform/controls/xInput.h"
#include "platform/ui/ShowModal.h"
#include "shell/FrmMenu.h"
#include "support/Controls.h"
#include "support/Roads.h"

#include <QtTest>
#include <QtWidgets>
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

// WCAG's relative luminance of a colour.
double luminance(const QColor& c) {
    const auto channel = [](double v) {
        return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) + 0.0722 * channel(c.blueF());
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
    // row is added, a number already there refused, a row renamed and one deleted. A number
    // that is no code, F5 pressed before the field is left, is refused. The number of a chosen
    // row, its field disabled, reads dark on the grey area. Another terminal holds the row (on
    // a file, the file's write lock) past the wait: the save asks to be made again, writes the
    // error line, and the typed name waits for the next F5.
    void theMenusMasterScreens() {
        gCon.setLockWait(300);
        const auto firstRow = [](const QString& name) {
            return [name](FrmMaster& s) {
                const GridView& grid = Find<GridView>(s, u"spdData"_s);
                QCOMPARE(grid.gridModel()->index(0, 1).data().toString(), name);
            };
        };
        harness.screens.expect<FrmMstItem>(firstRow(u"メガネ"_s));
        harness.screens.expect<FrmMstYouto>(firstRow(u"遠用"_s));
        // Not a number, no name, added; refused; renamed; not deleted, then deleted; -7; held.
        ExpectBoxes(harness, {OpeErr_004, OpeErr_001, OpeInf_001});
        harness.msgs.expectBox(u"不正な処理です。"_s, u"Mirvane"_s);
        harness.msgs.expect(OpeInf_001);
        harness.msgs.expect(OpeQes_002, Answer::No);
        ExpectBoxes(harness, {OpeQes_002, OpeInf_002, OpeErr_004, SysErr_007, OpeInf_001});
        harness.screens.expect<FrmMstMeka>([this](FrmMstMeka& s) {
            auto& no = Find<xInput>(s, u"txtTNo"_s);
            auto& name = Find<xInput>(s, u"txtName"_s);
            auto& grid = Find<GridView>(s, u"spdData"_s);
            auto& del = Find<QPushButton>(s, u"cmdFnuc"_s, 7);
            const auto typeNumber = [&](const QString& number) {
                no.setFocus();
                no.setText(number);
                name.setFocus(); // leaving the number field
            };
            typeNumber(u"x"_s);
            QCOMPARE(s.focusWidget(), &no);
            typeNumber(u"12"_s);
            QCOMPARE(no.text(), u"012"_s);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(s.focusWidget(), &name);
            name.setText(u" O'Neil 光学 "_s);
            QTest::keyClick(&s, Qt::Key_F5);
            typeNumber(u"2"_s);
            name.setText(u"二番目"_s);
            QTest::keyClick(&s, Qt::Key_F5); // refused; the input stays to be corrected
            QCOMPARE(no.text(), u"002"_s);
            QCOMPARE(rowsOf(MasterKind::Meka).at(1), u"002:ニコン"_s);
            grid.clicked(2, 2);
            QVERIFY(s.entry() == FrmMaster::Entry::Chosen && !no.isEnabled() && del.isEnabled());
            name.setText(u"ニコン・エシロール"_s);
            QTest::keyClick(&s, Qt::Key_F5);
            grid.clicked(1, 1);
            QTest::keyClick(&s, Qt::Key_F8); // No: the row stays chosen
            QCOMPARE(no.text(), u"001"_s);
            QTest::keyClick(&s, Qt::Key_F8);
            QVERIFY(grid.rowCount() == 8 && !del.isEnabled());
            grid.clicked(1, 1);
            QTest::keyClick(&s, Qt::Key_F6); // clear: a new row again
            QVERIFY(s.entry() == FrmMaster::Entry::New && no.isEnabled() && name.text().isEmpty());
            no.setFocus();
            QTest::keyClicks(&no, u"-7"_s);
            name.setText(u"名前"_s);
            QTest::keyClick(&s, Qt::Key_F5);
            QVERIFY(s.focusWidget() == &no && rowsOf(MasterKind::Meka).size() == 8);
            no.clear();
            grid.clicked(1, 2);
            QVERIFY(!no.isEnabled());
            const QPalette colours = no.palette();
            const double text = luminance(colours.color(QPalette::Disabled, QPalette::Text));
            const double area = luminance(colours.color(QPalette::Disabled, QPalette::Base));
            QCOMPARE(colours.color(QPalette::Disabled, QPalette::Base), QColor(0xC0, 0xC0, 0xC0));
            QVERIFY((std::max(text, area) + 0.05) / (std::min(text, area) + 0.05) >= 4.5);
            name.setText(u"ニコン眼鏡"_s);
            std::unique_ptr<Connection> other = OtherTerminalHolding(
                harness.folder(), u"update San_Meka set Meka_Name = 'x' where Meka_No = '002'"_s);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(no.text() + name.text(), u"002ニコン眼鏡"_s);
            QVERIFY(ReadFile(LogFilePath()).contains("\"SaveMaster\",\"ｴﾗ-No.(-2147217871)\""));
            QCOMPARE(rowsOf(MasterKind::Meka).first(), u"002:ニコン・エシロール"_s);
            other.reset();
            QTest::keyClick(&s, Qt::Key_F5);
            QTest::keyClick(&s, Qt::Key_F1);
            QVERIFY(!s.isVisible());
        });
        FrmMenu menu;
        for (int i = 0; i < 3; ++i)
            QTest::mouseClick(&Find<QPushButton>(menu, u"cmdMst"_s, i), Qt::LeftButton);
        const QStringList makers = rowsOf(MasterKind::Meka);
        QCOMPARE(makers.first() + u'|' + makers.last(), u"002:ニコン眼鏡|012:O'Neil 光学"_s);
    }
};

QTEST_MAIN(TestMasters)
#include "tst_masters.moc"
