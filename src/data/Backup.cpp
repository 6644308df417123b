#include "data/Backup.h"

#include "data/DatabaseCopy.h"
#include "data/ShopDatabase.h"
#include "platform/Failure.h"
#include "platform/db/Connection.h"
#include "platform/db/SqlText.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <algorithm>
#include <filesystem>
#include <map>

namespace {

const QRegularExpression& passwordSetting() {
    static const QRegularExpression setting(
        QStringLiteral("\\bpassword\\s*=\\s*('(?:[^'\\\\]|\\\\.)*'|\\S+)"));
    return setting;
}

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

// Runs one of PostgreSQL's programs on the server; the password travels in the environment,
// not on the command line where every user of the machine could read it.
void runPgProgram(const QString& name, QStringList arguments, const QString& connection) {
    const QString program = QStandardPaths::findExecutable(name);
    if (program.isEmpty())
        throw backupFailure(name + QStringLiteral(" が見つかりません。サーバーのバックアップには "
                                                  "PostgreSQL のクライアント (postgresql-client) "
                                                  "を入れてください。"));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QString withoutPassword = connection;
    const QRegularExpressionMatch password = passwordSetting().match(connection);
    if (password.hasMatch()) {
        QString value = password.captured(1);
        if (value.startsWith(QLatin1Char('\''))) {
            value = value.mid(1, value.size() - 2);
            value.replace(QRegularExpression(QStringLiteral("\\\\(.)")), QStringLiteral("\\1"));
        }
        environment.insert(QStringLiteral("PGPASSWORD"), value);
        withoutPassword.remove(password.capturedStart(), password.capturedLength());
    }
    arguments << QStringLiteral("--dbname=") + withoutPassword.simplified();
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
        throw backupFailure(name + QStringLiteral(" が失敗しました: ") +
                            QString::fromLocal8Bit(process.readAllStandardError()).trimmed());
}

void dumpServer(const QString& connection, const QString& target) {
    try {
        runPgProgram(QStringLiteral("pg_dump"),
                     {QStringLiteral("--format=custom"), QStringLiteral("--file=") + target},
                     connection);
    } catch (const Failure&) {
        QFile::remove(target);
        throw;
    }
}

void copyFile(const QString& databaseFile, const QString& target) {
    try {
        Connection source;
        source.open(databaseFile);
        source.execute(QStringLiteral("vacuum into ") + SqlQuote(target));
    } catch (const Failure& failure) {
        QFile::remove(target);
        throw backupFailure(QStringLiteral("バックアップを作成できません: ") +
                            failure.description());
    }
}

QByteArray headOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw backupFailure(QStringLiteral("ファイルを開けません: ") + path);
    return file.read(16);
}

// A backup file of a database file must be a whole database with the shop's tables.
void checkDatabaseFile(const QString& path) {
    Connection backup;
    backup.open(path);
    if (!HasShopSchema(backup) ||
        backup.execute(QStringLiteral("pragma integrity_check")).field(0).toString() !=
            QLatin1String("ok"))
        throw backupFailure(QStringLiteral("店のデータベースのバックアップではありません: ") +
                            path);
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
        if (!QFile::copy(databaseFile, target))
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
    QString text = server;
    return text.remove(passwordSetting()).simplified();
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
    if (place.isServer())
        dumpServer(place.server, target);
    else
        copyFile(place.file, target);
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
