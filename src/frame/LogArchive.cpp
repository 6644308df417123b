#include "frame/LogArchive.h"

#include "platform/Gzip.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr int KeptMonths = 12;

int monthNumber(int year, int month) {
    return year * 12 + month - 1;
}

// The month of the file's last line ("yyyy/MM/dd " opens each line); the month it was last
// changed in when its last line has no date.
int lastWrittenMonth(QFile& file) {
    const qint64 tail = 4096;
    file.seek(qMax<qint64>(0, file.size() - tail));
    const QByteArray end = file.read(tail);
    const qsizetype lineStart = end.lastIndexOf('\n', end.size() - 3) + 1;
    const QByteArray date = end.mid(lineStart, 9); // "yyyy/MM/
    bool yearOk = false, monthOk = false;
    const int year = date.mid(1, 4).toInt(&yearOk);
    const int month = date.mid(6, 2).toInt(&monthOk);
    if (date.startsWith('"') && yearOk && monthOk && month >= 1 && month <= 12)
        return monthNumber(year, month);
    const QDate changed = QFileInfo(file).lastModified().date();
    return monthNumber(changed.year(), changed.month());
}

void removeMonthsBefore(QDir old, int firstKept) {
    for (const QString& name : old.entryList({QStringLiteral("*.log.gz")}, QDir::Files)) {
        bool yearOk = false, monthOk = false;
        const int year = name.left(4).toInt(&yearOk);
        const int month = name.mid(5, 2).toInt(&monthOk);
        if (yearOk && monthOk && monthNumber(year, month) < firstKept)
            old.remove(name);
    }
}

} // namespace

bool MoveAsideOlderMonth(const QString& dayFile, const QDate& today) {
    QFile file(dayFile);
    if (!file.exists())
        return true;
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const int written = lastWrittenMonth(file);
    const int current = monthNumber(today.year(), today.month());
    if (written >= current)
        return true;
    file.seek(0);
    const QByteArray lines = file.readAll();
    file.close();

    QDir old(QFileInfo(dayFile).absolutePath() + QStringLiteral("/old"));
    if (!old.mkpath(QStringLiteral(".")))
        return false;
    const QString name = QStringLiteral("%1-%2-%3.gz")
                             .arg(written / 12, 4, 10, QLatin1Char('0'))
                             .arg(written % 12 + 1, 2, 10, QLatin1Char('0'))
                             .arg(QFileInfo(dayFile).fileName());
    // Appended: a second member (the same month moved aside twice) keeps both.
    QFile archive(old.filePath(name));
    if (!archive.open(QIODevice::WriteOnly | QIODevice::Append))
        return false;
    const QByteArray member = GzipMember(lines);
    const bool stored = archive.write(member) == member.size() && archive.flush();
    archive.close();
    if (!stored || !file.remove())
        return false;
    removeMonthsBefore(old, current - KeptMonths);
    return true;
}
