#include "shell/BasSubMain.h"

#include "data/Backup.h"
#include "data/ShopDatabase.h"
#include "frame/Log.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "platform/AppFolder.h"
#include "platform/Failure.h"
#include "platform/ui/Clock.h"
#include "platform/ui/MsgBox.h"
#include "platform/ui/ShowModal.h"
#include "platform/ui/SingleInstance.h"
#include "shell/FrmPsw.h"

namespace {

void reportStartFailure(const Failure& failure) {
    if (failure.number() == ErrorNumber::ReadOnlyDatabase) {
        MsgBox(
            QStringLiteral("DBに接続できませんでした。\rデータベースファイルが読み取り専用です: ") +
                failure.description() + QStringLiteral("\rシステム管理者に連絡してください。"),
            MsgIcon::None, MsgButtons::OK, AppTitle);
        return;
    }
    if (failure.number() == ErrorNumber::DatabaseFailed) {
        MsgBox(QStringLiteral("DBに接続できませんでした。\rシステム管理者に連絡してください。"),
               MsgIcon::None, MsgButtons::OK, AppTitle);
        return;
    }
    ShowFailureBox(failure.number(), failure.description(), VbErrorTitleWide);
}

// The day's backup once the work is done; a failed one is written to the log and told, and
// does not keep the program from ending.
void backUpTheDay() {
    try {
        MakeDailyBackup(AppFolder(), Now());
    } catch (const Failure& failure) {
        CmnWriteLog(QStringLiteral("BasSubMain"), QStringLiteral("Main"), failure.description(),
                    QString::number(failure.number()));
        MsgBox(DailyBackupFailedText + QStringLiteral("\r\r") + failure.description(),
               MsgIcon::Exclamation, MsgButtons::OK, AppTitle);
    }
}

} // namespace

int Main() {
    SingleInstance instance;
    if (instance.anotherIsRunning()) {
        CmnDspMsg(SysErr_002);
        return 1;
    }
    try {
        OpenDatabase();
        FrmPsw signOn;
        // Signed on and closed the menu: the day's work ended normally.
        if (ShowModal(signOn) == QDialog::Accepted)
            backUpTheDay();
    } catch (const Failure& failure) {
        reportStartFailure(failure);
        return 1;
    } catch (const std::exception& error) {
        reportStartFailure(Failure(ErrorNumber::Unexpected, QString::fromLocal8Bit(error.what())));
        return 1;
    }
    return 0;
}
