#pragma once

#include "platform/db/RecordSet.h"

#include <QList>
#include <QString>

// The one way the program talks to its database. Every failure becomes a Failure carrying
// the program's error numbers: a broken unique key and a database that cannot be opened
// are ErrorNumber::DatabaseFailed, a lock held past the wait ErrorNumber::LockTimeout. A
// failure's description is the engine's own message, never the statement (it holds the
// customer's data). A lost server connection is opened again once by the statement that
// finds it gone; the statement runs again unless a transaction was lost with the connection.
class Connection {
public:
    Connection();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // Opens an existing database file; a missing or unreadable file fails.
    void open(const QString& databaseFile);
    // Creates a new, empty database file and opens it; an existing file is refused.
    void create(const QString& databaseFile);
    // Opens a database on a PostgreSQL server from a libpq keyword string
    // ("host=... port=... dbname=... user=... password=..."); a server that cannot be reached
    // fails like a missing file.
    void openServer(const QString& connectionString);
    bool isServer() const { return server_; }
    void close();
    bool isOpen() const;

    // Runs one SQL text. A query gives its rows; any other statement an empty record set, and
    // the number of rows it changed through recordsAffected when that is given.
    RecordSet execute(const QString& sql, long* recordsAffected = nullptr);
    // How many statements every connection of this process has sent so far: each one is a round
    // trip to a server.
    static qint64 statementsSent();

    // A transaction on the file takes the file's write lock at once (an immediate transaction),
    // so what a save reads to check its rows stays as read until it commits; on the server
    // the rows a save reads with lockRows() are locked until then.
    void beginTrans();
    void commitTrans();
    void rollbackTrans();
    bool inTransaction() const;
    // What ends a select that reads the rows a save is about to change: on the server it locks
    // them against other terminals' saves until the transaction ends (" for update"); the
    // file's immediate transaction holds the whole file already (empty text).
    QString lockRows() const;
    // A condition that finds the typed text anywhere in a column, written after the column's
    // name: " Like '%text%'". SQLite's LIKE ignores ASCII case and PostgreSQL's does not, so on
    // the server a text that holds a letter with a case is found with " ILike ", and a search
    // answers the same on both engines (a telephone number keeps the cheaper LIKE).
    QString contains(const QString& typed) const;

    // A condition that a column holds one of the numbers (at least one), written after the
    // column's name: " in (1,2,3)"; on the server one array (" = any('{1,2,3}')"), which it
    // reads and plans faster than a list of many thousand numbers.
    QString isOneOf(const QList<qint64>& numbers) const;

    // How totals over the rows of another table that belong to each row of a table are best
    // read. For a few rows, looked up row by row through an index: PostgreSQL looks all of a
    // row's totals up in one go (LEFT JOIN LATERAL); SQLite, which has no such join, takes one
    // correlated sub-select per total. For every row of the table, PostgreSQL groups the other
    // table in one sub-select in a third of the time (but cannot narrow such a sub-select to a
    // few rows); SQLite is as quick row by row.
    bool joinsLaterally() const { return server_; }
    bool groupsForEveryRow() const { return server_; }
    // Written after a table's name in a view's FROM so that the table is read in its own order:
    // for a statement that joins the view with the same table again, SQLite would walk a
    // narrower index of one side and look up every row of the other out of order
    // (" NOT INDEXED"); the server needs nothing.
    QString readInOwnOrder() const;
    // Makes `name` the view of `select`: created when the database has nothing of that name,
    // replaced when it holds the view with another definition (an older program's), and left
    // as it is, nothing written, when it is defined so already or the name is a table's. A
    // replacement on the file runs in a transaction of its own unless one is open. On the
    // server a view that another terminal reads past the lock wait is left in its older form
    // for now (it gives the same rows), to be replaced at a later opening.
    void defineView(const QString& name, const QString& select);

    // How long a statement waits for a lock another terminal holds before it fails.
    static constexpr int DefaultLockWaitMs = 5000;
    void setLockWait(int milliseconds);

    // Exchanges the databases two connections stand for, with their open transactions: code
    // written for one connection then runs on the other's (a second terminal in the tests).
    void swap(Connection& other) noexcept;

private:
    void openFile(const QString& databaseFile);
    void prepareServerSession();
    bool reopenIfLost();

    QString name_;
    bool server_ = false;
    bool open_ = false;
    bool inTransaction_ = false;
    int lockWaitMs_ = DefaultLockWaitMs;
};
