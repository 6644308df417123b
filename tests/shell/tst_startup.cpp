// Start-up, sign-on and the main menu, driven as a person would through the two scripts (a
// screen or box nobody expected fails the test).
#include "data/ShopDatabase.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "platform/controls/xPass.h"
#include "platform/db/Connection.h"
#include "platform/AppFolder.h"
#include "platform/ui/Clock.h"
#include "platform/ui/SingleInstance.h"
#include "shell/BasSubMain.h"
#include "shell/FrmMenu.h"
#include "shell/FrmPsw.h"
#include "support/Roads.h"

#include <QPushButton>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

void typeAndPressOk(FrmPsw& psw, const QString& typed) {
    psw.txtPSW->setText(typed);
    QTest::mouseClick(psw.cmdBtn[0], Qt::LeftButton);
}

} // namespace

class TestStartup : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() { HARNESS_INIT(harness, {.createDatabase = true, .openDatabase = false}); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    // A second copy is refused before the database is opened. Only a database with the shop's
    // tables is opened: on the server one without them and one not answering; on files one
    // marked read-only (named), a foreign database, an empty file, text, no file.
    void aSecondCopyOrADatabaseThatCannotBeOpenedEndsBeforeSignOn() {
        {
            // Another copy claimed the folder under another of its names: a link to it.
            const QString link = harness.path(u"linked"_s);
            QVERIFY(QFile::link(harness.folder(), link));
            SetAppFolder(link);
            SingleInstance running;
            QVERIFY(!running.anotherIsRunning());
            SetAppFolder(harness.folder());
            harness.msgs.expect(SysErr_002);
            QCOMPARE(Main(), 1);
            QVERIFY(!gCon.isOpen());
        }

        const QString file =
            Harness::onServer() ? harness.path(ServerConnectionFile) : harness.databaseFile();
        // Each case's preparation and the reason the box gives.
        using Case = std::tuple<const char*, std::function<void()>, QString>;
        const QList<Case> onServer{
            {"no shop tables",
             [] {
                 OpenDatabase();
                 gCon.execute(u"drop view V_San_User"_s);
                 gCon.close();
             },
             {}},
            {"no server",
             [&] {
                 WriteFile(file, "host=127.0.0.1 port=1 dbname=none user=none connect_timeout=2");
             },
             {}}};
        const QList<Case> onFiles{
            {"read-only", [&] { QVERIFY(QFile(file).setPermissions(QFile::ReadOwner)); },
             u"データベースファイルが読み取り専用です: "_s + file + u'\r'},
            {"foreign database",
             [&] {
                 QFile::remove(file);
                 Connection foreign;
                 foreign.create(file);
                 foreign.execute(u"create table San_User (x int)"_s);
             },
             {}},
            {"empty file", [&] { WriteFile(file, {}); }, {}},
            {"text", [&] { WriteFile(file, "this is not a database, only some text"); }, {}},
            {"no file", [&] { QVERIFY(QFile::remove(file)); }, {}}};
        for (const auto& [name, prepare, reason] : Harness::onServer() ? onServer : onFiles) {
            prepare();
            const QByteArray before = ReadFile(file);
            harness.msgs.expectBox(u"DBに接続できませんでした。\r"_s + reason +
                                       u"システム管理者に連絡してください。"_s,
                                   u"Mirvane"_s);
            QCOMPARE(Main(), 1);
            QCOMPARE(harness.msgs.shown().last().icon, MsgIcon::None);
            QCOMPARE(harness.msgs.shown().last().buttons, MsgButtons::OK);
            QVERIFY2(!gCon.isOpen() && ReadFile(file) == before, name); // nothing written
        }
        QVERIFY(Harness::onServer() || !QFile::exists(file));
    }

    void signingOnOpensTheMenuAndEachWayOutEndsTheProgram() {
        // Backups of earlier days: the daily ones of the 10th to the 21st (two of the 20th) and
        // one the administrator made.
        QDir backups(harness.path(u"Backup"_s));
        backups.mkpath(u"."_s);
        QStringList seeded{u"Mirvane-20261120-080000-daily.mdb"_s,
                           u"Mirvane-20260105-120000.mdb"_s};
        for (int day = 10; day <= 21; ++day)
            seeded << u"Mirvane-202611%1-190000-daily.mdb"_s.arg(day);
        for (const QString& name : seeded)
            QFile(backups.filePath(name)).open(QIODevice::WriteOnly);
        ExpectBoxes(harness, {OpeErr_001, OpeErr_005, OpeErr_005});
        harness.screens.expect<FrmPsw>([this](FrmPsw& psw) {
            QVERIFY(gCon.isOpen());
            QCOMPARE(gCon.isServer(), Harness::onServer());
            QCOMPARE(gDbPath, Harness::onServer() ? harness.path(ServerConnectionFile)
                                                  : harness.databaseFile());
            // Escape does not close the sign-on.
            QTest::keyClick(psw.txtPSW, Qt::Key_Escape);
            QVERIFY(psw.isVisible());
            // Blanks only count as nothing typed: the text stays. A trailing blank or upper case
            // is wrong: the text is cleared. The focus comes back either way.
            for (const auto& [typed, left] : {std::pair{u"   "_s, u"   "_s},
                                              {u"tavinoru "_s, QString()},
                                              {u"TAVINORU"_s, QString()}}) {
                typeAndPressOk(psw, typed);
                QCOMPARE(psw.txtPSW->text(), left);
                QCOMPARE(psw.focusWidget(), psw.txtPSW);
            }
            QVERIFY(psw.isVisible());
            // The right password, confirmed with Enter.
            QTest::keyClicks(psw.txtPSW, u"tavinoru"_s);
            QTest::keyClick(psw.txtPSW, Qt::Key_Return);
            QVERIFY(!psw.isVisible());
        });
        harness.screens.expect<FrmMenu>([](FrmMenu& menu) {
            // Tab order runs down the menu.
            QCOMPARE(menu.cmdMenu[0]->nextInFocusChain(), menu.cmdMenu[1]);
            QCOMPARE(menu.cmdMenu[1]->nextInFocusChain(), menu.cmdMst[0]);
            QTest::mouseClick(menu.cmdMenu[2], Qt::LeftButton);
            QVERIFY(!menu.isVisible());
        });
        QCOMPARE(Main(), 0);
        // The day's work ended: its backup is made, the last seven days and the week before
        // them are kept, and what the administrator made stays.
        const QString today = Harness::onServer() ? u"Mirvane-20261122-101530-daily.dump"_s
                                                  : u"Mirvane-20261122-101530-daily.mdb"_s;
        QStringList kept{u"Mirvane-20260105-120000.mdb"_s};
        for (int day = 15; day <= 21; ++day)
            kept << u"Mirvane-202611%1-190000-daily.mdb"_s.arg(day);
        kept << today;
        QCOMPARE(backups.entryList(QDir::Files, QDir::Name), kept);
        QVERIFY(ReadFile(backups.filePath(today))
                    .startsWith(Harness::onServer() ? "PGDMP" : "SQLite format 3"));

        harness.screens.expect<FrmPsw>([](FrmPsw& psw) {
            psw.txtPSW->setText(u"tavinoru"_s);
            QTest::mouseClick(psw.cmdBtn[1], Qt::LeftButton);
            QVERIFY(!psw.isVisible());
        });
        QCOMPARE(Main(), 0); // an unexpected menu would fail the test

        FixClock(Harness::FixedNow.addSecs(3600)); // later the same day
        harness.screens.expect<FrmPsw>([](FrmPsw& psw) { typeAndPressOk(psw, u"tavinoru"_s); });
        harness.screens.expect<FrmMenu>([](FrmMenu& menu) {
            QTest::keyClick(&menu, Qt::Key_Escape);
            QVERIFY(menu.isVisible());
            QVERIFY(menu.close());
        });
        QCOMPARE(Main(), 0);
        // One backup a day, however often the program ends.
        QCOMPARE(backups.entryList(QDir::Files, QDir::Name), kept);
    }
};

QTEST_MAIN(TestStartup)
#include "tst_startup.moc"
