#pragma once

#include <QList>
#include <QSizeF>
#include <QString>

// A form template (.jfm): named fields, fixed texts and lines at positions in millimetres.
//
//   page <width> <height>                               the paper, when the form sets it
//   field <name> <x> <y> <w> <h> <pt> <align> <h|v>     a text the program fills
//   text <x> <y> <w> <h> <pt> <align> <h|v> <text>      a fixed text (the rest of the line)
//   line <x1> <y1> <x2> <y2> [<pen width>]
//   box <x> <y> <w> <h> [<pen width>]
//
// align is left, center or right; h writes across, v top to bottom (columns right to left).
// Lines starting with # are comments.
struct FormItem {
    enum class Kind { Field, Text, Line, Box };
    Kind kind = Kind::Field;
    QString name; // the field's name, or the fixed text
    double x = 0, y = 0, w = 0, h = 0;
    double points = 10;
    Qt::Alignment align = Qt::AlignLeft;
    bool vertical = false;
    double pen = 0.2;
};

struct FormTemplate {
    QSizeF pageMm; // empty when the form leaves the paper to the printer settings
    QList<FormItem> items;

    QStringList fieldNames() const;
};

// Reads a template file; false with the reason when it is missing or not understood.
bool LoadFormTemplate(const QString& path, FormTemplate& form, QString* error);
