#include "platform/ui/SingleInstance.h"

#include "platform/ui/AppFolder.h"

#include <QCryptographicHash>
#include <QDir>

SingleInstance::SingleInstance() : lock_(lockFilePath()) {
    lock_.setStaleLockTime(0);
}

bool SingleInstance::anotherIsRunning() {
    return !lock_.isLocked() && !lock_.tryLock(0);
}

QString SingleInstance::lockFilePath() {
    const QByteArray folderHash =
        QCryptographicHash::hash(QDir(AppFolder()).absolutePath().toUtf8(),
                                 QCryptographicHash::Sha1)
            .toHex()
            .left(16);
    return QDir::tempPath() + QStringLiteral("/mirvane-") + QString::fromLatin1(folderHash) +
           QStringLiteral(".lock");
}
