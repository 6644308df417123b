#pragma once

class QComboBox;
class QWidget;

// Enter in the list (with its drop-down closed) moves the focus to the given control.
void MoveOnEnter(QComboBox* list, QWidget* next);

// Delete in the list clears its selection.
void ClearOnDelete(QComboBox* list);
