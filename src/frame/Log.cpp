#include "frame/Log.h"

#include "frame/Messages.h"
#include "platform/Failure.h"
#include "platform/ui/AppFolder.h"
#include "platform/ui/Clock.h"

#include <QDir>
#include <QFile>

namespace {

// The date, time and file of a log line, formatted once for each second.
struct Stamp {
    qint64 second = -1; // seconds since the start of the Julian calendar, in local time
    QString folder;
    QString date, time, path;
};

const Stamp& stampNow() {
    static Stamp stamp;
    const QDateTime now = Now();
    const QString folder = AppFolder();
    const qint64 second =
        now.date().toJulianDay() * 86400 + now.time().msecsSinceStartOfDay() / 1000;
    if (second != stamp.second || folder != stamp.folder) {
        stamp.second = second;
        stamp.folder = folder;
        stamp.date = now.toString(QStringLiteral("yyyy/MM/dd "));
        stamp.time = now.toString(QStringLiteral("HH:mm:ss "));
        stamp.path = folder + QStringLiteral("/Log/") + now.date().toString(QStringLiteral("dd")) +
                     QStringLiteral("day.log");
    }
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

void reportFailure(const QString& path) {
    if (failureReported)
        return;
    failureReported = true;
    ShowFailureBox(ErrorNumber::FileAccess,
                   QStringLiteral("ログファイルに書き込めません: ") + path);
}

void write(const QString& path, const QString& lines) {
    if (appendLine(path, lines))
        failureReported = false;
    else
        reportFailure(path);
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
    if (batchDepth == 0) {
        write(path, line);
        return;
    }
    heldLines.append({path, line});
    if (heldLines.size() >= HeldLinesLimit)
        writeHeldLines();
}
