#pragma once

#include <QWidget>
#include <array>

class xCmdBtn;

// The row of twelve function-key buttons along the bottom of a screen: button i answers key
// F(i+1). Screens keep the buttons as their cmdFnuc array.
class FunctionKeyRow : public QWidget {
    Q_OBJECT
public:
    explicit FunctionKeyRow(QWidget* parent = nullptr);

    // Captions for F1 ... F12; an empty caption leaves the key without use.
    void setCaptions(const std::array<QString, 12>& captions);
    const std::array<xCmdBtn*, 12>& buttons() const { return buttons_; }

signals:
    // A key with a caption was pressed (by click or by its key); index 0 is F1.
    void pressed(int index);

private:
    std::array<xCmdBtn*, 12> buttons_{};
};
