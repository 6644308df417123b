#include "Tasks.h"

#include "analysis/FrmBunseki.h"
#include "customer/FrmKokyaku.h"
#include "customer/UriageEntry.h"
#include "data/AnalysisStore.h"
#include "frame/Globals.h"
#include "frame/Log.h"
#include "history/FrmRireki.h"
#include "orders/FrmOwatasi.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xKana.h"
#include "platform/controls/xNum.h"
#include "platform/db/Transaction.h"
#include "platform/report/Report.h"
#include "platform/ui/Named.h"
#include "platform/ui/ShowModal.h"
#include "print/FrmPrint.h"
#include "search/FrmIchiran.h"
#include "search/FrmIchiranSub.h"
#include "search/FrmKensaku.h"
#include "search/FrmTotalKensaku.h"
#include "search/ListGrid.h"

#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTabBar>
#include <algorithm>
#include <map>

namespace {

// A control of the screen by its name.
template <class Control> Control& at(const QObject& screen, const QString& name, int index = -1) {
    return RequireNamedChild<Control>(screen, name, index);
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double timeMs(const std::function<void()>& action) {
    QElapsedTimer timer;
    timer.start();
    action();
    return double(timer.nsecsElapsed()) / 1e6;
}

// The fastest of several runs of a statement read to its end, every field of every row.
double floorOf(const QString& sql, int runs = 5) {
    std::vector<double> times;
    for (int i = 0; i < runs; ++i)
        times.push_back(timeMs([&] {
            RecordSet rows = gCon.execute(sql);
            for (; !rows.eof(); rows.moveNext())
                for (int f = 0; f < rows.fieldCount(); ++f)
                    rows.field(f);
        }));
    return *std::min_element(times.begin(), times.end());
}

struct Floor {
    double ms = -1;
    QString kind;
};

TaskTimes repeat(int runs, const std::function<void()>& setUp, const std::function<void()>& action,
                 const Floor& floor) {
    std::vector<double> times;
    qint64 statements = 0;
    for (int i = 0; i < runs; ++i) {
        if (setUp)
            setUp();
        const qint64 before = Connection::statementsSent();
        times.push_back(timeMs(action));
        statements += Connection::statementsSent() - before;
    }
    return {median(times), floor.ms, floor.kind, double(statements) / runs};
}

Floor one(double ms) {
    return {ms, ms > 0 ? QStringLiteral("one") : QString()};
}

// Shows screens opened from a task without blocking: they load and come back at once.
void screensComeBack() {
    SetShowModalHandler([](QDialog& screen) {
        screen.show();
        screen.hide();
        return int(QDialog::Accepted);
    });
}

const QString CustomerColumns = QStringLiteral(
    "u.User_No, u.User_Name, u.User_Kana, u.User_Yubin, u.User_Jusyo1, u.User_Jusyo2, u.User_Tel, "
    "u.User_Kazok_F");
const QString Totals = QStringLiteral(
    "left join (select Uri_UserNo, sum(Uri_KingaKei) as total, max(Uri_Date) as last from "
    "San_Uriage group by Uri_UserNo) v on v.Uri_UserNo = u.User_No");

QString listFloor(const QString& where) {
    return QStringLiteral("select ") + CustomerColumns +
           QStringLiteral(", v.total, v.last from San_User u ") + Totals + where +
           QStringLiteral(" order by u.User_Kana");
}

// The same list with each listed customer's total and last visit looked up through the index:
// faster than summing every purchase when the conditions leave few customers.
const QString RowTotal =
    QStringLiteral("(select sum(r.Uri_KingaKei) from San_Uriage r where r.Uri_UserNo = u.User_No)");
QString perRowFloor(const QString& where) {
    return QStringLiteral("select ") + CustomerColumns + QStringLiteral(", ") + RowTotal +
           QStringLiteral(", (select max(r.Uri_Date) from San_Uriage r where r.Uri_UserNo = "
                          "u.User_No) from San_User u") +
           where + QStringLiteral(" order by u.User_Kana");
}

// The fairer of the two floors: whichever statement gives the list faster.
Floor fairListFloor(const QString& joinWhere, const QString& perRowWhere) {
    const double join = floorOf(listFloor(joinWhere), 3);
    const double perRow = floorOf(perRowFloor(perRowWhere), 3);
    return perRow < join ? Floor{perRow, QStringLiteral("per-row")}
                         : Floor{join, QStringLiteral("join")};
}

TaskTimes quickSearch(int runs, const QString& kana, const QString& tel, const QString& like) {
    screensComeBack();
    FrmKensaku search;
    at<xKana>(search, QStringLiteral("txtKana")).setText(kana);
    at<xField>(search, QStringLiteral("txtTel")).setText(tel);
    return repeat(
        runs, {}, [&] { search.cmdKensak_Click(); },
        one(floorOf(QStringLiteral("select User_No, User_Name, User_Tel, User_Jusyo1, User_Jusyo2 "
                                   "from San_User where ") +
                    like + QStringLiteral(" order by User_Kana"))));
}

// The customer list searched with the conditions the setter ticks.
void searchWith(const std::function<void(FrmTotalKensaku&)>& conditions) {
    SetShowModalHandler([conditions](QDialog& screen) {
        if (auto* search = qobject_cast<FrmTotalKensaku*>(&screen)) {
            search->JyokenClear();
            conditions(*search);
            search->cmdKensaku_Click();
        }
        return int(QDialog::Accepted);
    });
}

// The where of the per-row floor is that of the join unless given.
TaskTimes customerList(int runs, const std::function<void(FrmTotalKensaku&)>& conditions,
                       const QString& floorWhere, const QString& perRowWhere = QString()) {
    FrmIchiran list;
    searchWith(conditions);
    return repeat(
        runs, {}, [&] { list.cmdFnuc_Click(5); },
        fairListFloor(floorWhere, perRowWhere.isEmpty() ? floorWhere : perRowWhere));
}

// A key of the list of all customers: F9 to F12 sort it, anything else marks every row as a
// block.
TaskTimes onListOfAll(int runs, int key) {
    FrmIchiran list;
    searchWith([](FrmTotalKensaku&) {});
    list.cmdFnuc_Click(5);
    const int rows = at<ListGrid>(list, QStringLiteral("spdData")).maxRows();
    return repeat(
        runs, {},
        [&] {
            if (key >= 8)
                list.cmdFnuc_Click(key);
            else
                emit at<ListGrid>(list, QStringLiteral("spdData")).blockSelected(1, 1, rows, 11);
        },
        {});
}

// The first thousand customers, printed to a PDF as a ledger or as postcards.
TaskTimes printThousand(int runs, int form) {
    SetReportOutput(ReportOutput::PdfOnly);
    std::vector<ListRow> list;
    RecordSet rows = gCon.execute(listFloor(QStringLiteral(" where u.User_No <= 1000")));
    for (; !rows.eof(); rows.moveNext()) {
        const ListedCustomer c{rows.field(0).toLongLong(),
                               rows.field(1).toString(),
                               rows.field(2).toString(),
                               rows.field(3).toString(),
                               rows.field(4).toString(),
                               rows.field(5).toString(),
                               rows.field(6).toString(),
                               rows.field(7).toInt(),
                               rows.field(8).toLongLong(),
                               rows.field(9).toLongLong(),
                               {}};
        list.push_back({c, c, true});
    }
    FrmPrint print(std::move(list), true);
    return repeat(runs, {}, [&] { print.cmdPrint_Click(form); }, {});
}

// The trace lines of the amount list (two for each customer checked), written alone.
TaskTimes amountListLog(int runs) {
    const qint64 customers =
        gCon.execute(QStringLiteral("select count(*) from San_User")).field(0).toLongLong();
    const QString where = QStringLiteral("顧客一覧照会画面");
    return repeat(runs, {},
                  [&] {
                      LogBatch batch;
                      for (qint64 i = 0; i < customers; ++i) {
                          CmnWriteLog(where, QStringLiteral("SerchUriage"),
                                      QStringLiteral("顧客売上側検索処理"), QString());
                          CmnWriteLog(where, QStringLiteral("CalUriageGaku"),
                                      QStringLiteral("顧客売上額集計検索処理"), QString());
                      }
                  },
                  {});
}

// The pick-up board opened: its open orders read and shown. The floor: the same orders with
// their customers, purchases and payments in one statement.
TaskTimes boardOpen(int runs) {
    screensComeBack();
    return repeat(
        runs, {},
        [] {
            FrmOwatasi board;
            ShowModal(board);
        },
        one(floorOf(QStringLiteral(
            "select o.*, u.Uri_ItemNo, u.Uri_Fm_Name, u.Uri_Lz_Name, u.Uri_KingaKei, c.User_Name, "
            "c.User_Tel, (select sum(p.Pay_Amount) from San_Payment p where p.Pay_UserNo = "
            "o.Ord_UserNo and p.Pay_Seq = o.Ord_Seq) from San_Order o join San_Uriage u on "
            "u.Uri_UserNo = o.Ord_UserNo and u.Uri_Seq = o.Ord_Seq join San_User c on c.User_No = "
            "o.Ord_UserNo where o.Ord_Status in (0,1,2,3,4,7) order by o.Ord_DueDate"))));
}

// The sales analysis: the last twelve months of the shop (its purchases run to 2026/11/22),
// each view shown by F5. The floor: one statement with the same figures, the masters' names
// joined for a breakdown, the totals beside the top list for the overview.
const AnalysisPeriod AnalysisPeriodShown{QDate(2025, 12, 1), QDate(2026, 11, 22)};

QString breakdownFloor(const QString& code, const QString& amount, const QString& master,
                       const QString& key, const QString& name) {
    return QStringLiteral("select r.%1, m.%4, coalesce(sum(r.%2), 0), count(*) from San_Uriage r "
                          "left join %3 m on m.%5 = r.%1 where r.Uri_Date between %6 and %7 "
                          "group by r.%1, m.%4")
        .arg(code, amount, master, name, key, QString::number(AnalysisPeriodShown.fromYmd()),
             QString::number(AnalysisPeriodShown.toYmd()));
}

QString analysisFloor(AnalysisView view) {
    const AnalysisPeriod& p = AnalysisPeriodShown;
    switch (view) {
    case AnalysisView::Monthly:
        return AnalysisStore::MonthsSql(p);
    case AnalysisView::Item:
        return breakdownFloor(QStringLiteral("Uri_ItemNo"), QStringLiteral("Uri_KingaKei"),
                              QStringLiteral("San_Item"), QStringLiteral("Item_No"),
                              QStringLiteral("Item_Name"));
    case AnalysisView::Purpose:
        return breakdownFloor(QStringLiteral("Uri_YoutoNo"), QStringLiteral("Uri_KingaKei"),
                              QStringLiteral("San_Youto"), QStringLiteral("Youto_No"),
                              QStringLiteral("Youto_Name"));
    case AnalysisView::FrameMaker:
        return breakdownFloor(QStringLiteral("Uri_Fm_MekaNo"), QStringLiteral("Uri_Fm_Kinga"),
                              QStringLiteral("San_Meka"), QStringLiteral("Meka_No"),
                              QStringLiteral("Meka_Name"));
    case AnalysisView::LensMaker:
        return breakdownFloor(QStringLiteral("Uri_Lz_MekaNo"), QStringLiteral("Uri_Lz_Kinga"),
                              QStringLiteral("San_Meka"), QStringLiteral("Meka_No"),
                              QStringLiteral("Meka_Name"));
    case AnalysisView::Customers:
        return AnalysisStore::ServedSql(p);
    case AnalysisView::Overview:
        break;
    }
    return QStringLiteral("select t.*, s.* from (") +
           AnalysisStore::TopCustomersSql(p, TopCustomerCount) + QStringLiteral(") t, (") +
           AnalysisStore::SummarySql(p) + QStringLiteral(") s");
}

TaskTimes analysisView(int runs, AnalysisView view) {
    FrmBunseki analysis;
    at<xDate>(analysis, QStringLiteral("txtKikanFrom")).setDate(AnalysisPeriodShown.from);
    at<xDate>(analysis, QStringLiteral("txtKikanTo")).setDate(AnalysisPeriodShown.to);
    at<QTabBar>(analysis, QStringLiteral("tabView")).setCurrentIndex(int(view));
    return repeat(
        runs, {}, [&] { analysis.cmdFnuc_Click(4); }, one(floorOf(analysisFloor(view))));
}

void tick(FrmTotalKensaku& s, int index) {
    at<QCheckBox>(s, QStringLiteral("chkJoken"), index).click();
}

} // namespace

QStringList TaskNames() {
    return {QStringLiteral("quick search by kana"),
            QStringLiteral("quick search by telephone"),
            QStringLiteral("register open (50 purchases)"),
            QStringLiteral("register save (3 lines)"),
            QStringLiteral("list: all customers"),
            QStringLiteral("list: age 60-70"),
            QStringLiteral("list: a purpose"),
            QStringLiteral("list: visits in 2020"),
            QStringLiteral("list: amount 100,000-200,000"),
            QStringLiteral("list: product name"),
            QStringLiteral("history: next page"),
            QStringLiteral("sales inquiry"),
            QStringLiteral("ledger of 1,000 to PDF"),
            QStringLiteral("list sort: F9 kana"),
            QStringLiteral("list sort: F10 address"),
            QStringLiteral("list sort: F11 sales"),
            QStringLiteral("list sort: F12 last visit"),
            QStringLiteral("list: mark all rows"),
            QStringLiteral("postcards of 1,000 to PDF"),
            QStringLiteral("log of the amount list"),
            QStringLiteral("pick-up board open"),
            QStringLiteral("analysis: months"),
            QStringLiteral("analysis: items"),
            QStringLiteral("analysis: purposes"),
            QStringLiteral("analysis: frame makers"),
            QStringLiteral("analysis: lens makers"),
            QStringLiteral("analysis: customers"),
            QStringLiteral("analysis: overview")};
}

TaskTimes RunTask(const QString& name, int runs, qint64 regular) {
    const QString number = QString::number(regular);
    if (name == TaskNames()[0])
        return quickSearch(runs, QStringLiteral("やまだ"), QString(),
                           QStringLiteral("User_Kana like '%やまだ%'"));
    if (name == TaskNames()[1])
        return quickSearch(runs, QString(), QStringLiteral("-123"),
                           QStringLiteral("User_Tel like '%-123%'"));
    if (name == TaskNames()[2]) {
        screensComeBack();
        return repeat(
            runs, {},
            [&] {
                FrmKokyaku reg;
                reg.setSyori(regular);
                ShowModal(reg);
            },
            one(floorOf(QStringLiteral(
                            "select r.*, u.*, i.Item_Name, y.Youto_Name, f.Meka_Name, l.Meka_Name "
                            "from San_Uriage r join San_User u on u.User_No = r.Uri_UserNo "
                            "left join San_Item i on i.Item_No = r.Uri_ItemNo "
                            "left join San_Youto y on y.Youto_No = r.Uri_YoutoNo "
                            "left join San_Meka f on f.Meka_No = r.Uri_Fm_MekaNo "
                            "left join San_Meka l on l.Meka_No = r.Uri_Lz_MekaNo "
                            "where r.Uri_UserNo = ") +
                        number + QStringLiteral(" order by r.Uri_Date desc, r.Uri_Seq"))));
    }
    if (name == TaskNames()[3]) {
        screensComeBack();
        std::unique_ptr<FrmKokyaku> reg;
        const auto setUp = [&] {
            reg = std::make_unique<FrmKokyaku>();
            ShowModal(*reg);
            at<xField>(*reg, QStringLiteral("txtName")).setText(QStringLiteral("新規 客"));
            for (int line = 0; line < 3; ++line) {
                at<QComboBox>(*reg, QStringLiteral("cboItem")).setCurrentIndex(line);
                at<QComboBox>(*reg, QStringLiteral("cboYoto")).setCurrentIndex(line);
                at<xNum>(*reg, QStringLiteral("txtKingaKci")).setValue(30000);
                at<UriageEntry>(*reg, QStringLiteral("FraUriage")).cmdOk_Click();
            }
        };
        // The floor: the same four rows written in one transaction.
        std::vector<double> floors;
        for (int i = 0; i < 5; ++i) {
            const qint64 next = gCon.execute(QStringLiteral("select max(User_No) from San_User"))
                                    .field(0)
                                    .toLongLong() +
                                1;
            floors.push_back(timeMs([&] {
                Transaction transaction(gCon);
                gCon.execute(
                    QStringLiteral("insert into San_User (User_No, User_Name) values (%1, 'x')")
                        .arg(next));
                for (int seq = 1; seq <= 3; ++seq)
                    gCon.execute(QStringLiteral("insert into San_Uriage (Uri_UserNo, Uri_Seq, "
                                                "Uri_Date) values (%1, %2, 20261122)")
                                     .arg(next)
                                     .arg(seq));
                transaction.commit();
            }));
            gCon.execute(QStringLiteral("delete from San_Uriage where Uri_UserNo = %1").arg(next));
            gCon.execute(QStringLiteral("delete from San_User where User_No = %1").arg(next));
        }
        return repeat(
            runs, setUp, [&] { reg->cmdFnuc_Click(4); },
            one(*std::min_element(floors.begin(), floors.end())));
    }
    if (name == TaskNames()[4])
        return customerList(
            runs, [](FrmTotalKensaku&) {}, QString());
    if (name == TaskNames()[5])
        return customerList(
            runs,
            [](FrmTotalKensaku& s) {
                tick(s, 5);
                at<xNum>(s, QStringLiteral("txtToshi"), 0).setValue(60);
                at<xNum>(s, QStringLiteral("txtToshi"), 1).setValue(70);
            },
            QStringLiteral(
                " where u.User_Tanjo_Nen > 0 and 2026 - u.User_Tanjo_Nen - case u.User_Tanjo_Go "
                "when 0 then 1911 when 1 then 1925 when 2 then 1988 end between 60 and 70"));
    if (name == TaskNames()[6])
        return customerList(
            runs,
            [](FrmTotalKensaku& s) {
                tick(s, 8);
                at<QComboBox>(s, QStringLiteral("cboYoto"), 0).setCurrentIndex(2);
            },
            QStringLiteral(" where u.User_No in (select Uri_UserNo from San_Uriage where "
                           "Uri_YoutoNo = '003')"));
    if (name == TaskNames()[7])
        return customerList(
            runs,
            [](FrmTotalKensaku& s) {
                tick(s, 7);
                at<xDate>(s, QStringLiteral("txtRaiten"), 0).setDate(QDate(2020, 1, 1));
                at<xDate>(s, QStringLiteral("txtRaiten"), 1).setDate(QDate(2020, 12, 31));
            },
            QStringLiteral(" where u.User_No in (select Uri_UserNo from San_Uriage where Uri_Date "
                           "between 20200101 and 20201231)"));
    if (name == TaskNames()[8])
        return customerList(
            runs,
            [](FrmTotalKensaku& s) {
                tick(s, 11);
                at<xNum>(s, QStringLiteral("txtKinga"), 0).setValue(100000);
                at<xNum>(s, QStringLiteral("txtKinga"), 1).setValue(200000);
            },
            QStringLiteral(" where v.total between 100000 and 200000"),
            QStringLiteral(" where ") + RowTotal + QStringLiteral(" between 100000 and 200000"));
    if (name == TaskNames()[9])
        return customerList(
            runs,
            [](FrmTotalKensaku& s) {
                tick(s, 12);
                at<xField>(s, QStringLiteral("txtHinName"), 0).setText(QStringLiteral("FR-12"));
            },
            QStringLiteral(
                " where u.User_No in (select Uri_UserNo from San_Uriage where Uri_Fm_Name "
                "like '%FR-12%' or Uri_Lz_Name like '%FR-12%')"));
    if (name == TaskNames()[10]) {
        screensComeBack();
        FrmRireki history;
        history.setKokNo(regular);
        ShowModal(history);
        return repeat(
            runs, {}, [&] { history.cmdFnuc_Click(11); },
            one(floorOf(
                QStringLiteral(
                    "select r.*, u.User_Name from San_Uriage r join San_User u on u.User_No "
                    "= r.Uri_UserNo where r.Uri_UserNo = ") +
                number + QStringLiteral(" order by r.Uri_Date desc, r.Uri_Seq limit 3 offset 3"))));
    }
    if (name == TaskNames()[11]) {
        screensComeBack();
        return repeat(
            runs, {},
            [&] {
                FrmIchiranSub inquiry;
                inquiry.setUser(regular);
                inquiry.setConditions(SearchConditions{});
                ShowModal(inquiry);
            },
            one(floorOf(QStringLiteral("select r.*, i.Item_Name, y.Youto_Name from San_Uriage r "
                                       "left join San_Item i on i.Item_No = r.Uri_ItemNo "
                                       "left join San_Youto y on y.Youto_No = r.Uri_YoutoNo "
                                       "where r.Uri_UserNo = ") +
                        number + QStringLiteral(" order by r.Uri_Date desc"))));
    }
    if (name == TaskNames()[12])
        return printThousand(runs, 1);
    for (int key = 8; key <= 11; ++key)
        if (name == TaskNames()[13 + key - 8])
            return onListOfAll(runs, key);
    if (name == TaskNames()[17])
        return onListOfAll(runs, 0);
    if (name == TaskNames()[18])
        return printThousand(runs, 0);
    if (name == TaskNames()[20])
        return boardOpen(runs);
    for (int view = 0; view < AnalysisViewCount; ++view)
        if (name == TaskNames()[21 + view])
            return analysisView(runs, AnalysisView(view));
    return amountListLog(runs);
}
