#include "customer/UriageGrid.h"

#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "platform/Format.h"
#include "platform/db/SqlText.h"
#include "prescription/PrescriptionValues.h"

#include <QHash>
#include <optional>

namespace {

// Master names of one filling, each code looked up once. No value: no master has the code.
class KnownMasters {
public:
    std::optional<QString> find(const QString& table, const QString& prefix, const QString& code) {
        const QString key = table + QLatin1Char('/') + code;
        const auto known = names_.constFind(key);
        if (known != names_.cend())
            return *known;
        RecordSet rows = gCon.execute(
            QStringLiteral("select %1_Name from %2 where %1_No = ").arg(prefix, table) +
            SqlQuote(code) + QStringLiteral(" Order By %1_No").arg(prefix));
        const std::optional<QString> found =
            rows.eof() ? std::nullopt : std::optional<QString>(rows.field(0).toString());
        names_.insert(key, found);
        return found;
    }
    QString name(const QString& table, const QString& prefix, const QString& code) {
        return find(table, prefix, code).value_or(QString());
    }
    std::optional<QString> maker(const QString& code) {
        if (code.isEmpty())
            return std::nullopt;
        return find(QStringLiteral("San_Meka"), QStringLiteral("Meka"), code);
    }

private:
    QHash<QString, std::optional<QString>> names_;
};

QString numberText(const QVariant& value) {
    return value.isNull() ? QStringLiteral("0") : value.toString();
}

} // namespace

UriageGrid::UriageGrid(QWidget* parent) : SpreadGrid(parent) {
    setMaxCols(UriCol::Count);
    setHeaders(UriageHeadings());
    for (int column : {UriCol::Total, UriCol::FmKinga, UriCol::LzKinga}) {
        setColumnNumeric(column, true);
        setColumnDisplayFormat(column, QStringLiteral("###,###,##0"));
    }
    // The codes, the sequence number and the work column are for the program, not the user.
    for (int column : {UriCol::ItemNo, UriCol::YoutoNo, UriCol::FmMekaNo, UriCol::LzMekaNo,
                       UriCol::Seq, UriCol::Work})
        setColumnHidden(column, true);
    QList<int> widths{44, 96, 80, 0, 96, 0, 100, 110, 0, 84, 72, 50, 60, 110, 0, 84, 72, 110, 120};
    for (int i = 0; i < 26; ++i)
        widths << 62;
    setColumnWidths(widths);
}

bool UriageGrid::fill(qint64 userNo) {
    RecordSet rows =
        gCon.execute(QStringLiteral("select * from San_Uriage where Uri_UserNo = ") +
                     SqlNum(userNo) + QStringLiteral(" Order By Uri_Date desc,Uri_seq"));
    clearRows();
    setRedraw(false);
    KnownMasters masters;
    bool complete = true;
    for (; !rows.eof(); rows.moveNext()) {
        const int row = addRow(QString());
        QStringList cells{QString(), FormatYmd(rows.field(QStringLiteral("Uri_Date")).toLongLong()),
                          numberText(rows.field(QStringLiteral("Uri_KingaKei")))};
        const QString item = rows.field(QStringLiteral("Uri_ItemNo")).toString();
        const QString youto = rows.field(QStringLiteral("Uri_YoutoNo")).toString();
        cells << item << masters.name(QStringLiteral("San_Item"), QStringLiteral("Item"), item)
              << youto << masters.name(QStringLiteral("San_Youto"), QStringLiteral("Youto"), youto)
              << rows.field(QStringLiteral("Uri_Fm_Name")).toString();
        const QString frameMaker = rows.field(QStringLiteral("Uri_Fm_MekaNo")).toString();
        const std::optional<QString> frameMakerName = masters.maker(frameMaker);
        cells << (frameMakerName ? frameMaker : QString()) << frameMakerName.value_or(QString())
              << numberText(rows.field(QStringLiteral("Uri_Fm_Kinga")))
              << rows.field(QStringLiteral("Uri_Fm_Size")).toString()
              << rows.field(QStringLiteral("Uri_Fm_Color")).toString()
              << rows.field(QStringLiteral("Uri_Lz_Name")).toString();
        const QString lensMaker = rows.field(QStringLiteral("Uri_Lz_MekaNo")).toString();
        const std::optional<QString> lensMakerName = masters.maker(lensMaker);
        if (!lensMaker.isEmpty() && !lensMakerName) {
            setRedraw(true);
            CmnDspMsg(OpeErr_008);
            complete = false;
            break;
        }
        cells << lensMaker << lensMakerName.value_or(QString())
              << numberText(rows.field(QStringLiteral("Uri_Lz_Kinga"))) << QString() << QString();
        for (char eye : {'R', 'L'})
            for (int i = 0; i < int(PrescriptionColumns.size()); ++i)
                cells << PrescriptionDisplay(i, rows.field(PrescriptionColumn(i, eye)));
        cells << rows.field(QStringLiteral("Uri_Seq")).toString();
        setRowText(row, cells.join(QLatin1Char('\t')));
        // The prescription note and memo may hold tabs or line breaks: written cell by cell.
        setText(row, UriCol::Syohou, rows.field(QStringLiteral("Uri_Syohou")).toString());
        setText(row, UriCol::Memo, rows.field(QStringLiteral("Uri_Memo")).toString());
    }
    setRedraw(true);
    return complete;
}

UriageCells UriageGrid::line(int row) const {
    UriageCells cells;
    for (int column = 1; column <= UriCol::Count; ++column)
        cells << text(row, column);
    return cells;
}

bool UriageGrid::hasMarkedLines() const {
    for (int row = 1; row <= maxRows(); ++row)
        if (!status(row).isEmpty())
            return true;
    return false;
}

void UriageGrid::recolour() {
    for (int row = 1; row <= maxRows(); ++row)
        setRowColor(row, LineColor(status(row)));
}

void UriageGrid::save(qint64 userNo) {
    for (int row = 1; row <= maxRows(); ++row) {
        const QString lineStatus = status(row);
        if (lineStatus == LineStatus::New)
            gCon.execute(UriageInsertSql(userNo, Get_LastSeq(userNo), line(row)));
        else if (lineStatus == LineStatus::Changed)
            gCon.execute(UriageUpdateSql(userNo, line(row)));
        else if (lineStatus == LineStatus::Deleted)
            gCon.execute(UriageDeleteSql(userNo, line(row)));
    }
}

int UriageGrid::Get_LastSeq(qint64 userNo) {
    RecordSet rows = gCon.execute(
        QStringLiteral("select max(Uri_Seq) from San_Uriage where Uri_UserNo = ") + SqlNum(userNo));
    return rows.field(0).isNull() ? 1 : rows.field(0).toInt() + 1;
}
