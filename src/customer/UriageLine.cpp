#include "customer/UriageLine.h"

#include "platform/Failure.h"
#include "platform/db/SqlText.h"
#include "prescription/PrescriptionValues.h"

#include <cmath>

namespace {

QString cell(const UriageCells& line, int column) {
    return line.value(column - 1);
}

QString text(const UriageCells& line, int column) {
    return SqlStr(cell(line, column));
}

// An amount as a whole number of yen; grouping commas are allowed, empty is 0.
QString amount(const UriageCells& line, int column) {
    QString typed = cell(line, column);
    typed.remove(QLatin1Char(','));
    return SqlNum(static_cast<qint64>(std::nearbyint(ReadNumber(typed))));
}

QString prescription(const UriageCells& line, int first, int index) {
    return PrescriptionStorage(index, cell(line, first + index));
}

QString seqOf(const UriageCells& line) {
    return SqlNum(static_cast<qint64>(ReadNumber(cell(line, UriCol::Seq), false)));
}

} // namespace

QColor LineColor(const QString& status) {
    if (status == LineStatus::New)
        return NewLineColor;
    if (status == LineStatus::Changed)
        return ChangedLineColor;
    if (status == LineStatus::Deleted)
        return DeletedLineColor;
    return {};
}

QStringList UriageHeadings() {
    QStringList headings{
        QStringLiteral("更新"), QStringLiteral("売上日"), QStringLiteral("売上合計"),
        QStringLiteral("No"),   QStringLiteral("ｱｲﾃﾑ"),   QStringLiteral("No"),
        QStringLiteral("用途"), QStringLiteral("ﾌﾚｰﾑ名"), QStringLiteral("No"),
        QStringLiteral("ﾒｰｶｰ"), QStringLiteral("金 額"),  QStringLiteral("ｻｲｽﾞ"),
        QStringLiteral("ｶﾗｰ"),  QStringLiteral("ﾚﾝｽﾞ名"), QStringLiteral("No"),
        QStringLiteral("ﾒｰｶｰ"), QStringLiteral("金 額"),  QStringLiteral("眼処方"),
        QStringLiteral("ﾒﾓ")};
    for (const QString& eye : {QStringLiteral("(R)"), QStringLiteral("(L)")})
        for (const PrescriptionValue& value : PrescriptionColumns)
            headings << QString::fromUtf8(value.heading) + eye;
    headings << QStringLiteral("ＳＥＱ") << QString();
    return headings;
}

qint64 LineYmd(const QString& cellText) {
    const QDate date = QDate::fromString(cellText.trimmed(), QStringLiteral("yyyy/MM/dd"));
    if (!date.isValid())
        throw Failure(13, QStringLiteral("型が一致しません。"));
    return qint64(date.year()) * 10000 + date.month() * 100 + date.day();
}

QString UriageInsertSql(qint64 userNo, int seq, const UriageCells& line) {
    QStringList values{SqlNum(userNo),
                       SqlNum(seq),
                       SqlNum(LineYmd(cell(line, UriCol::Date))),
                       text(line, UriCol::ItemNo),
                       text(line, UriCol::YoutoNo),
                       text(line, UriCol::FmMekaNo),
                       text(line, UriCol::FmName),
                       amount(line, UriCol::FmKinga),
                       text(line, UriCol::FmSize),
                       text(line, UriCol::FmColor),
                       text(line, UriCol::LzMekaNo),
                       text(line, UriCol::LzName),
                       amount(line, UriCol::LzKinga),
                       amount(line, UriCol::Total)};
    for (int first : {UriCol::RightFirst, UriCol::LeftFirst})
        for (int i = 0; i < int(PrescriptionColumns.size()); ++i)
            values << prescription(line, first, i);
    values << text(line, UriCol::Syohou) << text(line, UriCol::Memo);
    return QStringLiteral("insert into San_Uriage Values(") + values.join(QLatin1Char(',')) +
           QStringLiteral(",'' )");
}

QString UriageUpdateSql(qint64 userNo, const UriageCells& line) {
    QStringList assignments{QStringLiteral("Uri_Date = ") +
                                SqlNum(LineYmd(cell(line, UriCol::Date))),
                            QStringLiteral(" Uri_ItemNo = ") + text(line, UriCol::ItemNo),
                            QStringLiteral(" Uri_YoutoNo = ") + text(line, UriCol::YoutoNo),
                            QStringLiteral(" Uri_Fm_MekaNo = ") + text(line, UriCol::FmMekaNo),
                            QStringLiteral(" Uri_Fm_Name = ") + text(line, UriCol::FmName),
                            QStringLiteral(" Uri_Fm_Kinga = ") + amount(line, UriCol::FmKinga),
                            QStringLiteral(" Uri_Fm_Size = ") + text(line, UriCol::FmSize),
                            QStringLiteral(" Uri_Fm_Color = ") + text(line, UriCol::FmColor),
                            QStringLiteral(" Uri_Lz_MekaNo = ") + text(line, UriCol::LzMekaNo),
                            QStringLiteral(" Uri_Lz_Name = ") + text(line, UriCol::LzName),
                            QStringLiteral(" Uri_Lz_Kinga = ") + amount(line, UriCol::LzKinga),
                            QStringLiteral(" Uri_KingaKei = ") + amount(line, UriCol::Total)};
    const char eyes[] = {'R', 'L'};
    for (int eye = 0; eye < 2; ++eye) {
        const int first = eye == 0 ? UriCol::RightFirst : UriCol::LeftFirst;
        for (int i = 0; i < int(PrescriptionColumns.size()); ++i)
            assignments << QLatin1Char(' ') + PrescriptionColumn(i, eyes[eye]) +
                               QStringLiteral(" = ") + prescription(line, first, i);
    }
    assignments << QStringLiteral(" Uri_Syohou = ") + text(line, UriCol::Syohou)
                << QStringLiteral(" Uri_Memo = ") + text(line, UriCol::Memo);
    return QStringLiteral("update San_Uriage set ") + assignments.join(QLatin1Char(',')) +
           QStringLiteral(" where Uri_UserNo = ") + SqlNum(userNo) +
           QStringLiteral(" and Uri_Seq = ") + seqOf(line);
}

QString UriageDeleteSql(qint64 userNo, const UriageCells& line) {
    return QStringLiteral("delete from San_Uriage where Uri_UserNo = ") + SqlNum(userNo) +
           QStringLiteral(" and Uri_Seq = ") + seqOf(line);
}
