#pragma once

#include <QString>

// Two folders. The installation folder holds what comes with the program (the form templates
// jfm/ and the national postal directory postal/); it may be read-only. The program folder
// holds the shop's data: DB/, Log/, Backup/ and Print/.
// Both are the folder of the program file unless the environment variable
// MIRVANE_PROGRAM_FOLDER (set by an installed program's launcher) names the program folder.
QString AppFolder();
// A path below the program folder, e.g. AppPath(u"DB/Mirvane.mdb").
QString AppPath(const QString& relative);

// The installation folder, and a path below it, e.g. InstallPath(u"jfm/PrnSan001.jfm").
QString InstallFolder();
QString InstallPath(const QString& relative);

// Tests point the program at temporary folders; an empty text restores the default.
void SetAppFolder(const QString& folder);
void SetInstallFolder(const QString& folder);
