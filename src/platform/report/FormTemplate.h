#pragma once

#include <QList>
#include <QSizeF>
#include <QString>

// A form template (.jfm): named fields, fixed texts and lines at positions in millimetres.
//
//   page <width> <height>                               the paper, when the form sets it
//   field <name> <x> <y> <w> <h> <pt> <align> <h|v> [<option>...]   a text the program fills
//   text <x> <y> <w> <h> <pt> <align> <h|v> <text>      a fixed text (the rest of the line)
//   line <x1> <y1> <x2> <y2> [<pen width>]
//   box <x> <y> <w> <h> [<pen width>] [colour=<colour>] [plain]
//   image <name> <x> <y> <w> <h>                        a picture the program draws
//
// align is left, center or right; h writes across, v top to bottom (columns right to left).
// A field's text always prints whole inside its box: the size goes down from <pt> to the
// floor before a line is broken. Field options: min=<pt> the floor (default 6), nobreak (only
// explicit line breaks), top (lines written across start at the top of the box), join=<field>
// (the other field's text follows this one's in the same box). A box marked plain is drawn
// only on plain paper (a postcard brings its own); a line or box with when=<field> only when
// that field has text on the page. An image's value is a picture the program gives for it
// (a chart, say), drawn into its box at the resolution of the printer or PDF; without one the
// box stays empty. Lines starting with # are comments.
struct FormItem {
    enum class Kind { Field, Text, Line, Box, Image };
    Kind kind = Kind::Field;
    QString name; // the field's or image's name, or the fixed text
    double x = 0, y = 0, w = 0, h = 0;
    double points = 10;
    Qt::Alignment align = Qt::AlignLeft;
    bool vertical = false;
    double pen = 0.2;
    double minPoints = 6;
    bool noBreak = false;
    bool top = false;
    QString join;
    QString colour = QStringLiteral("black");
    bool plainPaperOnly = false;
    QString when; // a line or box drawn only when this field has text
};

struct FormTemplate {
    QSizeF pageMm; // empty when the form leaves the paper to the printer settings
    QList<FormItem> items;

    QStringList fieldNames() const;
};

// Reads a template file; false with the reason when it is missing or not understood.
bool LoadFormTemplate(const QString& path, FormTemplate& form, QString* error);
