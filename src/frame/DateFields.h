#pragma once

class xDate;

// A date field that holds something that is not a real date is refused: the box says the
// input contradicts itself and the focus goes back into the field. Gives true when refused.
bool CmnRefuseUnreadableDate(xDate* field);

// The same refusal each time the focus moves on from the field to another control of its
// screen. Leaving for another window (a box, a picker) is no move on and is not checked, nor is
// leaving for a button: the key or button that reads the date refuses it itself.
void CmnRefuseUnreadableDateOnLeave(xDate* field);
