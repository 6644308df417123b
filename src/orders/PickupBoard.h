#pragma once

#include "data/OrderStore.h"

#include <QDate>
#include <QString>
#include <vector>

class MasterNames;
class ReportJob;

// Which open orders the pick-up board shows.
enum class BoardFilter {
    All,
    ReadyToCall, // the glasses are in the shop: 入荷 or 加工済
    Late,        // past the promised date
    Status,      // at one status
};

struct BoardView {
    BoardFilter filter = BoardFilter::All;
    OrderStatus status = OrderStatus::Taken; // for BoardFilter::Status
};

// Whether the board shows the line in the view on `today`.
bool Shows(const OrderStore::BoardLine& line, const BoardView& view, const QDate& today);

// The open orders' counts as the board heads them, over every open order.
struct BoardTally {
    int shown = 0, all = 0, late = 0, ready = 0;
};
BoardTally TallyBoard(const std::vector<OrderStore::BoardLine>& all, int shown, const QDate& today);

// The late mark of a line, readable without colour ("★3日"); empty when not late.
QString LateMark(int daysLate);
// The goods of a line as staff name them: frame and lens ("FR-1 / LZ-2"), either alone, or
// the item's name when neither is written.
QString GoodsText(const OrderStore::BoardLine& line, MasterNames& names);
QString DueText(const QDate& due);

// The call list of the lines (PrnSan006.jfm): the date, page numbers, 30 orders a page with an
// empty column for the ticks of the calls made.
void PrintCallList(ReportJob& job, const std::vector<OrderStore::BoardLine>& lines,
                   MasterNames& names, const QDate& today);
