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

// Each in a transaction of its own. A code that is already there fails as a broken key.
void Insert(MasterKind kind, const MasterEntry& entry);
void Rename(MasterKind kind, const MasterEntry& entry);
void Remove(MasterKind kind, const QString& code);

} // namespace MasterStore
