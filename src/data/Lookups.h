#pragma once

#include <QString>

// The name of a master from its three-digit code: Kind 0 item, 1 purpose, 2 maker.
// Empty text when no master has the code.
QString CmnGetMaster(int kind, const QString& no);

// The address of a postal code from the postal directory: prefecture (when withTodo), city and
// district joined without separators. Empty text when the code is not listed.
QString CmnGetJusyo(bool withTodo, qint64 zip1, qint64 zip2);
