// Start-up, sign-on and the main menu, driven as a person would through the two scripts (a
// screen or box nobody expected fails the test).
#include "data/ShopDatabase.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "platform/AppFolder.h"
#include "platform/controls/xPass.h"
#include "platform/db/Connection.h"
#include "platform/ui/Clock.h"
#include "platform/ui/SingleInstance.h"
#include "shell/BasSubMain.h"
#include "shell/FrmMenu.h"
#include "shell/FrmPsw.h"
#include "support/Controls.h"
#include "support/Roads.h"

#include <QPushButton>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

// Types the password and presses a button of the sign-on (0 OK, 1 cancel).
void signOn(FrmPsw& psw, const QString& typed, int button = 0) {
    Find<xPass>(psw, u"txtPSW"_s).setText(typed);
    QTest::mouseClick(&Find<QPushButton>(psw, u"cmdBtn"_s, button), Qt::LeftButton);
}

} // namespace

class TestStartup : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() { HARNESS_INIT(harness, {.createDatabase = true, .openDatabase = false}); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    // Signing on: Escape does not close it; blanks count as nothing typed (kept), a trailing
    // blank or upper case is wrong (cleared), the focus back either way. The menu's Tab runs
    // down it; each way out ends the program; the day's first end makes its backup, keeping the
    // last seven days, the week before and the administrator's; one a day however often.
    // A second copy (claiming the folder through a link) is refused before the database is
    // opened. Only a database with the shop's tables is opened, nothing written: on the server
    // not one without them or not answering; on files not one read-only (named), a foreign
    // database, an empty file, text, no file.
    void signingOnAndTheWaysTheProgramEnds() {
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
            auto& password = Find<xPass>(psw, u"txtPSW"_s);
            QTest::keyClick(&password, Qt::Key_Escape);
            QVERIFY(psw.isVisible());
            for (const auto& [typed, left] : {std::pair{u"   "_s, u"   "_s},
                                              {u"tavinoru "_s, QString()},
                                              {u"TAVINORU"_s, QString()}}) {
                signOn(psw, typed);
                QCOMPARE(password.text(), left);
                QCOMPARE(psw.focusWidget(), &password);
            }
            QVERIFY(psw.isVisible());
            QTest::keyClicks(&password, u"tavinoru"_s); // confirmed with Enter
            QTest::keyClick(&password, Qt::Key_Return);
            QVERIFY(!psw.isVisible());
        });
        harness.screens.expect<FrmMenu>([](FrmMenu& menu) {
            const auto button = [&menu](const QString& name, int i) {
                return &Find<QPushButton>(menu, name, i);
            };
            QCOMPARE(button(u"cmdMenu"_s, 0)->nextInFocusChain(), button(u"cmdMenu"_s, 1));
            // The board and the day's closing side by side, the sales analysis, then the masters.
            QStringList order;
            QWidget* next = button(u"cmdMenu"_s, 1);
            for (int i = 0; i < 4; ++i)
                order << (next = next->nextInFocusChain())->objectName();
            QCOMPARE(order.join(u' '), u"cmdOwatasi cmdNikkei cmdBunseki cmdMst(0)"_s);
            QTest::mouseClick(button(u"cmdMenu"_s, 2), Qt::LeftButton);
            QVERIFY(!menu.isVisible());
        });
        QCOMPARE(Main(), 0);
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
            signOn(psw, u"tavinoru"_s, 1);
            QVERIFY(!psw.isVisible());
        });
        QCOMPARE(Main(), 0); // an unexpected menu would fail the test

        FixClock(Harness::FixedNow.addSecs(3600)); // later the same day
        harness.screens.expect<FrmPsw>([](FrmPsw& psw) { signOn(psw, u"tavinoru"_s); });
        harness.screens.expect<FrmMenu>([](FrmMenu& menu) {
            QTest::keyClick(&menu, Qt::Key_Escape);
            QVERIFY(menu.isVisible());
            QVERIFY(menu.close());
        });
        QCOMPARE(Main(), 0);
        QCOMPARE(backups.entryList(QDir::Files, QDir::Name), kept);

        gCon.close(); // a copy refused must not open it again
        const QString link = harness.path(u"linked"_s);
        QVERIFY(QFile::link(harness.folder(), link));
        SetAppFolder(link);
        auto running = std::make_unique<SingleInstance>();
        QVERIFY(!running->anotherIsRunning());
        SetAppFolder(harness.folder());
        harness.msgs.expect(SysErr_002);
        QCOMPARE(Main(), 1);
        QVERIFY(!gCon.isOpen());
        running.reset();

        const QString file =
            Harness::onServer() ? harness.path(ServerConnectionFile) : harness.databaseFile();
        const auto refused = [&](const char* name, const QString& reason = {}) {
            const QByteArray before = ReadFile(file);
            harness.msgs.expectBox(u"DBに接続できませんでした。\r"_s + reason +
                                       u"システム管理者に連絡してください。"_s,
                                   u"Mirvane"_s);
            QCOMPARE(Main(), 1);
            QCOMPARE(harness.msgs.shown().last().icon, MsgIcon::None);
            QCOMPARE(harness.msgs.shown().last().buttons, MsgButtons::OK);
            QVERIFY2(!gCon.isOpen() && ReadFile(file) == before, name);
        };
        if (Harness::onServer()) {
            OpenDatabase();
            gCon.execute(u"drop view V_San_User"_s);
            gCon.close();
            refused("no shop tables");
            WriteFile(file, "host=127.0.0.1 port=1 dbname=none user=none connect_timeout=2");
            return refused("no server");
        }
        QVERIFY(QFile(file).setPermissions(QFile::ReadOwner));
        refused("read-only", u"データベースファイルが読み取り専用です: "_s + file + u'\r');
        QFile::remove(file);
        {
            Connection foreign;
            foreign.create(file);
            foreign.execute(u"create table San_User (x int)"_s);
        }
        refused("foreign database");
        WriteFile(file, {});
        refused("empty file");
        WriteFile(file, "this is not a database, only some text");
        refused("text");
        QVERIFY(QFile::remove(file));
        refused("no file");
        QVERIFY(!QFile::exists(file));
    }
};

QTEST_MAIN(TestStartup)
#include "tst_startup.moc"
