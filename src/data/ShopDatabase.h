#pragma once

#include <QString>

class Connection;

// In the program folder: the database file, or (for a shop with several terminals) the file
// that holds the PostgreSQL server's connection string. With the server file there, the program
// uses the server.
inline const QString DatabaseFile = QStringLiteral("DB/Mirvane.mdb");
inline const QString ServerConnectionFile = QStringLiteral("DB/Mirvane.server");

// Opens the database of a program folder on the connection: the server when its connection
// file is there, else the database file. Gives the path it opened from.
QString OpenDatabaseIn(Connection& connection, const QString& folder);

// Opens gCon for this program folder and sets gDbPath. Only a database with the shop's tables
// is opened (else ErrorNumber::DatabaseFailed); a database file marked read-only is refused
// with ErrorNumber::ReadOnlyDatabase and the file's path as the description.
void OpenDatabase();
