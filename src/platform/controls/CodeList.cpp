#include "platform/controls/CodeList.h"

#include <QComboBox>

namespace {

constexpr int CodeRole = Qt::UserRole;
// Marks the entry that stands for a code no master row has any more.
constexpr int LostCodeRole = Qt::UserRole + 1;

void removeLostCodes(QComboBox* list) {
    for (int i = list->count() - 1; i >= 0; --i)
        if (list->itemData(i, LostCodeRole).toBool())
            list->removeItem(i);
}

bool holdsEntries(const QComboBox* list, const QList<std::pair<QString, QString>>& entries) {
    if (list->count() < entries.size())
        return false;
    int at = 0;
    for (int i = 0; i < list->count(); ++i) {
        if (at < entries.size() &&
            list->itemText(i) == entries[at].first + QLatin1Char(':') + entries[at].second &&
            list->itemData(i, CodeRole).toString() == entries[at].first)
            ++at;
        else if (!IsLostCode(list, i))
            return false;
    }
    return at == entries.size();
}

} // namespace

void RefillCodeList(QComboBox* list, const QList<std::pair<QString, QString>>& entries) {
    if (holdsEntries(list, entries))
        SelectCode(list, QString());
    else
        FillCodeList(list, entries);
}

void FillCodeList(QComboBox* list, const QList<std::pair<QString, QString>>& entries) {
    list->clear();
    for (const auto& [code, name] : entries)
        list->addItem(code + QLatin1Char(':') + name, code);
    list->setCurrentIndex(-1);
}

void SelectCode(QComboBox* list, const QString& code) {
    removeLostCodes(list);
    if (code.isEmpty()) {
        list->setCurrentIndex(-1);
        return;
    }
    int found = list->findData(code, CodeRole);
    if (found < 0) {
        found = 0;
        while (found < list->count() && list->itemData(found, CodeRole).toString() < code)
            ++found;
        list->insertItem(found, code + QLatin1Char(':'), code);
        list->setItemData(found, true, LostCodeRole);
    }
    list->setCurrentIndex(found);
}

bool IsLostCode(const QComboBox* list, int position) {
    return list->itemData(position, LostCodeRole).toBool();
}

QString SelectedCode(const QComboBox* list) {
    const int chosen = list->currentIndex();
    if (chosen < 0)
        return {};
    const QVariant code = list->itemData(chosen, CodeRole);
    return code.isValid() ? code.toString() : list->currentText().left(3);
}
