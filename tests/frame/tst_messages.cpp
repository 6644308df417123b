// Catalogue messages through CmnDspMsg: icon, buttons, title and the button given back.
#include "frame/MessageCatalogue.h"
#include "frame/Messages.h"
#include "support/Harness.h"

#include <QtTest>

class TestMessages : public QObject {
    Q_OBJECT
    Harness harness;

    const MsgRequest& lastShown() const { return harness.msgs.shown().last(); }

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void eachKindHasItsIconButtonsAndTitle() {
        struct Case {
            QString msg;
            MsgIcon icon;
            MsgButtons buttons;
            QString title;
            QString text;
        };
        const QList<Case> cases{
            {OpeInf_001, MsgIcon::Information, MsgButtons::OK, QStringLiteral("ｲﾝﾌｫﾒｰｼｮﾝ No.001"),
             QStringLiteral("データは正常に保存されました。")},
            {OpeErr_005, MsgIcon::Exclamation, MsgButtons::OK,
             QStringLiteral("ｵﾍﾟﾚｰｼｮﾝ ｴﾗｰ No.005"),
             QStringLiteral("入力されたパスワードは誤りです。")},
            {SysErr_002, MsgIcon::Critical, MsgButtons::OK, QStringLiteral("ｼｽﾃﾑ ｴﾗｰ No.002"),
             QStringLiteral("既に起動されています。多重起動はできません。")},
            {OpeQes_009, MsgIcon::Question, MsgButtons::YesNo, QStringLiteral("問い合わせ No.009"),
             QStringLiteral("縦ハガキ対応の印刷を始めますがよろしいですか")},
        };
        for (const Case& c : cases) {
            harness.msgs.expectBox(c.text, c.title,
                                   c.buttons == MsgButtons::YesNo ? Answer::Yes : Answer::OK);
            const int answer = CmnDspMsg(c.msg);
            QCOMPARE(answer, c.buttons == MsgButtons::YesNo ? Answer::Yes : Answer::OK);
            QCOMPARE(lastShown().icon, c.icon);
            QCOMPARE(lastShown().buttons, c.buttons);
        }
    }

    void questionsGiveBackYesOrNo() {
        harness.msgs.expect(OpeQes_002, Answer::Yes);
        harness.msgs.expect(OpeQes_002, Answer::No);
        QCOMPARE(CmnDspMsg(OpeQes_002), 6);
        QCOMPARE(CmnDspMsg(OpeQes_002), 7);
    }

    void anEmptyMessageIsReportedAndGivesZero() {
        harness.msgs.expectBox(QStringLiteral("メッセージコードが未設定です。"),
                               QStringLiteral("注意"));
        QCOMPARE(CmnDspMsg(QString()), 0);
        QCOMPARE(lastShown().icon, MsgIcon::Critical);
    }

    void anUnknownKindIsADevelopmentError() {
        // The kind is compared exactly: lower case is not a kind.
        for (const QString& msg : {QStringLiteral("Opeerr_001未入力です。"),
                                   QStringLiteral("Warn01_001なにか"), QStringLiteral("x")}) {
            harness.msgs.expectBox(QStringLiteral("指定のメッセージが存在しません。"),
                                   QStringLiteral("開発エラー"));
            CmnDspMsg(msg);
            QCOMPARE(lastShown().icon, MsgIcon::Critical);
            QCOMPARE(lastShown().buttons, MsgButtons::OK);
        }
    }

    void theTextIsTrimmedAndCutAtFiftyCharacters() {
        const QString longText = QString(60, QChar(0x3042)); // あ x 60
        harness.msgs.expectBox(QString(50, QChar(0x3042)), QStringLiteral("ｵﾍﾟﾚｰｼｮﾝ ｴﾗｰ No.123"));
        CmnDspMsg(QStringLiteral("OpeErr_123") + longText);
        harness.msgs.expectBox(QStringLiteral("前後の空白"), QStringLiteral("ｲﾝﾌｫﾒｰｼｮﾝ No.999"));
        CmnDspMsg(QStringLiteral("OpeInf_999  前後の空白  "));
    }

    void theFailureBoxCarriesTheDescriptionAndNumber() {
        harness.msgs.expectBox(
            QStringLiteral("障害発生！ サポート先までご連絡お願い致します。\r\rディスクが一杯です"),
            QStringLiteral(" VB ERROR No.61"));
        ShowFailureBox(61, QStringLiteral("ディスクが一杯です"));
        harness.msgs.expectBox(
            QStringLiteral("障害発生！ サポート先までご連絡お願い致します。\r\rx"),
            QStringLiteral(" ＶＢエラ－ No.-2147467259"));
        ShowFailureBox(-2147467259, QStringLiteral("x"), VbErrorTitleWide);
        QCOMPARE(lastShown().icon, MsgIcon::Critical);
    }
};

QTEST_MAIN(TestMessages)
#include "tst_messages.moc"
