// Start-up, sign-on and the main menu, driven as a person would through the two scripts (a
// screen or box nobody expected fails the test).
#include "data/ShopDatabase.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "platform/controls/xPass.h"
#include "platform/db/Connection.h"
#include "platform/ui/Clock.h"
#include "platform/ui/SingleInstance.h"
#include "shell/BasSubMain.h"
#include "shell/FrmMenu.h"
#include "shell/FrmPsw.h"
#include "support/Harness.h"

#include <QGroupBox>
#include <QPushButton>
#include <QtTest>

namespace {

const QString ConnectionMessage =
    QStringLiteral("DBに接続できませんでした。\rシステム管理者に連絡してください。");

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

    void aSecondCopyOrADatabaseThatCannotBeOpenedEndsBeforeSignOn() {
        // A second copy is refused before the database is opened.
        QLockFile running(SingleInstance::lockFilePath());
        QVERIFY(running.tryLock(0));
        harness.msgs.expect(SysErr_002);
        QCOMPARE(Main(), 1);
        QVERIFY(!gCon.isOpen());
        running.unlock();

        // Only a database with the shop's tables is opened: on the server one without them
        // and one not answering; on files a foreign database, an empty file, text, no file.
        const QString file =
            Harness::onServer() ? harness.path(ServerConnectionFile) : harness.databaseFile();
        const auto replaceFile = [&](const QByteArray& content) {
            QFile::remove(file);
            QFile replaced(file);
            QVERIFY(replaced.open(QIODevice::WriteOnly));
            replaced.write(content);
        };
        const QList<std::pair<const char*, std::function<void()>>> cases =
            Harness::onServer()
                ? QList<std::pair<const char*,
                                  std::function<void()>>>{{"no shop tables",
                                                           [] {
                                                               OpenDatabase();
                                                               gCon.execute(QStringLiteral(
                                                                   "drop view V_San_User"));
                                                               gCon.close();
                                                           }},
                                                          {"no server",
                                                           [&] {
                                                               replaceFile("host=127.0.0.1 port=1 "
                                                                           "dbname=none user=none "
                                                                           "connect_timeout=2");
                                                           }}}
                : QList<std::pair<const char*, std::function<void()>>>{
                      {"foreign database",
                       [&] {
                           QFile::remove(file);
                           Connection foreign;
                           foreign.create(file);
                           foreign.execute(QStringLiteral("create table San_User (x int)"));
                       }},
                      {"empty file",
                       [&] {
                           replaceFile({});
                       }},
                      {"text",
                       [&] {
                           replaceFile("this is not a database, only some text");
                       }},
                      {"no file", [&] {
                           QVERIFY(QFile::remove(file));
                       }}};
        for (const auto& [name, prepare] : cases) {
            prepare();
            const QByteArray before = ReadFile(file);
            harness.msgs.expectBox(ConnectionMessage, QStringLiteral("Mirvane"));
            QCOMPARE(Main(), 1);
            QCOMPARE(harness.msgs.shown().last().icon, MsgIcon::None);
            QCOMPARE(harness.msgs.shown().last().buttons, MsgButtons::OK);
            QVERIFY2(!gCon.isOpen() && ReadFile(file) == before, name); // nothing written
        }
        QVERIFY(Harness::onServer() || !QFile::exists(file));
    }

    // A database file marked read-only is named before sign-on.
    void aReadOnlyDatabaseFileIsNamed() {
        if (Harness::onServer())
            QSKIP("files only");
        QFile file(harness.databaseFile());
        QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
        harness.msgs.expectBox(
            QStringLiteral("DBに接続できませんでした。\rデータベースファイルが読み取り専用です: ") +
                file.fileName() + QStringLiteral("\rシステム管理者に連絡してください。"),
            QStringLiteral("Mirvane"));
        QCOMPARE(Main(), 1);
        QVERIFY(!gCon.isOpen());
        QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner));
    }

    void signingOnOpensTheMenuAndEachWayOutEndsTheProgram() {
        // Backups of earlier days: the daily ones of the 10th to the 21st (two of the 20th) and
        // one the administrator made.
        QDir backups(harness.path(QStringLiteral("Backup")));
        backups.mkpath(QStringLiteral("."));
        QStringList seeded{QStringLiteral("Mirvane-20261120-080000-daily.mdb"),
                           QStringLiteral("Mirvane-20260105-120000.mdb")};
        for (int day = 10; day <= 21; ++day)
            seeded << QStringLiteral("Mirvane-202611%1-190000-daily.mdb").arg(day);
        for (const QString& name : seeded)
            QFile(backups.filePath(name)).open(QIODevice::WriteOnly);
        harness.msgs.expect(OpeErr_001);
        harness.msgs.expect(OpeErr_005);
        harness.msgs.expect(OpeErr_005);
        harness.screens.expect<FrmPsw>([this](FrmPsw& psw) {
            QCOMPARE(psw.windowTitle(), QStringLiteral("承認画面"));
            QVERIFY(gCon.isOpen());
            QCOMPARE(gCon.isServer(), Harness::onServer());
            QCOMPARE(gDbPath, Harness::onServer() ? harness.path(ServerConnectionFile)
                                                  : harness.databaseFile());
            // Escape does not close the sign-on.
            QTest::keyClick(psw.txtPSW, Qt::Key_Escape);
            QVERIFY(psw.isVisible());
            // Blanks only count as nothing typed: the text stays, the focus comes back.
            typeAndPressOk(psw, QStringLiteral("   "));
            QCOMPARE(psw.txtPSW->text(), QStringLiteral("   "));
            QCOMPARE(psw.focusWidget(), psw.txtPSW);
            // A trailing blank and upper case are wrong: the text is cleared.
            typeAndPressOk(psw, QStringLiteral("tavinoru "));
            QCOMPARE(psw.txtPSW->text(), QString());
            QCOMPARE(psw.focusWidget(), psw.txtPSW);
            typeAndPressOk(psw, QStringLiteral("TAVINORU"));
            QCOMPARE(psw.txtPSW->text(), QString());
            QVERIFY(psw.isVisible());

            // The right password, confirmed with Enter.
            QTest::keyClicks(psw.txtPSW, QStringLiteral("tavinoru"));
            QTest::keyClick(psw.txtPSW, Qt::Key_Return);
            QVERIFY(!psw.isVisible());
        });
        harness.screens.expect<FrmMenu>([](FrmMenu& menu) {
            QCOMPARE(menu.windowTitle(), QStringLiteral("Mirvane Ver 3.0"));
            // The six buttons in their places; tab order runs down the menu.
            QStringList captions;
            for (QPushButton* button : {menu.cmdMenu[0], menu.cmdMenu[1], menu.cmdMst[0],
                                        menu.cmdMst[1], menu.cmdMst[2], menu.cmdMenu[2]})
                captions << button->text();
            QCOMPARE(captions.join(QLatin1Char('|')),
                     QStringLiteral(
                         "顧客登録／売上登録|顧客一覧照会|アイテム|用途|メーカー|システム終了"));
            QCOMPARE(menu.Frame1->title(), QStringLiteral("< マスタ保守 >"));
            for (QPushButton* master : menu.cmdMst)
                QCOMPARE(master->parentWidget(), menu.Frame1);
            QCOMPARE(menu.cmdMenu[0]->nextInFocusChain(), menu.cmdMenu[1]);
            QCOMPARE(menu.cmdMenu[1]->nextInFocusChain(), menu.cmdMst[0]);
            QTest::mouseClick(menu.cmdMenu[2], Qt::LeftButton);
            QVERIFY(!menu.isVisible());
        });
        QCOMPARE(Main(), 0);
        // The day's work ended: its backup is made, the last seven days and the week before
        // them are kept, and what the administrator made stays.
        const QString today = Harness::onServer()
                                  ? QStringLiteral("Mirvane-20261122-101530-daily.dump")
                                  : QStringLiteral("Mirvane-20261122-101530-daily.mdb");
        QStringList kept{QStringLiteral("Mirvane-20260105-120000.mdb")};
        for (int day = 15; day <= 21; ++day)
            kept << QStringLiteral("Mirvane-202611%1-190000-daily.mdb").arg(day);
        kept << today;
        QCOMPARE(backups.entryList(QDir::Files, QDir::Name), kept);
        QVERIFY(ReadFile(backups.filePath(today))
                    .startsWith(Harness::onServer() ? "PGDMP" : "SQLite format 3"));

        harness.screens.expect<FrmPsw>([](FrmPsw& psw) {
            psw.txtPSW->setText(QStringLiteral("tavinoru"));
            QTest::mouseClick(psw.cmdBtn[1], Qt::LeftButton);
            QVERIFY(!psw.isVisible());
        });
        QCOMPARE(Main(), 0); // an unexpected menu would fail the test

        FixClock(Harness::FixedNow.addSecs(3600)); // later the same day
        harness.screens.expect<FrmPsw>(
            [](FrmPsw& psw) { typeAndPressOk(psw, QStringLiteral("tavinoru")); });
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
