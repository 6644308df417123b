#pragma once

#include "analysis/AnalysisViews.h"
#include "platform/ui/Screen.h"

#include <array>
#include <optional>

class QChartView;
class QLabel;
class QPushButton;
class QTabBar;
class FunctionKeyRow;
class GridView;
class xCmdBtn;
class xDate;

// The sales analysis: a period (typed, or one of the quick choices), and views of its sales,
// each a chart with its table beside it: by month against the year before, by item, purpose,
// frame maker and lens maker, the customers served by age and sex, new or returning, and an
// overview with the customers who bought the most. Each view prints (F9) and writes its table
// to CSV (F10). A view is read when it is first shown for the period; F5 reads again.
class FrmBunseki : public Screen {
    Q_OBJECT
public:
    explicit FrmBunseki(QWidget* parent = nullptr);
    ~FrmBunseki() override;

    // Reads the typed period and shows the current view for it; a period that is not one is
    // refused with the focus in its field.
    void DispView();
    void cmdKikan_Click(int index);
    void cmdFnuc_Click(int index);

protected:
    void showEvent(QShowEvent* event) override;

private:
    xDate* txtKikanFrom;
    xDate* txtKikanTo;
    std::array<QPushButton*, 3> cmdKikan; // 今月, 今年, 過去12か月
    QTabBar* tabView;
    QLabel* lblKikan;
    QLabel* lblSummary;
    QChartView* chtData;
    GridView* spdData;
    std::array<xCmdBtn*, 12> cmdFnuc;

    AnalysisView currentView() const;
    // The current view for the period shown: read when it has not been, then shown.
    void showView();
    void printView();
    void outputCsv();

    class TableModel;
    TableModel* table_;
    FunctionKeyRow* keys_;
    std::optional<AnalysisPeriod> shown_;
    std::array<std::optional<ViewData>, AnalysisViewCount> read_;
    bool opened_ = false;
};
