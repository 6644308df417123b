#include "support/Faults.h"

#include <QDir>
#include <QFile>
#include <QThread>
#include <unistd.h>

FullDisk::FullDisk(const QString& folder) : folder_(folder) {
    if (::geteuid() != 0) {
        whyNot_ = QStringLiteral("a full disk is a tmpfs of its own, which only root mounts");
        return;
    }
    QDir().mkpath(folder_);
    QProcess mount;
    mount.start(QStringLiteral("mount"),
                {QStringLiteral("-t"), QStringLiteral("tmpfs"), QStringLiteral("-o"),
                 QStringLiteral("size=64k"), QStringLiteral("tmpfs"), folder_});
    if (!mount.waitForFinished(10000) || mount.exitCode() != 0) {
        whyNot_ = QStringLiteral("no tmpfs could be mounted: ") +
                  QString::fromLocal8Bit(mount.readAllStandardError());
        return;
    }
    // Filled to the last block; only empty files can still be made.
    QFile filler(path(QStringLiteral("filler")));
    filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    const QByteArray block(4096, 'x');
    while (filler.write(block) == block.size()) {
    }
}

FullDisk::~FullDisk() {
    if (!whyNot_.isEmpty())
        return;
    QProcess::execute(QStringLiteral("umount"), {QStringLiteral("-l"), folder_});
}

namespace {

QString installedAdmin(Harness& harness) {
    const QString installed = harness.path(QStringLiteral("mirvane-admin"));
    if (!QFile::exists(installed))
        QFile::copy(QStringLiteral(MIRVANE_ADMIN_PROGRAM), installed);
    return installed;
}

} // namespace

int RunAdmin(Harness& harness, const QStringList& arguments, QString* output) {
    QProcess tool;
    tool.start(installedAdmin(harness), arguments);
    tool.waitForFinished(120000);
    if (output)
        *output = QString::fromUtf8(tool.readAllStandardOutput() + tool.readAllStandardError());
    return tool.exitCode();
}

std::unique_ptr<QProcess> StartAdmin(Harness& harness, const QStringList& arguments) {
    auto tool = std::make_unique<QProcess>();
    tool->start(installedAdmin(harness), arguments);
    tool->waitForStarted();
    return tool;
}

bool ProcessRuns(const QString& commandLinePart) {
    for (const QString& pid : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        QFile commandLine(QStringLiteral("/proc/") + pid + QStringLiteral("/cmdline"));
        if (commandLine.open(QIODevice::ReadOnly) &&
            QString::fromLocal8Bit(commandLine.readAll().replace('\0', ' '))
                .contains(commandLinePart))
            return true;
    }
    return false;
}
