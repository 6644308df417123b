#pragma once

#include "platform/report/FormTemplate.h"
#include "platform/report/Typesetting.h"

#include <QHash>
#include <functional>

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

// The picture of an image item: the program draws it into the item's box, given in the
// device's units, so that it is as sharp as the printer or PDF allows. Its text stands for it
// in what a page drew (a chart's title, say).
struct FormPicture {
    QString text;
    std::function<void(QPainter& painter, const QRectF& box)> draw;
};

// Draws one page of a form with its field values and pictures and gives what it drew (a
// picture as its text over its whole box). Positions are millimetres, turned into the
// device's units with dotsPerMm; font sizes are points.
QList<DrawnText> DrawForm(QPainter& painter, double dotsPerMm, const FormTemplate& form,
                          const QHash<QString, QString>& values, const FormOptions& options = {},
                          const QHash<QString, FormPicture>& pictures = {});

// The text a field shows: its own value, followed by the value of the field it joins.
QString FieldText(const FormItem& item, const QHash<QString, QString>& values);

// Whether a character is turned a quarter round in vertical writing: the long-vowel mark,
// dashes and brackets.
bool TurnedInVerticalText(QChar c);
