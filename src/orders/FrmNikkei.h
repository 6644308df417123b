#pragma once

#include "domain/DailyClosing.h"
#include "platform/ui/Screen.h"

#include <array>
#include <optional>

class QLabel;
class FunctionKeyRow;
class GridView;
template <class Row> class RowModel;
class xCmdBtn;
class xDate;

// The day's closing (日計表): the figures of the day typed, today at first, in a read-only
// table; printed on A5 or written to a CSV file. Printing and writing read the day again first,
// so the paper and the file hold what the table shows.
class FrmNikkei : public Screen {
    Q_OBJECT
public:
    explicit FrmNikkei(QWidget* parent = nullptr);

    // Reads and shows the closing of the day typed; an empty or unreadable date is refused.
    // True when it is shown.
    bool DispNikkei();
    void cmdFnuc_Click(int index);

protected:
    void showEvent(QShowEvent* event) override;
    bool enterPressed(QWidget* from) override;

private:
    void printClosing();
    void outputCsv();

    xDate* txtDate;
    QLabel* lblDay;
    GridView* spdData;
    QLabel* lblNote;
    std::array<xCmdBtn*, 12> cmdFnuc;

    FunctionKeyRow* keys_;
    RowModel<ClosingLine>* lines_;
    std::optional<DailyClosing> shown_;
    bool loaded_ = false;
};
