#pragma once

#include "support/Harness.h"

#include <QDate>
#include <QList>
#include <QPoint>
#include <functional>

class FrmKokyaku;
class GridView;
class QLineEdit;
class QWidget;
class UriageEntry;

// Roads through the screens that many tests walk.

// Text as an input method commits it into the field that has the focus (full-width digits,
// kana, kanji: what QTest::keyClicks cannot type).
void Commit(QWidget* field, const QString& text);
// Text typed key by key over a field's whole text, the focus put on it first.
void Retype(QLineEdit* field, const QString& text);
// Text pasted over a field's whole text from the clipboard (Ctrl+A, Ctrl+V).
void Paste(QWidget* field, const QString& text);

// Opens the register as its callers do (0: a new customer, starting with the telephone) and
// drives it; gives back Koushin.
bool OpenRegister(Harness& harness, qint64 customerNo,
                  const std::function<void(FrmKokyaku&)>& drive, const QString& tel = {});

// Types one purchase into the register's entry as the staff do and presses "明細登録".
// item and youto are positions in their lists.
void EnterPurchase(UriageEntry& entry, const QDate& date, int item, int youto, int frame = 0,
                   int lens = 0);

// The register's save with lines waiting: the question answered Yes, then the saved box.
void ExpectSaved(Harness& harness);
// The catalogue boxes a road shows, in order: each question answered Yes, any other box OK.
void ExpectBoxes(Harness& harness, std::initializer_list<QString> codes);

// The box of a save that met another terminal's work: its text begins with what that terminal
// did; the question is answered (No keeps what was typed on the screen).
void ExpectConflict(Harness& harness, const QString& what, int answer = Answer::No);

// The purchase numbers stored for a customer, in order.
QList<int> StoredSeqs(qint64 customerNo);

// The columns named (with spaces between) of a customer's row, or of one of his purchases, as
// their texts joined by '|' ("<null>" for NULL); empty text when there is no such row.
QString CustomerTexts(qint64 customerNo, const QString& columns);
QString PurchaseTexts(qint64 customerNo, int seq, const QString& columns);

// A column of a grid (counted from 1), top to bottom, its cells' texts joined by '|'.
QString ColumnTexts(const GridView& grid, int column);
// The middle of a row of a grid (counted from 1), where the mouse is put on it.
QPoint RowCentre(const GridView& grid, int row);
