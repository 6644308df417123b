#include "frame/Conflicts.h"

#include "platform/ui/MsgBox.h"

bool IsConflict(const Failure& failure) {
    return failure.number() == ErrorNumber::RowChanged ||
           failure.number() == ErrorNumber::RowDeleted;
}

QString ConflictText(const QString& description) {
    return description +
           QStringLiteral("\n今回の登録では何も保存していません。\n\n"
                          "保存されている最新の内容を読み込みますか？\n"
                          "「はい」　最新の内容を表示します。入力した内容は消えるので、"
                          "必要ならもう一度入力してください。\n"
                          "「いいえ」入力した内容を画面に残します（保存はされていません）。");
}

bool CmnAskReadAgain(const QString& description) {
    return MsgBox(ConflictText(description), MsgIcon::Exclamation, MsgButtons::YesNo, ConflictTitle,
                  MsgDefault::Second) == Answer::Yes;
}
