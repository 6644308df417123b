#pragma once

#include "platform/Failure.h"

#include <QString>
#include <functional>

// A save that met another terminal's work (ErrorNumber::RowChanged or RowDeleted) stored
// nothing: the screen keeps what was typed and the staff decide whether to read the stored
// state instead.
bool IsConflict(const Failure& failure);

inline const QString ConflictTitle = QStringLiteral("他の端末での変更");

// The box of a conflict: what another terminal did (the failure's description names the
// customer, purchase or entry), that nothing was saved, and the question whether to read the
// stored state again. True for はい; いいえ, the default, keeps what was typed on the screen.
// A screen that marks what it read again says how after the はい line.
bool CmnAskReadAgain(const QString& description, const QString& howReadAgainShows = {});

// Runs one store action of a screen as a procedure. Another terminal's work is told with
// CmnAskReadAgain (`readAgain` runs on はい); a refusal with the error number `refusal` is told
// in a plain box titled `title` (and `readAgain` runs after it when `readAgainAfterRefusal`);
// any other failure gets the standard box. True when the action stored.
struct StoreAction {
    QString screen, procedure, description;
    long refusal = 0;
    QString title;
    std::function<void()> readAgain;
    bool readAgainAfterRefusal = false;
};
bool RunStore(const StoreAction& how, const std::function<void()>& action);
