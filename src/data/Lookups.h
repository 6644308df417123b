#pragma once

#include "domain/Master.h"

#include <QHash>
#include <QList>
#include <QString>
#include <array>
#include <optional>
#include <utility>
#include <vector>

// A drop-down entry: code and name.
using CodeEntries = QList<std::pair<QString, QString>>;

// The name of a master from its three-digit code: Kind 0 item, 1 purpose, 2 maker.
// Empty text when no master has the code.
QString CmnGetMaster(int kind, const QString& no);

// The masters of one screen or listing: each master is read once, on first use; its names and
// its drop-down lists come from what was read.
class MasterNames {
public:
    // The name of the code; none when no master row has it (it was deleted, say).
    std::optional<QString> find(MasterKind kind, const QString& code);
    QString name(MasterKind kind, const QString& code) {
        return find(kind, code).value_or(QString());
    }
    // Reads every master now, so that later look-ups never go to the database.
    void load();
    // "code:name", as the master lists show an entry; a code without a master row shows as
    // "code:" and an empty code as ":".
    QString withName(MasterKind kind, const QString& code) {
        return code + QLatin1Char(':') + name(kind, code);
    }

    // The entries of the master's drop-down list, as read for this screen: (code of three
    // digits, name) in code order.
    CodeEntries listEntries(MasterKind kind);

private:
    const std::vector<MasterEntry>& entries(MasterKind kind);

    std::array<std::optional<std::vector<MasterEntry>>, 3> entries_;
    std::array<std::optional<QHash<QString, QString>>, 3> names_;
};

// The address of a postal code from the postal directory: prefecture (when withTodo), city and
// district joined without separators. Empty text when the code is not listed.
QString CmnGetJusyo(bool withTodo, qint64 zip1, qint64 zip2);
