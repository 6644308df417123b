#pragma once

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>

// The caption of a field, set against the field's left edge.
inline QLabel* FieldCaption(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return label;
}

// A field with its caption in the cell before it: the caption at (row, column), the field from
// the next column over `span` columns.
inline void AddCaptioned(QGridLayout* grid, const QString& caption, QWidget* field, int row,
                         int column, int span = 1) {
    grid->addWidget(FieldCaption(caption, field->parentWidget()), row, column);
    grid->addWidget(field, row, column + 1, 1, span);
}

// A field with its caption before it in a row of fields.
inline void AddCaptioned(QBoxLayout* row, const QString& caption, QWidget* field, int stretch = 0) {
    row->addWidget(FieldCaption(caption, field->parentWidget()));
    row->addWidget(field, stretch);
}
