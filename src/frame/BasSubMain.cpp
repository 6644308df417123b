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

int Main() {
    SingleInstance instance;
    if (instance.anotherIsRunning()) {
        CmnDspMsg(SysErr_002);
        return 1;
    }
    try {
        gDbPath = AppPath(QStringLiteral("DB/Mirvane.mdb"));
        gCon.open(gDbPath);
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
