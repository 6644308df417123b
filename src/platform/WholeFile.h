#pragma once

#include <QString>

class QSaveFile;

// A file written through a QSaveFile appears under its name only when it was written whole:
// the buffered bytes are flushed and checked (a full disk shows there, not in the writes), the
// file takes its name, and its size on disk is the size written. Throws a Failure
// (ErrorNumber::FileAccess) naming the file otherwise, and leaves no part of it.
void CommitWholeFile(QSaveFile& file);
// The first half of it: the buffered bytes flushed and checked, the file not yet under its name
// (for files that stand together or not at all).
void FlushWholeFile(QSaveFile& file);

// Files that hold the shop's customers (backups, exports, printed lists) are for their owner
// only: read and write by the owner, nothing for anyone else.
bool KeepForOwnerOnly(const QString& path);
