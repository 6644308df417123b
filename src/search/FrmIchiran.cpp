#include "search/FrmIchiran.h"

#include "customer/FrmKokyaku.h"
#include "data/CustomerSearch.h"
#include "data/CustomerStore.h"
#include "domain/PrintMarks.h"
#include "frame/Conflicts.h"
#include "frame/CsvExport.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "platform/controls/FunctionKeyRow.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xLabel.h"
#include "platform/ui/Clock.h"
#include "platform/ui/ShowModal.h"
#include "platform/ui/WaitCursor.h"
#include "print/FrmPrint.h"
#include "search/FrmIchiranSub.h"
#include "search/FrmTotalKensaku.h"
#include "search/ListCsv.h"
#include "search/ListGrid.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressDialog>
#include <QVBoxLayout>

namespace {

const QString ScreenName = QStringLiteral("顧客一覧照会画面");
// The folder under the program folder that the list's CSV files are offered in.
// A list longer than this shows a progress bar while it is written.
constexpr size_t LongList = 2000;
enum Key { F1 = 0, F2, F3, F4, F5, F6, F7, F8, F9, F10, F11, F12 };

} // namespace

FrmIchiran::FrmIchiran(QWidget* parent) : Screen(parent) {
    setObjectName(QStringLiteral("FrmIchiran"));
    setWindowTitle(QStringLiteral("顧客一覧照会"));
    buildForm();
    connect(keys_, &FunctionKeyRow::pressed, this, &FrmIchiran::cmdFnuc_Click);
    connect(spdData, &GridView::clicked, this, [this](int row, int column) {
        if (column == ListGrid::Mark && row >= 1 && row <= spdData->maxRows())
            spdData->toggleMarks(row, row);
    });
    connect(spdData, &GridView::blockSelected, this,
            [this](int top, int, int bottom, int) { spdData->toggleMarks(top, bottom); });
    connect(spdData, &ListGrid::marksChanged, this,
            [this](int marked) { lblPrintCnt->setText(QString::number(marked)); });
    Form_Load();
}

void FrmIchiran::buildForm() {
    spdData = new ListGrid(this);
    lblTaisyouCnt = new xLabel(this);
    lblTaisyouCnt->setObjectName(QStringLiteral("lblTaisyouCnt"));
    lblPrintCnt = new xLabel(this);
    lblPrintCnt->setObjectName(QStringLiteral("lblPrintCnt"));
    for (xLabel* counter : {lblTaisyouCnt, lblPrintCnt}) {
        counter->setMinimumWidth(90);
        counter->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    keys_ = new FunctionKeyRow(this);
    keys_->setCaptions(
        {QStringLiteral("閉じる"), QStringLiteral("CSV出力"), QStringLiteral("顧客削除"),
         QStringLiteral("印刷"), QStringLiteral("登録"), QStringLiteral("検索条件"),
         QStringLiteral("顧客照会"), QStringLiteral("売上履歴"), QStringLiteral("氏名順"),
         QStringLiteral("住所順"), QStringLiteral("売上順"), QStringLiteral("来店日順")});
    cmdFnuc = keys_->buttons();
    auto* counters = new QHBoxLayout;
    counters->addStretch();
    counters->addWidget(new QLabel(QStringLiteral("対象者数"), this));
    counters->addWidget(lblTaisyouCnt);
    counters->addSpacing(16);
    counters->addWidget(new QLabel(QStringLiteral("印刷対象数"), this));
    counters->addWidget(lblPrintCnt);
    auto* page = new QVBoxLayout(this);
    page->addLayout(counters);
    page->addWidget(spdData, 1);
    page->addWidget(keys_);
    resize(1270, 780);
}

void FrmIchiran::Form_Load() {
    Procedure(ScreenName, QStringLiteral("Form_Load"), QStringLiteral("顧客一覧画面ロード処理"),
              [&] {
                  spdData->clearRows();
                  lblTaisyouCnt->setText(QStringLiteral("0"));
                  lblPrintCnt->setText(QStringLiteral("0"));
                  setListKeys(false);
                  jyoken_ = new FrmTotalKensaku(this);
              });
}

void FrmIchiran::setListKeys(bool enabled) {
    for (int key : {F2, F3, F4, F5, F7, F8, F9, F10, F11, F12})
        cmdFnuc[key]->setEnabled(enabled);
}

int FrmIchiran::currentRow() const {
    const int row = spdData->activeRow();
    return row >= 1 && row <= spdData->maxRows() ? row : 0;
}

bool FrmIchiran::hasUnsavedEdits() const {
    return spdData->hasUnsavedEdits();
}

void FrmIchiran::Serchkokykau() {
    Procedure(ScreenName, QStringLiteral("Serchkokykau"), QStringLiteral("顧客マスタ側検索処理"),
              [&] {
                  spdData->clearRows();
                  lblTaisyouCnt->setText(QStringLiteral("0"));
                  spdData->setShownResult(shown_.result);
                  std::vector<ListRow> rows;
                  SearchCustomers(shown_.conditions, Today().year(), [&](const ListedCustomer& c) {
                      const bool mark =
                          MarkedOnSearch(c.jusyo1, c.kazok, shown_.result, shown_.familyMode);
                      rows.push_back({c, c, mark});
                  });
                  // The screen is not drawn while the rows come in: the counters are set at the
                  // end.
                  spdData->showRows(std::move(rows));
                  lblTaisyouCnt->setText(QString::number(spdData->maxRows()));
                  const bool found = spdData->maxRows() > 0;
                  setListKeys(found);
                  CmnDspMsg(found ? OpeInf_008 : OpeErr_012);
              });
}

void FrmIchiran::OutputCsv() {
    const QString title = windowTitle();
    ExportCsv(ScreenName, title,
              QStringLiteral("顧客一覧_") + Now().toString(QStringLiteral("yyyyMMdd_HHmm")) +
                  QStringLiteral(".csv"),
              [&](const QString& path) {
                  const std::vector<ListRow>& rows = spdData->rows();
                  std::unique_ptr<QProgressDialog> bar;
                  if (rows.size() > LongList) {
                      bar = std::make_unique<QProgressDialog>(
                          QStringLiteral("ＣＳＶファイルに出力しています…"), QStringLiteral("中止"),
                          0, int(rows.size()), this);
                      bar->setObjectName(QStringLiteral("prgCsv"));
                      bar->setWindowTitle(title);
                      bar->setWindowModality(Qt::WindowModal);
                      bar->setMinimumDuration(0);
                  }
                  return WriteListCsv(path, rows, Today(), [&](int done) {
                      if (!bar)
                          return true;
                      bar->setValue(done);
                      return !bar->wasCanceled();
                  });
              });
}

void FrmIchiran::toggleDeletion() {
    const int row = currentRow();
    if (row != 0)
        spdData->toggleDeletion(row);
}

namespace {

// Keeps a row's conflict for the box at the end of the pass.
ProcedureOptions collectConflicts(std::vector<std::pair<qint64, QString>>& conflicts,
                                  qint64 customerNo) {
    return {.ownMessage = [&conflicts, customerNo](const Failure& failure) {
        if (!IsConflict(failure))
            return false;
        conflicts.emplace_back(customerNo, failure.description());
        return true;
    }};
}

} // namespace

bool FrmIchiran::UpDataSan_Kokyaku(int row) {
    const ListRow& shown = spdData->row(row);
    return Procedure(
        ScreenName, QStringLiteral("UpDataSan_Kokyaku"), QStringLiteral("顧客データ保存処理"),
        [&] { CustomerStore::UpdateListed(shown, Today()); },
        collectConflicts(conflicts_, shown.read.no));
}

bool FrmIchiran::DelDataSan_Kokyaku(int row) {
    const ListRow& shown = spdData->row(row);
    return Procedure(
        ScreenName, QStringLiteral("DelDataSan_Kokyaku"), QStringLiteral("顧客データ削除処理"),
        [&] { CustomerStore::RemoveListed(shown); }, collectConflicts(conflicts_, shown.read.no));
}

void FrmIchiran::tellConflicts() {
    QStringList told;
    for (const auto& conflict : conflicts_)
        told << conflict.second;
    const bool readAgain = CmnAskReadAgain(
        told.join(QLatin1Char('\n')),
        QStringLiteral("削除された顧客の行は灰色、変更された顧客の行は水色になります。"));
    if (readAgain)
        Procedure(
            ScreenName, QStringLiteral("readAgain"), QStringLiteral("顧客データ再読込処理"), [&] {
                for (const auto& conflict : conflicts_)
                    for (int row = 1; row <= spdData->maxRows(); ++row)
                        if (spdData->row(row).read.no == conflict.first)
                            spdData->replaceRow(row, ReadAgain(spdData->row(row),
                                                               FindListedCustomer(conflict.first)));
            });
    conflicts_.clear();
}

void FrmIchiran::savePass() {
    conflicts_.clear();
    bool anything = false;
    for (int row = 1; row <= spdData->maxRows();) {
        const ListState state = spdData->row(row).state;
        if (state == ListState::Changed) {
            anything = true;
            if (UpDataSan_Kokyaku(row))
                spdData->markSaved(row);
        } else if (state == ListState::ToDelete) {
            anything = true;
            if (DelDataSan_Kokyaku(row)) {
                spdData->removeRow(row);
                continue; // the next row has moved up into this place
            }
        }
        ++row;
    }
    lblTaisyouCnt->setText(QString::number(spdData->maxRows()));
    if (!anything)
        CmnDspMsg(OpeErr_012);
    if (!conflicts_.empty())
        tellConflicts();
}

bool FrmIchiran::refuseWhileEditing() {
    if (!hasUnsavedEdits())
        return false;
    CmnDspMsg(OpeErr_015);
    return true;
}

void FrmIchiran::sortBy(int index) {
    if (refuseWhileEditing())
        return;
    const ListGrid::Order orders[] = {ListGrid::Order::Kana, ListGrid::Order::Address,
                                      ListGrid::Order::Sales, ListGrid::Order::LastVisit};
    spdData->sortBy(orders[index - F9]);
}

void FrmIchiran::openRegister(int row) {
    const qint64 customerNo = spdData->row(row).now.no;
    if (!FrmKokyaku::Open(this, customerNo))
        return;
    CmnDspMsg(OpeInf_007);
    readAgain(customerNo);
}

void FrmIchiran::readAgain(qint64 customerNo) {
    // The register may have renamed or deleted the customer: the row shows what is stored, so
    // that a later correction in the list never writes back what the register replaced.
    Procedure(ScreenName, QStringLiteral("readAgain"), QStringLiteral("顧客データ再読込処理"),
              [&] {
                  const auto& rows = spdData->rows();
                  const auto found = std::find_if(rows.begin(), rows.end(), [&](const ListRow& r) {
                      return r.now.no == customerNo;
                  });
                  if (found == rows.end())
                      return;
                  const int row = int(found - rows.begin()) + 1;
                  const std::optional<ListedCustomer> stored = FindListedCustomer(customerNo);
                  if (!stored) {
                      spdData->removeRow(row);
                      lblTaisyouCnt->setText(QString::number(spdData->maxRows()));
                      return;
                  }
                  ListRow fresh = *found;
                  if (stored->kazok != fresh.now.kazok)
                      fresh.marked = MarkAfterFamilyChange(stored->kazok, shown_.result);
                  fresh.now = fresh.read = *stored;
                  spdData->replaceRow(row, fresh);
              },
              {.trace = false});
}

void FrmIchiran::cmdFnuc_Click(int index) {
    switch (index) {
    case F1:
        if (!hasUnsavedEdits() || CmnDspMsg(OpeQes_007) == Answer::Yes)
            done(QDialog::Accepted);
        break;
    case F2:
        OutputCsv();
        break;
    case F3:
        toggleDeletion();
        break;
    case F4: {
        FrmPrint print(spdData->rows(), shown_.result == 2, this);
        ShowModal(print);
        break;
    }
    case F5:
        if (CmnDspMsg(OpeQes_001) == Answer::Yes)
            savePass();
        break;
    case F6: {
        if (hasUnsavedEdits())
            CmnDspMsg(OpeErr_016);
        ShowModal(*jyoken_);
        // A cancelled conditions screen leaves the list and the search it shows as they are.
        const int result = jyoken_->Result();
        if (result != 0) {
            shown_ = {jyoken_->conditions(), result, GlbKazokTaisyou};
            WaitCursor wait;
            Serchkokykau();
        }
        break;
    }
    case F7: {
        if (refuseWhileEditing())
            break;
        const int row = currentRow();
        if (row == 0) {
            CmnDspMsg(OpeErr_002);
            break;
        }
        openRegister(row);
        break;
    }
    case F8: {
        const int row = currentRow();
        if (row == 0) {
            CmnDspMsg(OpeErr_002);
            break;
        }
        FrmIchiranSub inquiry(this);
        inquiry.setUser(spdData->row(row).now.no);
        inquiry.setConditions(shown_.conditions);
        ShowModal(inquiry);
        break;
    }
    case F9:
    case F10:
    case F11:
    case F12:
        sortBy(index);
        break;
    default:
        break;
    }
}

void FrmIchiran::closeEvent(QCloseEvent* event) {
    event->ignore();
    cmdFnuc_Click(F1);
}
