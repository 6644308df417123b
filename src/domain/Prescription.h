#pragma once

#include <QString>
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

inline constexpr int PrescriptionB1 = 5;
inline constexpr int PrescriptionB2 = 7;

inline bool IsPrescriptionText(int index) {
    return PrescriptionColumns[index].kind == PrescriptionKind::Text;
}

// One eye's prescription: the numeric values by their index in PrescriptionColumns (0 means no
// value; the two base slots stay 0) and the two base directions as typed.
struct Prescription {
    std::array<double, 13> numbers{};
    QString b1, b2;

    const QString& base(int index) const { return index == PrescriptionB1 ? b1 : b2; }
    QString& base(int index) { return index == PrescriptionB1 ? b1 : b2; }
    bool operator==(const Prescription&) const = default;
};

// Whether an eye was measured: one of its optical values (Sph, Cyl, Ax, S) is entered.
bool HasOpticalValues(const Prescription& eye);

// How a power moved since the eye's previous prescription.
enum class PowerMove { None, Up, Down };

// Sph, Cyl or S (index in table order) now against before: a move when the two differ by 0.50
// or more, compared in hundredths. A value not entered now never moves, nor does any value of
// an eye that had no optical values before; a value not entered before counts as 0.
PowerMove PowerChange(const Prescription& now, const Prescription& before, int index);

// Display rule: a value as its field shows it; 0 and empty show as empty text.
QString PrescriptionText(const Prescription& eye, int index);

// A field's text read into the value: numbers as the program reads numbers (empty text is 0,
// "+1.25" is 1.25), the bases as typed. A numeric field whose text is not a number fails (13).
void SetPrescriptionText(Prescription& eye, int index, const QString& text);

// A typed number read as the program reads numbers: optional sign, digits and one decimal
// point, surrounding blanks ignored. Empty text gives 0 when emptyIsZero, else fails (13).
double ReadNumber(const QString& text, bool emptyIsZero = true);
