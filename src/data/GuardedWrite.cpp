#include "data/GuardedWrite.h"

#include "frame/Globals.h"

GuardedWrite PlanWrite(const std::vector<GuardedColumn>& columns) {
    GuardedWrite write;
    for (const GuardedColumn& column : columns) {
        if (column.now == column.shown)
            continue;
        write.assignments << column.name + QStringLiteral(" = ") + column.now;
        // Both changed it to the same value: nothing of the other terminal's is lost.
        if (column.stored != column.shown && column.stored != column.now &&
            !write.collisions.contains(column.caption))
            write.collisions << column.caption;
    }
    return write;
}

Failure RowChangedMeanwhile(const QString& record, const QStringList& collisions) {
    QString text = record + QStringLiteral("は、この画面に表示した後で他の端末が変更しました");
    if (!collisions.isEmpty())
        text += QStringLiteral("（") + collisions.join(QStringLiteral("、")) + QStringLiteral("）");
    return Failure(ErrorNumber::RowChanged, text + QStringLiteral("。"));
}

Failure RowDeletedMeanwhile(const QString& record) {
    return Failure(ErrorNumber::RowDeleted,
                   record + QStringLiteral("は、この画面に表示した後で他の端末が削除しました。"));
}

void ExecuteOnCheckedRow(const QString& statement, const QString& record) {
    long changed = 0;
    gCon.execute(statement, &changed);
    if (changed != 1)
        throw RowDeletedMeanwhile(record);
}
