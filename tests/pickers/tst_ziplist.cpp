// The postal search: the query for each combination of fields, what it lists from a seeded
// directory, and what it hands back on OK, double-click, cancel and the close box.
#include "data/ZipSearch.h"
#include "frame/Globals.h"
#include "frame/Log.h"
#include "pickers/AddressList.h"
#include "pickers/FrmZipList.h"
#include "platform/controls/xField.h"
#include "platform/ui/ShowModal.h"
#include "support/Harness.h"

#include <QFile>
#include <QPushButton>
#include <QTableView>
#include <QtTest>

namespace {

const QString Base = QStringLiteral("select ZIP1,ZIP2,TODO,CITY,TOWN from ZipList");

void seedDirectory() {
    for (const char* row :
         {"(60, 1, '北海道', '札幌市中央区', '北一条西')",
          "(60, 42, '北海道', '札幌市中央区', '大通西')",
          "(600, 8001, '京都府', '京都市下京区', '四条通')",
          "(100, 1, '東京都', '千代田区', '千代田')", "(100, 5, '東京都', '千代田区', '丸の内')"})
        gCon.execute(QStringLiteral("insert into ZipList values ") + QString::fromUtf8(row));
}

QStringList listedCodes(const FrmZipList& screen) {
    QStringList codes;
    for (int row = 1; row <= screen.spdZipList->maxRows(); ++row)
        codes << screen.spdZipList->text(row, 1);
    return codes;
}

} // namespace

class TestZipList : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() {
        HARNESS_INIT(harness);
        seedDirectory();
    }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void theQueryHasOneExactConditionPerFilledField() {
        QCOMPARE(ZipSearchSql({{}, {}, {}, QStringLiteral("札幌市"), {}}),
                 Base + QStringLiteral(" where CITY = '札幌市'"));
        QCOMPARE(ZipSearchSql({QStringLiteral("060"),
                               QStringLiteral(" 0042 "),
                               {},
                               {},
                               QStringLiteral("O'Hara")}),
                 Base + QStringLiteral(" where ZIP1 = 60 and ZIP2 = 42 and TOWN = 'O''Hara'"));
    }

    void aLeadingZeroFindsTheCodeAndTheListShowsItAgain() {
        FrmZipList screen;
        screen.setTodoFlg(1);
        harness.screens.expect<FrmZipList>([](FrmZipList& s) {
            QCOMPARE(s.windowTitle(), QStringLiteral("郵便番号・住所検索"));
            QCOMPARE(s.spdZipList->maxRows(), 0);
            s.txtZip1->setText(QStringLiteral("060"));
            QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
            QCOMPARE(listedCodes(s),
                     (QStringList{QStringLiteral("060-0001"), QStringLiteral("060-0042")}));
            QCOMPARE(s.spdZipList->text(2, 4), QStringLiteral("大通西"));
            s.spdZipList->setActiveCell(2, 1);
            QTest::mouseClick(s.cmdOK, Qt::LeftButton);
        });
        QCOMPARE(ShowModal(screen), int(QDialog::Accepted));
        QCOMPARE(screen.Zip(), QStringLiteral("060-0042"));
        QCOMPARE(screen.Addr(), QStringLiteral("北海道札幌市中央区大通西"));
    }

    void withoutThePrefectureFlagTheAddressStartsAtTheCity() {
        FrmZipList screen;
        screen.setTodoFlg(0);
        harness.screens.expect<FrmZipList>([](FrmZipList& s) {
            s.txtTodo->setText(QStringLiteral("東京都"));
            s.txtCity->setText(QStringLiteral("千代田区"));
            QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
            QCOMPARE(s.spdZipList->maxRows(), 2);
            // With no row chosen, the first row is the current one.
            QTest::mouseClick(s.cmdOK, Qt::LeftButton);
        });
        ShowModal(screen);
        QCOMPARE(screen.Zip(), QStringLiteral("100-0001"));
        QCOMPARE(screen.Addr(), QStringLiteral("千代田区千代田"));
    }

    void aDoubleClickChoosesTheRow() {
        FrmZipList screen;
        screen.setTodoFlg(1);
        harness.screens.expect<FrmZipList>([](FrmZipList& s) {
            s.txtTown->setText(QStringLiteral("四条通"));
            QTest::keyClick(s.txtTown, Qt::Key_Return); // Enter searches
            QCOMPARE(s.spdZipList->maxRows(), 1);
            QWidget* cells = s.spdZipList->view()->viewport();
            const QPoint centre =
                s.spdZipList->view()->visualRect(s.spdZipList->gridModel()->index(0, 2)).center();
            QTest::mouseClick(cells, Qt::LeftButton, {}, centre);
            QTest::mouseDClick(cells, Qt::LeftButton, {}, centre);
            QVERIFY(!s.isVisible());
        });
        ShowModal(screen);
        QCOMPARE(screen.Zip(), QStringLiteral("600-8001"));
        QCOMPARE(screen.Addr(), QStringLiteral("京都府京都市下京区四条通"));
    }

    void cancelAndTheCloseBoxHandBackNothing() {
        for (bool closeBox : {false, true}) {
            FrmZipList screen;
            screen.setTodoFlg(1);
            harness.screens.expect<FrmZipList>([closeBox](FrmZipList& s) {
                s.txtZip1->setText(QStringLiteral("100"));
                QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
                s.spdZipList->setActiveCell(2, 1);
                if (closeBox)
                    QVERIFY(s.close());
                else
                    QTest::mouseClick(s.cmdCAN, Qt::LeftButton);
            });
            QCOMPARE(ShowModal(screen), int(QDialog::Rejected));
            QCOMPARE(screen.Zip(), QString());
            QCOMPARE(screen.Addr(), QString());
        }
    }

    void searchingWithoutConditionsOrMatchesAndClearing() {
        FrmZipList screen;
        harness.msgs.expectBox(QStringLiteral("検索条件は、必ず１つは入力して下さい。"), QString());
        harness.screens.expect<FrmZipList>([this](FrmZipList& s) {
            s.txtCity->setText(QStringLiteral("   "));
            QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
            QCOMPARE(harness.msgs.shown().last().icon, MsgIcon::None);

            s.txtCity->setText(QStringLiteral("札幌市中央区"));
            QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
            QCOMPARE(s.spdZipList->maxRows(), 2);
            // No match: the list empties, no message.
            s.txtCity->setText(QStringLiteral("札幌市"));
            QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
            QCOMPARE(s.spdZipList->maxRows(), 0);
            // OK with nothing listed keeps the screen open.
            QTest::mouseClick(s.cmdOK, Qt::LeftButton);
            QVERIFY(s.isVisible());

            s.txtCity->setText(QStringLiteral("札幌市中央区"));
            s.txtZip2->setText(QStringLiteral("1"));
            QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
            QCOMPARE(s.spdZipList->maxRows(), 1);
            QTest::mouseClick(s.cmdClear, Qt::LeftButton);
            QCOMPARE(s.spdZipList->maxRows(), 0);
            for (xField* field : {s.txtZip1, s.txtZip2, s.txtTodo, s.txtCity, s.txtTown})
                QCOMPARE(field->text(), QString());
            QTest::mouseClick(s.cmdCAN, Qt::LeftButton);
        });
        ShowModal(screen);
        QCOMPARE(screen.Zip(), QString());
    }

    void aPostalCodePartThatIsNotANumberIsReported() {
        FrmZipList screen;
        harness.msgs.expectBox(
            QStringLiteral("障害発生！ サポート先までご連絡お願い致します。\r\r型が一致しません。"),
            QStringLiteral(" VB ERROR No.13"));
        harness.screens.expect<FrmZipList>([](FrmZipList& s) {
            s.txtZip1->setText(QStringLiteral("06x"));
            QTest::mouseClick(s.cmdKensak, Qt::LeftButton);
            QVERIFY(s.isVisible());
            QTest::mouseClick(s.cmdCAN, Qt::LeftButton);
        });
        ShowModal(screen);
        QFile log(LogFilePath());
        QVERIFY(log.open(QIODevice::ReadOnly));
        const QString lines = QString::fromUtf8(log.readAll());
        QVERIFY(lines.contains(
            QStringLiteral("\"FrmZipList\",\"AddrRead\",\"ｴﾗ-No.()\",\"郵便・住所の取得処理\"")));
        QVERIFY(lines.contains(QStringLiteral("\"FrmZipList\",\"AddrRead\",\"ｴﾗ-No.(13)\"")));
    }
};

QTEST_MAIN(TestZipList)
#include "tst_ziplist.moc"
