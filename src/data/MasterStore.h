#pragma once

#include "domain/Master.h"

#include <QString>
#include <vector>

// The statements on the three master tables.
namespace MasterStore {

QString Table(MasterKind kind);

// Every entry of a master, in code order.
std::vector<MasterEntry> Entries(MasterKind kind);

QString InsertSql(MasterKind kind, const MasterEntry& entry);
QString RenameSql(MasterKind kind, const MasterEntry& entry);
QString DeleteSql(MasterKind kind, const QString& code);

// An entry as the staff know it: "メーカー 005「ニコン」".
QString RecordName(MasterKind kind, const MasterEntry& entry);

// Each in a transaction of its own. A code that is already there fails as a broken key. A
// rename or a deletion checks first, with the entry's row locked, that it still holds the name
// the screen showed: RowDeleted when it is gone, RowChanged when another terminal renamed it.
void Insert(MasterKind kind, const MasterEntry& entry);
void Rename(MasterKind kind, const MasterEntry& shown, const QString& name);
void Remove(MasterKind kind, const MasterEntry& shown);

} // namespace MasterStore
