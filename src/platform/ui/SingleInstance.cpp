#include "platform/ui/SingleInstance.h"

#include "platform/AppFolder.h"

#include <QDir>
#include <QFile>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

SingleInstance::SingleInstance() {
    const QByteArray path = QFile::encodeName(lockFilePath());
    descriptor_ = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (descriptor_ < 0) // a folder that cannot be written: its file may still be there
        descriptor_ = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
}

SingleInstance::~SingleInstance() {
    if (descriptor_ >= 0)
        ::close(descriptor_); // releases the claim
}

bool SingleInstance::anotherIsRunning() {
    if (held_)
        return false;
    // Without a lock file (a folder not made yet, nothing in it to guard) nothing stands in
    // the way.
    if (descriptor_ < 0)
        return false;
    held_ = ::flock(descriptor_, LOCK_EX | LOCK_NB) == 0;
    return !held_;
}

QString SingleInstance::lockFilePath() {
    return QDir(AppFolder()).filePath(QStringLiteral("Mirvane.lock"));
}
