#include "analysis/AnalysisCharts.h"

#include "analysis/AnalysisViews.h"

#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QCoreApplication>
#include <QGraphicsScene>
#include <QHorizontalBarSeries>
#include <QLegend>
#include <QPainter>
#include <QPieSeries>
#include <QPieSlice>
#include <QStackedBarSeries>
#include <QValueAxis>
#include <algorithm>

namespace {

// A series' fill and the colour of the values written on it.
struct Fill {
    QColor fill, text;
};

// On paper: grey levels far enough apart to tell in black and white, next ones in turn dark
// and light.
const Fill PaperFills[] = {
    {QColor(0x30, 0x30, 0x30), Qt::white}, {QColor(0xc0, 0xc0, 0xc0), Qt::black},
    {QColor(0x6c, 0x6c, 0x6c), Qt::white}, {QColor(0xe8, 0xe8, 0xe8), Qt::black},
    {QColor(0x4c, 0x4c, 0x4c), Qt::white}, {QColor(0xa0, 0xa0, 0xa0), Qt::black},
    {QColor(0x88, 0x88, 0x88), Qt::white}, {QColor(0xd4, 0xd4, 0xd4), Qt::black}};
const Fill ScreenFills[] = {
    {QColor(0x34, 0x65, 0xa4), Qt::white}, {QColor(0xf5, 0xa7, 0x42), Qt::black},
    {QColor(0x4e, 0x9a, 0x06), Qt::white}, {QColor(0xfc, 0xe9, 0x4f), Qt::black},
    {QColor(0x75, 0x50, 0x7b), Qt::white}, {QColor(0x8a, 0xe2, 0x34), Qt::black},
    {QColor(0xcc, 0x00, 0x00), Qt::white}, {QColor(0x72, 0x9f, 0xcf), Qt::black}};
constexpr int Fills = 8;
// The part of a chart a rest slice stands for: white on either medium.
const Fill RestFill{QColor(0xfa, 0xfa, 0xfa), Qt::black};

// Slices of a pie, at most; the smallest lines beyond make one.
constexpr int MostSlices = 8;
// Slices of a smaller share than this (in tenths of a percent) are named in the legend only.
constexpr int LabelledShare = 25;
// Bars beyond this many months carry no values: they would not be readable.
constexpr int LabelledMonths = 24;
// The customers the overview's chart shows.
constexpr int ChartedCustomers = 10;

struct Style {
    const Fill* fills; // the medium's, Fills of them
    int textPx;        // the size of labels and values, in the chart's own pixels

    const Fill& fill(int i) const { return fills[i % Fills]; }
    QFont font(int larger = 0, bool bold = false) const {
        QFont f(QStringLiteral("Noto Sans CJK JP"));
        f.setPixelSize(textPx + larger);
        f.setBold(bold);
        return f;
    }
};

QChart* newChart(const Style& style) {
    auto* chart = new QChart;
    chart->setLocalizeNumbers(true);
    chart->setLocale(QLocale(QLocale::Japanese, QLocale::Japan));
    chart->setBackgroundRoundness(0);
    chart->setMargins(QMargins(4, 4, 4, 4));
    chart->legend()->setFont(style.font());
    chart->legend()->setLabelColor(Qt::black);
    return chart;
}

QBarSet* barSet(const QString& name, const Fill& fill, const Style& style) {
    auto* set = new QBarSet(name);
    set->setBrush(fill.fill);
    set->setPen(QPen(Qt::black, 0.5));
    set->setLabelColor(fill.text);
    set->setLabelFont(style.font());
    return set;
}

// The axes of a bar chart: the categories and the values from 0, with room above the highest
// for the values written over the bars. Whole numbers grouped in thousands.
void addAxes(QChart* chart, QAbstractBarSeries* series, const QStringList& categories,
             double highest, double headroom, const Style& style, bool across = false) {
    chart->addSeries(series);
    auto* names = new QBarCategoryAxis;
    names->append(categories);
    names->setLabelsFont(style.font());
    auto* values = new QValueAxis;
    values->setLabelFormat(QStringLiteral("%.0f"));
    values->setLabelsFont(style.font(-1));
    if (highest <= 8) {
        values->setRange(0, std::max(1.0, highest + 1));
        values->setTickCount(int(std::max(1.0, highest + 1)) + 1);
    } else {
        values->setRange(0, highest * headroom);
        values->applyNiceNumbers();
    }
    chart->addAxis(names, across ? Qt::AlignLeft : Qt::AlignBottom);
    chart->addAxis(values, across ? Qt::AlignBottom : Qt::AlignLeft);
    series->attachAxis(names);
    series->attachAxis(values);
    series->setLabelsVisible(true);
    series->setLabelsPrecision(15); // every digit, never an exponent
}

void monthly(QChart* chart, const ViewData& data, const Style& style) {
    QBarSet* current = barSet(QStringLiteral("期間の売上"), style.fill(0), style);
    QBarSet* before = barSet(QStringLiteral("前年同月"), style.fill(1), style);
    QStringList months;
    double highest = 0;
    const bool long_ = data.months.size() > 12;
    for (const MonthSales& m : data.months) {
        *current << double(m.current.amount);
        *before << double(m.yearBefore.amount);
        highest = std::max({highest, double(m.current.amount), double(m.yearBefore.amount)});
        months << (long_ ? MonthText(m.ym) : QStringLiteral("%1月").arg(m.ym % 100));
    }
    for (QBarSet* set : {current, before})
        set->setLabelColor(Qt::black);
    auto* series = new QBarSeries;
    series->append({current, before});
    addAxes(chart, series, months, highest, 1.45, style);
    series->setLabelsVisible(int(data.months.size()) <= LabelledMonths);
    series->setLabelsPosition(QAbstractBarSeries::LabelsOutsideEnd);
    series->setLabelsAngle(-90);
}

void shares(QChart* chart, const ViewData& data, const Style& style) {
    auto* pie = new QPieSeries;
    pie->setPieSize(0.6);
    int i = 0;
    for (const ShareLine& line : ChartSlices(data.shares, MostSlices)) {
        if (line.sales.amount <= 0)
            continue;
        const bool progressive = data.view == AnalysisView::Purpose && IsProgressive(line.name);
        const QString name =
            line.kind == ShareKind::Code && !line.name.isEmpty() ? line.name : ShareLineText(line);
        QPieSlice* slice =
            pie->append(name + QLatin1Char(' ') + ShareText(line.shareTenths), line.sales.amount);
        const Fill& fill = line.kind == ShareKind::Rest ? RestFill : style.fill(i++);
        slice->setBrush(fill.fill);
        slice->setPen(QPen(Qt::black, 0.8));
        slice->setLabelFont(style.font(progressive ? 3 : 0, progressive));
        slice->setLabelColor(Qt::black);
        slice->setLabelArmLengthFactor(0.12);
        slice->setLabelVisible(progressive || line.shareTenths >= LabelledShare);
        slice->setExploded(progressive);
        slice->setExplodeDistanceFactor(0.12);
    }
    chart->addSeries(pie);
    chart->legend()->setAlignment(Qt::AlignBottom);
}

void customers(QChart* chart, const ViewData& data, const Style& style) {
    const QString names[] = {QStringLiteral("新規 男"), QStringLiteral("新規 女"),
                             QStringLiteral("再来 男"), QStringLiteral("再来 女")};
    QList<QBarSet*> sets;
    for (int i = 0; i < 4; ++i)
        sets << barSet(names[i], style.fill(i), style);
    QStringList bands;
    double highest = 0;
    for (const BandCounts& band : data.bands) {
        for (int i = 0; i < 4; ++i)
            *sets[i] << double(band.customers[i]);
        highest = std::max(highest, double(band.total()));
        // The axis has room for three characters a band.
        bands << (band.band == 0   ? QStringLiteral("〜9歳")
                  : band.band == 9 ? QStringLiteral("90歳〜")
                                   : AgeBandText(band.band));
    }
    auto* series = new QStackedBarSeries;
    series->append(sets);
    addAxes(chart, series, bands, highest, 1.1, style);
    series->setLabelsPosition(QAbstractBarSeries::LabelsCenter);
}

void overview(QChart* chart, const ViewData& data, const Style& style) {
    QBarSet* amounts =
        barSet(QStringLiteral("売上金額（上位%1名）").arg(ChartedCustomers), style.fill(0), style);
    QStringList names;
    double highest = 0;
    const int shown = std::min(int(data.top.size()), ChartedCustomers);
    // Bars across are laid from the bottom up: the highest last, at the top.
    for (int i = shown - 1; i >= 0; --i) {
        const TopCustomer& c = data.top[i];
        *amounts << double(c.sales.amount);
        highest = std::max(highest, double(c.sales.amount));
        // The customer's number keeps two customers of one name apart.
        names << QStringLiteral("%1 %2").arg(c.no).arg(c.name.left(10));
    }
    auto* series = new QHorizontalBarSeries;
    series->append(amounts);
    addAxes(chart, series, names, highest, 1.25, style, true);
    series->setLabelsPosition(QAbstractBarSeries::LabelsInsideEnd);
}

} // namespace

QChart* NewChart(const ViewData& data, ChartMedium medium) {
    const bool paper = medium == ChartMedium::Paper;
    const Style style{paper ? PaperFills : ScreenFills, paper ? 10 : 12};
    QChart* chart = newChart(style);
    switch (data.view) {
    case AnalysisView::Monthly:
        monthly(chart, data, style);
        break;
    case AnalysisView::Customers:
        customers(chart, data, style);
        break;
    case AnalysisView::Overview:
        overview(chart, data, style);
        break;
    default:
        shares(chart, data, style);
        break;
    }
    return chart;
}

void DrawChart(const ViewData& data, QPainter& painter, const QRectF& box) {
    // The chart is laid out in screen pixels and drawn scaled into the box: its texts and
    // lines keep their proportions at any resolution, and stay lines and texts in a PDF.
    const double scale = painter.device()->logicalDpiX() / 96.0;
    const QRectF area(0, 0, box.width() / scale, box.height() / scale);
    QGraphicsScene scene;
    QChart* chart = NewChart(data, ChartMedium::Paper);
    scene.addItem(chart);
    chart->setGeometry(area);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    scene.render(&painter, box, area);
}
