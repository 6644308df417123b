#pragma once

#include <QString>
#include <QVariant>

// Values moved between the fields and the database.

// Value, or Default when Value is Null or empty text.
QVariant CmnNvl(const QVariant& value, const QVariant& defaultValue);

// The display text of a prescription number: empty for 0; kind "+" signed with two decimals,
// "1" one decimal, anything else two decimals. Rounds half away from zero.
QString CmnFmtNum(double value, const QString& kind);
