// mirvane-admin: the administrator's tool for the shop's database.
#include "data/Schema.h"
#include "platform/Failure.h"

#include <QCoreApplication>
#include <QDir>
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
             "  mirvane-admin init [FOLDER]   FOLDER/DB/Mirvane.mdb を作成します\n"
             "                                (FOLDER を省略するとプログラムのフォルダー)\n";
    return 2;
}

int init(const QString& folder) {
    const QString databaseFile = QDir(folder).absoluteFilePath(QStringLiteral("DB/Mirvane.mdb"));
    if (QFileInfo::exists(databaseFile)) {
        err() << "データベースは既にあります。上書きしません: " << databaseFile << "\n";
        return 1;
    }
    try {
        CreateDatabase(databaseFile);
    } catch (const Failure& failure) {
        err() << "データベースを作成できませんでした: " << failure.description() << "\n";
        return 1;
    }
    QDir(folder).mkpath(QStringLiteral("Log"));
    out() << "データベースを作成しました: " << databaseFile << "\n";
    return 0;
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments().mid(1);
    if (args.isEmpty())
        return usage();
    if (args[0] == QLatin1String("init") && args.size() <= 2)
        return init(args.size() == 2 ? args[1] : QCoreApplication::applicationDirPath());
    return usage();
}
