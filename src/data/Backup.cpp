#include "data/Backup.h"

#include "data/DatabaseCopy.h"
#include "data/ShopDatabase.h"
#include "platform/Failure.h"
#include "platform/WholeFile.h"
#include "platform/db/Connection.h"
#include "platform/db/ConnectionString.h"
#include "platform/db/SqlText.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <algorithm>
#include <filesystem>
#include <map>
#include <signal.h>
#include <sys/prctl.h>

namespace {

// "Mirvane-20261122-101530-daily.mdb": the date, the time and the reason.
const QRegularExpression& dailyName() {
    static const QRegularExpression name(
        QStringLiteral("^Mirvane-(\\d{8})-\\d{6}-daily(-\\d+)?\\.(mdb|dump)$"));
    return name;
}

QString reasonTag(BackupReason reason) {
    switch (reason) {
    case BackupReason::Daily:
        return QStringLiteral("-daily");
    case BackupReason::BeforeRestore:
        return QStringLiteral("-before-restore");
    case BackupReason::BeforeCopy:
        return QStringLiteral("-before-copy");
    case BackupReason::Asked:
        break;
    }
    return {};
}

Failure backupFailure(const QString& why) {
    return Failure(ErrorNumber::FileAccess, why);
}

// A name in the folder that no file has yet.
QString freshPath(const QDir& folder, const QString& stem, const QString& extension) {
    QString path = folder.filePath(stem + extension);
    for (int n = 2; QFileInfo::exists(path); ++n)
        path = folder.filePath(stem + QStringLiteral("-%1").arg(n) + extension);
    return path;
}

// Runs one of PostgreSQL's programs, on the server when a connection is given, and gives what
// it printed. The password travels in the environment, not on the command line where every
// user of the machine could read it. The program ends with this process: a tool that is killed
// leaves no dump or restore going on without it.
QByteArray runPgProgram(const QString& name, QStringList arguments, const QString& connection) {
    const QString program = QStandardPaths::findExecutable(name);
    if (program.isEmpty())
        throw backupFailure(name + QStringLiteral(" が見つかりません。サーバーのバックアップには "
                                                  "PostgreSQL のクライアント (postgresql-client) "
                                                  "を入れてください。"));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!connection.isEmpty()) {
        ConnectionSettings settings = ParseConnectionString(connection);
        settings.removeIf([&](const auto& setting) {
            if (setting.first != QLatin1String("password"))
                return false;
            environment.insert(QStringLiteral("PGPASSWORD"), setting.second);
            return true;
        });
        arguments << QStringLiteral("--dbname=") + ConnectionStringText(settings);
    }
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
    process.start(program, arguments);
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
        throw backupFailure(name + QStringLiteral(" が失敗しました: ") +
                            QString::fromLocal8Bit(process.readAllStandardError()).trimmed());
    return process.readAllStandardOutput();
}

// What a backup must hold to be a whole shop: every table of the shop and its view.
QStringList shopRelations() {
    return ShopTables() << QStringLiteral("V_San_User");
}

// A server's dump must list every table of the shop and the view in its table of contents.
void checkServerDump(const QString& path) {
    const QString contents = QString::fromLocal8Bit(
        runPgProgram(QStringLiteral("pg_restore"), {QStringLiteral("--list"), path}, {}));
    for (const QString& relation : shopRelations()) {
        const QString kind = relation.startsWith(QLatin1String("V_")) ? QStringLiteral("VIEW")
                                                                      : QStringLiteral("TABLE");
        const QRegularExpression entry(
            QStringLiteral("\\b%1 \\S+ %2 ").arg(kind, relation.toLower()));
        if (!entry.match(contents).hasMatch())
            throw backupFailure(QStringLiteral("店のデータベースのバックアップではありません (") +
                                relation + QStringLiteral(" がありません): ") + path);
    }
}

// A file's backup must be a database whose every shop table and view reads, and whose pages
// are whole.
void checkDatabaseFile(const QString& path) {
    const auto notAShop = [&](const QString& why) {
        return backupFailure(QStringLiteral("店のデータベースのバックアップではありません (") +
                             why + QStringLiteral("): ") + path);
    };
    Connection backup;
    try {
        backup.open(path);
    } catch (const Failure& failure) {
        throw notAShop(failure.description());
    }
    for (const QString& relation : shopRelations()) {
        try {
            backup.execute(QStringLiteral("select count(*) from ") + relation);
        } catch (const Failure&) {
            throw notAShop(relation + QStringLiteral(" を読めません"));
        }
    }
    // The tables the program added are in every backup it made; one made by an older program
    // lacks them and gains them when it is opened.
    for (const QString& table : AddedTables()) {
        const bool held = backup
                              .execute(QStringLiteral("select count(*) from sqlite_master where "
                                                      "type = 'table' and lower(name) = ") +
                                       SqlStr(table.toLower()))
                              .field(0)
                              .toLongLong() > 0;
        try {
            if (held)
                backup.execute(QStringLiteral("select count(*) from ") + table);
        } catch (const Failure&) {
            throw notAShop(table + QStringLiteral(" を読めません"));
        }
    }
    if (backup.execute(QStringLiteral("pragma quick_check")).field(0).toString() !=
        QLatin1String("ok"))
        throw notAShop(QStringLiteral("壊れています"));
}

// Writes a backup under a temporary name beside its own, readable by its owner only, checks it
// is a whole shop, and only then gives it its name: an interrupted or failed backup never
// stands where backups are looked for.
void writeChecked(const DatabasePlace& place, const QString& target) {
    const QString partial = target + PartialBackupSuffix;
    try {
        QFile made(partial);
        if (!made.open(QIODevice::WriteOnly) || !KeepForOwnerOnly(partial))
            throw backupFailure(QStringLiteral("書き込めません: ") + partial);
        made.close();
        if (place.isServer()) {
            runPgProgram(QStringLiteral("pg_dump"),
                         {QStringLiteral("--format=custom"), QStringLiteral("--file=") + partial},
                         place.server);
            checkServerDump(partial);
        } else {
            Connection source;
            source.open(place.file);
            source.execute(QStringLiteral("vacuum into ") + SqlQuote(partial));
            source.close();
            checkDatabaseFile(partial);
        }
        std::error_code error;
        std::filesystem::rename(partial.toStdString(), target.toStdString(), error);
        if (error)
            throw backupFailure(QStringLiteral("名前を付けられません: ") + target);
    } catch (const Failure& failure) {
        QFile::remove(partial);
        throw backupFailure(QStringLiteral("バックアップを作成できません: ") +
                            failure.description());
    }
}

// A server's database is put back only while no terminal works on it.
void refuseWhileTerminalsAreConnected(const QString& server) {
    Connection connection;
    connection.openServer(server);
    const qint64 others =
        connection
            .execute(QStringLiteral("select count(*) from pg_stat_activity where datname = "
                                    "current_database() and pid <> pg_backend_pid()"))
            .field(0)
            .toLongLong();
    if (others > 0)
        throw backupFailure(QStringLiteral("このデータベースには、ほかに %1 件の接続があります。"
                                           "すべての端末で Mirvane を終了してから戻してください。")
                                .arg(others));
}

QByteArray headOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw backupFailure(QStringLiteral("ファイルを開けません: ") + path);
    return file.read(16);
}

// The file's database before it is replaced: a copy of it, or when it is too damaged to be
// read, its bytes as they are.
QString saveReplacedFile(const QString& databaseFile, const QString& programFolder,
                         const QDateTime& now) {
    try {
        return BackupDatabase({databaseFile, {}}, BackupFolderIn(programFolder), now,
                              BackupReason::BeforeRestore);
    } catch (const Failure&) {
        const QString target = freshPath(QDir(BackupFolderIn(programFolder)),
                                         now.toString(QStringLiteral("'Mirvane-'yyyyMMdd-HHmmss")) +
                                             reasonTag(BackupReason::BeforeRestore),
                                         QStringLiteral(".mdb"));
        if (!QFile::copy(databaseFile, target) || !KeepForOwnerOnly(target))
            throw backupFailure(QStringLiteral("元のデータベースを保存できません: ") + target);
        return target;
    }
}

void replaceFile(const QString& backupFile, const QString& databaseFile) {
    const QString incoming = databaseFile + QStringLiteral(".restoring");
    QFile::remove(incoming);
    if (!QFile::copy(backupFile, incoming))
        throw backupFailure(QStringLiteral("書き込めません: ") + incoming);
    // A journal left beside the old file must never be applied to the new one.
    for (const char* suffix : {"-journal", "-wal", "-shm"})
        QFile::remove(databaseFile + QLatin1String(suffix));
    std::error_code error;
    std::filesystem::rename(incoming.toStdString(), databaseFile.toStdString(), error);
    if (error)
        throw backupFailure(QStringLiteral("置き換えられません: ") + databaseFile);
}

} // namespace

QString DatabasePlace::shown() const {
    if (!isServer())
        return file;
    ConnectionSettings settings = ParseConnectionString(server);
    settings.removeIf(
        [](const auto& setting) { return setting.first == QLatin1String("password"); });
    return ConnectionStringText(settings);
}

DatabasePlace DatabasePlaceIn(const QString& programFolder) {
    QFile server(QDir(programFolder).filePath(ServerConnectionFile));
    if (!server.exists())
        return {QDir(programFolder).filePath(DatabaseFile), {}};
    if (!server.open(QIODevice::ReadOnly))
        throw Failure(ErrorNumber::DatabaseFailed,
                      QStringLiteral("接続ファイルを読めません: ") + server.fileName());
    return {{}, QString::fromUtf8(server.readLine()).trimmed()};
}

DatabasePlace DatabasePlaceOf(const QString& text) {
    if (text.contains(QLatin1Char('=')))
        return {{}, text};
    return {text, {}};
}

QString BackupFolderIn(const QString& programFolder) {
    return QDir(programFolder).filePath(QStringLiteral("Backup"));
}

QString BackupDatabase(const DatabasePlace& place, const QString& folder, const QDateTime& at,
                       BackupReason reason) {
    QDir dir(folder);
    if (!dir.mkpath(QStringLiteral(".")))
        throw backupFailure(QStringLiteral("バックアップのフォルダーを作れません: ") + folder);
    const QString stem =
        at.toString(QStringLiteral("'Mirvane-'yyyyMMdd-HHmmss")) + reasonTag(reason);
    const QString target =
        freshPath(dir, stem, place.isServer() ? QStringLiteral(".dump") : QStringLiteral(".mdb"));
    writeChecked(place, target);
    return target;
}

QList<QDate> DailyGenerationsToKeep(QList<QDate> days) {
    std::sort(days.begin(), days.end(), std::greater<>());
    days.erase(std::unique(days.begin(), days.end()), days.end());
    constexpr int Daily = 7, Weekly = 4;
    QList<QDate> kept = days.mid(0, Daily);
    const auto mondayOf = [](QDate day) {
        return day.addDays(1 - day.dayOfWeek());
    };
    QList<QDate> weeksHeld;
    for (const QDate& day : kept)
        weeksHeld << mondayOf(day);
    int weeks = 0;
    for (const QDate& day : days.mid(Daily)) {
        if (weeks == Weekly)
            break;
        if (weeksHeld.contains(mondayOf(day)))
            continue;
        weeksHeld << mondayOf(day);
        kept << day;
        ++weeks;
    }
    return kept;
}

QString MakeDailyBackup(const QString& programFolder, const QDateTime& now) {
    const QDir folder(BackupFolderIn(programFolder));
    const auto dailies = [&] {
        std::map<QString, QDate> files; // by name: oldest first
        for (const QString& name : folder.entryList(QDir::Files)) {
            const QRegularExpressionMatch match = dailyName().match(name);
            if (match.hasMatch())
                files[name] = QDate::fromString(match.captured(1), QStringLiteral("yyyyMMdd"));
        }
        return files;
    };
    // What an interrupted backup left (killed, the power gone) is not a backup; one that may
    // still be written by another backup right now is left alone.
    for (const QFileInfo& partial :
         folder.entryInfoList({QStringLiteral("*") + PartialBackupSuffix}, QDir::Files))
        if (partial.lastModified().secsTo(now) > 3600)
            QFile::remove(partial.filePath());
    for (const auto& [name, day] : dailies())
        if (day == now.date())
            return {};
    const QString made =
        BackupDatabase(DatabasePlaceIn(programFolder), folder.path(), now, BackupReason::Daily);
    const std::map<QString, QDate> files = dailies();
    QList<QDate> days;
    for (const auto& [name, day] : files)
        days << day;
    QList<QDate> kept = DailyGenerationsToKeep(days);
    // Newest first: the first file of a kept day stays, the others of that day go.
    for (auto file = files.rbegin(); file != files.rend(); ++file) {
        if (kept.removeOne(file->second))
            continue;
        QFile::remove(folder.filePath(file->first));
    }
    return made;
}

QString RestoreDatabase(const QString& backupFile, const QString& programFolder,
                        const QDateTime& now) {
    const QByteArray head = headOf(backupFile);
    const bool fileBackup = head.startsWith(QByteArrayLiteral("SQLite format 3"));
    const bool serverBackup = head.startsWith(QByteArrayLiteral("PGDMP"));
    if (!fileBackup && !serverBackup)
        throw backupFailure(QStringLiteral("バックアップのファイルではありません: ") + backupFile);
    const DatabasePlace place = DatabasePlaceIn(programFolder);
    if (serverBackup != place.isServer())
        throw backupFailure(
            place.isServer()
                ? QStringLiteral("このフォルダーはサーバーを使っています。データベースファイル"
                                 "は copy --replace でサーバーに写してください。")
                : QStringLiteral("サーバーのバックアップ (pg_dump) はデータベースファイルには"
                                 "戻せません。"));
    if (place.isServer()) {
        checkServerDump(backupFile);
        refuseWhileTerminalsAreConnected(place.server);
        const QString saved =
            BackupDatabase(place, BackupFolderIn(programFolder), now, BackupReason::BeforeRestore);
        runPgProgram(QStringLiteral("pg_restore"),
                     {QStringLiteral("--clean"), QStringLiteral("--if-exists"),
                      QStringLiteral("--no-owner"), QStringLiteral("--no-privileges"),
                      QStringLiteral("--single-transaction"), QStringLiteral("--exit-on-error"),
                      backupFile},
                     place.server);
        return saved;
    }
    checkDatabaseFile(backupFile);
    QString saved;
    if (QFileInfo::exists(place.file))
        saved = saveReplacedFile(place.file, programFolder, now);
    else
        QDir(programFolder).mkpath(QStringLiteral("DB"));
    replaceFile(backupFile, place.file);
    return saved;
}
