#include "support/MsgScript.h"

void MsgScript::expect(const QString& msgCode, int answer) {
    expectBox(msgCode.mid(10).left(50).trimmed(), ExpectedTitle(msgCode), answer);
}

void MsgScript::expectBox(const QString& text, const QString& title, int answer) {
    expected_.append({text, title, answer});
}

void MsgScript::expectEither(const QString& msgCode, const QString& otherCode, int answer) {
    expected_.append({msgCode.mid(10).left(50).trimmed(), ExpectedTitle(msgCode), answer, false,
                      otherCode.mid(10).left(50).trimmed(), ExpectedTitle(otherCode)});
}

void MsgScript::expectBoxStartingWith(const QString& text, const QString& title, int answer) {
    expected_.append({text, title, answer, true});
}

int MsgScript::answer(const MsgRequest& request) {
    shown_.append(request);
    const int fallback = request.buttons == MsgButtons::YesNo ? Answer::No : Answer::OK;
    if (expected_.isEmpty()) {
        failures_ << QStringLiteral("unexpected box \"%1\" titled \"%2\"")
                         .arg(request.text, request.title);
        return fallback;
    }
    const Expected next = expected_.takeFirst();
    const bool textMatches =
        next.prefix ? request.text.startsWith(next.text) : next.text == request.text;
    const bool otherMatches = !next.otherText.isEmpty() && next.otherText == request.text &&
                              next.otherTitle == request.title;
    if ((!textMatches || next.title != request.title) && !otherMatches) {
        failures_ << QStringLiteral("expected box \"%1\" titled \"%2\", shown \"%3\" titled \"%4\"")
                         .arg(next.text, next.title, request.text, request.title);
        return fallback;
    }
    return next.answer;
}

QStringList MsgScript::failures() const {
    QStringList all = failures_;
    for (const Expected& missing : expected_)
        all << QStringLiteral("box never shown: \"%1\" titled \"%2\"")
                   .arg(missing.text, missing.title);
    return all;
}

void MsgScript::reset() {
    expected_.clear();
    shown_.clear();
    failures_.clear();
}

QString ExpectedTitle(const QString& msgCode) {
    const QString kind = msgCode.left(6);
    const QString number = msgCode.mid(7, 3);
    if (kind == QLatin1String("OpeInf"))
        return QStringLiteral("ｲﾝﾌｫﾒｰｼｮﾝ No.") + number;
    if (kind == QLatin1String("OpeErr"))
        return QStringLiteral("ｵﾍﾟﾚｰｼｮﾝ ｴﾗｰ No.") + number;
    if (kind == QLatin1String("SysErr"))
        return QStringLiteral("ｼｽﾃﾑ ｴﾗｰ No.") + number;
    if (kind == QLatin1String("OpeQes"))
        return QStringLiteral("問い合わせ No.") + number;
    return QStringLiteral("?");
}
