#pragma once

#include <QDate>
#include <QDateTime>
#include <optional>

// The program's only view of the current date and time.
QDate Today();
QDateTime Now();
// The same moment as milliseconds since 1970 UTC: read without looking up the time zone.
qint64 NowMSecsSinceEpoch();

// Tests fix the clock; std::nullopt lets it run again.
void FixClock(std::optional<QDateTime> fixedNow);
