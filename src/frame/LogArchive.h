#pragma once

#include <QDate>
#include <QString>

// The day files of the log hold one month each. A day file last written in an earlier month
// than today's is moved aside, compressed, to Log/old/ as "yyyy-MM-ddday.log.gz" (the month of
// its last line) before the new month's first line is written; Log/old/ keeps the twelve
// months before today's. Gives false when the file is there still and could not be moved
// (its lines are then kept and the new ones appended).
bool MoveAsideOlderMonth(const QString& dayFile, const QDate& today);
