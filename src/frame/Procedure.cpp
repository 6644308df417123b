#include "frame/Procedure.h"

#include "frame/Globals.h"
#include "frame/Log.h"
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"

namespace {

void rollBackQuietly() {
    try {
        gCon.rollbackTrans();
    } catch (const Failure&) {
        // The connection is gone; the failure being reported says why.
    }
}

void handleFailure(const QString& where, const QString& name, const Failure& failure,
                   bool begunHere, const ProcedureOptions& options) {
    if (begunHere && gCon.inTransaction())
        rollBackQuietly();
    // Another terminal held its lock past the wait: nothing was written, and saving again is
    // the remedy, whatever the screen would say of a broken key.
    if (failure.number() == ErrorNumber::LockTimeout)
        CmnDspMsg(SysErr_007);
    else if (options.ownMessage && options.ownMessage(failure))
        return;
    else
        ShowFailureBox(failure.number(), failure.description(), options.titlePrefix);
    if (options.logErrors)
        CmnWriteLog(where, name, failure.description(), QString::number(failure.number()));
}

} // namespace

bool Procedure(const QString& where, const QString& name, const QString& description,
               const std::function<void()>& body, const ProcedureOptions& options) {
    const bool transactionBefore = gCon.inTransaction();
    try {
        if (options.trace)
            CmnWriteLog(where, name, description, QString());
        body();
        return true;
    } catch (const Failure& failure) {
        handleFailure(where, name, failure, !transactionBefore, options);
    } catch (const std::exception& error) {
        handleFailure(where, name,
                      Failure(ErrorNumber::Unexpected, QString::fromLocal8Bit(error.what())),
                      !transactionBefore, options);
    }
    return false;
}

std::function<bool(const Failure&)> MessageOnError(long number, const QString& msg) {
    return [number, msg](const Failure& failure) {
        if (failure.number() != number)
            return false;
        CmnDspMsg(msg);
        return true;
    };
}

bool FunctionKeyProcedure(const QString& where, const std::function<void()>& body) {
    return Procedure(where, QStringLiteral("cmdFnuc_Click"),
                     QStringLiteral("ファンクションボタンのクリック処理"), body,
                     {.titlePrefix = VbErrorTitleWide});
}
