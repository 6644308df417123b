// mirvane-admin: the administrator's tool for the shop's database.
#include "data/DatabaseCopy.h"
#include "data/Schema.h"
#include "data/ShopDatabase.h"
#include "data/ZipImport.h"
#include "platform/Failure.h"
#include "platform/db/Connection.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

namespace {

QTextStream& out() {
    static QTextStream stream(stdout);
    return stream;
}

QTextStream& err() {
    static QTextStream stream(stderr);
    return stream;
}

int usage() {
    err() << "使い方:\n"
             "  mirvane-admin init [FOLDER]            FOLDER/DB/Mirvane.mdb "
             "を作成し、全国の郵便番号を取り込みます\n"
             "  mirvane-admin import-zip FILE [FOLDER] 郵便番号データ (KEN_ALL.CSV / "
             "utf_ken_all.csv) で\n"
             "                                         ZipList を置き換えます\n"
             "  (FOLDER を省略するとプログラムのフォルダー)\n";
    return 2;
}

QString databaseIn(const QString& folder) {
    return QDir(folder).absoluteFilePath(QStringLiteral("DB/Mirvane.mdb"));
}

// A bar on one line that fills as the rows go in.
void showProgress(qint64 done, qint64 total, const QString& label = {}) {
    constexpr int Width = 40;
    static int shown = -1;
    const int filled = total > 0 ? int(done * Width / total) : Width;
    if (filled == shown && done != total)
        return;
    shown = filled;
    out() << "\r" << label << "[" << QString(filled, QLatin1Char('#'))
          << QString(Width - filled, QLatin1Char(' ')) << "] " << done << " / " << total
          << Qt::flush;
}

bool isServer(const QString& place) {
    return place.contains(QLatin1Char('='));
}

// A database given as a file path or as a server's connection string. A new file, or a server
// without the shop's tables, gets them.
void openForCopy(Connection& connection, const QString& place, bool create) {
    if (isServer(place)) {
        connection.openServer(place);
        if (create && !HasShopSchema(connection))
            CreateSchema(connection);
        return;
    }
    if (create && !QFileInfo::exists(place))
        CreateDatabase(place);
    connection.open(place);
}

int importZip(Connection& connection, const QString& file) {
    QElapsedTimer timer;
    timer.start();
    const int rows =
        ImportZipFile(connection, file, [](int done, int total) { showProgress(done, total); });
    out() << "\n郵便番号 " << rows << " 件を取り込みました (" << timer.elapsed() / 1000.0
          << " 秒)\n";
    return rows;
}

// The national directory that comes with the program.
QString bundledDirectory() {
    return QCoreApplication::applicationDirPath() + QStringLiteral("/postal/utf_ken_all.csv.qz");
}

int init(const QString& folder) {
    const QString databaseFile = databaseIn(folder);
    if (QFileInfo::exists(databaseFile)) {
        err() << "データベースは既にあります。上書きしません: " << databaseFile << "\n";
        return 1;
    }
    try {
        CreateDatabase(databaseFile);
        QDir(folder).mkpath(QStringLiteral("Log"));
        out() << "データベースを作成しました: " << databaseFile << "\n";
        if (QFileInfo::exists(bundledDirectory())) {
            Connection connection;
            connection.open(databaseFile);
            importZip(connection, bundledDirectory());
        }
    } catch (const Failure& failure) {
        err() << "\nデータベースを作成できませんでした: " << failure.description() << "\n";
        return 1;
    }
    return 0;
}

int initServer(const QString& connectionString, const QString& folder) {
    const QString serverFile = QDir(folder).absoluteFilePath(ServerConnectionFile);
    try {
        Connection connection;
        connection.openServer(connectionString);
        if (HasShopSchema(connection)) {
            err() << "サーバーには既にテーブルがあります。上書きしません。\n";
            return 1;
        }
        CreateSchema(connection);
        out() << "サーバーにテーブルを作成しました。\n";
        if (QFileInfo::exists(bundledDirectory()))
            importZip(connection, bundledDirectory());
    } catch (const Failure& failure) {
        err() << "\nサーバーに作成できませんでした: " << failure.description() << "\n";
        return 1;
    }
    if (QFileInfo::exists(serverFile)) {
        out() << "接続ファイルは既にあります。そのままにします: " << serverFile << "\n";
        return 0;
    }
    QDir(folder).mkpath(QStringLiteral("DB"));
    QFile file(serverFile);
    // The password is in it: only its owner reads it.
    if (!file.open(QIODevice::WriteOnly) ||
        !file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner) ||
        file.write(connectionString.toUtf8() + '\n') < 0) {
        err() << "接続ファイルを書けません: " << serverFile << "\n";
        return 1;
    }
    out() << "接続ファイルを書きました: " << serverFile << "\n";
    return 0;
}

int copy(const QString& from, const QString& to) {
    try {
        Connection source;
        openForCopy(source, from, false);
        Connection target;
        openForCopy(target, to, true);
        const QList<CopiedTable> copied =
            CopyDatabase(source, target, [](const QString& table, qint64 done, qint64 total) {
                showProgress(done, total, table.leftJustified(11));
            });
        out() << "\n";
        for (const CopiedTable& table : copied)
            out() << table.table.leftJustified(11) << table.rows << " 件\n";
        out() << "件数は元と一致しました。\n";
    } catch (const Failure& failure) {
        err() << "\n写せませんでした。写し先は元のままです: " << failure.description() << "\n";
        return 1;
    }
    return 0;
}

int importZipCommand(const QString& file, const QString& folder) {
    try {
        Connection connection;
        OpenDatabaseIn(connection, folder);
        importZip(connection, file);
    } catch (const Failure& failure) {
        err() << "\n取り込めませんでした。郵便番号データは元のままです: " << failure.description()
              << "\n";
        return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments().mid(1);
    const QString programFolder = QCoreApplication::applicationDirPath();
    if (args.value(0) == QLatin1String("init") && args.value(1) == QLatin1String("--server") &&
        (args.size() == 3 || args.size() == 4))
        return initServer(args[2], args.size() == 4 ? args[3] : programFolder);
    if (args.value(0) == QLatin1String("init") && args.size() <= 2)
        return init(args.size() == 2 ? args[1] : programFolder);
    if (args.value(0) == QLatin1String("copy") && args.size() == 3)
        return copy(args[1], args[2]);
    if (args.value(0) == QLatin1String("import-zip") && (args.size() == 2 || args.size() == 3))
        return importZipCommand(args[1], args.size() == 3 ? args[2] : programFolder);
    return usage();
}
