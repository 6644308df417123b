#pragma once

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>

// Where a shop's database lives: a file, or a PostgreSQL server given by its connection string.
struct DatabasePlace {
    QString file;
    QString server;
    bool isServer() const { return !server.isEmpty(); }
    // The file's path, or the server's connection string without its password.
    QString shown() const;
};

// The database of a program folder: the server when DB/Mirvane.server is there, else the file.
DatabasePlace DatabasePlaceIn(const QString& programFolder);
// A place given on the admin tool's command line: a connection string ("host=... dbname=...")
// or a file path.
DatabasePlace DatabasePlaceOf(const QString& text);

// The folder that holds a program folder's backups.
QString BackupFolderIn(const QString& programFolder);

// What a backup is called while it is written and checked.
inline const QString PartialBackupSuffix = QStringLiteral(".incomplete");

// Why a backup is made; it is part of the file's name. Only daily backups are ever removed
// by the program, as their generations pass.
enum class BackupReason { Asked, Daily, BeforeRestore, BeforeCopy };

// Writes a consistent copy of the database into the folder, named by the moment and the reason
// ("Mirvane-20261122-101530-daily.mdb"; ".dump" for a server). A file is copied with SQLite's
// own online copy (VACUUM INTO), safe while the program writes to it; a server with pg_dump in
// its custom format. The copy is written under its name with PartialBackupSuffix added,
// readable by its owner only, and takes its own name only after it was checked to be a whole
// shop (every table and the view read, SQLite's quick check; a dump's table of contents).
// Gives the new file's path; a failure leaves no file behind.
QString BackupDatabase(const DatabasePlace& place, const QString& folder, const QDateTime& at,
                       BackupReason reason);

// The days whose daily backup is kept, out of the days that have one: the last seven of them,
// and the newest of each of the four latest calendar weeks (Monday to Sunday) before those that
// hold none of the seven.
QList<QDate> DailyGenerationsToKeep(QList<QDate> days);

// The program's own backup at the end of a day's work: the program folder's database into its
// Backup/ folder, unless one of the same day is already there; then the daily backups that no
// generation keeps are removed. Gives the new file's path, or empty text when there was one.
QString MakeDailyBackup(const QString& programFolder, const QDateTime& now);

// Puts a backup (a file made by BackupDatabase for the same kind of database) back as the
// database of the program folder, after checking it is a whole shop as BackupDatabase checks
// its own; a server's only while no other connection to its database is open. The database
// it replaces is backed up first, into the folder's Backup/ folder; gives that backup's path
// (empty when there was no database). The caller holds the folder's SingleInstance lock.
QString RestoreDatabase(const QString& backupFile, const QString& programFolder,
                        const QDateTime& now);
