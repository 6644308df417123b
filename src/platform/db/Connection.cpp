#include "platform/db/Connection.h"

#include "platform/Failure.h"
#include "platform/db/ConnectionString.h"
#include "platform/db/SqlText.h"

#include <QAtomicInt>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <algorithm>
#include <atomic>

namespace {

QAtomicInt connectionCounter;

bool isUniqueViolation(const QString& code) {
    // SQLite: UNIQUE (2067) and PRIMARY KEY (1555); PostgreSQL: 23505.
    return code == QLatin1String("2067") || code == QLatin1String("1555") ||
           code == QLatin1String("23505");
}

bool isUnusableDatabase(const QString& code) {
    // SQLite: cannot open, not a database.
    return code == QLatin1String("14") || code == QLatin1String("26");
}

bool isLockTimeout(const QString& code) {
    // SQLite: busy, locked. PostgreSQL: lock not available (lock_timeout), deadlock, a
    // serialization failure: another terminal's write stood in the way.
    return code == QLatin1String("5") || code == QLatin1String("6") ||
           code == QLatin1String("55P03") || code == QLatin1String("40P01") ||
           code == QLatin1String("40001");
}

// The engine's own message: its first line, without the detail PostgreSQL adds after it (the
// key values of the row) and without the statement.
QString engineMessage(const QSqlError& error) {
    QString text = error.databaseText().trimmed().isEmpty() ? error.text() : error.databaseText();
    text = text.section(QLatin1Char('\n'), 0, 0).trimmed();
    if (text.isEmpty())
        text = QStringLiteral("データベースの処理に失敗しました。");
    return text;
}

Failure toFailure(const QSqlError& error) {
    const QString code = error.nativeErrorCode();
    const QString description = engineMessage(error);
    if (isUniqueViolation(code) || isUnusableDatabase(code))
        return Failure(ErrorNumber::DatabaseFailed, description);
    if (isLockTimeout(code))
        return Failure(ErrorNumber::LockTimeout, description);
    return Failure(ErrorNumber::StatementFailed, description);
}

Failure connectionLost(const QString& why) {
    return Failure(ErrorNumber::ConnectionLost,
                   QStringLiteral("データベースサーバーとの接続が切れました。") + why);
}

Failure cannotOpen(const QString& why) {
    return Failure(ErrorNumber::DatabaseFailed, why);
}

// Whether the text holds a letter that has a case: only then do LIKE and ILIKE find different
// rows.
bool holdsCasedLetter(const QString& text) {
    return std::any_of(text.cbegin(), text.cend(), [](QChar c) {
        return c.isUpper() || c.isLower() || c.isTitleCase() || c.isSurrogate();
    });
}

} // namespace

Connection::Connection()
    : name_(QStringLiteral("mirvane-%1").arg(connectionCounter.fetchAndAddRelaxed(1))) {}

Connection::~Connection() {
    close();
}

void Connection::open(const QString& databaseFile) {
    const QFileInfo file(databaseFile);
    if (!file.isFile() || !file.isReadable())
        throw cannotOpen(QStringLiteral("データベースファイルを開けません: ") + databaseFile);
    openFile(databaseFile);
}

void Connection::create(const QString& databaseFile) {
    if (QFileInfo::exists(databaseFile))
        throw cannotOpen(QStringLiteral("データベースファイルは既にあります: ") + databaseFile);
    openFile(databaseFile);
}

void Connection::openServer(const QString& connectionString) {
    close();
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL")))
        throw cannotOpen(QStringLiteral("PostgreSQL のドライバーがありません (libqt6sql6-psql)。"));
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), name_);
        QStringList options;
        bool timeoutGiven = false;
        for (const auto& [key, value] : ParseConnectionString(connectionString)) {
            if (key == QLatin1String("host") || key == QLatin1String("hostaddr"))
                db.setHostName(value);
            else if (key == QLatin1String("port"))
                db.setPort(value.toInt());
            else if (key == QLatin1String("dbname"))
                db.setDatabaseName(value);
            else if (key == QLatin1String("user"))
                db.setUserName(value);
            else if (key == QLatin1String("password"))
                db.setPassword(value);
            else
                options << key + QLatin1Char('=') + value;
            timeoutGiven = timeoutGiven || key == QLatin1String("connect_timeout");
        }
        // A server that does not answer is reported soon, not after minutes.
        if (!timeoutGiven)
            options << QStringLiteral("connect_timeout=5");
        db.setConnectOptions(options.join(QLatin1Char(';')));
        if (!db.open()) {
            const QString why = db.lastError().text();
            db = QSqlDatabase();
            QSqlDatabase::removeDatabase(name_);
            throw cannotOpen(why);
        }
    }
    open_ = true;
    server_ = true;
    try {
        prepareServerSession();
    } catch (const Failure& failure) {
        close();
        throw cannotOpen(failure.description());
    }
}

void Connection::prepareServerSession() {
    const QString settings[] = {
        QStringLiteral("set lock_timeout = %1").arg(lockWaitMs_),
        // Quoting doubles single quotes only and LIKE patterns escape with a backslash: a
        // backslash inside quotes must be an ordinary character, as it is on SQLite.
        QStringLiteral("set standard_conforming_strings = on"),
        // A statement of the screens runs once. The server compiles one it reckons costly (the
        // totals of every customer, looked up one by one) to machine code first, which takes
        // longer than running it. A server older than that compiler has no such setting.
        QStringLiteral("select set_config('jit', 'off', false) from pg_settings "
                       "where name = 'jit'"),
        // Tables and views created only when missing are the usual road of opening a database;
        // the server's notice that one exists already is no news.
        QStringLiteral("set client_min_messages = warning"),
    };
    QSqlQuery query(QSqlDatabase::database(name_, false));
    for (const QString& setting : settings)
        if (!query.exec(setting))
            throw toFailure(query.lastError());
}

void Connection::setLockWait(int milliseconds) {
    lockWaitMs_ = milliseconds;
    if (!open_)
        return;
    if (server_) {
        prepareServerSession();
        return;
    }
    QSqlQuery query(QSqlDatabase::database(name_, false));
    if (!query.exec(QStringLiteral("pragma busy_timeout = %1").arg(milliseconds)))
        throw toFailure(query.lastError());
}

bool Connection::reopenIfLost() {
    if (!server_ || !open_)
        return false;
    QSqlDatabase db = QSqlDatabase::database(name_, false);
    if (db.isOpen()) {
        // A statement of a healthy connection fails for its own reasons; a lost one takes the
        // connection with it.
        QSqlQuery probe(db);
        if (probe.exec(QStringLiteral("select 1")) || db.isOpen())
            return false;
    }
    inTransaction_ = false;
    db.close();
    if (!db.open())
        throw connectionLost(engineMessage(db.lastError()));
    prepareServerSession();
    return true;
}

void Connection::openFile(const QString& databaseFile) {
    close();
    server_ = false;
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QSQLITE")))
        throw cannotOpen(QStringLiteral("SQLite のドライバーがありません (libqt6sql6-sqlite)。"));
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_);
        db.setDatabaseName(databaseFile);
        // Another terminal's write holds the file for a moment; wait for it instead of failing.
        db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(lockWaitMs_));
        if (!db.open()) {
            const Failure failure = toFailure(db.lastError());
            db = QSqlDatabase();
            QSqlDatabase::removeDatabase(name_);
            throw cannotOpen(failure.description());
        }
    }
    open_ = true;
    try {
        // Reading the catalogue fails at once on a file that is not a database.
        execute(QStringLiteral("select count(*) from sqlite_master"));
    } catch (const Failure& failure) {
        close();
        throw cannotOpen(failure.description());
    }
}

void Connection::close() {
    if (!open_)
        return;
    {
        QSqlDatabase db = QSqlDatabase::database(name_, false);
        if (inTransaction_)
            db.rollback();
        db.close();
    }
    QSqlDatabase::removeDatabase(name_);
    open_ = false;
    server_ = false;
    inTransaction_ = false;
}

bool Connection::isOpen() const {
    return open_;
}

namespace {
std::atomic<qint64> sentStatements{0};
}

qint64 Connection::statementsSent() {
    return sentStatements.load();
}

RecordSet Connection::execute(const QString& sql, long* recordsAffected) {
    ++sentStatements;
    if (!open_)
        throw cannotOpen(QStringLiteral("データベースに接続されていません。"));
    if (sql.trimmed().isEmpty())
        throw Failure(ErrorNumber::StatementFailed,
                      QStringLiteral("実行する SQL 文がありません。"));
    auto query = std::make_unique<QSqlQuery>(QSqlDatabase::database(name_, false));
    // PostgreSQL streams a forward-only query row by row and then takes no other statement on
    // the connection until it is read to the end; screens read one query while running
    // others, so a server query is fetched whole.
    query->setForwardOnly(!server_);
    const QString& statement = sql;
    if (!query->exec(statement)) {
        const bool transactionLost = inTransaction_;
        const Failure failure = toFailure(query->lastError());
        if (!reopenIfLost())
            throw failure;
        if (transactionLost)
            throw connectionLost(failure.description());
        query = std::make_unique<QSqlQuery>(QSqlDatabase::database(name_, false));
        query->setForwardOnly(false);
        if (!query->exec(statement))
            throw toFailure(query->lastError());
    }
    if (recordsAffected)
        *recordsAffected = query->isSelect() ? 0 : query->numRowsAffected();
    if (!query->isSelect())
        return RecordSet();
    return RecordSet(std::move(query));
}

void Connection::beginTrans() {
    if (inTransaction_)
        throw Failure(ErrorNumber::TransactionState,
                      QStringLiteral("トランザクションは既に開始されています。"));
    QSqlDatabase db = QSqlDatabase::database(name_, false);
    if (!open_)
        throw cannotOpen(QStringLiteral("データベースに接続されていません。"));
    if (!server_) {
        // The driver's own begin defers the lock until the first write; a save that reads its
        // rows first must hold them from the start.
        // A file that cannot be written (a backup opened to be read) takes a plain one.
        QSqlQuery begin(db);
        if (!begin.exec(QStringLiteral("BEGIN IMMEDIATE")) &&
            !(begin.lastError().nativeErrorCode() == QLatin1String("8") &&
              begin.exec(QStringLiteral("BEGIN"))))
            throw toFailure(begin.lastError());
    } else if (!db.transaction() && !(reopenIfLost() && db.transaction())) {
        throw toFailure(db.lastError());
    }
    inTransaction_ = true;
}

void Connection::commitTrans() {
    if (!inTransaction_)
        throw Failure(ErrorNumber::TransactionState,
                      QStringLiteral("トランザクションが開始されていません。"));
    QSqlDatabase db = QSqlDatabase::database(name_, false);
    if (!server_) {
        // The driver's own commit drops the engine's error code: a commit that waited past the
        // lock wait for another terminal's read to end must say so. The transaction stays open
        // to be rolled back.
        QSqlQuery commit(db);
        if (!commit.exec(QStringLiteral("COMMIT")))
            throw toFailure(commit.lastError());
    } else if (!db.commit()) {
        throw toFailure(db.lastError());
    }
    inTransaction_ = false;
}

void Connection::rollbackTrans() {
    if (!inTransaction_)
        throw Failure(ErrorNumber::TransactionState,
                      QStringLiteral("トランザクションが開始されていません。"));
    inTransaction_ = false;
    QSqlDatabase db = QSqlDatabase::database(name_, false);
    if (!db.rollback())
        throw toFailure(db.lastError());
}

bool Connection::inTransaction() const {
    return inTransaction_;
}

void Connection::swap(Connection& other) noexcept {
    std::swap(name_, other.name_);
    std::swap(server_, other.server_);
    std::swap(open_, other.open_);
    std::swap(inTransaction_, other.inTransaction_);
    std::swap(lockWaitMs_, other.lockWaitMs_);
}

QString Connection::lockRows() const {
    return server_ ? QStringLiteral(" for update") : QString();
}

QString Connection::isOneOf(const QList<qint64>& numbers) const {
    QStringList texts;
    texts.reserve(numbers.size());
    for (qint64 number : numbers)
        texts << SqlNum(number);
    const QString list = texts.join(QLatin1Char(','));
    return server_ ? QStringLiteral(" = any('{") + list + QStringLiteral("}')")
                   : QStringLiteral(" in (") + list + QLatin1Char(')');
}

QString Connection::readInOwnOrder() const {
    return server_ ? QString() : QStringLiteral(" NOT INDEXED");
}

void Connection::defineView(const QString& name, const QString& select) {
    const QString create = QStringLiteral("CREATE VIEW ") + name + QStringLiteral(" AS\n") + select;
    if (!server_) {
        // The file keeps the statement that made the view, as it was written.
        RecordSet held =
            execute(QStringLiteral("select type, sql from sqlite_master where lower(name) = ") +
                    SqlStr(name.toLower()));
        const bool exists = !held.eof();
        if (exists && (held.field(0).toString() != QLatin1String("view") ||
                       held.field(1).toString() == create))
            return;
        held.close(); // no statement reads the catalogue while the view is replaced
        const bool own = !inTransaction_;
        if (own)
            beginTrans();
        try {
            if (exists)
                execute(QStringLiteral("DROP VIEW ") + name);
            execute(create);
            if (own)
                commitTrans();
        } catch (...) {
            if (own && inTransaction_)
                rollbackTrans();
            throw;
        }
        return;
    }
    RecordSet held =
        execute(QStringLiteral("select relkind from pg_class where oid = to_regclass(") +
                SqlStr(name.toLower()) + QLatin1Char(')'));
    if (held.eof()) {
        execute(create);
        return;
    }
    if (held.field(0).toString() != QLatin1String("v"))
        return;
    // The server keeps its own rendering of a view's query: the wanted one is rendered by a
    // view of this session alone and compared.
    execute(QStringLiteral("CREATE OR REPLACE TEMPORARY VIEW mirvane_wanted_view AS\n") + select);
    const bool same =
        execute(QStringLiteral("select pg_get_viewdef(to_regclass(") + SqlStr(name.toLower()) +
                QStringLiteral(")) = pg_get_viewdef('pg_temp.mirvane_wanted_view'"
                               "::regclass)"))
            .field(0)
            .toBool();
    execute(QStringLiteral("DROP VIEW pg_temp.mirvane_wanted_view"));
    // Replaced in place: what other programs built on the view keeps standing.
    if (same)
        return;
    try {
        execute(QStringLiteral("CREATE OR REPLACE VIEW ") + name + QStringLiteral(" AS\n") +
                select);
    } catch (const Failure& failure) {
        if (inTransaction_ || failure.number() != ErrorNumber::LockTimeout)
            throw;
    }
}

QString Connection::contains(const QString& typed) const {
    const bool foldCase = server_ && holdsCasedLetter(typed);
    return (foldCase ? QStringLiteral(" ILike ") : QStringLiteral(" Like ")) + SqlContains(typed);
}
