#include "platform/AppFolder.h"

#include <QCoreApplication>
#include <QDir>

namespace {

QString& overriddenProgramFolder() {
    static QString instance;
    return instance;
}

QString& overriddenInstallFolder() {
    static QString instance;
    return instance;
}

} // namespace

QString AppFolder() {
    if (!overriddenProgramFolder().isEmpty())
        return overriddenProgramFolder();
    // Asked for every log line: worked out once the application is there.
    static QString folder;
    if (!folder.isEmpty())
        return folder;
    const QString chosen = qEnvironmentVariable("MIRVANE_PROGRAM_FOLDER");
    const QString found = !chosen.isEmpty() ? QDir::cleanPath(QDir(chosen).absolutePath())
                                            : QCoreApplication::applicationDirPath();
    if (QCoreApplication::instance())
        folder = found;
    return found;
}

QString AppPath(const QString& relative) {
    return AppFolder() + QLatin1Char('/') + relative;
}

QString InstallFolder() {
    if (!overriddenInstallFolder().isEmpty())
        return overriddenInstallFolder();
    return QCoreApplication::applicationDirPath();
}

QString InstallPath(const QString& relative) {
    return InstallFolder() + QLatin1Char('/') + relative;
}

void SetAppFolder(const QString& folder) {
    overriddenProgramFolder() = folder.isEmpty() ? QString() : QDir::cleanPath(folder);
}

void SetInstallFolder(const QString& folder) {
    overriddenInstallFolder() = folder.isEmpty() ? QString() : QDir::cleanPath(folder);
}
