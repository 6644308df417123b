#include "search/FrmIchiran.h"

#include "customer/FrmKokyaku.h"
#include "frame/BasCmnSubFun.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "platform/Format.h"
#include "platform/controls/FunctionKeyRow.h"
#include "platform/controls/SpreadGrid.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xLabel.h"
#include "platform/db/SqlText.h"
#include "platform/ui/Clock.h"
#include "platform/ui/MsgBox.h"
#include "platform/ui/ShowModal.h"
#include "platform/ui/WaitCursor.h"
#include "print/FrmPrint.h"
#include "search/CustomerSearch.h"
#include "search/FrmIchiranSub.h"
#include "search/FrmTotalKensaku.h"
#include "search/PrintMarks.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

const QColor FrmIchiran::White(255, 255, 255);
const QColor FrmIchiran::Yellow(255, 255, 128);
const QColor FrmIchiran::Red(255, 128, 128);

namespace {

const QString ScreenName = QStringLiteral("顧客一覧照会画面");
enum Key { F1 = 0, F3 = 2, F4 = 3, F5 = 4, F6 = 5, F7 = 6, F8 = 7, F9 = 8, F10, F11, F12 };
enum Col { No = 1, Mark, Name, Kana, Yubin, Jusyo1, Jusyo2, Tel, Kazok, Total, LastVisit, Work };
const QString Changed = QStringLiteral("変更");

} // namespace

FrmIchiran::FrmIchiran(QWidget* parent) : Screen(parent) {
    setObjectName(QStringLiteral("FrmIchiran"));
    setWindowTitle(QStringLiteral("顧客一覧照会"));
    buildForm();
    connect(keys_, &FunctionKeyRow::pressed, this, &FrmIchiran::cmdFnuc_Click);
    connect(spdData, &SpreadGrid::clicked, this, [this](int row, int column) {
        if (column == Mark && row >= 1 && row <= spdData->maxRows())
            toggleMark(row);
    });
    connect(spdData, &SpreadGrid::blockSelected, this, [this](int top, int, int bottom, int) {
        for (int row = std::max(1, top); row <= std::min(bottom, spdData->maxRows()); ++row)
            toggleMark(row);
    });
    connect(spdData, &SpreadGrid::cellChanged, this, &FrmIchiran::cellChanged);
    Form_Load();
}

void FrmIchiran::buildForm() {
    spdData = new SpreadGrid(this);
    spdData->setObjectName(QStringLiteral("spdData"));
    spdData->setHeaders({QStringLiteral("顧客№"), QStringLiteral("印刷"), QStringLiteral("氏 名"),
                         QStringLiteral("かな名"), QStringLiteral("郵便番号"),
                         QStringLiteral("住所１"), QStringLiteral("住所２"),
                         QStringLiteral("T E L"), QStringLiteral("家族"),
                         QStringLiteral("売上累計"), QStringLiteral("最終来店"), QString()});
    spdData->setColumnWidths({60, 40, 120, 130, 80, 190, 110, 116, 70, 92, 92});
    spdData->setColumnNumeric(No, true);
    spdData->setColumnNumeric(Total, true);
    spdData->setColumnDisplayFormat(Total, QStringLiteral("###,###,##0"));
    spdData->setColumnNumeric(LastVisit, true);
    spdData->setColumnDropDown(Mark, {QString(), QStringLiteral("●")});
    spdData->setColumnDropDown(Kazok, {QStringLiteral("代表"), QStringLiteral("家族"),
                                       QStringLiteral("個人"), QStringLiteral("DM不要")});
    for (int column = Name; column <= Kazok; ++column)
        spdData->setColumnEditable(column, true);
    spdData->setColumnHidden(Work, true);
    lblTaisyouCnt = new xLabel(this);
    lblTaisyouCnt->setObjectName(QStringLiteral("lblTaisyouCnt"));
    lblPrintCnt = new xLabel(this);
    lblPrintCnt->setObjectName(QStringLiteral("lblPrintCnt"));
    for (xLabel* counter : {lblTaisyouCnt, lblPrintCnt}) {
        counter->setMinimumWidth(90);
        counter->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    keys_ = new FunctionKeyRow(this);
    keys_->setCaptions({QStringLiteral("閉じる"), QString(), QStringLiteral("顧客削除"),
                        QStringLiteral("印刷"), QStringLiteral("登録"), QStringLiteral("検索条件"),
                        QStringLiteral("顧客照会"), QStringLiteral("売上履歴"),
                        QStringLiteral("氏名順"), QStringLiteral("住所順"),
                        QStringLiteral("売上順"), QStringLiteral("来店日順")});
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
    for (int key : {F3, F5, F7, F8, F9, F10, F11, F12})
        cmdFnuc[key]->setEnabled(enabled);
    cmdFnuc[F4]->setEnabled(enabled);
}

int FrmIchiran::currentRow() const {
    const int row = spdData->activeRow();
    return row >= 1 && row <= spdData->maxRows() ? row : 0;
}

bool FrmIchiran::hasUnsavedEdits() const {
    for (int row = 1; row <= spdData->maxRows(); ++row)
        if (spdData->rowColor(row) == Yellow)
            return true;
    return false;
}

void FrmIchiran::Serchkokykau() {
    Procedure(
        ScreenName, QStringLiteral("Serchkokykau"), QStringLiteral("顧客マスタ側検索処理"), [&] {
            spdData->clearRows();
            lblTaisyouCnt->setText(QStringLiteral("0"));
            lblPrintCnt->setText(QStringLiteral("0"));
            spdData->setRedraw(false);
            int marked = 0;
            SearchCustomers(jyoken_->conditions(), Today().year(), [&](const ListedCustomer& c) {
                const bool mark = MarkedOnSearch(c.jusyo1, c.kazok, result_, GlbKazokTaisyou);
                marked += mark ? 1 : 0;
                const int row = spdData->addRow(QStringList{
                    QString::number(c.no), mark ? QStringLiteral("1") : QStringLiteral("0"), c.name,
                    c.kana, c.yubin, c.jusyo1, c.jusyo2, c.tel, QString::number(c.kazok),
                    QString::number(c.total), c.lastVisit > 0 ? FormatYmd(c.lastVisit) : QString(),
                    QString()});
                spdData->setRowColor(row, White);
            });
            // The screen is not drawn while the rows come in: the counters are set once at the end.
            lblTaisyouCnt->setText(QString::number(spdData->maxRows()));
            lblPrintCnt->setText(QString::number(marked));
            spdData->setRedraw(true);
            const bool found = spdData->maxRows() > 0;
            setListKeys(found);
            CmnDspMsg(found ? OpeInf_008 : OpeErr_012);
        });
    spdData->setRedraw(true);
}

void FrmIchiran::toggleMark(int row) {
    spdData->setText(row, Mark,
                     spdData->text(row, Mark).toInt() == 0 ? QStringLiteral("1")
                                                           : QStringLiteral("0"));
    countMarks();
}

void FrmIchiran::countMarks() {
    int marked = 0;
    for (int row = 1; row <= spdData->maxRows(); ++row)
        marked += spdData->text(row, Mark) == QLatin1String("1") ? 1 : 0;
    lblPrintCnt->setText(QString::number(marked));
}

void FrmIchiran::cellChanged(int row, int column) {
    if (column <= Mark)
        return;
    spdData->setRowColor(row, Yellow);
    if (column == Kazok) {
        spdData->setText(row, Mark,
                         MarkAfterFamilyChange(spdData->text(row, Kazok).toInt(), result_));
        countMarks();
    }
}

void FrmIchiran::toggleDeletion() {
    const int row = currentRow();
    if (row == 0)
        return;
    const QColor colour = spdData->rowColor(row);
    if (colour == Red) {
        spdData->setRowColor(row, spdData->text(row, Work) == Changed ? Yellow : White);
        return;
    }
    if (colour == Yellow)
        spdData->setText(row, Work, Changed);
    spdData->setRowColor(row, Red);
}

bool FrmIchiran::UpDataSan_Kokyaku(int row) {
    return Procedure(
        ScreenName, QStringLiteral("UpDataSan_Kokyaku"), QStringLiteral("顧客データ保存処理"), [&] {
            const auto cell = [&](int column) {
                return spdData->text(row, column);
            };
            gCon.beginTrans();
            gCon.execute(QStringLiteral("update San_user set user_Name = ") + SqlStr(cell(Name)) +
                         QStringLiteral(",user_Kana = ") + SqlStr(cell(Kana)) +
                         QStringLiteral(",user_Yubin = ") + SqlStr(cell(Yubin)) +
                         QStringLiteral(",user_Jusyo1 = ") + SqlQuote(cell(Jusyo1)) +
                         QStringLiteral(",user_Jusyo2 = ") + SqlStr(cell(Jusyo2)) +
                         QStringLiteral(",user_Tel = ") + SqlStr(cell(Tel)) +
                         QStringLiteral(",user_kazok_f = ") + SqlNum(cell(Kazok).toInt()) +
                         QStringLiteral(",user_entry2 = ") +
                         SqlQuote(Today().toString(QStringLiteral("yyyy/MM/dd"))) +
                         QStringLiteral(" where user_No = ") + SqlNum(cell(No).toLongLong()));
            gCon.commitTrans();
        });
}

bool FrmIchiran::DelDataSan_Kokyaku(int row) {
    return Procedure(
        ScreenName, QStringLiteral("DelDataSan_Kokyaku"), QStringLiteral("顧客データ削除処理"),
        [&] {
            const QString number = SqlNum(spdData->text(row, No).toLongLong());
            gCon.beginTrans();
            gCon.execute(QStringLiteral("delete from San_User where User_No = ") + number);
            gCon.execute(QStringLiteral("delete from San_Uriage where Uri_UserNo = ") + number);
            gCon.commitTrans();
        });
}

void FrmIchiran::savePass() {
    bool anything = false;
    for (int row = 1; row <= spdData->maxRows();) {
        const QColor colour = spdData->rowColor(row);
        if (colour == Yellow) {
            anything = true;
            if (UpDataSan_Kokyaku(row))
                spdData->setRowColor(row, White);
        } else if (colour == Red) {
            anything = true;
            if (DelDataSan_Kokyaku(row)) {
                spdData->deleteRow(row);
                continue; // the next row has moved up into this place
            }
        }
        ++row;
    }
    lblTaisyouCnt->setText(QString::number(spdData->maxRows()));
    countMarks();
    if (!anything)
        CmnDspMsg(OpeErr_012);
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
    const std::vector<SortKey> keys[] = {
        {{Kana, Qt::AscendingOrder}},
        {{Jusyo1, Qt::AscendingOrder}},
        {{Total, Qt::DescendingOrder}, {Kana, Qt::AscendingOrder}},
        {{LastVisit, Qt::DescendingOrder}, {Kana, Qt::AscendingOrder}}};
    spdData->sort(keys[index - F9]);
}

void FrmIchiran::cmdFnuc_Click(int index) {
    switch (index) {
    case F1:
        if (!hasUnsavedEdits() || CmnDspMsg(OpeQes_007) == Answer::Yes)
            done(QDialog::Accepted);
        break;
    case F3:
        toggleDeletion();
        break;
    case F4: {
        FrmPrint print(spdData, result_ == 2, this);
        ShowModal(print);
        break;
    }
    case F5:
        if (CmnDspMsg(OpeQes_001) == Answer::Yes)
            savePass();
        break;
    case F6:
        if (hasUnsavedEdits())
            CmnDspMsg(OpeErr_016);
        ShowModal(*jyoken_);
        result_ = jyoken_->Result();
        if (result_ != 0) {
            WaitCursor wait;
            Serchkokykau();
        }
        break;
    case F7: {
        if (refuseWhileEditing())
            break;
        const int row = currentRow();
        if (row == 0) {
            CmnDspMsg(OpeErr_002);
            break;
        }
        FrmKokyaku reg(this);
        reg.setSyori(spdData->text(row, No).toLongLong());
        ShowModal(reg);
        if (reg.Koushin())
            CmnDspMsg(OpeInf_007);
        break;
    }
    case F8: {
        const int row = currentRow();
        if (row == 0) {
            CmnDspMsg(OpeErr_002);
            break;
        }
        FrmIchiranSub inquiry(this);
        inquiry.setUser(spdData->text(row, No).toLongLong());
        inquiry.setConditions(jyoken_->conditions());
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
