#include "frame/Messages.h"

#include "frame/Procedure.h"
#include "platform/ui/MsgBox.h"

namespace {

struct Kind {
    QString name;
    MsgIcon icon;
    MsgButtons buttons;
    QString titlePrefix;
};

const Kind* findKind(const QString& name) {
    static const Kind kinds[] = {
        {QStringLiteral("OpeInf"), MsgIcon::Information, MsgButtons::OK,
         QStringLiteral("ｲﾝﾌｫﾒｰｼｮﾝ No.")},
        {QStringLiteral("OpeErr"), MsgIcon::Exclamation, MsgButtons::OK,
         QStringLiteral("ｵﾍﾟﾚｰｼｮﾝ ｴﾗｰ No.")},
        {QStringLiteral("SysErr"), MsgIcon::Critical, MsgButtons::OK,
         QStringLiteral("ｼｽﾃﾑ ｴﾗｰ No.")},
        {QStringLiteral("OpeQes"), MsgIcon::Question, MsgButtons::YesNo,
         QStringLiteral("問い合わせ No.")},
    };
    for (const Kind& kind : kinds)
        if (kind.name == name)
            return &kind;
    return nullptr;
}

} // namespace

int CmnDspMsg(const QString& msg, MsgDefault defaultButton) {
    int answer = 0;
    Procedure(QStringLiteral("BasCmnSubFun"), QStringLiteral("CmnDspMsg"), {},
              [&] {
                  if (msg.isEmpty()) {
                      MsgBox(QStringLiteral("メッセージコードが未設定です。"), MsgIcon::Critical,
                             MsgButtons::OK, QStringLiteral("注意"));
                      return;
                  }
                  const Kind* kind = findKind(msg.left(6));
                  if (!kind) {
                      answer =
                          MsgBox(QStringLiteral("指定のメッセージが存在しません。"),
                                 MsgIcon::Critical, MsgButtons::OK, QStringLiteral("開発エラー"));
                      return;
                  }
                  const QString number = msg.mid(7, 3);
                  const QString text = msg.mid(10).left(50).trimmed();
                  answer = MsgBox(text, kind->icon, kind->buttons, kind->titlePrefix + number,
                                  defaultButton);
              },
              {.trace = false});
    return answer;
}

void ShowFailureBox(long number, const QString& description, const QString& titlePrefix) {
    MsgBox(QStringLiteral("障害発生！ サポート先までご連絡お願い致します。") +
               QStringLiteral("\r\r") + description,
           MsgIcon::Critical, MsgButtons::OK, titlePrefix + QString::number(number));
}
