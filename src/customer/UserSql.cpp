#include "customer/UserSql.h"

#include "platform/controls/xZip.h"
#include "platform/db/SqlText.h"
#include "prescription/PrescriptionValues.h"

#include <cmath>

namespace {

// The postal code as stored: the untouched mask is no code at all.
QString postalCode(const QString& typed) {
    return typed.trimmed() == xZip::EmptyText ? QStringLiteral("''") : SqlStr(typed);
}

QString wholeNumber(const QString& typed) {
    return SqlNum(static_cast<qint64>(std::nearbyint(ReadNumber(typed))));
}

} // namespace

QString UserDateText(const QDate& date) {
    return date.toString(QStringLiteral("yyyy/MM/dd"));
}

QString UserInsertSql(qint64 userNo, const UserRecord& u, const QDate& today) {
    const QString comma = QStringLiteral(",");
    const QString todayText = SqlQuote(UserDateText(today));
    return QStringLiteral("insert into San_User Values(") + SqlNum(userNo) + comma +
           SqlStr(u.name) + comma + SqlStr(u.kana) + comma + postalCode(u.yubin) + comma +
           SqlStr(u.jusyo1) + comma + SqlStr(u.jusyo2) + comma + SqlStr(u.tel) + comma +
           SqlStr(u.kinmu) + comma + SqlStr(u.kinmuTel) + comma + SqlStr(u.syokai) + comma +
           SqlStr(u.syokaiTel) + comma + SqlNum(u.sex) + comma + SqlNum(u.kazok) + comma +
           SqlNum(u.tanjoGo) + comma + wholeNumber(u.tanjoNen) + comma + wholeNumber(u.tanjoMon) +
           comma + wholeNumber(u.tanjoDay) + comma + todayText + comma + todayText + comma +
           QStringLiteral("'' )");
}

QString UserUpdateSql(qint64 userNo, const UserRecord& u, const QDate& today) {
    return QStringLiteral("update San_User set User_Name = ") + SqlStr(u.name) +
           QStringLiteral(",User_Kana = ") + SqlStr(u.kana) + QStringLiteral(",User_Yubin = ") +
           postalCode(u.yubin) + QStringLiteral(",User_Jusyo1 = ") + SqlStr(u.jusyo1) +
           QStringLiteral(",User_Jusyo2 = ") + SqlStr(u.jusyo2) + QStringLiteral(",User_Tel = ") +
           SqlStr(u.tel) + QStringLiteral(",User_Kinmu = ") + SqlStr(u.kinmu) +
           QStringLiteral(",User_KinmuTel = ") + SqlStr(u.kinmuTel) +
           QStringLiteral(",User_Syokai = ") + SqlStr(u.syokai) +
           QStringLiteral(",User_SyokaiTel = ") + SqlStr(u.syokaiTel) +
           QStringLiteral(",User_Sex = ") + SqlNum(u.sex) + QStringLiteral(",User_Kazok_F = ") +
           SqlNum(u.kazok) + QStringLiteral(",User_Tanjo_Go = ") + SqlNum(u.tanjoGo) +
           QStringLiteral(",User_Tanjo_Nen = ") + wholeNumber(u.tanjoNen) +
           QStringLiteral(",User_Tanjo_Mon = ") + wholeNumber(u.tanjoMon) +
           QStringLiteral(",User_Tanjo_Day = ") + wholeNumber(u.tanjoDay) +
           QStringLiteral(",User_Entry1 = ") + SqlQuote(UserDateText(u.entry1)) +
           QStringLiteral(",User_Entry2 = ") + SqlQuote(UserDateText(today)) +
           QStringLiteral(" where User_No = ") + SqlNum(userNo);
}

QStringList UserDeleteSql(qint64 userNo) {
    return {QStringLiteral("delete from San_User where User_No = ") + SqlNum(userNo),
            QStringLiteral("delete from San_Uriage where Uri_UserNo = ") + SqlNum(userNo)};
}
