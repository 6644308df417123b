#pragma once

#include "platform/controls/xInput.h"

// A password field: what is typed is hidden, and no input method turns it into kana.
class xPass : public xInput {
    Q_OBJECT
public:
    explicit xPass(QWidget* parent = nullptr) : xInput(parent) {
        setEchoMode(QLineEdit::Password);
        setAttribute(Qt::WA_InputMethodEnabled, false);
    }
};
