#pragma once

#include <QStringList>

class Connection;

// The statements that create the tables and the indexes of an empty database.
QStringList SchemaStatements();

// The query of the customer view V_San_User, in the form the connection's engine reads fastest;
// created with the schema and put in place of an older form when a database is opened.
QString CustomerTotalsSelect(const Connection& connection);
// The same rows, all totals grouped at once: for a statement that reads every customer on an
// engine that groups faster than it looks up.
QString CustomerTotalsGrouped();

// The settings table: created with the schema, and added to a database made before it.
QString SettingsTableStatement();
// Brings an opened database made by an older program up to the schema, keeping its data.
void UpgradeSchema(Connection& connection);

// The starting masters of a new shop: typical items, purposes and makers, numbered
// 001, 002, ... without gaps.
QStringList StartingMasterStatements();

// Creates a new database file with the schema and the starting masters, in one transaction.
// An existing file is refused; a failed creation leaves no file behind.
void CreateDatabase(const QString& databaseFile);

// Creates the schema and the starting masters on an open, empty connection.
void CreateSchema(Connection& connection);
