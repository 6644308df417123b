#include "domain/Purchase.h"

#include "platform/Format.h"

#include <tuple>

bool HasPrescription(const Purchase& purchase) {
    return HasOpticalValues(purchase.eyes[0]) || HasOpticalValues(purchase.eyes[1]);
}

const Purchase* PreviousPrescription(const std::vector<Purchase>& purchases, const QDate& date,
                                     int seq) {
    const auto made = [](const Purchase& p) {
        return std::tuple(p.date, p.seq);
    };
    const Purchase* previous = nullptr;
    for (const Purchase& p : purchases)
        if (made(p) < std::tuple(date, seq) && HasPrescription(p) &&
            (!previous || made(*previous) < made(p)))
            previous = &p;
    return previous;
}

QString PurchaseDateText(const Purchase& purchase) {
    return purchase.date.isValid() ? purchase.date.toString(QStringLiteral("yyyy/MM/dd"))
                                   : FormatYmd(purchase.storedYmd);
}
