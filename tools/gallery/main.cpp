// A developer's gallery: shows one screen or a sample of the controls in a real window, so
// it can be looked at (under Xvfb with a screenshot, or on a desktop).
//   mirvane-gallery controls | zip | calendar | register | search | family | history | makers |
//   list | conditions | print | printscreen | shop | slip | board | boardprint | order |
//   receipt | receiptprint | nikkei | nikkeiprint | analysis [VIEW] | analysisprint
#include "SampleShop.h"
#include "analysis/FrmBunseki.h"
#include "customer/FrmKazoku.h"
#include "customer/FrmKokyaku.h"
#include "data/OrderStore.h"
#include "data/PurchaseStore.h"
#include "data/ReceiptStore.h"
#include "data/Schema.h"
#include "data/ShopStore.h"
#include "domain/Ymd.h"
#include "frame/Globals.h"
#include "history/FrmRireki.h"
#include "masters/FrmMaster.h"
#include "masters/FrmTenpo.h"
#include "orders/FrmJyuchu.h"
#include "orders/FrmNikkei.h"
#include "orders/FrmOwatasi.h"
#include "orders/FrmRyosyu.h"
#include "pickers/FrmCalender.h"
#include "pickers/FrmZipList.h"
#include "platform/controls/FunctionKeyRow.h"
#include "platform/controls/GridView.h"
#include "platform/controls/RowModel.h"
#include "platform/controls/xClndr.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xKana.h"
#include "platform/controls/xLabel.h"
#include "platform/controls/xNum.h"
#include "platform/controls/xZip.h"
#include "platform/db/Transaction.h"
#include "platform/report/Report.h"
#include "platform/ui/Clock.h"
#include "platform/ui/MsgBox.h"
#include "platform/ui/Named.h"
#include "platform/ui/Screen.h"
#include "platform/ui/ShowModal.h"
#include "print/FrmPrint.h"
#include "print/OrderSlip.h"
#include "print/ReceiptPrint.h"
#include "search/FrmIchiran.h"
#include "search/FrmKensaku.h"
#include "search/FrmTotalKensaku.h"
#include "search/ListGrid.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTimer>
#include <QVBoxLayout>
#include <cstdio>

namespace {

// A control of the screen by its name.
template <class Control> Control& at(const QObject& screen, const QString& name, int index = -1) {
    return RequireNamedChild<Control>(screen, name, index);
}

// Shows a screen until staff close it, then lets the shop's database go.
int shownUntilClosed(QDialog& screen) {
    const int result = screen.exec();
    gCon.close();
    return result;
}

int showControls() {
    Screen screen;
    screen.setWindowTitle(QStringLiteral("コントロール見本"));
    auto* form = new QFormLayout;
    auto* name = new xField(&screen, 30);
    name->setText(QStringLiteral("山田 太郎"));
    auto* kana = new xKana(&screen);
    kana->setText(QStringLiteral("やまだ たろう"));
    kana->linkTo(name);
    auto* zip = new xZip(&screen);
    auto* date = new xDate(&screen);
    date->setDate(QDate(2026, 11, 22));
    auto* amount = new xNum(&screen);
    amount->setValue(1234567);
    auto* disabled = new xField(&screen);
    disabled->setText(QStringLiteral("入力できません"));
    disabled->setEnabled(false);
    disabled->setInputAreaColor(QColor(0xC0, 0xC0, 0xC0));
    auto* number = new xLabel(&screen);
    number->setText(QStringLiteral("000123"));
    form->addRow(QStringLiteral("氏名"), name);
    form->addRow(QStringLiteral("かな名"), kana);
    form->addRow(QStringLiteral("郵便番号"), zip);
    form->addRow(QStringLiteral("売上日"), date);
    form->addRow(QStringLiteral("売上合計"), amount);
    form->addRow(QStringLiteral("無効"), disabled);
    form->addRow(QStringLiteral("顧客№"), number);

    // A grid in the colours of the line states: new, changed, to delete, stored.
    struct SampleLine {
        QString status, date, total;
        QColor colour;
    };
    auto* lines = new RowModel<SampleLine>(
        {{QStringLiteral("更新"),
          [](const SampleLine& l) {
              return l.status;
          }},
         {QStringLiteral("売上日"),
          [](const SampleLine& l) {
              return l.date;
          }},
         {QStringLiteral("売上合計"), [](const SampleLine& l) { return l.total; },
          Qt::AlignRight | Qt::AlignVCenter}},
        &screen);
    lines->background = [](const SampleLine& l) {
        return l.colour;
    };
    lines->setRows({{QStringLiteral("新規"), QStringLiteral("2026/11/22"), QStringLiteral("38,000"),
                     QColor(128, 255, 255)},
                    {QStringLiteral("変更"), QStringLiteral("2025/03/01"),
                     QStringLiteral("120,000"), QColor(255, 255, 128)},
                    {QStringLiteral("削除"), QStringLiteral("2020/07/15"), QStringLiteral("9,800"),
                     QColor(255, 128, 128)},
                    {QString(), QStringLiteral("2019/01/05"), QStringLiteral("45,500"), QColor()}});
    auto* grid = new GridView(&screen);
    grid->setModel(lines);
    grid->setColumnWidths({60, 110, 110});

    auto* calendar = new xClndr(&screen);
    calendar->setValue(QDate(2026, 11, 22));

    auto* keys = new FunctionKeyRow(&screen);
    keys->setCaptions({QStringLiteral("閉じる"), QString(), QStringLiteral("家族一覧"), QString(),
                       QStringLiteral("登録"), QStringLiteral("クリア"), QString(),
                       QStringLiteral("削除"), QString(), QString(), QString(),
                       QStringLiteral("履歴照会")});
    keys->buttons()[7]->setEnabled(false);

    auto* top = new QHBoxLayout;
    top->addLayout(form);
    top->addWidget(calendar);
    auto* page = new QVBoxLayout(&screen);
    page->addLayout(top);
    page->addWidget(grid, 1);
    page->addWidget(keys);
    screen.resize(1100, 640);
    return screen.exec();
}

int showZipList(const QString& folder) {
    CreateDatabase(folder + QStringLiteral("/Mirvane.mdb"));
    gCon.open(folder + QStringLiteral("/Mirvane.mdb"));
    for (const char* row : {"(60, 1, '北海道', '札幌市中央区', '北一条西')",
                            "(60, 2, '北海道', '札幌市中央区', '北二条西')",
                            "(60, 42, '北海道', '札幌市中央区', '大通西（１～１９丁目）')"})
        gCon.execute(QStringLiteral("insert into ZipList values ") + QString::fromUtf8(row));
    FrmZipList screen;
    at<xField>(screen, QStringLiteral("txtZip1")).setText(QStringLiteral("060"));
    screen.AddrRead();
    return shownUntilClosed(screen);
}

// A small shop: a family of three on one telephone, a neighbour, and three purchases.
// Papers go to PDFs in Print/; every box is written to the terminal and answered OK.
void printToPdf() {
    SetMsgBoxHandler([](const MsgRequest& box) {
        std::fprintf(stderr, "%s\n", qPrintable(box.text));
        return Answer::OK;
    });
    SetReportOutput(ReportOutput::PdfOnly);
}

// Shows a screen until closed, or sends its paper (F9) into Print/ and ends.
template <class PrintingScreen> int shownOrPrinted(PrintingScreen& screen, bool print) {
    if (!print)
        return shownUntilClosed(screen);
    printToPdf();
    screen.show();
    screen.cmdFnuc_Click(8);
    gCon.close();
    return 0;
}

int showOrder(const QString& folder) {
    seedShop(folder);
    const std::vector<Purchase> purchases = PurchaseStore::OfCustomer(1);
    FrmJyuchu screen(1, QStringLiteral("山田 太郎"), purchases.front());
    return shownUntilClosed(screen);
}

int showRegister(const QString& folder) {
    seedShop(folder);
    FrmKokyaku screen;
    screen.setSyori(1);
    return shownUntilClosed(screen);
}

int showSearch(const QString& folder) {
    seedShop(folder);
    FrmKensaku screen;
    at<xKana>(screen, QStringLiteral("txtKana")).setText(QStringLiteral("やま"));
    screen.cmdKensak_Click();
    return shownUntilClosed(screen);
}

int showHistory(const QString& folder) {
    seedShop(folder);
    FrmRireki screen;
    screen.setKokNo(1);
    return shownUntilClosed(screen);
}

int showMakers(const QString& folder) {
    seedShop(folder);
    FrmMstMeka screen;
    return shownUntilClosed(screen);
}

int showList(const QString& folder) {
    seedShop(folder);
    seedManyCustomers();
    SetMsgBoxHandler([](const MsgRequest&) { return Answer::OK; });
    FrmIchiran screen;
    QTimer::singleShot(300, &screen, [&screen] {
        QTimer::singleShot(300, screen.conditionsScreen(),
                           [&screen] { screen.conditionsScreen()->cmdKensaku_Click(); });
        screen.cmdFnuc_Click(5);
    });
    return shownUntilClosed(screen);
}

int showConditions(const QString& folder) {
    seedShop(folder);
    FrmTotalKensaku screen;
    for (int index : {0, 5, 7, 8, FrmTotalKensaku::boxOf(SearchConditions::LastVisit), 14})
        at<QCheckBox>(screen, QStringLiteral("chkJoken"), index).click();
    at<xDate>(screen, QStringLiteral("txtSaisyuRaiten"), 1).setDate(QDate(2023, 12, 31));
    at<xKana>(screen, QStringLiteral("txtKana")).setText(QStringLiteral("やま"));
    at<xNum>(screen, QStringLiteral("txtToshi"), 0).setValue(60);
    at<xNum>(screen, QStringLiteral("txtToshi"), 1).setValue(70);
    at<QComboBox>(screen, QStringLiteral("cboYoto"), 0).setCurrentIndex(2);
    return shownUntilClosed(screen);
}

// Prints the three layouts for the sample shop into Print/ of the program folder.
int printAll(const QString& folder) {
    seedShop(folder);
    seedManyCustomers();
    SetMsgBoxHandler([](const MsgRequest& box) {
        if (box.buttons == MsgButtons::OK)
            std::fprintf(stderr, "%s\n", qPrintable(box.text));
        return box.buttons == MsgButtons::YesNo ? Answer::Yes : Answer::OK;
    });
    SetReportOutput(ReportOutput::PdfOnly);
    // The conditions screen answers "検索開始" with nothing ticked: every customer.
    SetShowModalHandler([](QDialog& screen) {
        if (auto* conditions = qobject_cast<FrmTotalKensaku*>(&screen))
            conditions->cmdKensaku_Click();
        return int(QDialog::Accepted);
    });
    FrmIchiran list;
    list.cmdFnuc_Click(5);
    FrmPrint print(at<ListGrid>(list, QStringLiteral("spdData")).rows(), true);
    for (int button : {0, 1, 2})
        print.cmdPrint_Click(button);
    for (const ReportJobRecord& job : ReportJobs())
        std::printf("%s: %lld pages -> %s\n", qPrintable(job.documentName),
                    static_cast<long long>(job.pages.size()), qPrintable(job.output));
    gCon.close();
    return 0;
}

// The print selection reads the printer's offset from the shop's database.
int showPrintScreen(const QString& folder) {
    seedShop(folder);
    FrmPrint screen({}, true);
    return shownUntilClosed(screen);
}

int showShop(const QString& folder) {
    seedShop(folder);
    seedShopDetails();
    FrmTenpo screen;
    return shownUntilClosed(screen);
}

// The slip of the sample shop's newest purchase, an order with a deposit, into Print/
// of the program folder.
int printSlip(const QString& folder) {
    seedShop(folder);
    seedShopDetails();
    gCon.execute(QStringLiteral("update San_User set User_Name = '勅使河原 左衛門三郎太郎兵衛之助' "
                                "where User_No = 1"));
    printToPdf();
    RecordReportJobs(true);
    PrintOrderSlip(nullptr, 1, 3);
    for (const ReportJobRecord& job : ReportJobs())
        std::printf("%s -> %s\n", qPrintable(job.documentName), qPrintable(job.output));
    gCon.close();
    return 0;
}

// The latest purchase paid in full in cash (a deposit, then the balance), its customer with a
// long name; then the receipt screen, or each kind of receipt printed into Print/.
int showReceipts(const QString& folder, bool print) {
    seedShop(folder);
    seedShopDetails();
    const QString name = QStringLiteral("勅使河原 左衛門三郎太郎兵衛之助");
    gCon.execute(
        QStringLiteral("update San_User set User_Name = '%1' where User_No = 1").arg(name));
    gCon.execute(QStringLiteral("update San_Uriage set Uri_Fm_Name = 'ラインアート シャルマン "
                                "XL1234 マットブラック', Uri_Lz_Name = 'ハイルックス 1.74 "
                                "両面非球面 ブルーカット 遠近両用' where Uri_UserNo = 1"));
    OrderStore::AddPayment(1, 3,
                           {.date = Today(),
                            .amount = 57000,
                            .method = PaymentMethod::Cash,
                            .kind = PaymentKind::Balance});
    const Purchase purchase = PurchaseStore::OfCustomer(1).front();
    const ShopDetails shop = ShopStore::Read();
    const auto issue = [&](int paymentNo, qint64 amount, const QString& addressee,
                           ReceiptKind kind) {
        Receipt r = ReceiptFor(purchase, amount, PaymentMethod::Cash, 10, shop.rounding);
        r.customerNo = 1;
        r.paymentNo = paymentNo;
        r.addressee = addressee;
        r.kind = kind;
        if (kind == ReceiptKind::Medical) {
            r.prescriptionDate = QDate(2026, 10, 28);
            r.lines[0].caption += QStringLiteral("（シャルマン ラインアート シャルマン XL1234 "
                                                 "マットブラック）");
            r.lines[1].caption += QStringLiteral("（ニコン ハイルックス 1.74 両面非球面 "
                                                 "ブルーカット 遠近両用）");
        }
        r.shopName = shop.name, r.shopAddress = shop.address, r.shopTel = shop.tel;
        r.invoiceNo = shop.invoiceNo;
        return ReceiptStore::Issue(r, Now());
    };
    const Receipt deposit = issue(1, 20000, QStringLiteral("上様"), ReceiptKind::Ordinary);
    if (!print) {
        FrmRyosyu screen(1, name, purchase);
        return shownUntilClosed(screen);
    }
    printToPdf();
    const Receipt balance = issue(2, 57000, name, ReceiptKind::Ordinary);
    PrintReceipt(nullptr, balance, false);
    ReceiptStore::Cancel(deposit.no, Now());
    const Receipt medical = issue(1, 20000, QStringLiteral("勅使河原 花子"), ReceiptKind::Medical);
    PrintReceipt(nullptr, medical, false);
    PrintReceipt(nullptr, ReceiptStore::Reprint(medical.no), true);
    PrintReceipt(nullptr, ReceiptStore::Reprint(deposit.no), true);
    gCon.close();
    return 0;
}

int showFamily(const QString& folder) {
    seedShop(folder);
    FrmKazoku screen;
    screen.setTEL(QStringLiteral("011-222-3333"));
    return shownUntilClosed(screen);
}

// Forty orders of the sample customers at every open status, some late, some without a
// promised date, a few long names and goods; then the pick-up board, or its call list printed.
int showBoard(const QString& folder, bool print) {
    seedShop(folder);
    seedManyCustomers();
    Transaction transaction(gCon);
    gCon.execute(QStringLiteral("update San_User set User_Name = '勅使河原 左衛門三郎太郎兵衛之助' "
                                "where User_No = 12"));
    gCon.execute(QStringLiteral("update San_Uriage set Uri_Fm_Name = 'ラインアート シャルマン "
                                "XL1234 マットブラック', Uri_Lz_Name = 'HOYA ハイルックス 1.74 "
                                "両面非球面 ブルーカット' where Uri_UserNo in (12, 15)"));
    const OrderStatus statuses[] = {OrderStatus::Taken,  OrderStatus::Ordered, OrderStatus::Arrived,
                                    OrderStatus::Fitted, OrderStatus::Called,  OrderStatus::Remake};
    for (int no = 10; no < 50; ++no) {
        Order order;
        order.status = statuses[no % 6];
        order.due = no % 9 == 0 ? QDate() : Today().addDays(no % 13 - 4);
        std::vector<Payment> deposit;
        if (no % 2)
            deposit.push_back({.date = Today(), .amount = 10000, .kind = PaymentKind::Deposit});
        OrderStore::Create(no, 1, 30000, order, deposit, Now());
    }
    transaction.commit();
    FrmOwatasi screen;
    return shownOrPrinted(screen, print);
}

// A day of the sample shop: sales with and without orders, deposits and balances by every
// method, a cancelled order's refund and receipts; then the day's closing, or its paper.
int showNikkei(const QString& folder, bool print) {
    seedShop(folder);
    seedManyCustomers();
    // A name and an address longer than most, to see that they print whole.
    ShopStore::Write({}, {QStringLiteral("メガネの松本 札幌駅前本店 ＪＲタワー・ステラプレイス"
                                         "眼鏡サロン 補聴器相談室併設"),
                          QStringLiteral("〒060-0005 北海道札幌市中央区北五条西二丁目５番地 "
                                         "ＪＲタワーオフィスプラザさっぽろ１５階 総合受付横 "
                                         "エレベーターホール前（地下鉄さっぽろ駅 直結）"),
                          QStringLiteral("011-555-1234"), QString(), TaxRounding::Down});
    const QDate today = Today();
    Transaction transaction(gCon);
    gCon.execute(QStringLiteral("update San_Uriage set Uri_Date = %1 where Uri_UserNo between 10 "
                                "and 29")
                     .arg(YmdOf(today)));
    for (int no = 10; no < 20; ++no) {
        Order order;
        const auto method = PaymentMethod(no % 5);
        std::vector<Payment> paid{{.date = today.addDays(no % 3 - 2),
                                   .amount = 5000 + no * 100,
                                   .method = method,
                                   .kind = PaymentKind::Deposit}};
        if (no % 4 == 0)
            paid.push_back(
                {.date = today, .amount = 2000, .method = method, .kind = PaymentKind::Balance});
        OrderStore::Create(no, 1, 30000, order, paid, Now());
    }
    transaction.commit();
    // A cancelled order's deposit paid back.
    Order taken;
    OrderStore::SetStatus(13, 1, taken, OrderStatus::Cancelled, Now());
    OrderStore::AddPayment(13, 1,
                           {.date = today,
                            .amount = 5000,
                            .method = PaymentMethod::Credit,
                            .kind = PaymentKind::Refund});
    // Customer 10's deposit receipted, cancelled and receipted again.
    Receipt receipt = ReceiptFor(PurchaseStore::OfCustomer(10).front(), 6000, PaymentMethod::Cash,
                                 10, TaxRounding::Down);
    receipt.customerNo = 10;
    receipt.paymentNo = 1;
    ReceiptStore::Cancel(ReceiptStore::Issue(receipt, Now()).no, Now());
    ReceiptStore::Issue(receipt, Now());
    FrmNikkei screen;
    return shownOrPrinted(screen, print);
}

// The sales analysis of the sample shop on the view given (0 monthly ... 6 overview), or
// every view printed into Print/.
int showAnalysis(const QString& folder, bool print, int view) {
    seedShop(folder);
    seedManyCustomers();
    seedSales();
    FrmBunseki screen;
    at<QTabBar>(screen, QStringLiteral("tabView")).setCurrentIndex(view);
    if (!print) {
        return shownUntilClosed(screen);
    }
    printToPdf();
    screen.show();
    for (int i = 0; i < AnalysisViewCount; ++i) {
        at<QTabBar>(screen, QStringLiteral("tabView")).setCurrentIndex(i);
        screen.cmdFnuc_Click(8);
    }
    gCon.close();
    return 0;
}

int showCalendar() {
    FrmCalender screen;
    screen.setInDate(QDate(2026, 11, 22));
    return screen.exec();
}

} // namespace

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QFont font(QStringLiteral("Noto Sans CJK JP"));
    font.setPointSize(11);
    QApplication::setFont(font);
    const QString which = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("controls");
    QTemporaryDir folder;
    if (which == QLatin1String("zip"))
        return showZipList(folder.path());
    if (which == QLatin1String("calendar"))
        return showCalendar();
    if (which == QLatin1String("order"))
        return showOrder(folder.path());
    if (which == QLatin1String("register"))
        return showRegister(folder.path());
    if (which == QLatin1String("search"))
        return showSearch(folder.path());
    if (which == QLatin1String("history"))
        return showHistory(folder.path());
    if (which == QLatin1String("makers"))
        return showMakers(folder.path());
    if (which == QLatin1String("list"))
        return showList(folder.path());
    if (which == QLatin1String("conditions"))
        return showConditions(folder.path());
    if (which == QLatin1String("print"))
        return printAll(folder.path());
    if (which == QLatin1String("printscreen"))
        return showPrintScreen(folder.path());
    if (which == QLatin1String("shop"))
        return showShop(folder.path());
    if (which == QLatin1String("slip"))
        return printSlip(folder.path());
    if (which == QLatin1String("board") || which == QLatin1String("boardprint"))
        return showBoard(folder.path(), which == QLatin1String("boardprint"));
    if (which == QLatin1String("receipt") || which == QLatin1String("receiptprint"))
        return showReceipts(folder.path(), which == QLatin1String("receiptprint"));
    if (which == QLatin1String("nikkei") || which == QLatin1String("nikkeiprint"))
        return showNikkei(folder.path(), which == QLatin1String("nikkeiprint"));
    if (which == QLatin1String("analysis") || which == QLatin1String("analysisprint"))
        return showAnalysis(folder.path(), which == QLatin1String("analysisprint"),
                            argc > 2 ? QString::fromLocal8Bit(argv[2]).toInt() : 0);
    if (which == QLatin1String("family"))
        return showFamily(folder.path());
    return showControls();
}
