#include "data/ShopDatabase.h"

#include "data/Schema.h"
#include "frame/Globals.h"
#include "platform/Failure.h"
#include "platform/db/Connection.h"
#include "platform/ui/AppFolder.h"

#include <QFile>

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
    gDbPath = OpenDatabaseIn(gCon, AppFolder());
    UpgradeSchema(gCon);
}
