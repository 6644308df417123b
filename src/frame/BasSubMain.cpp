#include "frame/BasSubMain.h"

#include "frame/FrmPsw.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "platform/Failure.h"
#include "platform/ui/AppFolder.h"
#include "platform/ui/MsgBox.h"
#include "platform/ui/ShowModal.h"
#include "platform/ui/SingleInstance.h"

#include <QFile>

namespace {

void reportStartFailure(const Failure& failure) {
    if (failure.number() == ErrorNumber::DatabaseFailed) {
        MsgBox(QStringLiteral("DBに接続できませんでした。\rシステム管理者に連絡してください。"),
               MsgIcon::None, MsgButtons::OK, AppTitle);
        return;
    }
    ShowFailureBox(failure.number(), failure.description(), VbErrorTitleWide);
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
    gDbPath = OpenDatabaseIn(gCon, AppFolder());
}

int Main() {
    SingleInstance instance;
    if (instance.anotherIsRunning()) {
        CmnDspMsg(SysErr_002);
        return 1;
    }
    try {
        OpenDatabase();
        FrmPsw signOn;
        ShowModal(signOn);
    } catch (const Failure& failure) {
        reportStartFailure(failure);
        return 1;
    } catch (const std::exception& error) {
        reportStartFailure(Failure(ErrorNumber::Unexpected, QString::fromLocal8Bit(error.what())));
        return 1;
    }
    return 0;
}
