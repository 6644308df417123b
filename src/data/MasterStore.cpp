#include "data/MasterStore.h"

#include "data/GuardedWrite.h"
#include "frame/Globals.h"
#include "platform/db/SqlText.h"
#include "platform/db/Transaction.h"

namespace {

QString prefix(MasterKind kind) {
    switch (kind) {
    case MasterKind::Item:
        return QStringLiteral("Item");
    case MasterKind::Youto:
        return QStringLiteral("Youto");
    case MasterKind::Meka:
        break;
    }
    return QStringLiteral("Meka");
}

QString numberColumn(MasterKind kind) {
    return prefix(kind) + QStringLiteral("_No");
}

QString nameColumn(MasterKind kind) {
    return prefix(kind) + QStringLiteral("_Name");
}

void runAlone(const QString& statement) {
    Transaction transaction(gCon);
    gCon.execute(statement);
    transaction.commit();
}

// Runs the statement on the entry in a transaction of its own, when the entry still holds the
// name shown.
void runOnShown(MasterKind kind, const MasterEntry& shown, const QString& statement) {
    Transaction transaction(gCon);
    const QString record = MasterStore::RecordName(kind, shown);
    RecordSet stored =
        gCon.execute(QStringLiteral("select ") + nameColumn(kind) + QStringLiteral(" from ") +
                     MasterStore::Table(kind) + QStringLiteral(" where ") + numberColumn(kind) +
                     QStringLiteral(" = ") + SqlStr(shown.code) + gCon.lockRows());
    if (stored.eof())
        throw RowDeletedMeanwhile(record);
    if (stored.field(0).toString() != shown.name)
        throw RowChangedMeanwhile(record, {QStringLiteral("名称")});
    ExecuteOnCheckedRow(statement, record);
    transaction.commit();
}

} // namespace

namespace MasterStore {

QString Table(MasterKind kind) {
    return QStringLiteral("San_") + prefix(kind);
}

std::vector<MasterEntry> Entries(MasterKind kind) {
    RecordSet rows = gCon.execute(QStringLiteral("select * from ") + Table(kind) +
                                  QStringLiteral(" Order By ") + numberColumn(kind));
    std::vector<MasterEntry> entries;
    for (; !rows.eof(); rows.moveNext())
        entries.push_back({rows.field(0).toString(), rows.field(1).toString()});
    return entries;
}

QString InsertSql(MasterKind kind, const MasterEntry& entry) {
    return QStringLiteral("insert into ") + Table(kind) + QStringLiteral(" values(") +
           SqlStr(entry.code) + QLatin1Char(',') + SqlStr(entry.name) + QLatin1Char(')');
}

QString RenameSql(MasterKind kind, const MasterEntry& entry) {
    return QStringLiteral("update ") + Table(kind) + QStringLiteral(" set ") + nameColumn(kind) +
           QStringLiteral(" = ") + SqlStr(entry.name) + QStringLiteral(" where ") +
           numberColumn(kind) + QStringLiteral(" = ") + SqlStr(entry.code);
}

QString DeleteSql(MasterKind kind, const QString& code) {
    return QStringLiteral("delete from ") + Table(kind) + QStringLiteral(" where ") +
           numberColumn(kind) + QStringLiteral(" = ") + SqlStr(code);
}

void Insert(MasterKind kind, const MasterEntry& entry) {
    runAlone(InsertSql(kind, entry));
}

QString RecordName(MasterKind kind, const MasterEntry& entry) {
    const char* const names[] = {"アイテム", "用途", "メーカー"};
    return QString::fromUtf8(names[int(kind)]) + QLatin1Char(' ') + entry.code.trimmed() +
           QStringLiteral("「") + entry.name.trimmed() + QStringLiteral("」");
}

void Rename(MasterKind kind, const MasterEntry& shown, const QString& name) {
    runOnShown(kind, shown, RenameSql(kind, {shown.code, name}));
}

void Remove(MasterKind kind, const MasterEntry& shown) {
    runOnShown(kind, shown, DeleteSql(kind, shown.code));
}

} // namespace MasterStore
