#include "domain/SalesAnalysis.h"

#include "domain/Age.h"
#include "domain/Ymd.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace {

const QString DateFormat = QStringLiteral("yyyy/MM/dd");

qint64 monthAfter(qint64 ym) {
    return ym % 100 >= 12 ? (ym / 100 + 1) * 100 + 1 : ym + 1;
}

} // namespace

qint64 AnalysisPeriod::fromYmd() const {
    return YmdOf(from);
}

qint64 AnalysisPeriod::toYmd() const {
    return YmdOf(to);
}

AnalysisPeriod QuickPeriodOf(QuickPeriod choice, const QDate& today) {
    const QDate firstOfMonth(today.year(), today.month(), 1);
    switch (choice) {
    case QuickPeriod::ThisMonth:
        return {firstOfMonth, today};
    case QuickPeriod::ThisYear:
        return {QDate(today.year(), 1, 1), today};
    case QuickPeriod::Last12Months:
        break;
    }
    return {firstOfMonth.addMonths(-11), today};
}

AnalysisPeriod YearBefore(const AnalysisPeriod& period) {
    return {period.from.addYears(-1), period.to.addYears(-1)};
}

QString PeriodText(const AnalysisPeriod& period) {
    return period.from.toString(DateFormat) + QStringLiteral("〜") + period.to.toString(DateFormat);
}

std::vector<MonthSales> MonthlySales(const AnalysisPeriod& period,
                                     const std::vector<MonthGroup>& groups) {
    std::set<qint64> months;
    for (qint64 ym = period.fromYmd() / 100; period.from.isValid() && ym <= period.toYmd() / 100;
         ym = monthAfter(ym))
        months.insert(ym);
    std::map<qint64, MonthGroup> byMonth;
    for (const MonthGroup& group : groups) {
        byMonth[group.ym] = group;
        if (group.current.count > 0)
            months.insert(group.ym);
        if (group.yearBefore.count > 0)
            months.insert(group.ym + 100);
    }
    std::vector<MonthSales> lines;
    for (qint64 ym : months) {
        MonthSales line{.ym = ym};
        if (const auto found = byMonth.find(ym); found != byMonth.end())
            line.current = found->second.current;
        if (const auto found = byMonth.find(ym - 100); found != byMonth.end())
            line.yearBefore = found->second.yearBefore;
        lines.push_back(line);
    }
    return lines;
}

QString MonthText(qint64 ym) {
    return QStringLiteral("%1/%2").arg(ym / 100).arg(ym % 100, 2, 10, QLatin1Char('0'));
}

QString RatioText(qint64 current, qint64 yearBefore) {
    if (yearBefore <= 0)
        return {};
    return QString::number(std::round(double(current) * 1000.0 / double(yearBefore)) / 10.0, 'f',
                           1) +
           QLatin1Char('%');
}

int ShareTenths(qint64 part, qint64 whole) {
    return whole > 0 ? int(std::llround(double(part) * 1000.0 / double(whole))) : 0;
}

QString ShareText(int tenths) {
    return QString::number(tenths / 10.0, 'f', 1) + QLatin1Char('%');
}

std::vector<ShareLine> ShareLines(const std::vector<CodeSales>& groups) {
    std::vector<ShareLine> lines;
    ShareLine none{.kind = ShareKind::NoCode};
    for (const CodeSales& group : groups) {
        if (group.code.trimmed().isEmpty()) {
            none.sales.amount += group.sales.amount;
            none.sales.count += group.sales.count;
        } else {
            lines.push_back({.code = group.code, .sales = group.sales});
        }
    }
    std::sort(lines.begin(), lines.end(), [](const ShareLine& a, const ShareLine& b) {
        return a.sales.amount != b.sales.amount ? a.sales.amount > b.sales.amount : a.code < b.code;
    });
    if (none.sales.count > 0)
        lines.push_back(none);
    const qint64 whole = TotalOf(lines).amount;
    for (ShareLine& line : lines)
        line.shareTenths = ShareTenths(line.sales.amount, whole);
    return lines;
}

SalesSum TotalOf(const std::vector<ShareLine>& lines) {
    SalesSum total;
    for (const ShareLine& line : lines) {
        total.amount += line.sales.amount;
        total.count += line.sales.count;
    }
    return total;
}

std::vector<ShareLine> ChartSlices(const std::vector<ShareLine>& lines, int most) {
    if (int(lines.size()) <= most)
        return lines;
    std::vector<ShareLine> slices(lines.begin(), lines.begin() + (most - 1));
    ShareLine rest{.kind = ShareKind::Rest};
    for (auto line = lines.begin() + (most - 1); line != lines.end(); ++line) {
        rest.sales.amount += line->sales.amount;
        rest.sales.count += line->sales.count;
        rest.shareTenths += line->shareTenths;
    }
    slices.push_back(rest);
    return slices;
}

QString ShareLineText(const ShareLine& line) {
    switch (line.kind) {
    case ShareKind::NoCode:
        return QStringLiteral("（なし）");
    case ShareKind::Rest:
        return QStringLiteral("上記以外");
    case ShareKind::Code:
        break;
    }
    return line.name.isEmpty() ? line.code : line.code + QLatin1Char(' ') + line.name;
}

bool IsProgressive(const QString& purposeName) {
    return purposeName.contains(QStringLiteral("遠近"));
}

int AgeBandOf(int era, int year, bool hadBirthday, const QDate& day) {
    if (year <= 0)
        return UnknownBand;
    const int age = day.year() - WesternYear(era, year) - (hadBirthday ? 0 : 1);
    return age < 0 ? UnknownBand : std::min(age / 10, 9);
}

QString AgeBandText(int band) {
    if (band == UnknownBand)
        return QStringLiteral("不明");
    if (band == 0)
        return QStringLiteral("10歳未満");
    if (band == 9)
        return QStringLiteral("90歳以上");
    return QStringLiteral("%1代").arg(band * 10);
}

qint64 BandCounts::total() const {
    qint64 sum = 0;
    for (qint64 count : customers)
        sum += count;
    return sum;
}

std::vector<BandCounts> CustomerBands(const std::vector<ServedGroup>& groups, const QDate& day) {
    std::vector<BandCounts> bands(AgeBands);
    for (int band = 0; band < AgeBands; ++band)
        bands[band].band = band;
    for (const ServedGroup& group : groups) {
        const bool woman = group.sex == 1;
        const int column =
            group.isNew ? (woman ? NewWomen : NewMen) : (woman ? ReturningWomen : ReturningMen);
        bands[AgeBandOf(group.era, group.year, group.hadBirthday, day)].customers[column] +=
            group.customers;
    }
    return bands;
}

qint64 SalesSummary::average() const {
    return sales.count > 0 ? std::llround(double(sales.amount) / double(sales.count)) : 0;
}
