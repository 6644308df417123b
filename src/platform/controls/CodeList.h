#pragma once

#include <QList>
#include <QString>
#include <utility>

class QComboBox;

// Drop-down lists of master codes: each entry shows "007:name" and keeps its code, so an entry
// is found by its code, never by its position in the list.

// Refills the list with (code, name) entries in the given order; nothing is chosen.
void FillCodeList(QComboBox* list, const QList<std::pair<QString, QString>>& entries);

// Refills the list with the entries unless it holds them already (with codes of deleted master
// rows shown beside them, see SelectCode); a list that holds them keeps them and only loses its
// choice.
void RefillCodeList(QComboBox* list, const QList<std::pair<QString, QString>>& entries);

// Chooses the entry of the code; an empty code chooses nothing. A code that no entry has (its
// master row was deleted) is shown as "code:" with an empty name and stays the list's code, so
// it is written back unchanged.
void SelectCode(QComboBox* list, const QString& code);

// Whether the entry at the position stands for a code that no master row has (see SelectCode).
bool IsLostCode(const QComboBox* list, int position);

// The code of the chosen entry; empty text when nothing is chosen.
QString SelectedCode(const QComboBox* list);
