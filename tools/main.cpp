// mirvane-admin: the administrator's tool for the shop's database.
#include "data/Schema.h"
#include "data/ZipImport.h"
#include "platform/Failure.h"
#include "platform/db/Connection.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
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
void showProgress(int done, int total) {
    constexpr int Width = 40;
    static int shown = -1;
    const int filled = total > 0 ? int(qint64(done) * Width / total) : Width;
    if (filled == shown && done != total)
        return;
    shown = filled;
    out() << "\r[" << QString(filled, QLatin1Char('#')) << QString(Width - filled, QLatin1Char(' '))
          << "] " << done << " / " << total << Qt::flush;
}

int importZip(Connection& connection, const QString& file) {
    QElapsedTimer timer;
    timer.start();
    const int rows = ImportZipFile(connection, file, showProgress);
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

int importZipCommand(const QString& file, const QString& folder) {
    try {
        Connection connection;
        connection.open(databaseIn(folder));
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
    if (args.value(0) == QLatin1String("init") && args.size() <= 2)
        return init(args.size() == 2 ? args[1] : programFolder);
    if (args.value(0) == QLatin1String("import-zip") && (args.size() == 2 || args.size() == 3))
        return importZipCommand(args[1], args.size() == 3 ? args[2] : programFolder);
    return usage();
}
