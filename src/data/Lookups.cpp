#include "data/Lookups.h"

#include "data/MasterStore.h"
#include "frame/Globals.h"
#include "frame/Messages.h"
#include "frame/Procedure.h"
#include "platform/db/SqlText.h"

namespace {

const QString Module = QStringLiteral("BasCmnSubFun");

QString masterQuery(int kind, const QString& no) {
    const QString code = SqlQuote(no);
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
                  RecordSet rows = gCon.execute(masterQuery(kind, no));
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

CodeEntries MasterNames::listEntries(MasterKind kind) {
    CodeEntries shown;
    for (const MasterEntry& entry : entries(kind))
        shown.append({threeDigits(entry.code), entry.name});
    return shown;
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
