#include "frame/Log.h"

#include "frame/LogArchive.h"
#include "frame/Messages.h"
#include "platform/AppFolder.h"
#include "platform/Failure.h"
#include "platform/ui/Clock.h"

#include <QDir>
#include <QFile>
#include <array>
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
    int month = 0; // yyyyMM of the day
    QString path;
    QByteArray head; // the line up to the where field: "yyyy/MM/dd ","HH:mm:ss ","
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
    stamp.month = stamp.day.year() * 100 + stamp.day.month();
    stamp.head = '"' + local.toString(QStringLiteral("yyyy/MM/dd ")).toUtf8() + "\",\"" +
                 local.toString(QStringLiteral("HH:mm:ss ")).toUtf8() + "\",\"";
    stamp.path = folder + QStringLiteral("/Log/") + local.date().toString(QStringLiteral("dd")) +
                 QStringLiteral("day.log");
    return stamp;
}

bool appendLine(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append))
        return false;
    const bool written = file.write(bytes) == bytes.size();
    file.close();
    return written && file.error() == QFileDevice::NoError;
}

// A log that cannot be written is reported once, not at every line, until it works again.
bool failureReported = false;

// Lines held back while a batch lives, all for one file; a line for another file writes them
// first.
int batchDepth = 0;
QString heldPath;
QByteArray heldLines;
constexpr qsizetype HeldBytesLimit = 512 * 1024;

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
void startMonthOf(const Stamp& stamp) {
    static QString checkedPath;
    static int checkedMonth = 0;
    const QString& path = stamp.path;
    if (stamp.month == checkedMonth && path == checkedPath)
        return;
    writeHeldLines();
    checkedPath = path;
    checkedMonth = stamp.month;
    if (!MoveAsideOlderMonth(path, stamp.day))
        reportFailure(QStringLiteral("ログファイルを Log/old に移せません: ") + path);
}

void write(const QString& path, const QByteArray& lines) {
    if (appendLine(path, lines))
        failureReported = false;
    else
        reportWriteFailure(path);
}

void writeHeldLines() {
    if (heldLines.isEmpty())
        return;
    write(heldPath, heldLines);
    heldLines.truncate(0); // keeps its room for the next lines
}

// The rest of a line after its time, in UTF-8. A long list writes the same two or three lines
// for every row, so the last few are kept.
const QByteArray& lineTail(const QString& where, const QString& procedure, const QString& text,
                           const QString& number) {
    struct Tail {
        QString where, procedure, text, number;
        QByteArray bytes;
    };
    static std::array<Tail, 4> recent;
    static size_t next = 0;
    for (const Tail& tail : recent)
        if (!tail.bytes.isEmpty() && tail.procedure == procedure && tail.text == text &&
            tail.where == where && tail.number == number)
            return tail.bytes;
    Tail& tail = recent[next];
    next = (next + 1) % recent.size();
    tail = {where, procedure, text, number,
            (where + QStringLiteral("\",\"") + procedure + QStringLiteral("\",\"ｴﾗ-No.(") + number +
             QStringLiteral(")\",\"") + text + QStringLiteral("\"\r\n"))
                .toUtf8()};
    return tail.bytes;
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
    const QString& path = stamp.path;
    startMonthOf(stamp);
    const QByteArray& tail = lineTail(where, procedure, text, number);
    if (batchDepth == 0) {
        write(path, stamp.head + tail);
        return;
    }
    if (path != heldPath) {
        writeHeldLines();
        heldPath = path;
    }
    if (heldLines.capacity() < HeldBytesLimit)
        heldLines.reserve(HeldBytesLimit + 1024);
    heldLines += stamp.head;
    heldLines += tail;
    if (heldLines.size() >= HeldBytesLimit)
        writeHeldLines();
}
