#include "support/MsgScript.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {
std::pair<QString, QString> catalogueBox(const QString& msgCode) {
    return {msgCode.mid(10).left(50).trimmed(), ExpectedTitle(msgCode)};
}
} // namespace

void MsgScript::expect(const QString& msgCode, int answer) {
    expected_.append({{catalogueBox(msgCode)}, answer});
}

void MsgScript::expectBox(const QString& text, const QString& title, int answer) {
    expected_.append({{{text, title}}, answer});
}

void MsgScript::expectEither(const QString& msgCode, const QString& otherCode, int answer) {
    expected_.append({{catalogueBox(msgCode), catalogueBox(otherCode)}, answer});
}

void MsgScript::expectFailure(const QString& description, long number) {
    expectBox(u"障害発生！ サポート先までご連絡お願い致します。\r\r"_s + description,
              u" VB ERROR No.%1"_s.arg(number));
}

void MsgScript::expectBoxStartingWith(const QString& text, const QString& title, int answer) {
    expected_.append({{{text, title}}, answer, true});
}

int MsgScript::answer(const MsgRequest& request) {
    shown_.append(request);
    const int fallback = request.buttons == MsgButtons::YesNo ? Answer::No : Answer::OK;
    if (expected_.isEmpty()) {
        failures_ << u"unexpected box \"%1\" titled \"%2\""_s.arg(request.text, request.title);
        return fallback;
    }
    const Expected next = expected_.takeFirst();
    for (const auto& [text, title] : next.boxes)
        if (title == request.title &&
            (next.prefix ? request.text.startsWith(text) : text == request.text))
            return next.answer != Enter                          ? next.answer
                   : request.buttons == MsgButtons::OK           ? Answer::OK
                   : request.defaultButton == MsgDefault::Second ? Answer::No
                                                                 : Answer::Yes;
    failures_ << u"expected box \"%1\" titled \"%2\", shown \"%3\" titled \"%4\""_s.arg(
        next.boxes[0].first, next.boxes[0].second, request.text, request.title);
    return fallback;
}

QStringList MsgScript::failures() const {
    QStringList all = failures_;
    for (const Expected& missing : expected_)
        all << u"box never shown: \"%1\" titled \"%2\""_s.arg(missing.boxes[0].first,
                                                              missing.boxes[0].second);
    return all;
}

QString ExpectedTitle(const QString& msgCode) {
    static const QHash<QString, QString> titles{{u"OpeInf"_s, u"ｲﾝﾌｫﾒｰｼｮﾝ No."_s},
                                                {u"OpeErr"_s, u"ｵﾍﾟﾚｰｼｮﾝ ｴﾗｰ No."_s},
                                                {u"SysErr"_s, u"ｼｽﾃﾑ ｴﾗｰ No."_s},
                                                {u"OpeQes"_s, u"問い合わせ No."_s}};
    const auto title = titles.constFind(msgCode.left(6));
    return title == titles.cend() ? u"?"_s : *title + msgCode.mid(7, 3);
}
