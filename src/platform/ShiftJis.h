#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

// Text in Shift_JIS as Windows writes it (CP932) turned into Unicode; nothing when the bytes
// are not such text.
std::optional<QString> DecodeShiftJis(const QByteArray& bytes);
