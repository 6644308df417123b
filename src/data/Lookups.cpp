#include "data/Lookups.h"

#include "frame/Globals.h"
#include "frame/Procedure.h"
#include "platform/db/SqlText.h"

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

QString MasterNames::name(int kind, const QString& no) {
    const QString key = QString::number(kind) + QLatin1Char('/') + no;
    const auto known = names_.constFind(key);
    if (known != names_.cend())
        return *known;
    return *names_.insert(key, CmnGetMaster(kind, no));
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
