#pragma once

#include <QString>

// Start-up: refuses a second copy, opens the database and shows the sign-on screen.
// Returns the process's exit code when the sign-on screen has gone.
int Main();

// The product's name, the title of the boxes that come before any screen.
inline const QString AppTitle = QStringLiteral("Mirvane");
