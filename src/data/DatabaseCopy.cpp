#include "data/DatabaseCopy.h"

#include "data/Numbering.h"
#include "data/OrderStore.h"
#include "data/ReceiptStore.h"
#include "data/ShopStore.h"
#include "platform/Failure.h"
#include "platform/Format.h"
#include "platform/db/Connection.h"
#include "platform/db/SqlText.h"
#include "platform/db/Transaction.h"

namespace {

constexpr int RowsPerStatement = 200;

QString literal(const QVariant& value) {
    if (value.isNull())
        return QStringLiteral("NULL");
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
        return QString::number(value.toLongLong());
    case QMetaType::Double:
    case QMetaType::Float:
        return PlainDecimal(value.toDouble());
    default:
        return SqlQuote(value.toString());
    }
}

qint64 countOf(Connection& connection, const QString& table) {
    return connection.execute(QStringLiteral("select count(*) from ") + table)
        .field(0)
        .toLongLong();
}

// Whether the database has the table; asked so that a failure leaves no transaction broken.
bool holdsTable(Connection& connection, const QString& table) {
    Transaction probe(connection);
    try {
        countOf(connection, table);
        return true;
    } catch (const Failure&) {
        return false;
    }
}

} // namespace

QStringList ShopTables() {
    return {QStringLiteral("San_Item"), QStringLiteral("San_Youto"),  QStringLiteral("San_Meka"),
            QStringLiteral("San_User"), QStringLiteral("San_Uriage"), QStringLiteral("ZipList")};
}

QStringList AddedTables() {
    return QStringList{QStringLiteral("San_Saiban"), ShopStore::Table(),
                       QStringLiteral("San_TaxRate")} +
           OrderStore::Tables() + ReceiptStore::Tables();
}

bool HasShopSchema(Connection& connection) {
    // The probe reads in a transaction of its own, never committed: its failure on a database
    // without the tables is rolled back with it, and the connection stays usable.
    Transaction probe(connection);
    try {
        countOf(connection, QStringLiteral("San_User"));
        return true;
    } catch (const Failure&) {
        return false;
    }
}

bool HoldsShopData(Connection& connection) {
    return HasShopSchema(connection) && (countOf(connection, QStringLiteral("San_User")) > 0 ||
                                         countOf(connection, QStringLiteral("San_Uriage")) > 0);
}

QList<CopiedTable>
CopyDatabase(Connection& from, Connection& to,
             const std::function<void(const QString&, qint64, qint64)>& progress) {
    QList<CopiedTable> copied;
    // The tables the program added travel with the shop; a database made before one of them
    // leaves the target's (the numbering starts from the numbers in use, orders are none, the
    // shop's details are unset).
    QStringList tables = ShopTables();
    to.execute(Numbering::TableStatement());
    to.execute(ShopStore::TableStatement());
    for (const QString& statement : ShopStore::TaxRateStatements() + OrderStore::TableStatements() +
                                        ReceiptStore::TableStatements())
        to.execute(statement);
    for (const QString& table : AddedTables())
        if (holdsTable(from, table))
            tables << table;
    // The source is read as it stood at one moment, and the counts are checked before the
    // target keeps anything: a copy that stands is whole.
    Transaction snapshot(from, Transaction::Kind::Snapshot);
    Transaction transaction(to);
    for (const QString& table : tables)
        to.execute(QStringLiteral("delete from ") + table);
    for (const QString& table : tables) {
        const qint64 total = countOf(from, table);
        RecordSet rows = from.execute(QStringLiteral("select * from ") + table);
        QStringList values;
        qint64 done = 0;
        const auto flush = [&] {
            if (values.isEmpty())
                return;
            to.execute(QStringLiteral("insert into ") + table + QStringLiteral(" values ") +
                       values.join(QLatin1Char(',')));
            done += values.size();
            values.clear();
            if (progress)
                progress(table, done, total);
        };
        for (; !rows.eof(); rows.moveNext()) {
            QStringList fields;
            for (int i = 0; i < rows.fieldCount(); ++i)
                fields << literal(rows.field(i));
            values << QLatin1Char('(') + fields.join(QLatin1Char(',')) + QLatin1Char(')');
            if (values.size() == RowsPerStatement)
                flush();
        }
        flush();
        if (progress && total == 0)
            progress(table, 0, 0);
        copied.append({table, done});
    }
    for (const CopiedTable& table : copied)
        if (countOf(from, table.table) != countOf(to, table.table))
            throw Failure(ErrorNumber::StatementFailed,
                          QStringLiteral("件数が一致しません: ") + table.table);
    transaction.commit();
    if (to.isServer())
        to.execute(QStringLiteral("analyze"));
    return copied;
}
