#include "SampleShop.h"

#include "data/OrderStore.h"
#include "data/Schema.h"
#include "data/ShopStore.h"
#include "domain/Ymd.h"
#include "frame/Globals.h"
#include "platform/db/Transaction.h"

#include <QDate>
#include <QStringList>

void seedShop(const QString& folder) {
    CreateDatabase(folder + QStringLiteral("/Mirvane.mdb"));
    gCon.open(folder + QStringLiteral("/Mirvane.mdb"));
    const char* customers[] = {
        "1,'山田 太郎','やまだ たろう','060-0042','札幌市中央区大通西','1-2-3','011-222-3333',"
        "'','','','',0,0,1,45,5,3,'2020/04/01','2020/04/01',NULL",
        "2,'山田 花子','やまだ はなこ','060-0042','札幌市中央区大通西','1-2-3','011-222-3333',"
        "'','','','',1,1,1,48,11,30,'2020/04/01','2020/04/01',NULL",
        "3,'山田 一郎','やまだ いちろう','060-0042','札幌市中央区大通西','1-2-3','011-222-3333',"
        "'','','','',0,1,2,12,1,15,'2021/06/01','2021/06/01',NULL",
        "4,'山本 さくら','やまもと さくら','001-0007','札幌市北区北七条西','4-5','090-1234-5678',"
        "'','','','',1,2,2,3,8,8,'2022/02/02','2022/02/02',NULL"};
    for (const char* row : customers)
        gCon.execute(QStringLiteral("insert into San_User values(") + QString::fromUtf8(row) +
                     QLatin1Char(')'));
    const char* purchases[] = {
        "1,1,20240305,'001','001','001','F-1',20000,'52','黒','002','L-1',18000,38000,-2.25,0,0,0,"
        "0,'',0,'',0,0,0,0,0,-2.5,0,0,0,0,'',0,'',0,0,0,0,0,'遠近','',''",
        "1,2,20251120,'002','008','001','F-1',15000,'52','黒','002','L-1',0,15000,0,0,0,0,0,'',0,''"
        ",0,0,0,0,0,0,0,0,0,0,'',0,'',0,0,0,0,0,'度なし','',''",
        "1,3,20261101,'001','003','001','F-1',32000,'52','黒','002','L-1',45000,77000,-2.5,-0.75,"
        "180,2.25,1.5,'IN',0,'',70,28,32.5,0.1,1.2,-2.75,-1.25,5,2.25,0,'',0.5,'DOWN',70,0,31,0.08,"
        "1,'遠近','累進 手元重視',''"};
    for (const char* row : purchases)
        gCon.execute(QStringLiteral("insert into San_Uriage values(") + QString::fromUtf8(row) +
                     QLatin1Char(')'));
    // The latest purchase waits to be handed over: its lenses came, a deposit was paid.
    Order order;
    order.due = QDate(2026, 11, 20);
    order.supplierNo = QStringLiteral("002");
    order.supplierOrderNo = QStringLiteral("N-20261101-07");
    order.note = QStringLiteral("累進レンズ 取り寄せ");
    OrderStore::Create(1, 3, 77000, order,
                       {{.no = 0,
                         .date = QDate(2026, 11, 1),
                         .amount = 20000,
                         .method = PaymentMethod::Cash,
                         .kind = PaymentKind::Deposit}},
                       QDateTime(QDate(2026, 11, 1), QTime(11, 5)));
    OrderStore::SetStatus(1, 3, order, OrderStatus::Ordered,
                          QDateTime(QDate(2026, 11, 1), QTime(15, 30)));
    order.status = OrderStatus::Ordered;
    OrderStore::SetStatus(1, 3, order, OrderStatus::Arrived,
                          QDateTime(QDate(2026, 11, 18), QTime(10, 2)));
}

// A few hundred customers with purchases, for the list.
void seedManyCustomers() {
    const QStringList family = {QStringLiteral("佐藤"), QStringLiteral("鈴木"),
                                QStringLiteral("高橋"), QStringLiteral("田中"),
                                QStringLiteral("伊藤"), QStringLiteral("渡辺")};
    const QStringList kana = {QStringLiteral("さとう"),   QStringLiteral("すずき"),
                              QStringLiteral("たかはし"), QStringLiteral("たなか"),
                              QStringLiteral("いとう"),   QStringLiteral("わたなべ")};
    const QStringList given = {QStringLiteral("一郎"), QStringLiteral("花子"), QStringLiteral("健"),
                               QStringLiteral("美咲"), QStringLiteral("大輔")};
    const QStringList givenKana = {QStringLiteral("いちろう"), QStringLiteral("はなこ"),
                                   QStringLiteral("けん"), QStringLiteral("みさき"),
                                   QStringLiteral("だいすけ")};
    Transaction transaction(gCon);
    for (int no = 10; no < 310; ++no) {
        const int f = no % family.size();
        const int g = (no / 7) % given.size();
        gCon.execute(
            QStringLiteral(
                "insert into San_User values(%1,'%2 %3','%4 "
                "%5','060-%6','札幌市中央区北%7条西','%8-1',"
                "'011-%9','','','','',%10,%11,1,%12,%13,%14,'2020/01/01','2020/01/01',NULL)")
                .arg(no)
                .arg(family[f], given[g], kana[f], givenKana[g])
                .arg(no % 100, 4, 10, QLatin1Char('0'))
                .arg(no % 20 + 1)
                .arg(no % 9 + 1)
                .arg(200 + no, 3, 10, QLatin1Char('0'))
                .arg(no % 2)
                .arg(no % 4)
                .arg(20 + no % 40)
                .arg(no % 12 + 1)
                .arg(no % 28 + 1));
        gCon.execute(
            QStringLiteral("insert into San_Uriage (Uri_UserNo, Uri_Seq, Uri_Date, Uri_ItemNo, "
                           "Uri_YoutoNo, Uri_KingaKei) values (%1, 1, %2, '001', '001', %3)")
                .arg(no)
                .arg(20150101 + (no % 11) * 10000 + (no % 12) * 100 + no % 28)
                .arg(10000 + (no * 3779) % 90000));
    }
    transaction.commit();
}

// The shop's details as a shop in a station building writes them.
void seedShopDetails() {
    ShopStore::Write({}, {QStringLiteral("メガネの松本 札幌駅前本店"),
                          QStringLiteral("北海道札幌市中央区北五条西二丁目５番地 "
                                         "ＪＲタワーオフィスプラザさっぽろ１５階 総合受付横"),
                          QStringLiteral("011-555-1234"), QStringLiteral("T1180301018771"),
                          TaxRounding::Down});
}

// Two years of sales of the many customers, a few a week, with the purposes and makers a shop
// sees most more often than the others; some lenses of a maker since deleted (009), some sales
// without a purpose; and the sample family's purchases.
void seedSales() {
    Transaction transaction(gCon);
    unsigned state = 20261122;
    const auto next = [&state](unsigned below) {
        state = state * 1103515245u + 12345u;
        return (state >> 8) % below;
    };
    const char* const items[] = {"001", "001", "001", "001", "002", "003", "004", "006"};
    const char* const purposes[] = {"001", "001", "002", "003", "003", "003", "006", "", "007"};
    const char* const makers[] = {"001", "001", "002", "003", "003", "004", "005", "009"};
    for (int no = 10; no < 310; ++no) {
        const int visits = 1 + int(next(4));
        for (int seq = 2; seq < 2 + visits; ++seq) {
            const QDate date = QDate(2024, 11, 1).addDays(int(next(750)));
            const int frame = 8000 + int(next(40)) * 1000;
            const int lens = int(next(60)) * 1000;
            gCon.execute(QStringLiteral("insert into San_Uriage (Uri_UserNo, Uri_Seq, Uri_Date, "
                                        "Uri_ItemNo, Uri_YoutoNo, Uri_Fm_MekaNo, Uri_Fm_Kinga, "
                                        "Uri_Lz_MekaNo, Uri_Lz_Kinga, Uri_KingaKei) values (%1, "
                                        "%2, %3, '%4', '%5', '%6', %7, '%8', %9, %10)")
                             .arg(no)
                             .arg(seq)
                             .arg(YmdOf(date))
                             .arg(QLatin1String(items[next(8)]), QLatin1String(purposes[next(9)]),
                                  QLatin1String(makers[next(7)]))
                             .arg(frame)
                             .arg(QLatin1String(makers[next(8)]))
                             .arg(lens)
                             .arg(frame + lens));
        }
    }
    // Every fifth customer came first in these two years.
    gCon.execute(QStringLiteral("delete from San_Uriage where Uri_Seq = 1 and Uri_UserNo >= 10 "
                                "and Uri_UserNo % 5 = 0"));
    transaction.commit();
}
