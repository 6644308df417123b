#include "platform/ui/SaveFileDialog.h"

#include <QApplication>
#include <QFileDialog>

namespace {
SaveFileHandler& handler() {
    static SaveFileHandler instance;
    return instance;
}
} // namespace

QString AskSaveFileName(const QString& title, const QString& suggested, const QString& filter) {
    if (handler())
        return handler()({title, suggested, filter});
    return QFileDialog::getSaveFileName(QApplication::activeWindow(), title, suggested, filter);
}

void SetSaveFileHandler(SaveFileHandler newHandler) {
    handler() = std::move(newHandler);
}
