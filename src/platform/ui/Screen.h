#pragma once

#include <QDialog>

// The base of every screen: a dialog shown modally through ShowModal. Esc does not close a
// screen on its own; a screen that wants Esc gives it to one of its buttons. A screen may let
// Enter move the focus on, as a Tab does, through its input fields.
class Screen : public QDialog {
    Q_OBJECT
public:
    explicit Screen(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void setEnterMovesFocus(bool moves) { enterMovesFocus_ = moves; }
    // Enter went down in a control that did not use it. Returns true when the screen handled
    // it; the default moves the focus on when the screen asked for that.
    virtual bool enterPressed(QWidget* from);

private:
    bool enterMovesFocus_ = false;
};
