#include "customer/CustomerList.h"

#include "platform/controls/SpreadGrid.h"
#include "platform/db/RecordSet.h"

void SetUpCustomerList(SpreadGrid* grid) {
    grid->setObjectName(QStringLiteral("spdData"));
    grid->setHeaders({QStringLiteral("顧客番号"), QStringLiteral("氏 名"), QStringLiteral("TEL"),
                      QStringLiteral("住 所")});
    grid->setColumnNumeric(1, true);
    grid->setColumnWidths({80, 170, 130, 380});
    grid->setLastColumnStretch(true);
}

QString CustomerListLine(const RecordSet& row) {
    return QStringList{row.field(QStringLiteral("User_No")).toString(),
                       row.field(QStringLiteral("User_Name")).toString(),
                       row.field(QStringLiteral("User_Tel")).toString(),
                       row.field(QStringLiteral("User_Jusyo1")).toString().trimmed() +
                           row.field(QStringLiteral("User_Jusyo2")).toString()}
        .join(QLatin1Char('\t'));
}
