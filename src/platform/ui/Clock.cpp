#include "platform/ui/Clock.h"

namespace {
std::optional<QDateTime>& fixed() {
    static std::optional<QDateTime> instance;
    return instance;
}
} // namespace

QDateTime Now() {
    return fixed() ? *fixed() : QDateTime::currentDateTime();
}

qint64 NowMSecsSinceEpoch() {
    return fixed() ? fixed()->toMSecsSinceEpoch() : QDateTime::currentMSecsSinceEpoch();
}

QDate Today() {
    return Now().date();
}

void FixClock(std::optional<QDateTime> fixedNow) {
    fixed() = std::move(fixedNow);
}
