// A developer's gallery: shows one screen or a sample of the controls in a real window, so
// it can be looked at (under Xvfb with a screenshot, or on a desktop).
//   mirvane-gallery controls | zip | calendar | register | search | family | history
#include "customer/FrmKazoku.h"
#include "customer/FrmKokyaku.h"
#include "data/Schema.h"
#include "frame/Globals.h"
#include "history/FrmRireki.h"
#include "pickers/FrmCalender.h"
#include "pickers/FrmZipList.h"
#include "platform/controls/FunctionKeyRow.h"
#include "platform/controls/SpreadGrid.h"
#include "platform/controls/xClndr.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xKana.h"
#include "platform/controls/xLabel.h"
#include "platform/controls/xNum.h"
#include "platform/controls/xZip.h"
#include "platform/ui/Screen.h"
#include "search/FrmKensaku.h"
#include "support/ShopData.h"

#include <QApplication>
#include <QFormLayout>
#include <QTemporaryDir>
#include <QVBoxLayout>

namespace {

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

    auto* grid = new SpreadGrid(&screen);
    grid->setHeaders({QStringLiteral("更新"), QStringLiteral("売上日"), QStringLiteral("売上合計"),
                      QStringLiteral("家族")});
    grid->setColumnNumeric(3, true);
    grid->setColumnDropDown(4, {QStringLiteral("代表"), QStringLiteral("家族"),
                                QStringLiteral("個人"), QStringLiteral("DM不要")});
    grid->addRow(QStringLiteral("新規\t2026/11/22\t38,000\t0"));
    grid->addRow(QStringLiteral("変更\t2025/03/01\t120,000\t1"));
    grid->addRow(QStringLiteral("削除\t2020/07/15\t9,800\t3"));
    grid->addRow(QStringLiteral("\t2019/01/05\t45,500\t2"));
    grid->setRowColor(1, QColor(128, 255, 255));
    grid->setRowColor(2, QColor(255, 255, 128));
    grid->setRowColor(3, QColor(255, 128, 128));
    grid->setColumnWidths({60, 110, 110, 90});

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
    screen.txtZip1->setText(QStringLiteral("060"));
    screen.AddrRead();
    const int result = screen.exec();
    gCon.close();
    return result;
}

void seedShop(const QString& folder) {
    CreateDatabase(folder + QStringLiteral("/Mirvane.mdb"));
    gCon.open(folder + QStringLiteral("/Mirvane.mdb"));
    const QString tel = QStringLiteral("011-222-3333");
    InsertCustomer({.no = 1, .tel = tel});
    InsertCustomer({.no = 2,
                    .name = QStringLiteral("山田 花子"),
                    .kana = QStringLiteral("やまだ はなこ"),
                    .tel = tel,
                    .sex = 1,
                    .kazok = 1,
                    .tanjoGo = 1,
                    .nen = 48,
                    .mon = 11,
                    .day = 30});
    InsertCustomer({.no = 3,
                    .name = QStringLiteral("山田 一郎"),
                    .kana = QStringLiteral("やまだ いちろう"),
                    .tel = tel,
                    .kazok = 1,
                    .tanjoGo = 2,
                    .nen = 12,
                    .mon = 1,
                    .day = 15});
    InsertCustomer({.no = 4,
                    .name = QStringLiteral("山本 さくら"),
                    .kana = QStringLiteral("やまもと さくら"),
                    .tel = QStringLiteral("090-1234-5678"),
                    .jusyo1 = QStringLiteral("札幌市北区北七条西")});
    InsertPurchase(
        {.user = 1, .seq = 1, .ymd = 20240305, .total = 38000, .rightSph = -2.25, .leftSph = -2.5});
    InsertPurchase({.user = 1,
                    .seq = 2,
                    .ymd = 20251120,
                    .item = QStringLiteral("002"),
                    .youto = QStringLiteral("008"),
                    .frame = 15000,
                    .lens = 0,
                    .total = 15000,
                    .rightSph = 0,
                    .leftSph = 0,
                    .syohou = QStringLiteral("度なし")});
    InsertPurchase({.user = 1,
                    .seq = 3,
                    .ymd = 20261101,
                    .youto = QStringLiteral("003"),
                    .frame = 32000,
                    .lens = 45000,
                    .total = 77000,
                    .rightSph = -2.5,
                    .leftSph = -2.75,
                    .memo = QStringLiteral("累進 手元重視")});
    gCon.execute(QStringLiteral(
        "update San_Uriage set Uri_R_Cyl = -0.75, Uri_R_Ax = 180, Uri_R_S = 2.25, Uri_R_P1 = 1.5, "
        "Uri_R_B1 = 'IN', Uri_R_Gai = 70, Uri_R_Tama = 28, Uri_R_Pd = 32.5, Uri_R_Ragan = 0.1, "
        "Uri_R_Kyosei = 1.2, Uri_L_Cyl = -1.25, Uri_L_Ax = 5, Uri_L_S = 2.25, Uri_L_P2 = 0.5, "
        "Uri_L_B2 = 'DOWN', Uri_L_Gai = 70, Uri_L_Pd = 31, Uri_L_Ragan = 0.08, Uri_L_Kyosei = 1 "
        "where Uri_Seq = 3"));
}

int showRegister(const QString& folder) {
    seedShop(folder);
    FrmKokyaku screen;
    screen.setSyori(1);
    const int result = screen.exec();
    gCon.close();
    return result;
}

int showSearch(const QString& folder) {
    seedShop(folder);
    FrmKensaku screen;
    screen.txtKana->setText(QStringLiteral("やま"));
    screen.cmdKensak_Click();
    const int result = screen.exec();
    gCon.close();
    return result;
}

int showHistory(const QString& folder) {
    seedShop(folder);
    FrmRireki screen;
    screen.setKokNo(1);
    const int result = screen.exec();
    gCon.close();
    return result;
}

int showFamily(const QString& folder) {
    seedShop(folder);
    FrmKazoku screen;
    screen.setTEL(QStringLiteral("011-222-3333"));
    const int result = screen.exec();
    gCon.close();
    return result;
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
    if (which == QLatin1String("register"))
        return showRegister(folder.path());
    if (which == QLatin1String("search"))
        return showSearch(folder.path());
    if (which == QLatin1String("history"))
        return showHistory(folder.path());
    if (which == QLatin1String("family"))
        return showFamily(folder.path());
    return showControls();
}
