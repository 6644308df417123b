#include "analysis/FrmBunseki.h"

#include "analysis/AnalysisCharts.h"
#include "frame/CsvExport.h"
#include "frame/DateFields.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "platform/controls/FunctionKeyRow.h"
#include "platform/controls/GridView.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xDate.h"
#include "platform/ui/Caption.h"
#include "platform/ui/Clock.h"
#include "platform/ui/Named.h"
#include "platform/ui/WaitCursor.h"
#include "print/PrintRun.h"

#include <QAbstractTableModel>
#include <QChart>
#include <QChartView>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTabBar>
#include <QTableView>
#include <QVBoxLayout>

namespace {

const QString ScreenName = QStringLiteral("売上分析");
enum Key { F1 = 0, F5 = 4, F6 = 5, F7 = 6, F9 = 8, F10 = 9 };
// The line of totals, and the line that stands out (the progressive lenses' purpose).
const QColor TotalColour(0xee, 0xee, 0xee);
const QColor MarkedColour(0xff, 0xf0, 0xa0);

} // namespace

// The table of the view shown: its lines as the view made them, the first column naming the
// line, the numbers right-aligned.
class FrmBunseki::TableModel : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    void setTable(AnalysisTable table) {
        beginResetModel();
        table_ = std::move(table);
        endResetModel();
    }
    const AnalysisTable& table() const { return table_; }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : int(table_.lines.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : int(table_.headings.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        const TableLine& line = table_.lines[index.row()];
        switch (role) {
        case Qt::DisplayRole:
            return line.shown.value(index.column());
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(Qt::AlignVCenter |
                                       (index.column() == 0 ? Qt::AlignLeft : Qt::AlignRight));
        case Qt::BackgroundRole:
            return line.total    ? QVariant(TotalColour)
                   : line.marked ? QVariant(MarkedColour)
                                 : QVariant();
        default:
            return {};
        }
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (role != Qt::DisplayRole)
            return {};
        return orientation == Qt::Horizontal ? QVariant(table_.headings.value(section))
                                             : QVariant(section + 1);
    }

private:
    AnalysisTable table_;
};

FrmBunseki::FrmBunseki(QWidget* parent) : Screen(parent) {
    setObjectName(QStringLiteral("FrmBunseki"));
    setWindowTitle(ScreenName);

    txtKikanFrom = Named(new xDate(this), QStringLiteral("txtKikanFrom"));
    txtKikanTo = Named(new xDate(this), QStringLiteral("txtKikanTo"));
    auto* period = new QHBoxLayout;
    AddCaptioned(period, QStringLiteral("期間"), txtKikanFrom);
    period->addWidget(new QLabel(QStringLiteral("〜"), this));
    period->addWidget(txtKikanTo);
    const QString quick[] = {QStringLiteral("今月"), QStringLiteral("今年"),
                             QStringLiteral("過去12か月")};
    for (int i = 0; i < 3; ++i) {
        cmdKikan[i] = Named(new QPushButton(quick[i], this), QStringLiteral("cmdKikan"), i);
        cmdKikan[i]->setAutoDefault(false);
        connect(cmdKikan[i], &QPushButton::clicked, this, [this, i] { cmdKikan_Click(i); });
        period->addWidget(cmdKikan[i]);
    }
    period->addSpacing(24);
    lblKikan = Named(new QLabel(this), QStringLiteral("lblKikan"));
    period->addWidget(lblKikan);
    period->addStretch(1);
    for (xDate* field : {txtKikanFrom, txtKikanTo})
        CmnRefuseUnreadableDateOnLeave(field);

    tabView = Named(new QTabBar(this), QStringLiteral("tabView"));
    for (int i = 0; i < AnalysisViewCount; ++i)
        tabView->addTab(ViewTitle(AnalysisView(i)));
    lblSummary = Named(new QLabel(this), QStringLiteral("lblSummary"));

    chtData = Named(new QChartView(this), QStringLiteral("chtData"));
    chtData->setRenderHint(QPainter::Antialiasing);
    chtData->setMinimumSize(560, 440);
    spdData = Named(new GridView(this), QStringLiteral("spdData"));
    table_ = new TableModel(this);
    spdData->setModel(table_);
    spdData->setRowSelection();
    spdData->setMinimumWidth(520);
    auto* views = new QHBoxLayout;
    views->addWidget(chtData, 5);
    views->addWidget(spdData, 4);

    keys_ = new FunctionKeyRow(this);
    keys_->setCaptions({QStringLiteral("閉じる"), QString(), QString(), QString(),
                        QStringLiteral("表示"), QStringLiteral("前の分析"),
                        QStringLiteral("次の分析"), QString(), QStringLiteral("印刷"),
                        QStringLiteral("CSV出力"), QString(), QString()});
    cmdFnuc = keys_->buttons();

    auto* page = new QVBoxLayout(this);
    page->addLayout(period);
    page->addWidget(tabView);
    page->addWidget(lblSummary);
    page->addLayout(views, 1);
    page->addWidget(keys_);
    resize(1260, 740);
    setTabOrder(txtKikanFrom, txtKikanTo);
    setTabOrder(txtKikanTo, cmdKikan[0]);
    setTabOrder(cmdKikan[0], cmdKikan[1]);
    setTabOrder(cmdKikan[1], cmdKikan[2]);
    setTabOrder(cmdKikan[2], tabView);
    setTabOrder(tabView, spdData->view());

    connect(keys_, &FunctionKeyRow::pressed, this, &FrmBunseki::cmdFnuc_Click);
    connect(tabView, &QTabBar::currentChanged, this, [this] { showView(); });
}

FrmBunseki::~FrmBunseki() = default;

void FrmBunseki::showEvent(QShowEvent* event) {
    Screen::showEvent(event);
    if (!opened_) {
        opened_ = true;
        cmdKikan_Click(int(QuickPeriod::Last12Months));
    }
}

AnalysisView FrmBunseki::currentView() const {
    return AnalysisView(tabView->currentIndex());
}

void FrmBunseki::cmdKikan_Click(int index) {
    const AnalysisPeriod period = QuickPeriodOf(QuickPeriod(index), Today());
    txtKikanFrom->setDate(period.from);
    txtKikanTo->setDate(period.to);
    DispView();
}

void FrmBunseki::DispView() {
    for (xDate* field : {txtKikanFrom, txtKikanTo}) {
        if (CmnRefuseUnreadableDate(field))
            return;
        if (field->isEmpty()) {
            CmnDspMsg(OpeErr_001);
            field->setFocus();
            return;
        }
    }
    if (txtKikanFrom->date() > txtKikanTo->date()) {
        CmnDspMsg(OpeErr_003);
        txtKikanFrom->setFocus();
        return;
    }
    shown_ = AnalysisPeriod{txtKikanFrom->date(), txtKikanTo->date()};
    read_ = {};
    lblKikan->setText(QStringLiteral("表示中の期間：") + PeriodText(*shown_));
    showView();
}

void FrmBunseki::showView() {
    if (!shown_)
        return;
    const AnalysisView view = currentView();
    Procedure(ScreenName, QStringLiteral("DispView"), QStringLiteral("売上分析の表示処理"), [&] {
        WaitCursor wait;
        auto& data = read_[int(view)];
        if (!data)
            data = ReadView(view, *shown_);
        table_->setTable(TableOf(*data));
        // Each column as wide as its texts: amounts are never cut.
        spdData->view()->resizeColumnsToContents();
        lblSummary->setText(SummaryText(*data));
        QChart* old = chtData->chart();
        chtData->setChart(NewChart(*data, ChartMedium::Screen));
        delete old;
    });
}

void FrmBunseki::cmdFnuc_Click(int index) {
    Procedure(ScreenName, QStringLiteral("cmdFnuc_Click"),
              QStringLiteral("ファンクションボタンのクリック処理"), [&] {
                  switch (index) {
                  case F1:
                      done(QDialog::Accepted);
                      break;
                  case F5:
                      DispView();
                      break;
                  case F6:
                  case F7:
                      tabView->setCurrentIndex(
                          (tabView->currentIndex() + (index == F6 ? AnalysisViewCount - 1 : 1)) %
                          AnalysisViewCount);
                      break;
                  case F9:
                      printView();
                      break;
                  case F10:
                      outputCsv();
                      break;
                  default:
                      break;
                  }
              });
}

void FrmBunseki::printView() {
    const auto& data = read_[int(currentView())];
    if (!data)
        return;
    WaitCursor wait;
    RunPrint(this,
             {ScreenName, QStringLiteral("PrintAnalysis"), A4ListSettings,
              ScreenName + QLatin1Char('_') + ViewTitle(data->view)},
             [&](ReportJob& job) { PrintAnalysis(job, *data, table_->table(), Today()); });
}

void FrmBunseki::outputCsv() {
    const auto& data = read_[int(currentView())];
    if (!data)
        return;
    const QString name = QStringLiteral("%1_%2_%3-%4.csv")
                             .arg(ScreenName, ViewTitle(data->view),
                                  data->period.from.toString(QStringLiteral("yyyyMMdd")),
                                  data->period.to.toString(QStringLiteral("yyyyMMdd")));
    ExportCsv(ScreenName, windowTitle(), name, [this](const QString& path) {
        WriteAnalysisCsv(path, table_->table());
        return true;
    });
}
