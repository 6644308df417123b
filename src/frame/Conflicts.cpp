#include "frame/Conflicts.h"

#include "frame/Procedure.h"
#include "platform/ui/MsgBox.h"

bool IsConflict(const Failure& failure) {
    return failure.number() == ErrorNumber::RowChanged ||
           failure.number() == ErrorNumber::RowDeleted;
}

bool CmnAskReadAgain(const QString& description, const QString& howReadAgainShows) {
    const QString text =
        description +
        QStringLiteral("\n今回の登録では何も保存していません。\n\n"
                       "保存されている最新の内容を読み込みますか？\n"
                       "「はい」　最新の内容を表示します。入力した内容は消えるので、"
                       "必要ならもう一度入力してください。") +
        howReadAgainShows +
        QStringLiteral("\n「いいえ」入力した内容を画面に残します（保存はされていません）。");
    return MsgBox(text, MsgIcon::Exclamation, MsgButtons::YesNo, ConflictTitle,
                  MsgDefault::Second) == Answer::Yes;
}

bool RunStore(const StoreAction& how, const std::function<void()>& action) {
    return Procedure(how.screen, how.procedure, how.description, action,
                     {.ownMessage = [&how](const Failure& failure) {
                         if (IsConflict(failure)) {
                             if (CmnAskReadAgain(failure.description()))
                                 how.readAgain();
                             return true;
                         }
                         if (how.refusal == 0 || failure.number() != how.refusal)
                             return false;
                         MsgBox(failure.description(), MsgIcon::Exclamation, MsgButtons::OK,
                                how.title);
                         if (how.readAgainAfterRefusal)
                             how.readAgain();
                         return true;
                     }});
}
