#pragma once

#include <QDialog>

// The base of every screen: a dialog shown modally through ShowModal. Esc does not close a
// screen on its own; a screen that wants Esc gives it to one of its buttons.
class Screen : public QDialog {
    Q_OBJECT
public:
    explicit Screen(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
