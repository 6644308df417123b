#include "print/DailyClosingPrint.h"

#include "data/ShopStore.h"
#include "platform/CsvText.h"
#include "platform/Format.h"
#include "platform/report/Report.h"
#include "platform/report/ReportJob.h"
#include "platform/ui/Clock.h"
#include "platform/ui/WaitCursor.h"
#include "print/PrintRun.h"

namespace {

QString dayText(const QDate& day) {
    static const QString weekdays = QStringLiteral("月火水木金土日");
    return day.toString(QStringLiteral("yyyy年M月d日（")) + weekdays.at(day.dayOfWeek() - 1) +
           QStringLiteral("）");
}

void setFields(ReportJob& job, const DailyClosing& closing, const ShopDetails& shop) {
    const auto set = [&](const QString& field, const QString& text) {
        job.setField(field, text.trimmed());
    };
    set(QStringLiteral("Day"), dayText(closing.day));
    set(QStringLiteral("PrintedAt"),
        QStringLiteral("印刷 ") + Now().toString(QStringLiteral("yyyy/MM/dd HH:mm")));
    set(QStringLiteral("ShopName"), shop.name);
    set(QStringLiteral("ShopAddress"), shop.address);
    set(QStringLiteral("Note"), OutstandingDefinition);
    QString section;
    int row = 0;
    for (const ClosingLine& line : ClosingLines(closing)) {
        const QString n = QString::number(++row);
        // A section is named on its first line.
        set(QStringLiteral("Sec_") + n, line.section == section ? QString() : line.section);
        section = line.section;
        set(QStringLiteral("Item_") + n, line.item);
        set(QStringLiteral("Count_") + n, line.count ? QString::number(*line.count) : QString());
        set(QStringLiteral("Amount_") + n, ClosingAmountText(line) + QStringLiteral("円"));
    }
}

} // namespace

bool PrintDailyClosing(QWidget* window, const DailyClosing& closing) {
    WaitCursor wait;
    return RunPrint(
        window,
        {DailyClosingTitle, QStringLiteral("PrintNikkei"), A5SlipSettings, DailyClosingTitle},
        [&](ReportJob& job) {
            SetPrinterOffset(job);
            job.setForm(FormPath(QStringLiteral("PrnSan008.jfm")));
            setFields(job, closing, ShopStore::Read());
            job.printPage();
        });
}

QList<QStringList> DailyClosingCsvRecords(const DailyClosing& closing) {
    QList<QStringList> records{{QStringLiteral("日付"), QStringLiteral("区分"),
                                QStringLiteral("項目"), QStringLiteral("件数"),
                                QStringLiteral("金額")}};
    const QString day = closing.day.toString(QStringLiteral("yyyy/MM/dd"));
    for (const ClosingLine& line : ClosingLines(closing))
        records.append({day, line.section, line.item,
                        line.count ? QString::number(*line.count) : QString(),
                        QString::number(line.amount)});
    return records;
}

void WriteDailyClosingCsv(const QString& path, const DailyClosing& closing) {
    CsvFile file(path);
    for (const QStringList& record : DailyClosingCsvRecords(closing))
        file.write(record);
    file.commit();
}
