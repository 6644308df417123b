#include "platform/controls/xZip.h"

#include "platform/controls/NumericInput.h"

xZip::xZip(QWidget* parent) : xInput(parent) {
    setInputMask(QStringLiteral("999-9999;*"));
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setValidator(new HalfWidthDigits(this));
}
