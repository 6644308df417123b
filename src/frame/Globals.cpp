#include "frame/Globals.h"

Connection gCon;
QString gDbPath;
