#include "domain/Receipt.h"

#include "platform/NumberText.h"

#include <algorithm>
#include <map>

int TaxPercentOn(const std::vector<TaxRate>& rates, const QDate& day) {
    const TaxRate* applies = nullptr;
    for (const TaxRate& rate : rates)
        if (rate.from <= day && (!applies || rate.from > applies->from))
            applies = &rate;
    return applies ? applies->percent : 0;
}

QString TaxRateRefusal(const TaxRate& rate, const QDate& lastReceiptDay) {
    if (!rate.from.isValid())
        return QStringLiteral("適用開始日を正しく入力してください。");
    if (rate.percent < 0 || rate.percent > 100)
        return QStringLiteral("税率は 0 から 100 までの整数（％）で入力してください。");
    if (lastReceiptDay.isValid() && rate.from <= lastReceiptDay)
        return QStringLiteral("%1 に発行した領収書があります。新しい税率は、最後に領収書を発行した"
                              "日より後の日から適用してください。")
            .arg(lastReceiptDay.toString(QStringLiteral("yyyy/MM/dd")));
    return {};
}

qint64 IncludedTax(qint64 taxIncluded, int percent, TaxRounding rounding) {
    if (taxIncluded < 0)
        return -IncludedTax(-taxIncluded, percent, rounding);
    const qint64 numerator = taxIncluded * percent;
    const qint64 denominator = 100 + percent;
    switch (rounding) {
    case TaxRounding::Down:
        return numerator / denominator;
    case TaxRounding::HalfUp:
        return (2 * numerator + denominator) / (2 * denominator);
    case TaxRounding::Up:
        break;
    }
    return (numerator + denominator - 1) / denominator;
}

std::vector<RateTotal> TaxPerRate(const std::vector<ReceiptLine>& lines, TaxRounding rounding) {
    std::map<int, qint64, std::greater<>> totals;
    for (const ReceiptLine& line : lines)
        totals[line.percent] += line.amount;
    std::vector<RateTotal> perRate;
    for (const auto& [percent, total] : totals)
        perRate.push_back({percent, total, IncludedTax(total, percent, rounding)});
    return perRate;
}

Receipt ReceiptFor(const Purchase& p, qint64 received, PaymentMethod method, int percent,
                   TaxRounding rounding) {
    Receipt r;
    r.seq = p.seq;
    r.purchaseDate = p.date;
    r.total = p.total;
    r.received = received;
    r.method = method;
    const qint64 rest = p.total - p.fmKinga - p.lzKinga;
    for (const auto& [caption, amount] : {std::pair{QStringLiteral("フレーム"), p.fmKinga},
                                          std::pair{QStringLiteral("レンズ"), p.lzKinga},
                                          std::pair{QStringLiteral("その他"), rest}})
        if (amount != 0)
            r.lines.push_back({caption, amount, percent});
    r.taxes = TaxPerRate({{QString(), received, percent}}, rounding);
    qint64 tax = 0;
    for (const RateTotal& rate : r.taxes)
        tax += rate.tax;
    r.stamp = NeedsRevenueStamp(received, tax, method);
    return r;
}

std::vector<ReceiptTarget> ReceiptTargets(qint64 total, bool ordered,
                                          const std::vector<Payment>& payments) {
    std::vector<ReceiptTarget> targets;
    const qint64 received = ordered ? PaidAmount(payments) : total;
    PaymentMethod method = PaymentMethod::Cash;
    if (ordered && !payments.empty())
        method = payments.front().method;
    if (received > 0)
        targets.push_back({0, received, method, QDate()});
    if (ordered)
        for (const Payment& p : payments)
            if (p.kind != PaymentKind::Refund)
                targets.push_back({p.no, p.amount, p.method, p.date});
    return targets;
}

qint64 ReceiptCovering(const std::vector<Receipt>& issued, int paymentNo) {
    for (const Receipt& r : issued)
        if (!r.cancelled && (r.paymentNo == 0 || paymentNo == 0 || r.paymentNo == paymentNo))
            return r.no;
    return 0;
}

bool NeedsRevenueStamp(qint64 received, qint64 statedTax, PaymentMethod method) {
    const bool money = method == PaymentMethod::Cash || method == PaymentMethod::Transfer;
    return money && received - statedTax >= 50000;
}

QString RegistrationNumberOf(const QString& typed) {
    QString number = HalfWidthNumber(typed).toUpper();
    number.replace(QChar(0xFF34), QLatin1Char('T')); // Ｔ
    number.replace(QChar(0xFF54), QLatin1Char('T')); // ｔ
    number.remove(QLatin1Char('-'));
    number.remove(QChar(0x30FC)); // ー typed for a hyphen
    number.remove(QChar(0x2212)); // −
    number.remove(QChar(0xFF0D)); // －
    QString compact;
    for (const QChar c : number)
        if (!c.isSpace())
            compact += c;
    return compact;
}

RegistrationCheck CheckRegistrationNumber(const QString& number) {
    if (number.size() != 14 || number[0] != QLatin1Char('T'))
        return RegistrationCheck::NotTAnd13Digits;
    for (qsizetype i = 1; i < number.size(); ++i)
        if (number[i] < QLatin1Char('0') || number[i] > QLatin1Char('9'))
            return RegistrationCheck::NotTAnd13Digits;
    // The corporate number's check digit: 9 − (Σ digit × (1 for odd, 2 for even positions,
    // counted from the last digit)) mod 9.
    int sum = 0;
    for (int n = 1; n <= 12; ++n) {
        const int digit = number[14 - n].digitValue();
        sum += digit * (n % 2 == 1 ? 1 : 2);
    }
    const int check = 9 - sum % 9;
    return number[1].digitValue() == check ? RegistrationCheck::Valid
                                           : RegistrationCheck::CheckDigitDiffers;
}
