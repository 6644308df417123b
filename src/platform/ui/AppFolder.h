#pragma once

#include <QString>

// The program folder: it holds DB/, Log/ and jfm/. By default the folder of the program file.
QString AppFolder();
// A path below the program folder, e.g. AppPath(u"DB/Mirvane.mdb").
QString AppPath(const QString& relative);

// Tests point the program at a temporary folder; an empty text restores the default.
void SetAppFolder(const QString& folder);
