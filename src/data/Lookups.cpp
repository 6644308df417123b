#include "data/Lookups.h"

#include "data/MasterStore.h"
#include "frame/Globals.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "platform/controls/CodeList.h"
#include "platform/db/SqlText.h"

#include <QComboBox>

namespace {

const QString Module = QStringLiteral("BasCmnSubFun");

QString masterQuery(int kind, const QString& no) {
    const QString code = QLatin1Char('\'') + no + QLatin1Char('\'');
    switch (kind) {
    case 0:
        return QStringLiteral("select Item_Name from San_Item where Item_No = ") + code;
    case 1:
        return QStringLiteral("select Youto_Name from San_Youto where Youto_No = ") + code;
    case 2:
        return QStringLiteral("select Meka_Name from San_Meka where Meka_No = ") + code;
    default:
        return {}; // fails in the database, and is reported from there
    }
}

// A stored code shown with three digits: "7" and "007" both give "007".
QString threeDigits(const QVariant& code) {
    bool isNumber = false;
    const qlonglong number = code.toString().trimmed().toLongLong(&isNumber);
    return isNumber ? QStringLiteral("%1").arg(number, 3, 10, QLatin1Char('0')) : code.toString();
}

} // namespace

QString CmnGetMaster(int kind, const QString& no) {
    QString name;
    Procedure(Module, QStringLiteral("CmnGetMaster"), {},
              [&] {
                  // A code is three digits and never holds a quote; anything else finds no master.
                  QString safeNo = no;
                  safeNo.replace(QLatin1Char('\''), QLatin1String("''"));
                  RecordSet rows = gCon.execute(masterQuery(kind, safeNo));
                  if (rows.eof())
                      return;
                  const QVariant value = rows.field(0);
                  if (value.isNull())
                      throw Failure(94, QStringLiteral("Null の使い方が不正です。"));
                  name = value.toString();
              },
              {.trace = false});
    return name;
}

void MasterNames::load() {
    for (MasterKind kind : {MasterKind::Item, MasterKind::Youto, MasterKind::Meka})
        find(kind, QString());
}

const std::vector<MasterEntry>& MasterNames::entries(MasterKind kind) {
    std::optional<std::vector<MasterEntry>>& entries = entries_[int(kind)];
    if (!entries)
        entries = MasterStore::Entries(kind);
    return *entries;
}

std::optional<QString> MasterNames::find(MasterKind kind, const QString& code) {
    std::optional<QHash<QString, QString>>& names = names_[int(kind)];
    if (!names) {
        QHash<QString, QString> read;
        for (const MasterEntry& entry : entries(kind))
            read.insert(entry.code, entry.name);
        names = std::move(read);
    }
    const auto known = names->constFind(code);
    return known == names->cend() ? std::nullopt : std::optional<QString>(*known);
}

QString CmnGetJusyo(bool withTodo, qint64 zip1, qint64 zip2) {
    QString address;
    Procedure(Module, QStringLiteral("CmnGetJusyo"), {},
              [&] {
                  RecordSet rows =
                      gCon.execute(QStringLiteral("select TODO,CITY,TOWN from ZipList "
                                                  "where ZIP1 = ") +
                                   SqlNum(zip1) + QStringLiteral(" and ZIP2 = ") + SqlNum(zip2));
                  if (rows.eof())
                      return;
                  address = (withTodo ? rows.field(0).toString() : QString()) +
                            rows.field(1).toString() + rows.field(2).toString();
              },
              {.trace = false});
    return address;
}

namespace {

bool holdsEntries(const QComboBox* list, const QList<std::pair<QString, QString>>& entries) {
    if (list->count() < entries.size())
        return false;
    int at = 0;
    for (int i = 0; i < list->count(); ++i) {
        if (at < entries.size() &&
            list->itemText(i) == entries[at].first + QLatin1Char(':') + entries[at].second &&
            list->itemData(i).toString() == entries[at].first)
            ++at;
        else if (!IsLostCode(list, i))
            return false;
    }
    return at == entries.size();
}

} // namespace

void MasterNames::fillList(QComboBox* list, MasterKind kind) {
    const bool filled =
        Procedure(Module, QStringLiteral("CmnSetMstCombo"), {},
                  [&] {
                      QList<std::pair<QString, QString>> shown;
                      for (const MasterEntry& entry : entries(kind))
                          shown.append({threeDigits(entry.code), entry.name});
                      if (holdsEntries(list, shown))
                          SelectCode(list, QString());
                      else
                          FillCodeList(list, shown);
                  },
                  {.trace = false, .logErrors = false, .titlePrefix = VbErrorTitleWide});
    if (!filled)
        list->clear();
}

void CmnSetMstCombo(QComboBox* list, const QString& name) {
    list->clear();
    Procedure(Module, QStringLiteral("CmnSetMstCombo"), {},
              [&] {
                  RecordSet rows =
                      gCon.execute(QStringLiteral("select * from san_") + name +
                                   QStringLiteral(" order By ") + name + QStringLiteral("_no"));
                  QList<std::pair<QString, QString>> entries;
                  for (; !rows.eof(); rows.moveNext())
                      entries.append({threeDigits(rows.field(0)), rows.field(1).toString()});
                  rows.close();
                  FillCodeList(list, entries);
              },
              {.trace = false, .logErrors = false, .titlePrefix = VbErrorTitleWide});
}
