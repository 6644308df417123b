#pragma once

#include <QLabel>

// The caption of a field, set against the field's left edge.
inline QLabel* FieldCaption(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return label;
}
