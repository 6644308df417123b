#pragma once

#include <QDate>
#include <QString>
#include <QVariant>
#include <array>

// The values of the search-conditions screen, as its controls hold them. The customer list
// and the sales inquiry build their statements and row filters from these.
struct SearchConditions {
    enum Condition {
        Kana,
        Jusyo,
        Yubin,
        Tel,
        Sex,
        Age,
        Birthday,
        Visit,
        Youto,
        Item,
        Meka,
        Amount,
        HinName,
        Count
    };
    std::array<bool, Count> on{};

    QString kana, jusyo1, tel;
    std::array<QString, 6> yubin; // "***-****" when a field is left empty
    int sex = 0;
    int ageFrom = 0, ageTo = 0;
    int month = 0, day = 0;
    QDate visitFrom, visitTo;
    std::array<QString, 6> youto, item, meka; // master codes; empty when nothing is chosen
    qint64 amountFrom = 0, amountTo = 0;
    std::array<QString, 6> hinName;

    bool any() const;
    bool anyPurchaseCondition() const;
};

// The customer list's query: customers with their sales total and last visit, by kana. Given
// customer numbers, only those.
QString CustomerQuery(const SearchConditions& c, const QList<qint64>& only = {});

// The customers of the customer-side conditions alone, by kana: number, era and year of birth.
QString CustomerSideQuery(const SearchConditions& c);

// The age filter: the birth year within the era made Western, the age the years since then.
// A customer without a birth year, or without an era, never passes.
bool AgeMatches(const SearchConditions& c, const QVariant& era, const QVariant& year,
                int currentYear);

// Which form the maker condition takes: the list's (only chosen makers) or the inquiry's
// (all twelve terms).
enum class MakerForm { List, Inquiry };

// The purchase fragments of the visit-date, purpose, item, maker and product-name conditions.
QString PurchaseFragments(const SearchConditions& c, MakerForm form);

// The list's purchase check for every customer at once: the customers with a matching purchase.
QString PurchaseCustomersQuery(const SearchConditions& c);

// The amount check: the customer's sales in the visit-date range; and for every customer at once.
QString AmountQuery(const SearchConditions& c, qint64 customerNo);
QString AmountsByCustomerQuery(const SearchConditions& c);
bool AmountInRange(const SearchConditions& c, qint64 sum);

// The sales inquiry's purchases of one customer, newest first.
QString InquiryQuery(const SearchConditions& c, qint64 customerNo);
