#include "data/Schema.h"

#include "data/Numbering.h"
#include "data/OrderStore.h"
#include "data/ReceiptStore.h"
#include "data/ShopStore.h"
#include "platform/db/Connection.h"
#include "platform/db/SqlText.h"
#include "platform/db/Transaction.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

// The thirteen prescription columns of one eye ("R" or "L"), in their fixed order.
QString eyeColumns(const QString& eye) {
    static const char* const suffixes[] = {"Sph", "Cyl", "Ax",   "S",  "P1",    "B1",    "P2",
                                           "B2",  "Gai", "Tama", "Pd", "Ragan", "Kyosei"};
    QStringList columns;
    for (const char* suffix : suffixes) {
        const QString name =
            QStringLiteral("Uri_") + eye + QLatin1Char('_') + QString::fromLatin1(suffix);
        const bool baseDirection =
            name.endsWith(QLatin1String("_B1")) || name.endsWith(QLatin1String("_B2"));
        columns << name + (baseDirection ? QStringLiteral(" TEXT")
                                         : QStringLiteral(" DOUBLE PRECISION"));
    }
    return columns.join(QStringLiteral(",\n  "));
}

QStringList masterRows(const QString& table, const QStringList& names) {
    QStringList statements;
    for (int i = 0; i < names.size(); ++i)
        statements << QStringLiteral("insert into %1 values(%2,%3)")
                          .arg(table,
                               SqlStr(QStringLiteral("%1").arg(i + 1, 3, 10, QLatin1Char('0'))),
                               SqlStr(names[i]));
    return statements;
}

} // namespace

QStringList SchemaStatements() {
    // Statements insert by column position: the order of the columns below is fixed.
    return QStringList{
               QStringLiteral("CREATE TABLE San_User (\n"
                              "  User_No INTEGER NOT NULL PRIMARY KEY,\n"
                              "  User_Name TEXT,\n"
                              "  User_Kana TEXT,\n"
                              "  User_Yubin TEXT,\n"
                              "  User_Jusyo1 TEXT,\n"
                              "  User_Jusyo2 TEXT,\n"
                              "  User_Tel TEXT,\n"
                              "  User_Kinmu TEXT,\n"
                              "  User_KinmuTel TEXT,\n"
                              "  User_Syokai TEXT,\n"
                              "  User_SyokaiTel TEXT,\n"
                              "  User_Sex INTEGER,\n"
                              "  User_Kazok_F INTEGER,\n"
                              "  User_Tanjo_Go INTEGER,\n"
                              "  User_Tanjo_Nen INTEGER,\n"
                              "  User_Tanjo_Mon INTEGER,\n"
                              "  User_Tanjo_Day INTEGER,\n"
                              "  User_Entry1 TEXT,\n"
                              "  User_Entry2 TEXT,\n"
                              "  User_Dlt_F TEXT\n"
                              ")"),
               QStringLiteral("CREATE TABLE San_Uriage (\n"
                              "  Uri_UserNo INTEGER NOT NULL,\n"
                              "  Uri_Seq SMALLINT NOT NULL,\n"
                              "  Uri_Date INTEGER NOT NULL,\n"
                              "  Uri_ItemNo TEXT,\n"
                              "  Uri_YoutoNo TEXT,\n"
                              "  Uri_Fm_MekaNo TEXT,\n"
                              "  Uri_Fm_Name TEXT,\n"
                              "  Uri_Fm_Kinga BIGINT,\n"
                              "  Uri_Fm_Size TEXT,\n"
                              "  Uri_Fm_Color TEXT,\n"
                              "  Uri_Lz_MekaNo TEXT,\n"
                              "  Uri_Lz_Name TEXT,\n"
                              "  Uri_Lz_Kinga BIGINT,\n"
                              "  Uri_KingaKei BIGINT,\n  ") +
                   eyeColumns(QStringLiteral("R")) + QStringLiteral(",\n  ") +
                   eyeColumns(QStringLiteral("L")) +
                   QStringLiteral(",\n"
                                  "  Uri_Syohou TEXT,\n"
                                  "  Uri_Memo TEXT,\n"
                                  "  Uri_Yobi TEXT\n"
                                  ")"),
               QStringLiteral(
                   "CREATE TABLE San_Item (Item_No TEXT NOT NULL PRIMARY KEY, Item_Name TEXT)"),
               QStringLiteral(
                   "CREATE TABLE San_Youto (Youto_No TEXT NOT NULL PRIMARY KEY, Youto_Name TEXT)"),
               QStringLiteral(
                   "CREATE TABLE San_Meka (Meka_No TEXT NOT NULL PRIMARY KEY, Meka_Name TEXT)"),
               QStringLiteral("CREATE TABLE ZipList (\n"
                              "  ZIP1 INTEGER NOT NULL,\n"
                              "  ZIP2 INTEGER NOT NULL,\n"
                              "  TODO TEXT,\n"
                              "  CITY TEXT,\n"
                              "  TOWN TEXT\n"
                              ")"),
               QStringLiteral(
                   "CREATE UNIQUE INDEX IX_San_Uriage_Key ON San_Uriage (Uri_UserNo, Uri_Seq)"),
               // The customer view's totals and last dates come from this index alone.
               QStringLiteral(
                   "CREATE INDEX IX_San_Uriage_Totals ON San_Uriage (Uri_UserNo, Uri_Date, "
                   "Uri_KingaKei)"),
               QStringLiteral("CREATE INDEX IX_San_Uriage_Date ON San_Uriage (Uri_Date)"),
               // No index on the kana: the searches look for a part of it anywhere, and the list
               // sorts its matches faster than it could walk such an index row by row.
               QStringLiteral("CREATE INDEX IX_San_User_Tel ON San_User (User_Tel)"),
               QStringLiteral("CREATE INDEX IX_ZipList_Zip ON ZipList (ZIP1, ZIP2)"),
               SettingsTableStatement(),
               Numbering::TableStatement(),
               QStringLiteral("insert into San_Saiban values(0,0)"),
               ShopStore::TableStatement(),
           } +
           ShopStore::TaxRateStatements() + OrderStore::TableStatements() +
           ReceiptStore::TableStatements();
}

QString CustomerTotalsSelect(const Connection& connection) {
    // One row per customer, also for a customer without purchases: the sales total and the
    // last purchase date (0 when there is none); the third column is a spare. Each customer's
    // values are looked up through the index of his purchases, so a list of a few customers
    // reads only their purchases.
    if (connection.joinsLaterally())
        return QStringLiteral(
            "SELECT u.User_No AS User_No, COALESCE(r.Ruikei, 0) AS Uri_Ruikei, 0 AS Uri_Yobi,\n"
            "  COALESCE(r.LastDate, 0) AS Uri_LastDate\n"
            "FROM San_User u LEFT JOIN LATERAL (SELECT SUM(Uri_KingaKei) AS Ruikei,\n"
            "  MAX(Uri_Date) AS LastDate FROM San_Uriage WHERE Uri_UserNo = u.User_No) r ON true");
    return QStringLiteral("SELECT u.User_No AS User_No,\n"
                          "  COALESCE((SELECT SUM(r.Uri_KingaKei) FROM San_Uriage r\n"
                          "            WHERE r.Uri_UserNo = u.User_No), 0) AS Uri_Ruikei,\n"
                          "  0 AS Uri_Yobi,\n"
                          "  COALESCE((SELECT MAX(r.Uri_Date) FROM San_Uriage r\n"
                          "            WHERE r.Uri_UserNo = u.User_No), 0) AS Uri_LastDate\n"
                          "FROM San_User u") +
           connection.readInOwnOrder();
}

QString CustomerTotalsGrouped() {
    return QStringLiteral(
        "SELECT u.User_No AS User_No, COALESCE(r.Ruikei, 0) AS Uri_Ruikei, 0 AS Uri_Yobi,\n"
        "  COALESCE(r.LastDate, 0) AS Uri_LastDate\n"
        "FROM San_User u LEFT JOIN (SELECT Uri_UserNo, SUM(Uri_KingaKei) AS Ruikei,\n"
        "  MAX(Uri_Date) AS LastDate FROM San_Uriage GROUP BY Uri_UserNo) r\n"
        "  ON r.Uri_UserNo = u.User_No");
}

QString SettingsTableStatement() {
    // The shop's settings, one value per key; added to older databases when they are opened.
    return QStringLiteral("CREATE TABLE IF NOT EXISTS San_Setting (Set_Key TEXT NOT NULL PRIMARY "
                          "KEY, Set_Value TEXT)");
}

void UpgradeSchema(Connection& connection) {
    connection.defineView(QStringLiteral("V_San_User"), CustomerTotalsSelect(connection));
    connection.execute(SettingsTableStatement());
    Numbering::Upgrade(connection);
    connection.execute(ShopStore::TableStatement());
    for (const QString& statement : ShopStore::TaxRateStatements() + OrderStore::TableStatements() +
                                        ReceiptStore::TableStatements())
        connection.execute(statement);
}

QStringList StartingMasterStatements() {
    return masterRows(QStringLiteral("San_Item"),
                      {QStringLiteral("メガネ"), QStringLiteral("サングラス"),
                       QStringLiteral("コンタクトレンズ"), QStringLiteral("レンズ交換"),
                       QStringLiteral("フレーム交換"), QStringLiteral("修理"),
                       QStringLiteral("その他")}) +
           masterRows(QStringLiteral("San_Youto"),
                      {QStringLiteral("遠用"), QStringLiteral("近用"), QStringLiteral("遠近両用"),
                       QStringLiteral("中近両用"), QStringLiteral("近々両用"),
                       QStringLiteral("パソコン用"), QStringLiteral("運転用"),
                       QStringLiteral("スポーツ用"), QStringLiteral("その他")}) +
           masterRows(QStringLiteral("San_Meka"),
                      {QStringLiteral("HOYA"), QStringLiteral("ニコン"), QStringLiteral("セイコー"),
                       QStringLiteral("東海光学"), QStringLiteral("ツァイス"),
                       QStringLiteral("増永眼鏡"), QStringLiteral("シャルマン"),
                       QStringLiteral("その他")});
}

void CreateSchema(Connection& connection) {
    Transaction transaction(connection);
    for (const QString& statement : SchemaStatements() + StartingMasterStatements())
        connection.execute(statement);
    connection.defineView(QStringLiteral("V_San_User"), CustomerTotalsSelect(connection));
    transaction.commit();
}

void CreateDatabase(const QString& databaseFile) {
    QDir().mkpath(QFileInfo(databaseFile).absolutePath());
    Connection connection;
    connection.create(databaseFile);
    try {
        CreateSchema(connection);
    } catch (...) {
        connection.close();
        QFile::remove(databaseFile);
        throw;
    }
    connection.close();
}
