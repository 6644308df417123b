#include "analysis/AnalysisViews.h"

#include "analysis/AnalysisCharts.h"
#include "data/AnalysisStore.h"
#include "data/Lookups.h"
#include "platform/CsvText.h"
#include "platform/Format.h"
#include "platform/report/FormPainter.h"
#include "platform/report/ReportJob.h"
#include "print/PrintRun.h"
#include "search/ListCsv.h"

#include <algorithm>

namespace {

constexpr int LinesPerPage = 25;
constexpr int PrintedColumns = 6;

using AnalysisStore::Breakdown;

Breakdown breakdownOf(AnalysisView view) {
    switch (view) {
    case AnalysisView::Purpose:
        return Breakdown::Purpose;
    case AnalysisView::FrameMaker:
        return Breakdown::FrameMaker;
    case AnalysisView::LensMaker:
        return Breakdown::LensMaker;
    default:
        return Breakdown::Item;
    }
}

MasterKind masterOf(AnalysisView view) {
    switch (view) {
    case AnalysisView::Item:
        return MasterKind::Item;
    case AnalysisView::Purpose:
        return MasterKind::Youto;
    default:
        return MasterKind::Meka;
    }
}

// What a breakdown sums: the sale's total, or the frame's or the lenses' amount.
QString amountHeading(AnalysisView view) {
    switch (view) {
    case AnalysisView::FrameMaker:
        return QStringLiteral("フレーム金額");
    case AnalysisView::LensMaker:
        return QStringLiteral("レンズ金額");
    default:
        return QStringLiteral("売上金額");
    }
}

// A count as the screens show numbers: grouped in thousands like an amount.
QString grouped(qint64 n) {
    return FormatYen(n);
}

// A number as a spreadsheet reads it.
QString plain(qint64 n) {
    return QString::number(n);
}

// A percentage for a spreadsheet: the number without its sign.
QString plainPercent(const QString& percent) {
    return percent.endsWith(QLatin1Char('%')) ? percent.chopped(1) : percent;
}

TableLine monthLine(const QString& month, const MonthSales& m) {
    const QString ratio = RatioText(m.current.amount, m.yearBefore.amount);
    return {{month, FormatYen(m.current.amount), grouped(m.current.count),
             FormatYen(m.yearBefore.amount), grouped(m.yearBefore.count), ratio},
            {month, plain(m.current.amount), plain(m.current.count), plain(m.yearBefore.amount),
             plain(m.yearBefore.count), plainPercent(ratio)}};
}

AnalysisTable monthlyTable(const ViewData& data) {
    AnalysisTable table{{QStringLiteral("月"), QStringLiteral("売上金額"), QStringLiteral("件数"),
                         QStringLiteral("前年同月"), QStringLiteral("前年件数"),
                         QStringLiteral("前年比")}};
    table.csvHeadings = table.headings;
    table.csvHeadings.last() = QStringLiteral("前年比(%)");
    MonthSales total;
    for (const MonthSales& m : data.months) {
        table.lines.push_back(monthLine(MonthText(m.ym), m));
        total.current.amount += m.current.amount, total.current.count += m.current.count;
        total.yearBefore.amount += m.yearBefore.amount;
        total.yearBefore.count += m.yearBefore.count;
    }
    table.lines.push_back(monthLine(QStringLiteral("合計"), total));
    table.lines.back().total = true;
    return table;
}

AnalysisTable shareTable(const ViewData& data) {
    const QString what = data.view == AnalysisView::Item      ? QStringLiteral("アイテム")
                         : data.view == AnalysisView::Purpose ? QStringLiteral("用途")
                                                              : QStringLiteral("メーカー");
    const QString amount = amountHeading(data.view);
    AnalysisTable table{{what, amount, QStringLiteral("件数"), QStringLiteral("構成比")},
                        {QStringLiteral("コード"), QStringLiteral("名称"), amount,
                         QStringLiteral("件数"), QStringLiteral("構成比(%)")}};
    for (const ShareLine& line : data.shares) {
        const QString share = ShareText(line.shareTenths);
        const bool none = line.kind == ShareKind::NoCode;
        table.lines.push_back(
            {{ShareLineText(line), FormatYen(line.sales.amount), grouped(line.sales.count), share},
             {SpreadsheetText(line.code), none ? ShareLineText(line) : SpreadsheetText(line.name),
              plain(line.sales.amount), plain(line.sales.count), plainPercent(share)},
             false,
             data.view == AnalysisView::Purpose && IsProgressive(line.name)});
    }
    const SalesSum total = TotalOf(data.shares);
    const QString whole = ShareText(total.amount > 0 ? 1000 : 0);
    table.lines.push_back(
        {{QStringLiteral("合計"), FormatYen(total.amount), grouped(total.count), whole},
         {QString(), QStringLiteral("合計"), plain(total.amount), plain(total.count),
          plainPercent(whole)},
         true});
    return table;
}

AnalysisTable customerTable(const ViewData& data) {
    AnalysisTable table{{QStringLiteral("年齢"), QStringLiteral("新規 男"),
                         QStringLiteral("新規 女"), QStringLiteral("再来 男"),
                         QStringLiteral("再来 女"), QStringLiteral("計")}};
    table.csvHeadings = table.headings;
    BandCounts total;
    const auto line = [](const QString& name, const BandCounts& band) {
        TableLine l{{name}, {name}};
        for (qint64 n : band.customers)
            l.shown << grouped(n), l.csv << plain(n);
        l.shown << grouped(band.total());
        l.csv << plain(band.total());
        return l;
    };
    for (const BandCounts& band : data.bands) {
        table.lines.push_back(line(AgeBandText(band.band), band));
        for (int i = 0; i < 4; ++i)
            total.customers[i] += band.customers[i];
    }
    table.lines.push_back(line(QStringLiteral("合計"), total));
    table.lines.back().total = true;
    return table;
}

AnalysisTable overviewTable(const ViewData& data) {
    AnalysisTable table{{QStringLiteral("氏名"), QStringLiteral("顧客No"), QStringLiteral("件数"),
                         QStringLiteral("売上金額")},
                        {QStringLiteral("顧客No"), QStringLiteral("氏名"), QStringLiteral("件数"),
                         QStringLiteral("売上金額")}};
    for (const TopCustomer& c : data.top)
        table.lines.push_back(
            {{c.name, plain(c.no), grouped(c.sales.count), FormatYen(c.sales.amount)},
             {plain(c.no), SpreadsheetText(c.name), plain(c.sales.count), plain(c.sales.amount)}});
    return table;
}

QString salesText(const QString& what, const SalesSum& sales) {
    return QStringLiteral("%1 %2円　件数 %3件")
        .arg(what, FormatYen(sales.amount), grouped(sales.count));
}

} // namespace

QString ViewTitle(AnalysisView view) {
    static const char* const titles[] = {
        "月別売上", "品目別", "用途別", "フレームメーカー別", "レンズメーカー別", "顧客", "概要"};
    return QString::fromUtf8(titles[int(view)]);
}

ViewData ReadView(AnalysisView view, const AnalysisPeriod& period) {
    ViewData data{.view = view, .period = period};
    switch (view) {
    case AnalysisView::Monthly:
        data.months = MonthlySales(period, AnalysisStore::Months(period));
        break;
    case AnalysisView::Customers:
        data.bands = CustomerBands(AnalysisStore::Served(period), period.to);
        break;
    case AnalysisView::Overview:
        data.summary = AnalysisStore::Summary(period);
        data.top = AnalysisStore::TopCustomers(period, TopCustomerCount);
        break;
    default: {
        data.shares = ShareLines(AnalysisStore::ByCode(breakdownOf(view), period));
        MasterNames names;
        for (ShareLine& line : data.shares)
            if (line.kind == ShareKind::Code)
                line.name = names.name(masterOf(view), line.code);
        break;
    }
    }
    return data;
}

AnalysisTable TableOf(const ViewData& data) {
    switch (data.view) {
    case AnalysisView::Monthly:
        return monthlyTable(data);
    case AnalysisView::Customers:
        return customerTable(data);
    case AnalysisView::Overview:
        return overviewTable(data);
    default:
        return shareTable(data);
    }
}

QString SummaryText(const ViewData& data) {
    switch (data.view) {
    case AnalysisView::Monthly: {
        SalesSum current, before;
        for (const MonthSales& m : data.months) {
            current.amount += m.current.amount, current.count += m.current.count;
            before.amount += m.yearBefore.amount, before.count += m.yearBefore.count;
        }
        const QString ratio = RatioText(current.amount, before.amount);
        return salesText(QStringLiteral("売上合計"), current) +
               QStringLiteral("　前年同期 %1円").arg(FormatYen(before.amount)) +
               (ratio.isEmpty() ? QString() : QStringLiteral("（前年比 %1）").arg(ratio));
    }
    case AnalysisView::Customers: {
        qint64 fresh = 0, returning = 0;
        for (const BandCounts& band : data.bands) {
            fresh += band.customers[NewMen] + band.customers[NewWomen];
            returning += band.customers[ReturningMen] + band.customers[ReturningWomen];
        }
        return QStringLiteral("来店客 %1人（新規 %2人・再来 %3人）")
            .arg(grouped(fresh + returning), grouped(fresh), grouped(returning));
    }
    case AnalysisView::Overview:
        return salesText(QStringLiteral("売上合計"), data.summary.sales) +
               QStringLiteral("　平均単価 %1円　来店客数 %2人")
                   .arg(FormatYen(data.summary.average()), grouped(data.summary.customers));
    default:
        return salesText(amountHeading(data.view) + QStringLiteral("合計"), TotalOf(data.shares));
    }
}

void WriteAnalysisCsv(const QString& path, const AnalysisTable& table) {
    CsvFile file(path);
    file.write(table.csvHeadings);
    for (const TableLine& line : table.lines)
        file.write(line.csv);
    file.commit();
}

void PrintAnalysis(ReportJob& job, const ViewData& data, const AnalysisTable& table,
                   const QDate& today) {
    job.setForm(FormPath(QStringLiteral("PrnSan009.jfm")));
    const int pages = std::max(1, int((table.lines.size() + LinesPerPage - 1) / LinesPerPage));
    for (int page = 1; page <= pages; ++page) {
        SetListHeading(job, today, page);
        job.setField(QStringLiteral("Title"), QStringLiteral("売上分析　") + ViewTitle(data.view));
        job.setField(QStringLiteral("Kikan"), QStringLiteral("期間　") + PeriodText(data.period));
        job.setField(QStringLiteral("Summary"), SummaryText(data));
        for (int c = 0; c < PrintedColumns; ++c)
            job.setField(QStringLiteral("H%1").arg(c + 1), table.headings.value(c));
        if (page == 1)
            job.setPicture(QStringLiteral("Chart"),
                           {ViewTitle(data.view), [data](QPainter& painter, const QRectF& box) {
                                DrawChart(data, painter, box);
                            }});
        const int first = (page - 1) * LinesPerPage;
        for (int row = 0; row < LinesPerPage && first + row < int(table.lines.size()); ++row)
            for (int c = 0; c < PrintedColumns; ++c)
                job.setField(QStringLiteral("C%1_%2").arg(c + 1).arg(row + 1),
                             table.lines[first + row].shown.value(c));
        job.printPage();
    }
}
