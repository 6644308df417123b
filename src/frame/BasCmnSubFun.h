#pragma once

#include "platform/FieldValues.h"

#include <QColor>
#include <QList>
#include <QString>
#include <functional>
#include <utility>

class QComboBox;
class ReportJob;
class QWidget;

// Enables or disables a control and colours its input area: white enabled, grey disabled.
// Buttons, option buttons and frames only change their enabled state.
void CmnCtlEnabled(QWidget* control, bool enabled);

inline const QColor EnabledAreaColor = QColor(0xFF, 0xFF, 0xFF);
inline const QColor DisabledAreaColor = QColor(0xC0, 0xC0, 0xC0);

// Refills a master drop-down list with the (code, name) entries read, each shown "007:X" and
// keeping its code; a list that holds them already keeps them and only loses its choice. A
// failure to read shows the failure box and leaves the list empty.
void CmnSetMstCombo(QComboBox* list,
                    const std::function<QList<std::pair<QString, QString>>()>& readEntries);

// Sets the options of a print job that every document of the shop uses.
void CmnSetGlbData(ReportJob& job);
