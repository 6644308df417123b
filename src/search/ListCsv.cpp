#include "search/ListCsv.h"

#include "domain/Age.h"
#include "platform/CsvText.h"
#include "platform/Format.h"
#include "search/ListGrid.h"

namespace {
constexpr int ProgressStep = 500;
}

QStringList ListCsvHeader() {
    return ListGrid::Headings + QStringList{QStringLiteral("誕生日"), QStringLiteral("年齢")};
}

QString SpreadsheetText(const QString& text) {
    static const QString formulaStarts = QStringLiteral("=+-@\t\r");
    return !text.isEmpty() && formulaStarts.contains(text.front()) ? QLatin1Char('\'') + text
                                                                   : text;
}

QStringList ListCsvRecord(const ListRow& row, const QDate& today) {
    const ListedCustomer& c = row.now;
    const BirthDate& b = c.birth;
    return {QString::number(c.no),
            row.marked ? QStringLiteral("1") : QStringLiteral("0"),
            SpreadsheetText(c.name),
            SpreadsheetText(c.kana),
            SpreadsheetText(c.yubin),
            SpreadsheetText(c.jusyo1),
            SpreadsheetText(c.jusyo2),
            SpreadsheetText(c.tel),
            ListGrid::FamilyNames.value(c.kazok),
            QString::number(c.total),
            FormatYmd(c.lastVisit),
            BirthDateText(b.era, b.year, b.month, b.day),
            b.year > 0 ? QString::number(AgeOn(b.era, b.year, b.month, b.day, today)) : QString()};
}

bool WriteListCsv(const QString& path, const std::vector<ListRow>& rows, const QDate& today,
                  const std::function<bool(int)>& progress) {
    CsvFile file(path);
    file.write(ListCsvHeader());
    int written = 0;
    for (const ListRow& row : rows) {
        file.write(ListCsvRecord(row, today));
        if (++written % ProgressStep == 0 && progress && !progress(written))
            return false;
    }
    file.commit();
    return true;
}
