#pragma once

#include "platform/db/Connection.h"
#include "platform/ui/SaveFileDialog.h"
#include "support/ModalScript.h"
#include "support/MsgScript.h"

#include <QDateTime>
#include <QTemporaryDir>
#include <functional>
#include <memory>

// A fresh program folder per test: DB/ with a new database made by the admin tool's code and
// Log/; a separate installation folder with the form templates in jfm/; the clock fixed, and
// the box and screen scripts installed.
// Call setUp() from a test's init() and tearDown() from its cleanup().
class Harness {
public:
    struct Options {
        bool createDatabase = true;
        bool openDatabase = true;
    };

    static const QDateTime FixedNow;

    // Gives the reason the test cannot run here (a PostgreSQL run without a server), else
    // empty text. Use HARNESS_INIT from a test's init().
    QString setUp(Options options);
    QString setUp() { return setUp(Options{}); }

    // Whether this run's database is on the PostgreSQL test server rather than in a file.
    static bool onServer();
    // The connection string of this run's database on the server.
    static QString serverConnection();
    // Checks that every expected box and screen came and nothing else did.
    // Returns the problems found, empty when all went as scripted.
    QStringList tearDown();

    QString folder() const { return dir_->path(); }
    QString databaseFile() const { return path(QStringLiteral("DB/Mirvane.mdb")); }
    QString path(const QString& relative) const { return folder() + QLatin1Char('/') + relative; }
    QString installFolder() const { return install_->path(); }
    QString installPath(const QString& relative) const {
        return installFolder() + QLatin1Char('/') + relative;
    }

    MsgScript msgs;
    ModalScript screens;
    // The answers to the save dialogs expected, in order (empty text cancels); each dialog that
    // came is kept in savesAsked. A dialog nobody expected is a failure and is cancelled.
    QStringList saveAnswers;
    QList<SaveFileRequest> savesAsked;

private:
    int unexpectedSaves_ = 0;
    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<QTemporaryDir> install_;
};

// Runs a query on gCon and gives its first column of the first row (a null QVariant when
// there is no row). For checking what the database holds.
QVariant QueryValue(const QString& sql);
// The number of rows a query gives.
int QueryCount(const QString& sql);
// A file's bytes; empty when it cannot be read.
QByteArray ReadFile(const QString& path);
// Writes a file with the bytes, replacing one that is there; gives its path.
QString WriteFile(const QString& path, const QByteArray& bytes);
// The number of the Failure the action throws; 0 when it throws none.
long FailureNumber(const std::function<void()>& action);

// A trigger that, before each insert into the table, runs the statement (on PostgreSQL not
// again for the statement's own inserts). Written in both engines' forms.
void CreateBeforeInsertTrigger(const QString& name, const QString& table, const QString& statement);

// Another terminal: its own connection to the folder's database, in a transaction that has run
// the statement and holds its locks until the connection is destroyed (which rolls it back).
std::unique_ptr<Connection> OtherTerminalHolding(const QString& folder, const QString& statement);
// Ends gCon's server session from another connection, as a server restart does; gives that
// connection (to the server's maintenance database) for what the test does next.
std::unique_ptr<Connection> TerminateServerSession();

// In a test's init(): sets the harness up, or skips the test saying why.
#define HARNESS_INIT(harness, ...)                                                                 \
    do {                                                                                           \
        const QString skipReason = (harness).setUp(__VA_ARGS__);                                   \
        if (!skipReason.isEmpty())                                                                 \
            QSKIP(qPrintable(skipReason));                                                         \
    } while (false)

// In a test's cleanup(): fails the test with the harness's findings.
#define HARNESS_TEARDOWN(harness)                                                                  \
    do {                                                                                           \
        const QStringList problems = (harness).tearDown();                                         \
        QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char('\n'))));                \
    } while (false)
