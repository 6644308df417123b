#pragma once

#include <QString>

// Start-up: refuses a second copy, opens the database and shows the sign-on screen.
// Returns the process's exit code when the sign-on screen has gone.
int Main();

// The box after a day's backup that could not be made, before the reason.
inline const QString DailyBackupFailedText =
    QStringLiteral("本日のバックアップを作成できませんでした。ディスクの空きを確かめてから、"
                   "もう一度起動して終了するか、mirvane-admin backup で作成してください。");
