#pragma once

#include <QString>
#include <functional>

enum class MsgIcon { None, Critical, Question, Exclamation, Information };
enum class MsgButtons { OK, YesNo };
// The button Enter presses: the first (OK, Yes) unless the second (No) is asked for, when
// pressing on without reading would throw away what was typed.
enum class MsgDefault { First, Second };

// The button a box was answered with, numbered as the screens test for it.
namespace Answer {
inline constexpr int OK = 1;
inline constexpr int Yes = 6;
inline constexpr int No = 7;
} // namespace Answer

struct MsgRequest {
    QString text; // a line break is written as a carriage return (character 13)
    MsgIcon icon;
    MsgButtons buttons;
    QString title;
    MsgDefault defaultButton = MsgDefault::First;
};

// Shows a modal message box and gives the button pressed. Every box of the program goes here.
int MsgBox(const QString& text, MsgIcon icon, MsgButtons buttons, const QString& title,
           MsgDefault defaultButton = MsgDefault::First);

// Replaces the real box, for tests: the handler answers each box. An empty handler restores it.
using MsgBoxHandler = std::function<int(const MsgRequest&)>;
void SetMsgBoxHandler(MsgBoxHandler handler);
