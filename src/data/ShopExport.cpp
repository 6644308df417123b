#include "data/ShopExport.h"

#include "data/OrderStore.h"
#include "data/PurchaseStore.h"
#include "data/ReceiptStore.h"
#include "data/ShopStore.h"
#include "domain/Prescription.h"
#include "platform/CsvText.h"
#include "platform/Format.h"
#include "platform/db/Connection.h"

#include <QDir>

namespace {

const QStringList CustomerColumns{
    QStringLiteral("User_No"),        QStringLiteral("User_Name"),
    QStringLiteral("User_Kana"),      QStringLiteral("User_Yubin"),
    QStringLiteral("User_Jusyo1"),    QStringLiteral("User_Jusyo2"),
    QStringLiteral("User_Tel"),       QStringLiteral("User_Kinmu"),
    QStringLiteral("User_KinmuTel"),  QStringLiteral("User_Syokai"),
    QStringLiteral("User_SyokaiTel"), QStringLiteral("User_Sex"),
    QStringLiteral("User_Kazok_F"),   QStringLiteral("User_Tanjo_Go"),
    QStringLiteral("User_Tanjo_Nen"), QStringLiteral("User_Tanjo_Mon"),
    QStringLiteral("User_Tanjo_Day"), QStringLiteral("User_Entry1"),
    QStringLiteral("User_Entry2"),    QStringLiteral("User_Dlt_F")};

// A column of the purchases' file: its heading and what the query selects for it.
struct Column {
    QString heading, selected;
};

QList<Column> purchaseColumns() {
    QList<Column> columns;
    const auto own = [&](const QString& name) {
        columns.append({name, QStringLiteral("r.") + name});
    };
    // A master code, then its master's name.
    const auto coded = [&](const QString& name, const QString& master, const QString& masterName) {
        own(name);
        columns.append({name.chopped(2) + QStringLiteral("Name"), master + u'.' + masterName});
    };
    for (const char* name : {"Uri_UserNo", "Uri_Seq", "Uri_Date"})
        own(QString::fromLatin1(name));
    coded(QStringLiteral("Uri_ItemNo"), QStringLiteral("i"), QStringLiteral("Item_Name"));
    coded(QStringLiteral("Uri_YoutoNo"), QStringLiteral("y"), QStringLiteral("Youto_Name"));
    coded(QStringLiteral("Uri_Fm_MekaNo"), QStringLiteral("fm"), QStringLiteral("Meka_Name"));
    for (const char* name : {"Uri_Fm_Name", "Uri_Fm_Kinga", "Uri_Fm_Size", "Uri_Fm_Color"})
        own(QString::fromLatin1(name));
    coded(QStringLiteral("Uri_Lz_MekaNo"), QStringLiteral("lm"), QStringLiteral("Meka_Name"));
    for (const char* name : {"Uri_Lz_Name", "Uri_Lz_Kinga", "Uri_KingaKei"})
        own(QString::fromLatin1(name));
    for (int eye : {0, 1})
        for (int value = 0; value < int(PrescriptionColumns.size()); ++value)
            own(PurchaseStore::PrescriptionColumn(value, eye));
    for (const char* name : {"Uri_Syohou", "Uri_Memo", "Uri_Yobi"})
        own(QString::fromLatin1(name));
    return columns;
}

QString valueText(const QVariant& value) {
    if (value.isNull())
        return {};
    if (value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float)
        return PlainDecimal(value.toDouble());
    return value.toString();
}

// Writes each row of the query to the file; gives the number of rows.
qint64 writeRows(Connection& connection, const QString& sql, CsvFile& file) {
    qint64 count = 0;
    for (RecordSet rows = connection.execute(sql); !rows.eof(); rows.moveNext(), ++count) {
        QStringList values;
        values.reserve(rows.fieldCount());
        for (int i = 0; i < rows.fieldCount(); ++i)
            values << valueText(rows.field(i));
        file.write(values);
    }
    return count;
}

} // namespace

ExportedRows ExportShopCsv(Connection& connection, const QString& folder) {
    const QDir into(folder);
    CsvFile customers(into.filePath(CustomersCsv));
    CsvFile purchases(into.filePath(PurchasesCsv));
    ExportedRows exported;
    customers.write(CustomerColumns);
    exported.customers =
        writeRows(connection,
                  QStringLiteral("select ") + CustomerColumns.join(QLatin1Char(',')) +
                      QStringLiteral(" from San_User order by User_No"),
                  customers);
    QStringList headings, selected;
    for (const Column& column : purchaseColumns()) {
        headings << column.heading;
        selected << column.selected;
    }
    purchases.write(headings);
    exported.purchases =
        writeRows(connection,
                  QStringLiteral("select ") + selected.join(QLatin1Char(',')) +
                      QStringLiteral(" from San_Uriage r"
                                     " left join San_Item i on i.Item_No = r.Uri_ItemNo"
                                     " left join San_Youto y on y.Youto_No = r.Uri_YoutoNo"
                                     " left join San_Meka fm on fm.Meka_No = r.Uri_Fm_MekaNo"
                                     " left join San_Meka lm on lm.Meka_No = r.Uri_Lz_MekaNo"
                                     " order by r.Uri_UserNo, r.Uri_Seq"),
                  purchases);
    CsvFile orders(into.filePath(OrdersCsv));
    CsvFile statuses(into.filePath(OrderStatusesCsv));
    CsvFile payments(into.filePath(PaymentsCsv));
    CsvFile shop(into.filePath(ShopCsv));
    CsvFile taxRates(into.filePath(TaxRatesCsv));
    CsvFile receipts(into.filePath(ReceiptsCsv));
    CsvFile receiptLines(into.filePath(ReceiptLinesCsv));
    CsvFile receiptTaxes(into.filePath(ReceiptTaxesCsv));
    // A table with all its columns, in the order of its key's columns.
    const auto whole = [&](CsvFile& file, const QString& table, const QString& key) {
        RecordSet columns = connection.execute(QStringLiteral("select * from ") + table +
                                               QStringLiteral(" where 1 = 0"));
        QStringList names;
        for (int i = 0; i < columns.fieldCount(); ++i)
            names << columns.fieldName(i);
        file.write(names);
        return writeRows(
            connection,
            QStringLiteral("select * from ") + table + QStringLiteral(" order by ") + key, file);
    };
    const QStringList tables = OrderStore::Tables();
    const QString purchaseKey = QStringLiteral("1, 2, 3");
    exported.orders = whole(orders, tables[0], purchaseKey);
    exported.orderStatuses = whole(statuses, tables[1], purchaseKey);
    exported.payments = whole(payments, tables[2], purchaseKey);
    exported.shop = whole(shop, ShopStore::Table(), QStringLiteral("1"));
    exported.taxRates = whole(taxRates, QStringLiteral("San_TaxRate"), QStringLiteral("1"));
    const QStringList receiptTables = ReceiptStore::Tables();
    exported.receipts = whole(receipts, receiptTables[0], QStringLiteral("1"));
    whole(receiptLines, receiptTables[1], QStringLiteral("1, 2"));
    whole(receiptTaxes, receiptTables[2], QStringLiteral("1, 2"));
    // All are on the disk before any takes its name.
    const std::initializer_list<CsvFile*> files{&customers,    &purchases,   &orders,   &statuses,
                                                &payments,     &shop,        &taxRates, &receipts,
                                                &receiptLines, &receiptTaxes};
    for (CsvFile* file : files)
        file->flush();
    for (CsvFile* file : files)
        file->commit();
    return exported;
}
