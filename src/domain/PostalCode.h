#pragma once

#include <QString>
#include <optional>

// A postal code as the shop stores it: three digits, "-", four digits; empty when none. What
// staff type reads as one when it is seven digits, with or without a hyphen between the third
// and the fourth, full-width digits and hyphens included (a Japanese input method gives
// those); none otherwise.
std::optional<QString> PostalCodeOf(const QString& typed);
