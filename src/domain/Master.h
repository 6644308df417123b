#pragma once

#include <QString>

// The three masters: items, purposes and makers (makers serve frames and lenses alike).
enum class MasterKind { Item = 0, Youto = 1, Meka = 2 };

// One master entry: its three-digit code and its name.
struct MasterEntry {
    QString code;
    QString name;
    bool operator==(const MasterEntry&) const = default;
};
