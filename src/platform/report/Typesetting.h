#pragma once

#include "platform/report/FormTemplate.h"

#include <QList>
#include <QRectF>
#include <QString>

// One cell of set text: a character, or a run of letters turned with the column, with its box
// in millimetres on the form.
struct SetGlyph {
    QString text;
    QRectF box;
    bool turned = false; // a quarter round clockwise
    bool raised = false; // small kana and commas sit in the upper right of a vertical cell
    bool stop = false;   // a comma or full stop (raised further than small kana)
};

struct SetText {
    double points = 0; // 0 when there is nothing to set
    QList<SetGlyph> glyphs;
};

// How numbers stand in vertical text: full-width digits upright, or kanji numerals.
enum class VerticalDigits { FullWidth, Kanji };

// Sets a field's text inside its box. The size goes down half a point at a time from the
// field's size to its floor before any line is broken; then lines break at blanks, then also
// where a number starts or ends (a number stays whole with its 丁目, 番, 号...), then between any
// two characters but inside a number. "\n" starts a new line; "\t" aligns what follows it on
// every line. Only when nothing fits at the floor does the size go below it.
SetText SetFieldText(const FormItem& item, const QString& text, VerticalDigits digits);

// A run of digits as vertical text writes it: full-width, or as kanji numerals, digit by digit
// with 〇 for nought, and 十 to 十九 for 10 to 19.
QString VerticalNumber(const QString& digits, VerticalDigits style);

// The em of a size in points, in millimetres.
inline double EmMm(double points) {
    return points * 25.4 / 72.0;
}
