#pragma once

#include "platform/ui/MsgBox.h"

#include <QString>

// The product's name, the title of the boxes that come before any screen.
inline const QString AppTitle = QStringLiteral("Mirvane");

// Shows a catalogue message (code followed by text) with the icon, buttons and title its
// kind calls for, and gives the button pressed: Answer::OK, Answer::Yes or Answer::No;
// 0 for an empty message. A question's default button is Yes unless the second is asked for.
int CmnDspMsg(const QString& msg, MsgDefault defaultButton = MsgDefault::First);

// The standard failure box: the fixed first line, a blank line and the error's description;
// titled with the prefix followed by the error number.
inline const QString VbErrorTitle = QStringLiteral(" VB ERROR No.");
inline const QString VbErrorTitleWide = QStringLiteral(" ＶＢエラ－ No.");
void ShowFailureBox(long number, const QString& description,
                    const QString& titlePrefix = VbErrorTitle);
