#include "platform/ui/ShowModal.h"

#include <QDialog>

namespace {
ShowModalHandler& handler() {
    static ShowModalHandler instance;
    return instance;
}
} // namespace

int ShowModal(QDialog& screen) {
    if (handler())
        return handler()(screen);
    return screen.exec();
}

void SetShowModalHandler(ShowModalHandler newHandler) {
    handler() = std::move(newHandler);
}
