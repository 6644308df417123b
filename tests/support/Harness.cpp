#include "support/Harness.h"

#include "data/Schema.h"
#include "data/ShopDatabase.h"
#include "frame/Globals.h"
#include "platform/AppFolder.h"
#include "platform/Failure.h"
#include "platform/report/Report.h"
#include "platform/ui/Clock.h"
#include "platform/ui/ShowModal.h"

#include <QApplication>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

const QDateTime Harness::FixedNow(QDate(2026, 11, 22), QTime(10, 15, 30));

namespace {

// The server this process's PostgreSQL runs use, from the test setup (scripts/test).
QString testServer() {
    return QString::fromLocal8Bit(qgetenv("MIRVANE_TEST_PG"));
}

// One database per test process on the server, made on first use.
QString processDatabase() {
    static const QString name = [] {
        const QString database = u"mirvane_t%1"_s.arg(QCoreApplication::applicationPid());
        Connection maintenance;
        maintenance.openServer(testServer());
        maintenance.execute(u"drop database if exists "_s + database);
        maintenance.execute(u"create database "_s + database);
        return database;
    }();
    return name;
}

} // namespace

bool Harness::onServer() {
    return qgetenv("MIRVANE_TEST_ENGINE") == "postgres";
}

QString Harness::serverConnection() {
    QString connection = testServer();
    connection.remove(QRegularExpression(u"\\bdbname=\\S+"_s));
    return connection.trimmed() + u" dbname="_s + processDatabase();
}

QString Harness::setUp(Options options) {
    if (onServer() && options.createDatabase && testServer().isEmpty())
        return u"no PostgreSQL test server (MIRVANE_TEST_PG is not set)"_s;
    dir_ = std::make_unique<QTemporaryDir>();
    install_ = std::make_unique<QTemporaryDir>();
    QDir root(dir_->path());
    for (const char* sub : {"DB", "Log"})
        root.mkpath(QString::fromLatin1(sub));
    QDir(install_->path()).mkpath(u"jfm"_s);
    for (const QFileInfo& form : QDir(QStringLiteral(MIRVANE_JFM_DIR)).entryInfoList({u"*.jfm"_s}))
        QFile::copy(form.filePath(), installPath(u"jfm/"_s + form.fileName()));
    SetAppFolder(dir_->path());
    SetInstallFolder(install_->path());
    SetReportOutput(ReportOutput::PdfOnly);
    RecordReportJobs(true);
    FixClock(FixedNow);
    msgs.reset();
    screens.reset();
    SetMsgBoxHandler([this](const MsgRequest& request) { return msgs.answer(request); });
    SetShowModalHandler([this](QDialog& screen) { return screens.run(screen); });
    saveAnswers.clear();
    savesAsked.clear();
    unexpectedSaves_ = 0;
    SetSaveFileHandler([this](const SaveFileRequest& request) {
        savesAsked << request;
        if (saveAnswers.isEmpty()) {
            ++unexpectedSaves_;
            return QString();
        }
        return saveAnswers.takeFirst();
    });
    if (options.createDatabase && onServer()) {
        // A fresh, empty schema with the tables, the view and the starting masters.
        Connection connection;
        connection.openServer(serverConnection());
        connection.execute(u"drop schema public cascade"_s);
        connection.execute(u"create schema public"_s);
        CreateSchema(connection);
        WriteFile(path(ServerConnectionFile), serverConnection().toUtf8());
    } else if (options.createDatabase) {
        CreateDatabase(databaseFile());
    }
    gCon.setLockWait(Connection::DefaultLockWaitMs);
    if (options.createDatabase && options.openDatabase)
        OpenDatabase();
    return {};
}

QStringList Harness::tearDown() {
    if (!dir_)
        return {};
    QStringList problems = msgs.failures() + screens.failures();
    if (!saveAnswers.isEmpty() || unexpectedSaves_ > 0)
        problems << u"save dialogs: %1 expected and not shown, %2 not expected"_s
                        .arg(saveAnswers.size())
                        .arg(unexpectedSaves_);
    if (gCon.inTransaction())
        problems << u"a transaction was left open"_s;
    gCon.close();
    SetMsgBoxHandler({});
    SetShowModalHandler({});
    SetSaveFileHandler({});
    FixClock(std::nullopt);
    SetAppFolder({});
    SetInstallFolder({});
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible())
            problems << u"window left open: %1"_s.arg(
                QString::fromLatin1(window->metaObject()->className()));
    dir_.reset();
    install_.reset();
    return problems;
}

QVariant QueryValue(const QString& sql) {
    RecordSet rows = gCon.execute(sql);
    return rows.eof() ? QVariant() : rows.field(0);
}

int QueryCount(const QString& sql) {
    int count = 0;
    for (RecordSet rows = gCon.execute(sql); !rows.eof(); rows.moveNext())
        ++count;
    return count;
}

QByteArray ReadFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString WriteFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

long FailureNumber(const std::function<void()>& action) {
    try {
        action();
    } catch (const Failure& failure) {
        return failure.number();
    }
    return 0;
}

void CreateBeforeInsertTrigger(const QString& name, const QString& table,
                               const QString& statement) {
    if (!Harness::onServer()) {
        gCon.execute(
            u"create trigger %1 before insert on %2 begin %3; end"_s.arg(name, table, statement));
        return;
    }
    gCon.execute(u"create function %1() returns trigger language plpgsql as $$ "
                 "begin if pg_trigger_depth() = 1 then %2; end if; return new; end $$"_s.arg(
                     name, statement));
    gCon.execute(u"create trigger %1 before insert on %2 for each row execute function %1()"_s.arg(
        name, table));
}

std::unique_ptr<Connection> OtherTerminalHolding(const QString& folder, const QString& statement) {
    auto other = std::make_unique<Connection>();
    OpenDatabaseIn(*other, folder);
    other->beginTrans();
    other->execute(statement);
    return other;
}

std::unique_ptr<Connection> TerminateServerSession() {
    const qint64 session = QueryValue(u"select pg_backend_pid()"_s).toLongLong();
    auto other = std::make_unique<Connection>();
    other->openServer(testServer());
    // Waits up to 5 s for the session to be gone.
    other->execute(u"select pg_terminate_backend(%1, 5000)"_s.arg(session));
    return other;
}
