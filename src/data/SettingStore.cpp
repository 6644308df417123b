#include "data/SettingStore.h"

#include "frame/Globals.h"
#include "platform/db/SqlText.h"
#include "platform/db/Transaction.h"

namespace {

const QString OffsetX = QStringLiteral("PrintOffsetX");
const QString OffsetY = QStringLiteral("PrintOffsetY");

void writeRow(const QString& key, const QString& value) {
    gCon.execute(QStringLiteral("delete from San_Setting where Set_Key = ") + SqlStr(key));
    gCon.execute(QStringLiteral("insert into San_Setting values(") + SqlStr(key) +
                 QLatin1Char(',') + SqlStr(value) + QLatin1Char(')'));
}

} // namespace

namespace SettingStore {

QString Read(const QString& key) {
    RecordSet rows = gCon.execute(
        QStringLiteral("select Set_Value from San_Setting where Set_Key = ") + SqlStr(key));
    return rows.eof() ? QString() : rows.field(0).toString();
}

void Write(const QString& key, const QString& value) {
    Transaction transaction(gCon);
    writeRow(key, value);
    transaction.commit();
}

PrintOffset ReadPrintOffset() {
    return {Read(OffsetX).toDouble(), Read(OffsetY).toDouble()};
}

void WritePrintOffset(const PrintOffset& offset) {
    Transaction transaction(gCon);
    writeRow(OffsetX, SqlReal(offset.x));
    writeRow(OffsetY, SqlReal(offset.y));
    transaction.commit();
}

} // namespace SettingStore
