#include "platform/WholeFile.h"

#include "platform/Failure.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace {

[[noreturn]] void fail(const QString& path, const QString& reason) {
    throw Failure(ErrorNumber::FileAccess,
                  QStringLiteral("ファイルを書けません: ") + QDir::toNativeSeparators(path) +
                      (reason.isEmpty() ? QString() : QStringLiteral(" (") + reason + u')'));
}

} // namespace

void FlushWholeFile(QSaveFile& file) {
    if (!file.flush() || file.error() != QFileDevice::NoError) {
        const QString reason = file.errorString();
        file.cancelWriting();
        file.commit(); // discards the temporary file
        fail(QFileInfo(file.fileName()).absoluteFilePath(), reason);
    }
}

void CommitWholeFile(QSaveFile& file) {
    const QString path = QFileInfo(file.fileName()).absoluteFilePath();
    FlushWholeFile(file);
    const qint64 written = file.size();
    if (!file.commit())
        fail(path, file.errorString());
    if (QFileInfo(path).size() != written)
        fail(path, QStringLiteral("書き込んだ大きさと違います"));
}

bool KeepForOwnerOnly(const QString& path) {
    return QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}
