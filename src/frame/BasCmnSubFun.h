#pragma once

#include <QColor>
#include <QString>
#include <QVariant>

class QWidget;

// Value, or Default when Value is Null or empty text.
QVariant CmnNvl(const QVariant& value, const QVariant& defaultValue);

// The display text of a prescription number: empty for 0; kind "+" signed with two decimals,
// "1" one decimal, anything else two decimals. Rounds half away from zero.
QString CmnFmtNum(double value, const QString& kind);

// Enables or disables a control and colours its input area: white enabled, grey disabled.
// Buttons, option buttons and frames only change their enabled state.
void CmnCtlEnabled(QWidget* control, bool enabled);

inline const QColor EnabledAreaColor = QColor(0xFF, 0xFF, 0xFF);
inline const QColor DisabledAreaColor = QColor(0xC0, 0xC0, 0xC0);

// Sets the options of a print job that every document of the shop uses.
void CmnSetGlbData(long job);
