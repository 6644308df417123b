#pragma once

#include <QString>
#include <functional>

// A screen's table written out as CSV, as every screen does it: the staff choose the file,
// offered in Export/ of the program folder under `suggestedName` (".csv" added when the name
// has no extension); `write` writes it whole or not at all and says whether it wrote (false:
// the staff stopped it, nothing is said). Only a file written is announced; a file that cannot
// be written is told in a box titled `title`, with its reason.
void ExportCsv(const QString& screen, const QString& title, const QString& suggestedName,
               const std::function<bool(const QString& path)>& write);
