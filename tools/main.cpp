// mirvane-admin: the administrator's tool for the shop's database.
#include "data/Backup.h"
#include "data/DatabaseCopy.h"
#include "data/Schema.h"
#include "data/ShopDatabase.h"
#include "data/ShopExport.h"
#include "data/ZipImport.h"
#include "platform/AppFolder.h"
#include "platform/Failure.h"
#include "platform/db/Connection.h"
#include "platform/ui/Clock.h"
#include "platform/ui/SingleInstance.h"

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
             "  mirvane-admin init [FOLDER]\n"
             "      FOLDER/DB/Mirvane.mdb を作成し、全国の郵便番号を取り込みます\n"
             "  mirvane-admin init --server 接続文字列 [FOLDER]\n"
             "      サーバーにテーブルを作成し、FOLDER/DB/Mirvane.server を書きます\n"
             "  mirvane-admin import-zip [--allow-smaller] FILE [FOLDER]\n"
             "      郵便番号データ (KEN_ALL.CSV / utf_ken_all.csv) で ZipList を置き換えます\n"
             "      (今の件数の 9 割に満たないデータは --allow-smaller がなければ断ります)\n"
             "  mirvane-admin copy [--replace] FROM TO\n"
             "      データベースを写します (ファイルのパスまたはサーバーの接続文字列)。\n"
             "      顧客か売上のある写し先は --replace がなければ断り、あれば先に\n"
             "      バックアップします\n"
             "  mirvane-admin backup [FOLDER]\n"
             "      データベースのバックアップを FOLDER/Backup/ に作ります (起動中でも可)\n"
             "  mirvane-admin restore FILE [FOLDER]\n"
             "      バックアップを戻します。今のデータベースは先に FOLDER/Backup/ に保存します\n"
             "      (Mirvane の起動中は断ります)\n"
             "  mirvane-admin export-csv FOLDER OUTDIR\n"
             "      顧客と売上の全項目を OUTDIR/customers.csv と OUTDIR/purchases.csv に\n"
             "      書き出します (UTF-8、マスターのコードには名称を添えます)。受注・状態・入金・\n"
             "      店舗情報・税率・領収書は orders.csv, order-statuses.csv, payments.csv,\n"
             "      shop.csv, tax-rates.csv, receipts.csv, receipt-lines.csv,\n"
             "      receipt-taxes.csv に書き出します\n"
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

int importZip(Connection& connection, const QString& file, ZipSize size) {
    QElapsedTimer timer;
    timer.start();
    const int rows = ImportZipFile(connection, file, size,
                                   [](int done, int total) { showProgress(done, total); });
    out() << "\n郵便番号 " << rows << " 件を取り込みました (" << timer.elapsed() / 1000.0
          << " 秒)\n";
    return rows;
}

// The national directory that comes with the program: in the installation folder, or in the
// shared data of an installation whose programs sit in a folder of their own (bin/, lib/mirvane/).
QStringList bundledDirectoryCandidates() {
    const QDir programs(InstallFolder());
    QStringList candidates;
    for (const char* relative :
         {"postal", "../share/mirvane/postal", "../postal", "../../share/mirvane/postal"})
        candidates << QDir::cleanPath(programs.filePath(QString::fromLatin1(relative) +
                                                        QStringLiteral("/utf_ken_all.csv.qz")));
    return candidates;
}

// The first candidate that is there; says where it looked when none is.
QString bundledDirectory() {
    const QStringList candidates = bundledDirectoryCandidates();
    for (const QString& candidate : candidates)
        if (QFileInfo::exists(candidate))
            return candidate;
    err() << "全国の郵便番号データが見つかりません。次の場所を探しました:\n  "
          << candidates.join(QStringLiteral("\n  ")) << "\n";
    return {};
}

int init(const QString& folder) {
    const QString databaseFile = databaseIn(folder);
    if (QFileInfo::exists(databaseFile)) {
        err() << "データベースは既にあります。上書きしません: " << databaseFile << "\n";
        return 1;
    }
    const QString directory = bundledDirectory();
    if (directory.isEmpty())
        return 1;
    try {
        CreateDatabase(databaseFile);
        QDir(folder).mkpath(QStringLiteral("Log"));
        out() << "データベースを作成しました: " << databaseFile << "\n";
        Connection connection;
        connection.open(databaseFile);
        importZip(connection, directory, ZipSize::AnySize);
    } catch (const Failure& failure) {
        err() << "\nデータベースを作成できませんでした: " << failure.description() << "\n";
        return 1;
    }
    return 0;
}

int initServer(const QString& connectionString, const QString& folder) {
    const QString serverFile = QDir(folder).absoluteFilePath(ServerConnectionFile);
    const QString directory = bundledDirectory();
    if (directory.isEmpty())
        return 1;
    try {
        Connection connection;
        connection.openServer(connectionString);
        if (HasShopSchema(connection)) {
            err() << "サーバーには既にテーブルがあります。上書きしません。\n";
            return 1;
        }
        CreateSchema(connection);
        out() << "サーバーにテーブルを作成しました。\n";
        importZip(connection, directory, ZipSize::AnySize);
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

bool samePlace(const QString& from, const QString& to) {
    if (isServer(from) || isServer(to))
        return from.simplified() == to.simplified();
    return QFileInfo(from).absoluteFilePath() == QFileInfo(to).absoluteFilePath();
}

int copy(const QString& from, const QString& to, bool replace) {
    if (samePlace(from, to)) {
        err() << "写し元と写し先が同じです。\n";
        return 1;
    }
    try {
        Connection source;
        openForCopy(source, from, false);
        Connection target;
        openForCopy(target, to, true);
        if (HoldsShopData(target)) {
            if (!replace) {
                err() << "写し先には顧客か売上があります。写し先は元のままです。置き換えるときは "
                         "--replace を付けてください: "
                      << DatabasePlaceOf(to).shown() << "\n";
                return 1;
            }
            const QString saved = BackupDatabase(DatabasePlaceOf(to), BackupFolderIn(AppFolder()),
                                                 Now(), BackupReason::BeforeCopy);
            out() << "写し先を保存しました: " << saved << "\n";
        }
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

int importZipCommand(const QString& file, const QString& folder, ZipSize size) {
    try {
        Connection connection;
        OpenDatabaseIn(connection, folder);
        importZip(connection, file, size);
    } catch (const Failure& failure) {
        err() << "\n取り込めませんでした。郵便番号データは元のままです: " << failure.description()
              << "\n";
        return 1;
    }
    return 0;
}

int backup(const QString& folder) {
    try {
        const DatabasePlace place = DatabasePlaceIn(folder);
        if (!place.isServer() && !QFileInfo::exists(place.file)) {
            err() << "データベースがありません: " << place.file << "\n";
            return 1;
        }
        const QString made =
            BackupDatabase(place, BackupFolderIn(folder), Now(), BackupReason::Asked);
        out() << "バックアップを作成しました: " << made << "\n";
    } catch (const Failure& failure) {
        err() << "バックアップを作成できませんでした: " << failure.description() << "\n";
        return 1;
    }
    return 0;
}

int restore(const QString& file, const QString& folder) {
    // Held until the end: the program cannot start in the folder while its database is put back.
    SetAppFolder(folder);
    SingleInstance program;
    if (program.anotherIsRunning()) {
        err() << "Mirvane がこのフォルダーで起動中です。終了してから戻してください: " << folder
              << "\n";
        return 1;
    }
    try {
        const QString saved = RestoreDatabase(file, folder, Now());
        if (!saved.isEmpty())
            out() << "今までのデータベースを保存しました: " << saved << "\n";
        out() << "バックアップを戻しました: " << file << "\n";
    } catch (const Failure& failure) {
        err() << "戻せませんでした。データベースは元のままです: " << failure.description() << "\n";
        return 1;
    }
    return 0;
}

int exportCsv(const QString& folder, const QString& outDir) {
    try {
        Connection connection;
        OpenDatabaseIn(connection, folder);
        const ExportedRows exported = ExportShopCsv(connection, outDir);
        out() << "顧客 " << exported.customers << " 件、売上 " << exported.purchases << " 件、受注 "
              << exported.orders << " 件、入金 " << exported.payments
              << " 件を書き出しました: " << QDir(outDir).absolutePath() << "\n";
    } catch (const Failure& failure) {
        err() << "書き出せませんでした: " << failure.description() << "\n";
        return 1;
    }
    return 0;
}

// Takes a flag out of the arguments; tells whether it was there.
bool takeFlag(QStringList& args, const QString& flag) {
    return args.removeAll(flag) > 0;
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    QStringList args = QCoreApplication::arguments().mid(1);
    const QString programFolder = AppFolder();
    const QString command = args.value(0);
    const auto folderAt = [&](int index) {
        return args.size() > index ? args[index] : programFolder;
    };
    if (command == QLatin1String("init") && args.value(1) == QLatin1String("--server") &&
        (args.size() == 3 || args.size() == 4))
        return initServer(args[2], folderAt(3));
    if (command == QLatin1String("init") && args.size() <= 2)
        return init(folderAt(1));
    if (command == QLatin1String("copy")) {
        const bool replace = takeFlag(args, QStringLiteral("--replace"));
        if (args.size() == 3)
            return copy(args[1], args[2], replace);
    }
    if (command == QLatin1String("import-zip")) {
        const ZipSize size = takeFlag(args, QStringLiteral("--allow-smaller"))
                                 ? ZipSize::AnySize
                                 : ZipSize::AtLeastNinetyPercent;
        if (args.size() == 2 || args.size() == 3)
            return importZipCommand(args[1], folderAt(2), size);
    }
    if (command == QLatin1String("backup") && args.size() <= 2)
        return backup(folderAt(1));
    if (command == QLatin1String("export-csv") && args.size() == 3)
        return exportCsv(args[1], args[2]);
    if (command == QLatin1String("restore") && (args.size() == 2 || args.size() == 3))
        return restore(args[1], folderAt(2));
    return usage();
}
