#include "platform/controls/xZip.h"

xZip::xZip(QWidget* parent) : xInput(parent) {
    setInputMask(QStringLiteral("999-9999;*"));
    setAttribute(Qt::WA_InputMethodEnabled, false);
}
