#pragma once

#include "platform/report/FormTemplate.h"

#include <QHash>

class QPainter;

// Draws one page of a form with its field values. Positions are millimetres, turned into the
// device's units with dotsPerMm; font sizes are points on the device.
void DrawForm(QPainter& painter, double dotsPerMm, const FormTemplate& form,
              const QHash<QString, QString>& values);

// Whether a character is turned a quarter round in vertical writing: the long-vowel mark,
// dashes and brackets.
bool TurnedInVerticalText(QChar c);
