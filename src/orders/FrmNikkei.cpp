#include "orders/FrmNikkei.h"

#include "data/DailyClosingStore.h"
#include "frame/CsvExport.h"
#include "frame/DateFields.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "platform/Format.h"
#include "platform/controls/FunctionKeyRow.h"
#include "platform/controls/GridView.h"
#include "platform/controls/RowModel.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xDate.h"
#include "platform/ui/Caption.h"
#include "platform/ui/Clock.h"
#include "platform/ui/Named.h"
#include "platform/ui/WaitCursor.h"
#include "print/DailyClosingPrint.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>

namespace {

const QString ScreenName = DailyClosingTitle;
// The folder under the program folder that CSV files are offered in, as the customer list's.
enum Key { F1 = 0, F5 = 4, F9 = 8, F10 = 9 };
constexpr auto Right = Qt::AlignRight | Qt::AlignVCenter;

} // namespace

FrmNikkei::FrmNikkei(QWidget* parent) : Screen(parent) {
    setObjectName(QStringLiteral("FrmNikkei"));
    setWindowTitle(ScreenName);
    txtDate = Named(new xDate(this), QStringLiteral("txtDate"));
    txtDate->setDate(Today());
    txtDate->setFixedWidth(120);
    CmnRefuseUnreadableDateOnLeave(txtDate);
    lblDay = Named(new QLabel(this), QStringLiteral("lblDay"));
    auto* top = new QHBoxLayout;
    AddCaptioned(top, QStringLiteral("日付"), txtDate);
    top->addSpacing(24);
    top->addWidget(lblDay, 1);

    spdData = Named(new GridView(this), QStringLiteral("spdData"));
    // A section is named on its first line.
    const auto sectionText = [this](const ClosingLine& l) {
        const std::vector<ClosingLine>& rows = lines_->rows();
        const auto at = std::find(rows.begin(), rows.end(), l);
        return at == rows.begin() || std::prev(at)->section != l.section ? l.section : QString();
    };
    lines_ = new RowModel<ClosingLine>(
        {{QStringLiteral("区分"), sectionText},
         {QStringLiteral("項目"),
          [](const ClosingLine& l) {
              return l.item;
          }},
         {QStringLiteral("件数"),
          [](const ClosingLine& l) { return l.count ? QString::number(*l.count) : QString(); },
          Right},
         {QStringLiteral("金額（円）"), &ClosingAmountText, Right}},
        this);
    spdData->setModel(lines_);
    spdData->setRowSelection();
    spdData->setColumnWidths({140, 360, 120, 200});
    spdData->setLastColumnStretch(true);
    spdData->setMinimumSize(900, 540);

    lblNote = Named(new QLabel(OutstandingDefinition, this), QStringLiteral("lblNote"));
    lblNote->setWordWrap(true);

    keys_ = new FunctionKeyRow(this);
    keys_->setCaptions({QStringLiteral("閉じる"), QString(), QString(), QString(),
                        QStringLiteral("表示"), QString(), QString(), QString(),
                        QStringLiteral("印刷"), QStringLiteral("CSV出力"), QString(), QString()});
    cmdFnuc = keys_->buttons();

    auto* page = new QVBoxLayout(this);
    page->addLayout(top);
    page->addWidget(spdData, 1);
    page->addWidget(lblNote);
    page->addWidget(keys_);
    resize(1000, 760);
    setTabOrder(txtDate, spdData->view());
    connect(keys_, &FunctionKeyRow::pressed, this, &FrmNikkei::cmdFnuc_Click);
}

void FrmNikkei::showEvent(QShowEvent* event) {
    Screen::showEvent(event);
    if (!loaded_) {
        loaded_ = true;
        DispNikkei();
        txtDate->setFocus();
        txtDate->selectAll();
    }
}

// Enter in the date shows its day.
bool FrmNikkei::enterPressed(QWidget* from) {
    if (from != txtDate)
        return Screen::enterPressed(from);
    DispNikkei();
    return true;
}

bool FrmNikkei::DispNikkei() {
    if (CmnRefuseUnreadableDate(txtDate))
        return false;
    if (txtDate->isEmpty()) {
        CmnDspMsg(OpeErr_001);
        txtDate->setFocus();
        return false;
    }
    const QDate day = txtDate->date();
    return Procedure(ScreenName, QStringLiteral("DispNikkei"), QStringLiteral("日計表の表示"), [&] {
        WaitCursor wait;
        DailyClosing closing = DailyClosingStore::Read(day);
        lines_->setRows(ClosingLines(closing));
        lblDay->setText(day.toString(QStringLiteral("yyyy/MM/dd")) + QStringLiteral(" の日計"));
        shown_ = std::move(closing);
    });
}

void FrmNikkei::cmdFnuc_Click(int index) {
    FunctionKeyProcedure(ScreenName, [&] {
        switch (index) {
        case F1:
            done(QDialog::Accepted);
            break;
        case F5:
            DispNikkei();
            break;
        case F9:
            printClosing();
            break;
        case F10:
            outputCsv();
            break;
        default:
            break;
        }
    });
}

void FrmNikkei::printClosing() {
    if (DispNikkei())
        PrintDailyClosing(this, *shown_);
}

// Written as the customer list writes its CSV: offered in Export/ of the program folder, written
// whole or not at all, and only then said to be written.
void FrmNikkei::outputCsv() {
    if (!DispNikkei())
        return;
    const DailyClosing closing = *shown_;
    ExportCsv(ScreenName, windowTitle(),
              QStringLiteral("日計表_") + closing.day.toString(QStringLiteral("yyyyMMdd")) +
                  QStringLiteral(".csv"),
              [&](const QString& path) {
                  WriteDailyClosingCsv(path, closing);
                  return true;
              });
}
