// Master names and addresses looked up from their codes.
#include "data/Lookups.h"
#include "frame/Globals.h"
#include "frame/Log.h"
#include "support/Harness.h"

#include <QFile>
#include <QtTest>

class TestLookups : public QObject {
    Q_OBJECT
    Harness harness;

    void seedDirectory() {
        for (const char* row : {"(60, 1, '北海道', '札幌市中央区', '北一条西')",
                                "(60, 42, '北海道', '札幌市中央区', '大通西')",
                                "(100, 1, '東京都', '千代田区', '千代田')",
                                "(100, 1, '東京都', '千代田区', '別の町')"})
            gCon.execute(QStringLiteral("insert into ZipList values ") + QString::fromUtf8(row));
    }

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void masterNamesComeFromTheirOwnTable() {
        gCon.execute(QStringLiteral("insert into San_Item values('050','アイテム五十')"));
        gCon.execute(QStringLiteral("insert into San_Youto values('050','用途五十')"));
        gCon.execute(QStringLiteral("insert into San_Meka values('050','メーカー五十')"));
        QCOMPARE(CmnGetMaster(0, QStringLiteral("050")), QStringLiteral("アイテム五十"));
        QCOMPARE(CmnGetMaster(1, QStringLiteral("050")), QStringLiteral("用途五十"));
        QCOMPARE(CmnGetMaster(2, QStringLiteral("050")), QStringLiteral("メーカー五十"));
        QCOMPARE(CmnGetMaster(2, QStringLiteral("999")), QString());
        QCOMPARE(CmnGetMaster(2, QStringLiteral("0'1")), QString());
    }

    void aBadKindOrANullNameIsReportedAndGivesEmptyText() {
        harness.msgs.expectBox(
            QStringLiteral(
                "障害発生！ サポート先までご連絡お願い致します。\r\rNull の使い方が不正です。"),
            QStringLiteral(" VB ERROR No.94"));
        gCon.execute(QStringLiteral("insert into San_Meka values('060', NULL)"));
        QCOMPARE(CmnGetMaster(2, QStringLiteral("060")), QString());
        QFile log(LogFilePath());
        QVERIFY(log.open(QIODevice::ReadOnly));
        QVERIFY(QString::fromUtf8(log.readAll())
                    .contains(QStringLiteral("\"BasCmnSubFun\",\"CmnGetMaster\",\"ｴﾗ-No.(94)\"")));

        QVERIFY(harness.msgs.finished());
        const int shownBefore = harness.msgs.shown().size();
        harness.msgs.expectBox(
            QStringLiteral("障害発生！ サポート先までご連絡お願い致します。\r\r") +
                QStringLiteral("実行する SQL 文がありません。"),
            QStringLiteral(" VB ERROR No.-2147217900"));
        QCOMPARE(CmnGetMaster(3, QStringLiteral("001")), QString());
        QCOMPARE(harness.msgs.shown().size(), shownBefore + 1);
    }

    void addressesWithAndWithoutThePrefecture() {
        seedDirectory();
        QCOMPARE(CmnGetJusyo(true, 60, 42), QStringLiteral("北海道札幌市中央区大通西"));
        QCOMPARE(CmnGetJusyo(false, 60, 42), QStringLiteral("札幌市中央区大通西"));
        QCOMPARE(CmnGetJusyo(true, 60, 43), QString());
        QCOMPARE(CmnGetJusyo(true, 100, 1).left(8), QStringLiteral("東京都千代田区千"));
        QVERIFY(CmnGetJusyo(true, 100, 1) == QStringLiteral("東京都千代田区千代田") ||
                CmnGetJusyo(true, 100, 1) == QStringLiteral("東京都千代田区別の町"));
    }
};

QTEST_MAIN(TestLookups)
#include "tst_lookups.moc"
