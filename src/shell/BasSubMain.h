#pragma once

// Start-up: refuses a second copy, opens the database and shows the sign-on screen.
// Returns the process's exit code when the sign-on screen has gone.
int Main();
