#pragma once

#include <QString>
#include <QVariant>
#include <array>

// The thirteen optical values of one eye.
enum class PrescriptionKind {
    Signed,   // Sph, Cyl, S: shown with a sign and two decimals
    Integer,  // Ax, Gai, Tama: shown as stored
    Unsigned, // P1, P2, Ragan, Kyosei (two decimals), Pd (one decimal)
    Text,     // B1, B2: the base direction, free text
};

struct PrescriptionValue {
    const char* suffix;  // column suffix after Uri_R_ / Uri_L_
    const char* heading; // grid heading
    PrescriptionKind kind;
    const char* displayKind; // CmnFmtNum kind of the display rule, empty when not used
};

// In the order of the table columns and of the register's grid: Pd before Ragan and Kyosei.
inline constexpr std::array<PrescriptionValue, 13> PrescriptionColumns{{
    {"Sph", "S度数", PrescriptionKind::Signed, "+"},
    {"Cyl", "C度数", PrescriptionKind::Signed, "+"},
    {"Ax", "軸度", PrescriptionKind::Integer, ""},
    {"S", "加入度", PrescriptionKind::Signed, "+"},
    {"P1", "ﾌﾟﾘ1", PrescriptionKind::Unsigned, "2"},
    {"B1", "ﾍﾞｰｽ1", PrescriptionKind::Text, ""},
    {"P2", "ﾌﾟﾘ2", PrescriptionKind::Unsigned, "2"},
    {"B2", "ﾍﾞｰｽ2", PrescriptionKind::Text, ""},
    {"Gai", "外径", PrescriptionKind::Integer, ""},
    {"Tama", "小玉", PrescriptionKind::Integer, ""},
    {"Pd", "ＰＤ", PrescriptionKind::Unsigned, "1"},
    {"Ragan", "裸眼", PrescriptionKind::Unsigned, "2"},
    {"Kyosei", "矯正", PrescriptionKind::Unsigned, "2"},
}};

// The column of one value and eye ('R' or 'L'), e.g. Uri_R_Sph.
QString PrescriptionColumn(int index, char eye);

// Display rule: a stored value as its field shows it. Null and 0 show as empty text.
QString PrescriptionDisplay(int index, const QVariant& stored);

// Storage rule: a field's text as it is written into SQL. Numeric values as plain decimal
// (empty text as 0; "+1.25" as 1.25); B1 and B2 as quoted trimmed text. A numeric field whose
// text is not a number fails (error 13).
QString PrescriptionStorage(int index, const QString& text);

// A typed number read as the program reads numbers: optional sign, digits and one decimal
// point, surrounding blanks ignored. Empty text gives 0 when emptyIsZero, else fails (13).
double ReadNumber(const QString& text, bool emptyIsZero = true);
