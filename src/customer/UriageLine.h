#pragma once

#include <QColor>
#include <QDate>
#include <QString>
#include <QStringList>

// The columns of a purchase line in the register's grid, counted from 1.
namespace UriCol {
inline constexpr int Status = 1;
inline constexpr int Date = 2;
inline constexpr int Total = 3;
inline constexpr int ItemNo = 4;
inline constexpr int ItemName = 5;
inline constexpr int YoutoNo = 6;
inline constexpr int YoutoName = 7;
inline constexpr int FmName = 8;
inline constexpr int FmMekaNo = 9;
inline constexpr int FmMekaName = 10;
inline constexpr int FmKinga = 11;
inline constexpr int FmSize = 12;
inline constexpr int FmColor = 13;
inline constexpr int LzName = 14;
inline constexpr int LzMekaNo = 15;
inline constexpr int LzMekaName = 16;
inline constexpr int LzKinga = 17;
inline constexpr int Syohou = 18;
inline constexpr int Memo = 19;
inline constexpr int RightFirst = 20; // Sph of the right eye; 13 values
inline constexpr int LeftFirst = 33;  // Sph of the left eye; 13 values
inline constexpr int Seq = 46;
inline constexpr int Work = 47; // "変更" kept while a changed line is marked for deletion
inline constexpr int Count = 47;
} // namespace UriCol

// Line status and the colour that shows it.
namespace LineStatus {
inline const QString New = QStringLiteral("新規");
inline const QString Changed = QStringLiteral("変更");
inline const QString Deleted = QStringLiteral("削除");
} // namespace LineStatus

inline const QColor NewLineColor(128, 255, 255);
inline const QColor ChangedLineColor(255, 255, 128);
inline const QColor DeletedLineColor(255, 128, 128);

// The colour of a line by its status; an invalid colour (the grid's default) for a stored one.
QColor LineColor(const QString& status);

// The grid's column headings.
QStringList UriageHeadings();

// One line of the grid: cells[0] is column 1.
using UriageCells = QStringList;

// A purchase date cell ("2024/03/05") as the stored number 20240305; fails (13) when the
// cell is not a date.
qint64 LineYmd(const QString& cell);

QString UriageInsertSql(qint64 userNo, int seq, const UriageCells& line);
QString UriageUpdateSql(qint64 userNo, const UriageCells& line);
QString UriageDeleteSql(qint64 userNo, const UriageCells& line);
