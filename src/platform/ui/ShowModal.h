#pragma once

#include <functional>

class QDialog;

// Shows a screen modally over the one that opened it and gives its result when it closes.
// Every screen opens another only through here.
int ShowModal(QDialog& screen);

// Replaces exec(), for tests: the handler receives the screen, drives it and closes it.
// An empty handler restores exec().
using ShowModalHandler = std::function<int(QDialog&)>;
void SetShowModalHandler(ShowModalHandler handler);
