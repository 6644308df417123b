#pragma once

#include "platform/controls/xInput.h"

// A postal code field with the mask "***-****": three digits, "-", four digits. Its text is
// what it shows, so an untouched field's text is "***-****".
class xZip : public xInput {
    Q_OBJECT
public:
    static inline const QString EmptyText = QStringLiteral("***-****");

    explicit xZip(QWidget* parent = nullptr);

    QString text() const { return displayText(); }
    // The code typed, as text; empty when the field shows only its mask.
    QString code() const { return text().trimmed() == EmptyText ? QString() : text(); }
};
