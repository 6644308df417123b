#include "data/ZipSearch.h"

#include "frame/Globals.h"
#include "platform/Failure.h"
#include "platform/NumberText.h"
#include "platform/db/SqlText.h"

#include <cmath>

namespace {

// A typed number read as a whole number; a half goes to the even neighbour.
qint64 wholeNumber(const QString& text) {
    bool isNumber = false;
    const double value = NumberFromText(text, &isNumber);
    if (!isNumber || !std::isfinite(value))
        throw Failure(13, QStringLiteral("型が一致しません。"));
    return static_cast<qint64>(std::nearbyint(value));
}

} // namespace

bool ZipConditions::isEmpty() const {
    return zip1.trimmed().isEmpty() && zip2.trimmed().isEmpty() && todo.trimmed().isEmpty() &&
           city.trimmed().isEmpty() && town.trimmed().isEmpty();
}

QString ZipSearchSql(const ZipConditions& c) {
    QString sql = QStringLiteral("select ZIP1,ZIP2,TODO,CITY,TOWN from ZipList");
    bool first = true;
    auto add = [&](const QString& column, const QString& value) {
        sql += (first ? QStringLiteral(" where ") : QStringLiteral(" and ")) + column +
               QStringLiteral(" = ") + value;
        first = false;
    };
    if (!c.zip1.trimmed().isEmpty())
        add(QStringLiteral("ZIP1"), SqlNum(wholeNumber(c.zip1)));
    if (!c.zip2.trimmed().isEmpty())
        add(QStringLiteral("ZIP2"), SqlNum(wholeNumber(c.zip2)));
    if (!c.todo.trimmed().isEmpty())
        add(QStringLiteral("TODO"), SqlStr(c.todo));
    if (!c.city.trimmed().isEmpty())
        add(QStringLiteral("CITY"), SqlStr(c.city));
    if (!c.town.trimmed().isEmpty())
        add(QStringLiteral("TOWN"), SqlStr(c.town));
    return sql;
}

QString FormatZip(qint64 zip1, qint64 zip2) {
    return QStringLiteral("%1-%2")
        .arg(zip1, 3, 10, QLatin1Char('0'))
        .arg(zip2, 4, 10, QLatin1Char('0'));
}

std::vector<ZipAddress> FindAddresses(const ZipConditions& conditions) {
    RecordSet rows = gCon.execute(ZipSearchSql(conditions));
    std::vector<ZipAddress> found;
    for (; !rows.eof(); rows.moveNext())
        found.push_back({FormatZip(rows.field(0).toLongLong(), rows.field(1).toLongLong()),
                         rows.field(2).toString(), rows.field(3).toString(),
                         rows.field(4).toString()});
    return found;
}
