#pragma once

#include <QDate>
#include <QDateTime>
#include <optional>

// The program's only view of the current date and time.
QDate Today();
QDateTime Now();

// Tests fix the clock; std::nullopt lets it run again.
void FixClock(std::optional<QDateTime> fixedNow);
