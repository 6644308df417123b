#pragma once

#include "platform/Failure.h"

#include <QString>
#include <functional>

struct ProcedureOptions {
    // Screen procedures write a trace line on entry; the shared routines do not.
    bool trace = true;
    // Whether a failure writes an error line to the log.
    bool logErrors = true;
    QString titlePrefix = QStringLiteral(" VB ERROR No.");
    // Gives a screen its own message for a failure (a duplicate number, say). Returns true
    // when it showed one; the standard box and the error line are then left out.
    std::function<bool(const Failure&)> ownMessage = {};
};

// Runs one procedure of a screen or shared routine: writes the trace line, runs the body, and
// when the body fails rolls back the transaction it began, shows the failure (the screen's own
// message or the standard box; SysErr_007 for a lock held past the wait) and writes the error
// line. Returns true when the body ran through. The screen stays usable either way.
bool Procedure(const QString& where, const QString& name, const QString& description,
               const std::function<void()>& body, const ProcedureOptions& options = {});

// An ownMessage that shows a catalogue message for one error number.
std::function<bool(const Failure&)> MessageOnError(long number, const QString& msg);

// A function key's work on a screen: traced as its cmdFnuc_Click, a failure shown in the box
// with the wide title.
bool FunctionKeyProcedure(const QString& where, const std::function<void()>& body);
