#include "domain/Household.h"

#include <QRegularExpression>
#include <algorithm>

namespace {

constexpr int Representative = 0;

bool sameHousehold(const ListedCustomer& a, const ListedCustomer& b) {
    return !a.tel.trimmed().isEmpty() && a.tel == b.tel &&
           a.jusyo1.trimmed() == b.jusyo1.trimmed() && a.jusyo2.trimmed() == b.jusyo2.trimmed();
}

// The family and the given name, split at the first blank; no family name without a blank.
std::pair<QString, QString> splitName(const QString& name) {
    static const QRegularExpression blank(QStringLiteral("[ 　]+"));
    const QString trimmed = name.trimmed();
    const auto match = blank.match(trimmed);
    if (!match.hasMatch())
        return {QString(), trimmed};
    return {trimmed.left(match.capturedStart()), trimmed.mid(match.capturedEnd())};
}

} // namespace

std::vector<Household> MarkedHouseholds(const std::vector<ListRow>& rows) {
    std::vector<Household> households;
    std::vector<bool> taken(rows.size(), false);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!rows[i].marked || taken[i])
            continue;
        Household household;
        for (std::size_t j = 0; j < rows.size(); ++j) {
            const bool member = j == i || (!taken[j] && sameHousehold(rows[i].now, rows[j].now));
            // A member whose mark staff took off is left off the card.
            if (member && rows[j].marked) {
                household.push_back(&rows[j].now);
                taken[j] = true;
            }
        }
        std::stable_partition(household.begin(), household.end(),
                              [](const ListedCustomer* c) { return c->kazok == Representative; });
        households.push_back(household);
    }
    return households;
}

Addressee HouseholdAddressee(const Household& household) {
    if (household.size() > std::size_t(MostNamesOnACard))
        return {household.front()->name.trimmed(), QStringLiteral("御一同様")};
    const QString family = splitName(household.front()->name).first;
    const bool shared =
        !family.isEmpty() &&
        std::all_of(household.begin(), household.end(),
                    [&](const ListedCustomer* c) { return splitName(c->name).first == family; });
    QStringList lines;
    for (const ListedCustomer* c : household) {
        const QString given = shared ? splitName(c->name).second : c->name.trimmed();
        const QString head = shared && lines.isEmpty() ? family + QLatin1Char(' ') : QString();
        lines << head + QLatin1Char('\t') + given + QStringLiteral("  \t様");
    }
    return {lines.join(QLatin1Char('\n')), QString()};
}
