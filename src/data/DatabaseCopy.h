#pragma once

#include <QList>
#include <QString>
#include <functional>

class Connection;

// The tables a shop's database holds, in the order they are copied.
QStringList ShopTables();
// The tables the program added beside them (numbering, orders and payments), each created on a
// database made before it when that is opened, in the order they are copied.
QStringList AddedTables();

// Whether the connection's database has the shop's tables yet. Asks in a transaction of its
// own, so not inside another one.
bool HasShopSchema(Connection& connection);

// Whether the database holds any customer or purchase: what a copy onto it would wipe out.
bool HoldsShopData(Connection& connection);

struct CopiedTable {
    QString table;
    qint64 rows = 0;
};

// Copies every row of every table from one database to another, in one transaction on the
// target: what the target held before is replaced. Counts the rows of both sides afterwards and
// fails when they differ; a server's planner statistics are brought up to date after the load.
// progress is told the table and how many of its rows are in.
QList<CopiedTable>
CopyDatabase(Connection& from, Connection& to,
             const std::function<void(const QString&, qint64, qint64)>& progress = {});
