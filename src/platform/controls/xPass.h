#pragma once

#include <QLineEdit>

// A password field: what is typed is hidden, and no input method turns it into kana.
class xPass : public QLineEdit {
    Q_OBJECT
public:
    explicit xPass(QWidget* parent = nullptr) : QLineEdit(parent) {
        setEchoMode(QLineEdit::Password);
        setAttribute(Qt::WA_InputMethodEnabled, false);
    }
};
