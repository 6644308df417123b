#pragma once

#include "platform/report/FormTemplate.h"
#include "platform/report/Typesetting.h"

#include <QHash>

class QPainter;

// What a page is printed on and how its numbers are written.
struct FormOptions {
    VerticalDigits digits = VerticalDigits::FullWidth;
    bool plainPaper = false; // draw the boxes a postcard brings printed on it
};

// One piece of text as it was drawn: its field (empty for a fixed text), its box in
// millimetres on the form and its size.
struct DrawnText {
    QString field;
    QString text;
    QRectF box;
    double points = 0;
    bool turned = false;
};

// Draws one page of a form with its field values and gives what it drew. Positions are
// millimetres, turned into the device's units with dotsPerMm; font sizes are points.
QList<DrawnText> DrawForm(QPainter& painter, double dotsPerMm, const FormTemplate& form,
                          const QHash<QString, QString>& values, const FormOptions& options = {});

// The text a field shows: its own value, followed by the value of the field it joins.
QString FieldText(const FormItem& item, const QHash<QString, QString>& values);

// Whether a character is turned a quarter round in vertical writing: the long-vowel mark,
// dashes and brackets.
bool TurnedInVerticalText(QChar c);
