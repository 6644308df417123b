#include "orders/PickupBoard.h"

#include "data/Lookups.h"
#include "platform/Format.h"
#include "platform/report/ReportJob.h"
#include "print/PrintRun.h"

#include <algorithm>

namespace {

constexpr int LinesPerPage = 30;

} // namespace

bool Shows(const OrderStore::BoardLine& line, const BoardView& view, const QDate& today) {
    switch (view.filter) {
    case BoardFilter::All:
        return true;
    case BoardFilter::ReadyToCall:
        return IsReadyToCall(line.order.status);
    case BoardFilter::Late:
        return DaysLate(line.order, today) > 0;
    case BoardFilter::Status:
        break;
    }
    return line.order.status == view.status;
}

BoardTally TallyBoard(const std::vector<OrderStore::BoardLine>& all, int shown,
                      const QDate& today) {
    BoardTally tally{.shown = shown, .all = int(all.size())};
    for (const OrderStore::BoardLine& line : all) {
        tally.late += DaysLate(line.order, today) > 0 ? 1 : 0;
        tally.ready += IsReadyToCall(line.order.status) ? 1 : 0;
    }
    return tally;
}

QString LateMark(int daysLate) {
    return daysLate > 0 ? QStringLiteral("★%1日").arg(daysLate) : QString();
}

QString GoodsText(const OrderStore::BoardLine& line, MasterNames& names) {
    QStringList goods;
    for (const QString& name : {line.fmName.trimmed(), line.lzName.trimmed()})
        if (!name.isEmpty())
            goods << name;
    return goods.isEmpty() ? names.name(MasterKind::Item, line.itemNo)
                           : goods.join(QStringLiteral(" / "));
}

QString DueText(const QDate& due) {
    return due.isValid() ? due.toString(QStringLiteral("yyyy/MM/dd")) : QString();
}

void PrintCallList(ReportJob& job, const std::vector<OrderStore::BoardLine>& lines,
                   MasterNames& names, const QDate& today) {
    job.setForm(FormPath(QStringLiteral("PrnSan006.jfm")));
    std::size_t next = 0;
    for (int page = 1; next < lines.size(); ++page) {
        SetListHeading(job, today, page);
        for (int row = 1; row <= LinesPerPage && next < lines.size(); ++row, ++next) {
            const OrderStore::BoardLine& line = lines[next];
            const auto set = [&](const char* field, const QString& value) {
                job.setField(QString::fromLatin1(field) + QString::number(row), value.trimmed());
            };
            set("Due_", DueText(line.order.due));
            set("Name_", line.name);
            set("Tel_", line.tel);
            set("Hin_", GoodsText(line, names));
            set("Status_", OrderStatusText(line.order.status));
            set("Zan_", FormatYen(line.outstanding));
        }
        job.printPage();
    }
}
