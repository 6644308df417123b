#include "frame/Log.h"

#include "frame/LogArchive.h"
#include "frame/Messages.h"
#include "platform/Failure.h"
#include "platform/ui/AppFolder.h"
#include "platform/ui/Clock.h"

#include <QDir>
#include <QFile>
#include <limits>

namespace {

// The date, time and file of a log line, formatted once for each second. The clock is read as
// UTC milliseconds; the local offset is looked up once a quarter of an hour (clocks change on a
// quarter hour at the earliest), not for every line.
struct Stamp {
    qint64 second = std::numeric_limits<qint64>::min(); // seconds since 1970, UTC
    qint64 offsetFrom = 0, offsetUntil = 0;             // where offsetMs holds, in UTC msecs
    qint64 offsetMs = 0;
    QString folder;
    QDate day;
    QString date, time, path;
};

constexpr qint64 QuarterHourMs = 15 * 60 * 1000;

qint64 floorDiv(qint64 value, qint64 divisor) {
    return value / divisor - (value % divisor < 0 ? 1 : 0);
}

const Stamp& stampNow() {
    static Stamp stamp;
    const qint64 msecs = NowMSecsSinceEpoch();
    const qint64 second = floorDiv(msecs, 1000);
    const QString folder = AppFolder();
    if (second == stamp.second && folder == stamp.folder)
        return stamp;
    if (msecs < stamp.offsetFrom || msecs >= stamp.offsetUntil) {
        stamp.offsetMs = qint64(QDateTime::fromMSecsSinceEpoch(msecs).offsetFromUtc()) * 1000;
        stamp.offsetFrom = floorDiv(msecs, QuarterHourMs) * QuarterHourMs;
        stamp.offsetUntil = stamp.offsetFrom + QuarterHourMs;
    }
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(msecs + stamp.offsetMs, Qt::UTC);
    stamp.second = second;
    stamp.folder = folder;
    stamp.day = local.date();
    stamp.date = local.toString(QStringLiteral("yyyy/MM/dd "));
    stamp.time = local.toString(QStringLiteral("HH:mm:ss "));
    stamp.path = folder + QStringLiteral("/Log/") + local.date().toString(QStringLiteral("dd")) +
                 QStringLiteral("day.log");
    return stamp;
}

bool appendLine(const QString& path, const QString& line) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append))
        return false;
    const QByteArray bytes = line.toUtf8();
    const bool written = file.write(bytes) == bytes.size();
    file.close();
    return written && file.error() == QFileDevice::NoError;
}

// A log that cannot be written is reported once, not at every line, until it works again.
bool failureReported = false;

// Lines held back while a batch lives: file by file, in the order they were written.
int batchDepth = 0;
QList<std::pair<QString, QString>> heldLines;
constexpr int HeldLinesLimit = 5000;

void reportFailure(const QString& text) {
    if (failureReported)
        return;
    failureReported = true;
    ShowFailureBox(ErrorNumber::FileAccess, text);
}

void reportWriteFailure(const QString& path) {
    reportFailure(QStringLiteral("ログファイルに書き込めません: ") + path);
}

void writeHeldLines();

// The first line of a month into a day file moves the earlier month's lines aside; tried once
// per file and month (a file that cannot be moved keeps its lines and takes the new ones).
void startMonthOf(const QString& path, const QDate& day) {
    static QString checked;
    const QString key = path + day.toString(QStringLiteral("/yyyyMM"));
    if (key == checked)
        return;
    if (!heldLines.isEmpty())
        writeHeldLines();
    checked = key;
    if (!MoveAsideOlderMonth(path, day))
        reportFailure(QStringLiteral("ログファイルを Log/old に移せません: ") + path);
}

void write(const QString& path, const QString& lines) {
    if (appendLine(path, lines))
        failureReported = false;
    else
        reportWriteFailure(path);
}

void writeHeldLines() {
    QString lines;
    QString path;
    for (const auto& [linePath, line] : heldLines) {
        if (linePath != path && !lines.isEmpty()) {
            write(path, lines);
            lines.clear();
        }
        path = linePath;
        lines += line;
    }
    if (!lines.isEmpty())
        write(path, lines);
    heldLines.clear();
}

} // namespace

LogBatch::LogBatch() {
    ++batchDepth;
}

LogBatch::~LogBatch() {
    if (--batchDepth == 0)
        writeHeldLines();
}

QString LogFilePath() {
    return stampNow().path;
}

void CmnWriteLog(const QString& where, const QString& procedure, const QString& text,
                 const QString& number) {
    const Stamp& stamp = stampNow();
    const QLatin1String between("\",\"");
    QString line;
    line.reserve(64 + where.size() + procedure.size() + text.size() + number.size());
    line += QLatin1Char('"');
    line += stamp.date;
    line += between;
    line += stamp.time;
    line += between;
    line += where;
    line += between;
    line += procedure;
    line += between;
    line += QStringLiteral("ｴﾗ-No.(");
    line += number;
    line += QLatin1Char(')');
    line += between;
    line += text;
    line += QLatin1String("\"\r\n");
    const QString& path = stamp.path;
    startMonthOf(path, stamp.day);
    if (batchDepth == 0) {
        write(path, line);
        return;
    }
    heldLines.append({path, line});
    if (heldLines.size() >= HeldLinesLimit)
        writeHeldLines();
}
