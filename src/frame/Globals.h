#pragma once

#include "platform/db/Connection.h"

#include <QString>

// The one database connection of the process, opened at start-up before any screen shows.
extern Connection gCon;
// The full path of the database file.
extern QString gDbPath;
