#include "data/CustomerQueries.h"

#include "data/Schema.h"
#include "domain/Ymd.h"
#include "frame/Globals.h"
#include "platform/db/SqlText.h"

namespace {

using C = SearchConditions;

QString ymd(const QDate& date) {
    return SqlNum(YmdOf(date));
}

QString codeList(const QString& column, const std::array<QString, 6>& codes) {
    QStringList terms;
    for (const QString& code : codes)
        terms << column + QStringLiteral(" = ") + SqlQuote(code);
    return QStringLiteral(" and (") + terms.join(QStringLiteral(" or ")) + QLatin1Char(')');
}

QString makerFragment(const C& c, MakerForm form) {
    QStringList terms;
    if (form == MakerForm::Inquiry) {
        for (const QString& code : c.meka)
            terms << QStringLiteral("Uri_Fm_MekaNo = ") + SqlQuote(code);
        for (const QString& code : c.meka)
            terms << QStringLiteral("Uri_Lz_MekaNo = ") + SqlQuote(code);
    } else {
        for (const QString& code : c.meka)
            if (!code.isEmpty())
                terms << QStringLiteral("Uri_Fm_MekaNo = ") + SqlQuote(code) +
                             QStringLiteral(" or Uri_Lz_MekaNo = ") + SqlQuote(code);
    }
    return terms.isEmpty()
               ? QString()
               : QStringLiteral(" and (") + terms.join(QStringLiteral(" or ")) + QLatin1Char(')');
}

QString nameFragment(const C& c) {
    QStringList terms;
    for (const QString& name : c.hinName)
        if (!name.isEmpty())
            terms << QStringLiteral("Uri_Fm_Name") + gCon.contains(name) +
                         QStringLiteral(" or Uri_Lz_Name") + gCon.contains(name);
    return QStringLiteral(" and (") + terms.join(QStringLiteral(" or ")) + QLatin1Char(')');
}

QString visitFragment(const C& c) {
    return QStringLiteral(" and Uri_Date between ") + ymd(c.visitFrom) + QStringLiteral(" And ") +
           ymd(c.visitTo);
}

} // namespace

namespace {
// The customer-side fragments, in the order of the conditions.
QString customerFragments(const C& c) {
    QString sql;
    if (c.on[C::Kana])
        sql += c.kana.trimmed().isEmpty()
                   ? QStringLiteral(" and San1.User_Kana = ''")
                   : QStringLiteral(" and San1.User_Kana") + gCon.contains(c.kana);
    if (c.on[C::Jusyo])
        sql += c.jusyo1.trimmed().isEmpty()
                   ? QStringLiteral(" and San1.User_Jusyo1 = ''")
                   : QStringLiteral(" and (San1.User_Jusyo1") + gCon.contains(c.jusyo1) +
                         QStringLiteral(" or San1.User_Jusyo2") + gCon.contains(c.jusyo1) +
                         QLatin1Char(')');
    if (c.on[C::Yubin]) {
        QStringList codes;
        for (const QString& code : c.yubin)
            if (!code.isEmpty())
                codes << QStringLiteral("San1.User_Yubin = ") + SqlQuote(code);
        sql += codes.isEmpty() ? QStringLiteral(" and San1.User_Yubin = ''")
                               : QStringLiteral(" and (") + codes.join(QStringLiteral(" or ")) +
                                     QLatin1Char(')');
    }
    if (c.on[C::Tel])
        sql += QStringLiteral(" and San1.User_tel") + gCon.contains(c.tel);
    if (c.on[C::Sex])
        sql += c.sex == 0 ? QStringLiteral(" and San1.User_sex = 0")
                          : QStringLiteral(" and San1.User_sex = 1");
    if (c.on[C::Birthday]) {
        if (c.month != 0)
            sql += QStringLiteral(" and San1.User_Tanjo_Mon= ") + SqlNum(c.month);
        if (c.day != 0)
            sql += QStringLiteral(" and San1.User_Tanjo_Day= ") + SqlNum(c.day);
    }
    // A customer who never bought has 0 as his last visit: he is before every from-date, and
    // with only a to-date he has not been seen since.
    if (c.on[C::LastVisit] && c.lastVisitFrom.isValid())
        sql += QStringLiteral(" and San2.Uri_LastDate >= ") + ymd(c.lastVisitFrom);
    if (c.on[C::LastVisit] && c.lastVisitTo.isValid())
        sql += QStringLiteral(" and San2.Uri_LastDate <= ") + ymd(c.lastVisitTo);
    return sql;
}
} // namespace

namespace {
// Whether a statement reads every customer: no condition on the customer's own columns, no list
// of numbers.
bool everyCustomer(const C& c, const QList<qint64>& only = {}) {
    return only.isEmpty() && !c.on[C::Kana] && !c.on[C::Jusyo] && !c.on[C::Yubin] &&
           !c.on[C::Tel] && !c.on[C::Sex] && !c.on[C::Birthday];
}

// The customers joined with their totals: the view, or for every customer on an engine that
// groups them faster, the grouped sub-select of the same rows.
QString withTotals(bool everyCustomer) {
    const QString totals = everyCustomer && gCon.groupsForEveryRow()
                               ? QLatin1Char('(') + CustomerTotalsGrouped() + QLatin1Char(')')
                               : QStringLiteral("V_San_User");
    return QStringLiteral(" from San_User as San1,") + totals +
           QStringLiteral(" as San2 where San1.User_No = San2.User_No");
}
} // namespace

QString CustomerQuery(const C& c, const QList<qint64>& only) {
    QString sql = QStringLiteral("select san2.*,san1.*") + withTotals(everyCustomer(c, only)) +
                  customerFragments(c);
    if (!only.isEmpty())
        sql += QStringLiteral(" and San1.User_No") + gCon.isOneOf(only);
    return sql + QStringLiteral(" Order By User_Kana");
}

QString CustomerSideQuery(const C& c) {
    // The view's last visits are read only when asked for. Unordered: the customers that pass
    // are listed by the customer query, in kana order.
    return QStringLiteral("select San1.User_No, San1.User_Tanjo_Go, San1.User_Tanjo_Nen") +
           (c.on[C::LastVisit] ? withTotals(everyCustomer(c))
                               : QStringLiteral(" from San_User as San1 where 1 = 1")) +
           customerFragments(c);
}

QString PurchaseFragments(const C& c, MakerForm form) {
    QString sql;
    if (c.on[C::Visit])
        sql += visitFragment(c);
    if (c.on[C::Youto])
        sql += codeList(QStringLiteral("Uri_YoutoNo"), c.youto);
    if (c.on[C::Item])
        sql += codeList(QStringLiteral("Uri_ItemNo"), c.item);
    if (c.on[C::Meka])
        sql += makerFragment(c, form);
    if (c.on[C::HinName])
        sql += nameFragment(c);
    return sql;
}

QString PurchaseCustomersQuery(const C& c) {
    // Not grouped: the file would walk the purchases in customer order through an index and
    // look each one up, twice as slow as reading them in their own order.
    return QStringLiteral("select Uri_UserNo from San_Uriage where 1 = 1") +
           PurchaseFragments(c, MakerForm::List);
}

QString AmountQuery(const C& c, qint64 customerNo) {
    return QStringLiteral("select sum(Uri_KingaKei) from San_Uriage where Uri_UserNo = ") +
           SqlNum(customerNo) + (c.on[C::Visit] ? visitFragment(c) : QString());
}

QString AmountsByCustomerQuery(const C& c) {
    return QStringLiteral("select Uri_UserNo, sum(Uri_KingaKei) from San_Uriage where 1 = 1") +
           (c.on[C::Visit] ? visitFragment(c) : QString()) + QStringLiteral(" group by Uri_UserNo");
}

QString InquiryQuery(const C& c, qint64 customerNo) {
    return QStringLiteral("select * from San_Uriage where Uri_UserNo = ") + SqlNum(customerNo) +
           PurchaseFragments(c, MakerForm::Inquiry) +
           QStringLiteral(" order by Uri_UserNo,Uri_Date desc");
}
