#include "platform/ui/AppFolder.h"

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
    const QString chosen = qEnvironmentVariable("MIRVANE_PROGRAM_FOLDER");
    if (!chosen.isEmpty())
        return QDir::cleanPath(QDir(chosen).absolutePath());
    return QCoreApplication::applicationDirPath();
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
