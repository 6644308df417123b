#pragma once

#include <QString>

// The shop's settings (San_Setting): one text value per key.
namespace SettingStore {

// The value of a key; empty text when it was never set.
QString Read(const QString& key);
// Sets a key's value, in a transaction of its own.
void Write(const QString& key, const QString& value);

// How far a printer's feed is off, in millimetres (right and down are positive).
struct PrintOffset {
    double x = 0, y = 0;
};
PrintOffset ReadPrintOffset();
void WritePrintOffset(const PrintOffset& offset);

} // namespace SettingStore
