#include "platform/ui/AppFolder.h"

#include <QCoreApplication>
#include <QDir>

namespace {
QString& overridden() {
    static QString instance;
    return instance;
}
} // namespace

QString AppFolder() {
    if (!overridden().isEmpty())
        return overridden();
    return QCoreApplication::applicationDirPath();
}

QString AppPath(const QString& relative) {
    return AppFolder() + QLatin1Char('/') + relative;
}

void SetAppFolder(const QString& folder) {
    overridden() = folder.isEmpty() ? QString() : QDir::cleanPath(folder);
}
