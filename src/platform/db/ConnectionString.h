#pragma once

#include <QList>
#include <QString>
#include <utility>

// A server's connection string as libpq reads it: "key=value key='a value'", a backslash in a
// quoted value taking the next character as it is.
using ConnectionSettings = QList<std::pair<QString, QString>>;

ConnectionSettings ParseConnectionString(const QString& text);

// The settings written back as a connection string; a value that is empty or holds a blank, a
// quote or a backslash is quoted, so that it stays one value.
QString ConnectionStringText(const ConnectionSettings& settings);
