#include "domain/PrintMarks.h"

namespace {
enum Kazok { Representative = 0, Member = 1, Individual = 2, NoMail = 3 };
constexpr int AllCustomers = 2;
} // namespace

bool MarkedOnSearch(const QString& jusyo1, int kazok, int result, bool familyMode) {
    if (jusyo1.trimmed().isEmpty())
        return false;
    if (result == AllCustomers)
        return kazok == Representative || kazok == Individual;
    if (kazok == NoMail)
        return false;
    if (familyMode)
        return kazok == Representative || kazok == Member || kazok == Individual;
    return kazok == Representative || kazok == Individual;
}

bool MarkAfterFamilyChange(int kazok, int result) {
    if (result != AllCustomers)
        return kazok != NoMail;
    return kazok == Individual || kazok == Representative;
}
