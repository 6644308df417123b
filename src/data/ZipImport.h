#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <functional>

class Connection;

// One entry of the postal directory as ZipList holds it.
struct ZipRow {
    qint64 zip1 = 0;
    qint64 zip2 = 0;
    QString todo, city, town;
};

// Japan Post publishes its directory as KEN_ALL.CSV (Shift_JIS, long towns split over rows) and
// as utf_ken_all.csv (UTF-8, one row per code); both have the same fifteen columns.
enum class ZipFileForm { KenAll, Utf8 };

// The directory's rows from a file's bytes, in either form. Split towns are joined and their
// notes cleaned. Anything else fails with a message that says what was expected.
QList<ZipRow> ParseZipDirectory(const QByteArray& bytes, ZipFileForm* form = nullptr);

// A town as an address form wants it: the note "以下に掲載がない場合" gives no town, notes in
// brackets are dropped, "XX一円" keeps the place name XX.
QString CleanTown(const QString& town);

// Replaces the whole content of ZipList with the rows, in one transaction: a failure leaves
// the old content as it was. progress is told how many rows are in.
void ReplaceZipList(Connection& connection, const QList<ZipRow>& rows,
                    const std::function<void(int done, int total)>& progress = {});

// Whether a directory may be smaller than the one it replaces. A national directory shrinks
// little from one edition to the next: one with fewer than 90% of the rows now loaded is taken
// for a file cut short, unless the administrator says otherwise.
enum class ZipSize { AtLeastNinetyPercent, AnySize };

// Reads a directory file (a ".qz" file is compressed the way qCompress writes) and replaces
// ZipList with it. Gives the number of rows imported.
int ImportZipFile(Connection& connection, const QString& path,
                  ZipSize size = ZipSize::AtLeastNinetyPercent,
                  const std::function<void(int done, int total)>& progress = {});
