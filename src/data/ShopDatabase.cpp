#include "data/ShopDatabase.h"

#include "data/Schema.h"
#include "frame/Globals.h"
#include "platform/AppFolder.h"
#include "platform/Failure.h"
#include "platform/db/Connection.h"

#include <QFile>
#include <QFileInfo>

namespace {

// A file marked read-only (for this user, or for everyone) takes no save.
void requireWritable(const QString& file) {
    const QFileInfo info(file);
    const auto anyWrite = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    if (info.exists() && (!info.isWritable() || !(info.permissions() & anyWrite)))
        throw Failure(ErrorNumber::ReadOnlyDatabase, file);
}

// The shop's tables and view, each read once: an empty or foreign database fails here rather
// than on every screen.
void requireShopTables(Connection& connection) {
    for (const char* table :
         {"San_User", "San_Uriage", "San_Item", "San_Youto", "San_Meka", "ZipList", "V_San_User"}) {
        try {
            connection.execute(
                QStringLiteral("select * from %1 where 1 = 0").arg(QString::fromLatin1(table)));
        } catch (const Failure& failure) {
            connection.close();
            throw Failure(ErrorNumber::DatabaseFailed,
                          QStringLiteral("店のデータベースではありません: ") +
                              failure.description());
        }
    }
}

} // namespace

QString OpenDatabaseIn(Connection& connection, const QString& folder) {
    QFile server(folder + QLatin1Char('/') + ServerConnectionFile);
    if (!server.exists()) {
        const QString file = folder + QLatin1Char('/') + DatabaseFile;
        connection.open(file);
        return file;
    }
    if (!server.open(QIODevice::ReadOnly))
        throw Failure(ErrorNumber::DatabaseFailed,
                      QStringLiteral("接続ファイルを読めません: ") + server.fileName());
    connection.openServer(QString::fromUtf8(server.readLine()).trimmed());
    return server.fileName();
}

void OpenDatabase() {
    if (!QFile::exists(AppPath(ServerConnectionFile)))
        requireWritable(AppPath(DatabaseFile));
    gDbPath = OpenDatabaseIn(gCon, AppFolder());
    requireShopTables(gCon);
    UpgradeSchema(gCon);
}
