#include "frame/Log.h"

#include "frame/Messages.h"
#include "platform/Failure.h"
#include "platform/ui/AppFolder.h"
#include "platform/ui/Clock.h"

#include <QDir>
#include <QFile>

namespace {

QString quoted(const QString& field) {
    return QLatin1Char('"') + field + QLatin1Char('"');
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

} // namespace

QString LogFilePath() {
    return AppPath(QStringLiteral("Log/")) + Today().toString(QStringLiteral("dd")) +
           QStringLiteral("day.log");
}

void CmnWriteLog(const QString& where, const QString& procedure, const QString& text,
                 const QString& number) {
    const QDateTime now = Now();
    const QString line = QStringList{quoted(now.toString(QStringLiteral("yyyy/MM/dd "))),
                                     quoted(now.toString(QStringLiteral("HH:mm:ss "))),
                                     quoted(where),
                                     quoted(procedure),
                                     quoted(QStringLiteral("ｴﾗ-No.(") + number + QLatin1Char(')')),
                                     quoted(text)}
                             .join(QLatin1Char(',')) +
                         QStringLiteral("\r\n");
    const QString path = LogFilePath();
    if (appendLine(path, line)) {
        failureReported = false;
        return;
    }
    if (failureReported)
        return;
    failureReported = true;
    ShowFailureBox(ErrorNumber::FileAccess,
                   QStringLiteral("ログファイルに書き込めません: ") + path);
}
