#include "support/Harness.h"

#include "data/Schema.h"
#include "frame/Globals.h"
#include "platform/report/Report.h"
#include "platform/ui/AppFolder.h"
#include "platform/ui/Clock.h"
#include "platform/ui/MsgBox.h"
#include "platform/ui/ShowModal.h"

#include <QApplication>
#include <QDir>
#include <QFile>

const QDateTime Harness::FixedNow(QDate(2026, 11, 22), QTime(10, 15, 30));

void Harness::setUp(Options options) {
    dir_ = std::make_unique<QTemporaryDir>();
    QDir root(dir_->path());
    root.mkpath(QStringLiteral("DB"));
    root.mkpath(QStringLiteral("Log"));
    root.mkpath(QStringLiteral("jfm"));
    for (const QFileInfo& form :
         QDir(QStringLiteral(MIRVANE_JFM_DIR)).entryInfoList({QStringLiteral("*.jfm")}))
        QFile::copy(form.filePath(), root.filePath(QStringLiteral("jfm/") + form.fileName()));
    SetAppFolder(dir_->path());
    SetReportOutput(ReportOutput::PdfOnly);
    ClearReportJobs();
    FixClock(FixedNow);
    msgs.reset();
    screens.reset();
    SetMsgBoxHandler([this](const MsgRequest& request) { return msgs.answer(request); });
    SetShowModalHandler([this](QDialog& screen) { return screens.run(screen); });
    if (options.createDatabase)
        CreateDatabase(databaseFile());
    if (options.createDatabase && options.openDatabase) {
        gDbPath = databaseFile();
        gCon.open(gDbPath);
    }
}

QStringList Harness::tearDown() {
    QStringList problems = msgs.failures() + screens.failures();
    if (gCon.inTransaction())
        problems << QStringLiteral("a transaction was left open");
    gCon.close();
    SetMsgBoxHandler({});
    SetShowModalHandler({});
    FixClock(std::nullopt);
    SetAppFolder({});
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible())
            problems << QStringLiteral("window left open: %1")
                            .arg(QString::fromLatin1(window->metaObject()->className()));
    dir_.reset();
    return problems;
}

QString Harness::folder() const {
    return dir_->path();
}

QString Harness::databaseFile() const {
    return path(QStringLiteral("DB/Mirvane.mdb"));
}

QString Harness::path(const QString& relative) const {
    return dir_->path() + QLatin1Char('/') + relative;
}

QVariant QueryValue(const QString& sql) {
    RecordSet rows = gCon.execute(sql);
    return rows.eof() ? QVariant() : rows.field(0);
}

int QueryCount(const QString& sql) {
    RecordSet rows = gCon.execute(sql);
    int count = 0;
    for (; !rows.eof(); rows.moveNext())
        ++count;
    return count;
}
