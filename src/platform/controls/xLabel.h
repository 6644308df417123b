#pragma once

#include <QLabel>

// A label that shows a value: framed and sunken, so it reads as a field the user cannot type in.
class xLabel : public QLabel {
    Q_OBJECT
public:
    explicit xLabel(QWidget* parent = nullptr) : QLabel(parent) {
        setFrameShape(QFrame::Panel);
        setFrameShadow(QFrame::Sunken);
        setMinimumHeight(24);
        setContentsMargins(4, 0, 4, 0);
    }
};
