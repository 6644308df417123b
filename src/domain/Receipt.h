#pragma once

#include "domain/Order.h"
#include "domain/Purchase.h"

#include <QDate>
#include <QDateTime>
#include <QString>
#include <vector>

// The money rules of a receipt. Amounts are whole yen, tax-included, as the shop prices.

// How the tax included in an amount is rounded to whole yen.
enum class TaxRounding { Down = 0, HalfUp = 1, Up = 2 }; // 切り捨て, 四捨五入, 切り上げ

// A consumption tax rate, in percent, from the day it applies.
struct TaxRate {
    QDate from;
    int percent = 10;
    bool operator==(const TaxRate&) const = default;
};

// The rate that applies on the day: the latest one that applies from that day or before; 0 when
// none does.
int TaxPercentOn(const std::vector<TaxRate>& rates, const QDate& day);

// Why a new rate cannot be added, in words for staff; empty when it can. A rate is a whole
// percent from 0 (a tax-free period) to 100. It starts after the last day a receipt was issued
// (`lastReceiptDay`, invalid when none was): receipts are kept as issued, so a day that has one
// keeps the rate it had. Rates already stored are never changed nor removed.
QString TaxRateRefusal(const TaxRate& rate, const QDate& lastReceiptDay);

// The tax included in a tax-included amount at a rate: amount × rate / (100 + rate), rounded to
// whole yen; a negative amount (a refund) is rounded as its positive counterpart.
qint64 IncludedTax(qint64 taxIncluded, int percent, TaxRounding rounding);

// One line of a receipt (フレーム, レンズ, その他 ...), at the rate of its day.
struct ReceiptLine {
    QString caption;
    qint64 amount = 0;
    int percent = 10;
    bool operator==(const ReceiptLine&) const = default;
};

// Per rate, in falling order of the rate: the total of the lines and the tax it includes,
// computed once on that total, never summed from the lines.
struct RateTotal {
    int percent = 0;
    qint64 total = 0, tax = 0;
    bool operator==(const RateTotal&) const = default;
};
std::vector<RateTotal> TaxPerRate(const std::vector<ReceiptLine>& lines, TaxRounding rounding);

// Whether a receipt needs a revenue stamp (収入印紙): money received in cash or by bank transfer
// (a credit card payment is no receipt of money), whose amount, without the consumption tax the
// receipt states separately, is 50,000 yen or more.
bool NeedsRevenueStamp(qint64 received, qint64 statedTax, PaymentMethod method);

// A receipt as it was issued: what it printed is stored with it, so a reprint is the same
// receipt even after the purchase was corrected.
enum class ReceiptKind { Ordinary = 0, Medical = 1 }; // 医療費控除・療養費用: itemised, named
struct Receipt {
    qint64 no = 0;
    QDateTime issuedAt;
    qint64 customerNo = 0;
    int seq = 0;       // the purchase
    int paymentNo = 0; // the payment it is for; 0 for the whole purchase
    ReceiptKind kind = ReceiptKind::Ordinary;
    QString addressee; // the customer's name, a named person's, or 上様
    std::vector<ReceiptLine> lines;
    std::vector<RateTotal> taxes; // of the amount received
    qint64 total = 0, received = 0;
    PaymentMethod method = PaymentMethod::Cash;
    bool stamp = false;
    QDate purchaseDate, prescriptionDate;
    QString shopName, shopAddress, shopTel, invoiceNo;
    bool cancelled = false;
    QDateTime cancelledAt;
    int reprints = 0;
    bool operator==(const Receipt&) const = default;
};

// A receipt for the purchase's items (フレーム, レンズ, その他 for the rest of its total), at
// the rate of its day: the amount received by the method, its tax per rate rounded as the shop
// chooses, and whether it needs a revenue stamp.
Receipt ReceiptFor(const Purchase& purchase, qint64 received, PaymentMethod method, int percent,
                   TaxRounding rounding);

// What a receipt may be issued for: a payment of an order (内金 or 残金; a refund takes none), or
// the whole purchase for what was received for it (its total for a sale without an order).
struct ReceiptTarget {
    int paymentNo = 0; // 0 for the whole purchase
    qint64 amount = 0;
    PaymentMethod method = PaymentMethod::Cash;
    QDate date; // the payment's; invalid for the whole purchase
    bool operator==(const ReceiptTarget&) const = default;
};
// The whole purchase first (when anything was received), then each payment in its order.
std::vector<ReceiptTarget> ReceiptTargets(qint64 total, bool ordered,
                                          const std::vector<Payment>& payments);

// The receipt not cancelled that already covers the target, so that no money is receipted
// twice: one for the whole purchase covers every payment, one for a payment covers itself and
// the whole purchase. 0 when none does.
qint64 ReceiptCovering(const std::vector<Receipt>& issued, int paymentNo);

// An invoice registration number (適格請求書発行事業者の登録番号): "T" and 13 digits. A
// corporation's 13 digits are its corporate number, whose first digit checks the other twelve;
// an individual's have no check digit, so a number that fails the check may still be one.
enum class RegistrationCheck { Valid, NotTAnd13Digits, CheckDigitDiffers };
RegistrationCheck CheckRegistrationNumber(const QString& number);
// The number as written on a receipt: full-width letters and digits typed become half-width,
// blanks and hyphens go; "t" becomes "T".
QString RegistrationNumberOf(const QString& typed);
