#include "data/ZipImport.h"

#include "platform/CsvText.h"
#include "platform/Failure.h"
#include "platform/ShiftJis.h"
#include "platform/db/Connection.h"
#include "platform/db/SqlText.h"
#include "platform/db/Transaction.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringDecoder>

namespace {

constexpr int Columns = 15;
constexpr int ZipColumn = 2, TodoColumn = 6, CityColumn = 7, TownColumn = 8;
constexpr int RowsPerStatement = 250;

Failure notADirectory(const QString& why) {
    return Failure(ErrorNumber::FileAccess,
                   QStringLiteral("郵便番号データ (KEN_ALL.CSV または utf_ken_all.csv) の形式では"
                                  "ありません: ") +
                       why);
}

bool unbalanced(const QString& town) {
    return town.count(QStringLiteral("（")) > town.count(QStringLiteral("）"));
}

QString decode(const QByteArray& bytes, ZipFileForm* form) {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(bytes);
    if (!utf8.hasError()) {
        *form = ZipFileForm::Utf8;
        return text;
    }
    const std::optional<QString> shiftJis = DecodeShiftJis(bytes);
    if (!shiftJis)
        throw notADirectory(QStringLiteral("文字コードが UTF-8 でも Shift_JIS でもありません"));
    *form = ZipFileForm::KenAll;
    return *shiftJis;
}

} // namespace

QString CleanTown(const QString& town) {
    static const QRegularExpression note(QStringLiteral("（[^）]*）|（.*$"));
    if (town == QStringLiteral("以下に掲載がない場合") ||
        town.contains(QStringLiteral("の次に番地がくる場合")))
        return {};
    QString cleaned = town;
    cleaned.remove(note);
    const QString whole = QStringLiteral("一円");
    if (cleaned.endsWith(whole) && cleaned.size() > whole.size())
        cleaned.chop(whole.size());
    return cleaned;
}

QList<ZipRow> ParseZipDirectory(const QByteArray& bytes, ZipFileForm* formOut) {
    ZipFileForm form = ZipFileForm::Utf8;
    const QString text = decode(bytes, &form);
    QList<ZipRow> rows;
    QString pendingZip, pendingTown;
    ZipRow pending;
    int lineNo = 0;
    for (const QStringView line : QStringTokenizer(text, QLatin1Char('\n'))) {
        ++lineNo;
        const QString trimmed = line.trimmed().toString();
        if (trimmed.isEmpty())
            continue;
        const QStringList fields = CsvFields(trimmed);
        const QString zip = fields.value(ZipColumn);
        static const QRegularExpression sevenDigits(QStringLiteral("^\\d{7}$"));
        if (fields.size() != Columns || !sevenDigits.match(zip).hasMatch())
            throw notADirectory(QStringLiteral("%1 行目").arg(lineNo));
        // A long town of KEN_ALL.CSV goes on over the next rows of the same code until its
        // bracket closes.
        if (!pendingTown.isEmpty() && zip == pendingZip) {
            pendingTown += fields[TownColumn];
            if (unbalanced(pendingTown))
                continue;
            pending.town = CleanTown(pendingTown);
            pendingTown.clear();
            rows << pending;
            continue;
        }
        if (!pendingTown.isEmpty()) { // a bracket never closed: keep what there is
            pending.town = CleanTown(pendingTown);
            pendingTown.clear();
            rows << pending;
        }
        ZipRow row{zip.left(3).toLongLong(), zip.mid(3).toLongLong(), fields[TodoColumn],
                   fields[CityColumn], fields[TownColumn]};
        if (form == ZipFileForm::KenAll && unbalanced(row.town)) {
            pending = row;
            pendingZip = zip;
            pendingTown = row.town;
            continue;
        }
        row.town = CleanTown(row.town);
        // The same code, place and cleaned town twice is one entry.
        if (!rows.isEmpty() && rows.last().zip1 == row.zip1 && rows.last().zip2 == row.zip2 &&
            rows.last().city == row.city && rows.last().town == row.town)
            continue;
        rows << row;
    }
    // A file that ends inside a split town was cut short.
    if (!pendingTown.isEmpty())
        throw notADirectory(QStringLiteral("最後の行 (%1 行目) の町域が閉じていません。"
                                           "ファイルが途中で切れています")
                                .arg(lineNo));
    if (rows.isEmpty())
        throw notADirectory(QStringLiteral("行がありません"));
    if (formOut)
        *formOut = form;
    return rows;
}

void ReplaceZipList(Connection& connection, const QList<ZipRow>& rows,
                    const std::function<void(int, int)>& progress) {
    Transaction transaction(connection);
    connection.execute(QStringLiteral("delete from ZipList"));
    for (int first = 0; first < rows.size(); first += RowsPerStatement) {
        QStringList values;
        const int last = std::min(int(rows.size()), first + RowsPerStatement);
        for (int i = first; i < last; ++i) {
            const ZipRow& row = rows[i];
            values << QLatin1Char('(') + SqlNum(row.zip1) + QLatin1Char(',') + SqlNum(row.zip2) +
                          QLatin1Char(',') + SqlQuote(row.todo) + QLatin1Char(',') +
                          SqlQuote(row.city) + QLatin1Char(',') + SqlQuote(row.town) +
                          QLatin1Char(')');
        }
        connection.execute(
            QStringLiteral("insert into ZipList (ZIP1,ZIP2,TODO,CITY,TOWN) values ") +
            values.join(QLatin1Char(',')));
        if (progress)
            progress(last, int(rows.size()));
    }
    transaction.commit();
}

int ImportZipFile(Connection& connection, const QString& path, ZipSize size,
                  const std::function<void(int, int)>& progress) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Failure(ErrorNumber::FileAccess, QStringLiteral("ファイルを開けません: ") + path);
    QByteArray bytes = file.readAll();
    if (path.endsWith(QLatin1String(".qz"))) {
        bytes = qUncompress(bytes);
        if (bytes.isEmpty())
            throw notADirectory(QStringLiteral("圧縮データが壊れています"));
    }
    const QList<ZipRow> rows = ParseZipDirectory(bytes);
    const qint64 loaded =
        connection.execute(QStringLiteral("select count(*) from ZipList")).field(0).toLongLong();
    if (size == ZipSize::AtLeastNinetyPercent && rows.size() * 10 < loaded * 9)
        throw Failure(ErrorNumber::FileAccess,
                      QStringLiteral("郵便番号データが今の %1 件の 9 割に足りません (%2 件)。"
                                     "途中で切れたファイルではありませんか。小さいデータで"
                                     "置き換えるときは --allow-smaller を付けてください。")
                          .arg(loaded)
                          .arg(rows.size()));
    ReplaceZipList(connection, rows, progress);
    return int(rows.size());
}
