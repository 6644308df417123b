// The input controls: kana capture from the input method, number and date fields, the postal
// code mask, numeric input settings, full-width digits, notifications, length limits in
// whole characters and the function-key row.
#include "platform/NumberText.h"
#include "platform/controls/CharacterLimit.h"
#include "platform/controls/FunctionKeyRow.h"
#include "platform/controls/xCmdBtn.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xKana.h"
#include "platform/controls/xNum.h"
#include "platform/controls/xZip.h"
#include "support/Roads.h"

#include <QClipboard>
#include <QDialog>
#include <QtTest>

namespace {

// What an input method sends: each text under composition in turn, then the committed text.
void type(QWidget* field, std::initializer_list<const char*> composed, const char* committed) {
    for (const char* preedit : composed) {
        QInputMethodEvent event(QString::fromUtf8(preedit), {});
        QApplication::sendEvent(field, &event);
    }
    QInputMethodEvent event;
    event.setCommitString(QString::fromUtf8(committed));
    QApplication::sendEvent(field, &event);
}

} // namespace

class TestControls : public QObject {
    Q_OBJECT

private slots:
    void theKanaFieldCatchesTheReadingTypedBeforeConversion() {
        QDialog screen;
        auto* name = new xField(&screen);
        auto* kana = new xKana(&screen);
        kana->linkTo(name);

        // や → やま → やまd (romaji on its way) → やまだ, converted to 山田, committed.
        type(name, {"や", "やま", "やまd", "やまだ", "山田"}, "山田");
        QCOMPARE(kana->text(), QStringLiteral("やまだ"));

        // A blank typed by hand, then the given name composed in katakana: kept as hiragana.
        name->insert(QStringLiteral(" "));
        kana->insert(QStringLiteral(" "));
        type(name, {"タロウ", "太郎"}, "太郎");
        QCOMPARE(name->text(), QStringLiteral("山田 太郎"));
        QCOMPARE(kana->text(), QStringLiteral("やまだ たろう"));

        // Kana committed as it is, without conversion.
        type(name, {}, "さん");
        QCOMPARE(kana->text(), QStringLiteral("やまだ たろうさん"));

        // Text that never went through the input method adds nothing; the field stays editable
        // and a commit without a reading composed before adds nothing either.
        name->insert(QStringLiteral("Jr"));
        QCOMPARE(kana->text(), QStringLiteral("やまだ たろうさん"));
        kana->setText(QStringLiteral("やまだ たろう"));
        QVERIFY(!kana->isReadOnly());
        type(name, {}, "様");
        QCOMPARE(kana->text(), QStringLiteral("やまだ たろう"));
    }

    void numberPostalCodeAndDateFieldsShowTheirFormsAndEmptyForms() {
        QDialog screen;
        auto* amount = new xNum(&screen);
        auto* other = new xField(&screen);
        screen.show();
        QVERIFY(QTest::qWaitForWindowActive(&screen));

        amount->setFocus();
        QTest::keyClicks(amount, QStringLiteral("1234567"));
        other->setFocus();
        QCOMPARE(amount->text(), QStringLiteral("1,234,567"));
        QCOMPARE(amount->Value(), 1234567.0);
        amount->setFocus();
        QCOMPARE(amount->text(), QStringLiteral("1234567"));
        // Letters are refused; the range holds.
        amount->setRange(0, 99999);
        amount->clear();
        QTest::keyClicks(amount, QStringLiteral("12a345678"));
        QCOMPARE(amount->text(), QStringLiteral("12345"));
        QTest::keyClicks(amount, QStringLiteral("-"));
        QCOMPARE(amount->text(), QStringLiteral("12345"));

        amount->setDisplayFormat(QStringLiteral("000"));
        amount->setValue(5);
        QCOMPARE(amount->text(), QStringLiteral("005"));
        amount->setValue(0);
        QCOMPARE(amount->text(), QStringLiteral("000"));
        amount->clearValue();
        QVERIFY(amount->isEmpty());

        xZip zip;
        QCOMPARE(zip.text(), QStringLiteral("***-****"));
        QTest::keyClicks(&zip, QStringLiteral("0600001"));
        QCOMPARE(zip.text(), QStringLiteral("060-0001"));
        zip.setText(QStringLiteral("100-0001"));
        QCOMPARE(zip.text(), QStringLiteral("100-0001"));
        zip.setText(QString());
        QCOMPARE(zip.text(), QStringLiteral("***-****"));

        xDate date;
        QVERIFY(date.isEmpty());
        QCOMPARE(date.text(), QString());
        QCOMPARE(date.date(), QDate(1899, 12, 30));
        date.setDate(QDate(2026, 2, 3));
        QCOMPARE(date.text(), QStringLiteral("2026/02/03"));
        date.setDate(xDate::EmptyDate);
        QVERIFY(date.isEmpty());
        QTest::keyClicks(&date, QStringLiteral("20261322"));
        QCOMPARE(date.date(), xDate::EmptyDate); // no 13th month
        date.clear();
        QTest::keyClicks(&date, QStringLiteral("20261122"));
        QCOMPARE(date.date(), QDate(2026, 11, 22));
    }

    void fullWidthDigitsSignsAndPointsAreReadAsAscii() {
        const std::pair<const char*, const char*> texts[] = {{"０１２３４５６７８９", "0123456789"},
                                                             {" －１，２３４．５ ", " -1,234.5 "},
                                                             {"＋０．２５", "+0.25"},
                                                             {"１ａ　ー−", "1ａ　ー−"},
                                                             {"", ""}};
        for (const auto& [typed, ascii] : texts)
            QCOMPARE(HalfWidthNumber(QString::fromUtf8(typed)), QString::fromUtf8(ascii));
        const std::tuple<const char*, double, bool> numbers[] = {{" －０．５ ", -0.5, true},
                                                                 {"１２", 12, true},
                                                                 {"ー１", 0, false},
                                                                 {"１２ａ", 0, false}};
        for (const auto& [typed, value, isNumber] : numbers) {
            bool ok = !isNumber;
            QCOMPARE(NumberFromText(QString::fromUtf8(typed), &ok), value);
            QCOMPARE(ok, isNumber);
        }

        // Committed by an input method or pasted, into each kind of number field.
        xField signedValue;
        signedValue.setNumericInput(QStringLiteral("+0.00"), -9.99, 9.99);
        type(&signedValue, {}, "－１．２５");
        QCOMPARE(signedValue.text(), QStringLiteral("-1.25"));
        xField whole; // no sign where the pattern shows none and no negative is allowed
        whole.setNumericInput(QStringLiteral("000"), 0, 999);
        QTest::keyClicks(&whole, QStringLiteral("+"));
        type(&whole, {}, "０６０");
        QCOMPARE(whole.text(), QStringLiteral("060"));
        xNum amount;
        Paste(&amount, QStringLiteral("１２，３４５"));
        QCOMPARE(amount.Value(), 12345.0);
        xZip zip;
        Paste(&zip, QStringLiteral("０６０００４２"));
        QCOMPARE(zip.text(), QStringLiteral("060-0042"));
        xDate date;
        Paste(&date, QStringLiteral("２０２６１１２２"));
        QCOMPARE(date.date(), QDate(2026, 11, 22));
    }

    // A limit counts characters: 𠮷 and an emoji are two UTF-16 units each and stay whole. What
    // goes past the limit is what came last, before the cursor; a lone half never stays.
    void limitsKeepWholeCharacters() {
        const QString yoshi = QStringLiteral("𠮷"), smile = QStringLiteral("😀");
        const QString half = smile.left(1);
        const struct {
            QString text;
            int cursor, limit;
            QString fitted;
            int fittedCursor;
        } cases[] = {
            {QStringLiteral("ab") + yoshi, 4, 3, QStringLiteral("ab") + yoshi, 4},
            {QStringLiteral("ab") + yoshi + QStringLiteral("c"), 5, 3, QStringLiteral("ab") + yoshi,
             4},
            {QStringLiteral("ab") + smile + yoshi, 6, 3, QStringLiteral("ab") + smile, 4},
            {QStringLiteral("x") + smile + QStringLiteral("yz"), 3, 3, QStringLiteral("xyz"), 1},
            {QStringLiteral("ab") + half + QStringLiteral("c"), 4, 9, QStringLiteral("abc"), 3},
            {QStringLiteral("abcd"), 0, 2, QStringLiteral("ab"), 0},
            {QStringLiteral("a") + smile + QStringLiteral("b"), 2, 2, QStringLiteral("ab"), 1},
        };
        for (const auto& c : cases) {
            QString text = c.text;
            int cursor = c.cursor;
            FitToCharacters(text, cursor, c.limit);
            QCOMPARE(text, c.fitted);
            QCOMPARE(cursor, c.fittedCursor);
        }
        QCOMPARE(CharacterCount(QStringLiteral("あ") + yoshi + smile), 3);

        // The same on a field: typed, pasted, committed by an input method, set by the program.
        QDialog screen;
        auto* field = new xField(&screen, 5);
        auto* number = new xField(&screen, 4);
        number->setNumericInput(QStringLiteral("0000"), 0, 9999);
        screen.show();
        QVERIFY(QTest::qWaitForWindowActive(&screen));
        field->setFocus();
        type(field, {}, "あいう");
        QApplication::clipboard()->setText(yoshi + smile + QStringLiteral("x"));
        QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(field->text(), QStringLiteral("あいう") + yoshi + smile);
        QTest::keyClicks(field, QStringLiteral("z"));
        QCOMPARE(field->text(), QStringLiteral("あいう") + yoshi + smile);
        field->setText(QStringLiteral("ab") + yoshi + yoshi + yoshi + smile);
        QCOMPARE(field->text(), QStringLiteral("ab") + yoshi + yoshi + yoshi);
        QCOMPARE(field->maxLength(), 5);
        type(field, {}, "𠮷");
        QCOMPARE(field->text(), QStringLiteral("ab") + yoshi + yoshi + yoshi);
        xKana kana;
        kana.setText(QStringLiteral("かなかな") + yoshi);
        kana.setMaxLength(4);
        QCOMPARE(kana.text(), QStringLiteral("かなかな"));
        // A number field keeps its own rule under the limit.
        number->setFocus();
        QTest::keyClicks(number, QStringLiteral("12a345"));
        QCOMPARE(number->text(), QStringLiteral("1234"));
    }

    void keysReachTheFieldFirstAndFunctionKeysNeedACaption() {
        QDialog screen;
        auto* field = new xField(&screen);
        auto* other = new xField(&screen);
        auto* keys = new FunctionKeyRow(&screen);
        std::array<QString, 12> captions{QStringLiteral("閉じる")};
        captions[4] = QStringLiteral("登録");
        captions[11] = QStringLiteral("履歴照会");
        keys->setCaptions(captions);
        const auto& cmdFnuc = keys->buttons();
        QCOMPARE(cmdFnuc[4]->text(), QStringLiteral("F5 登録"));
        QCOMPARE(cmdFnuc[11]->text(), QStringLiteral("F12 履歴照会"));
        QCOMPARE(cmdFnuc[1]->text(), QStringLiteral("F2"));

        screen.show();
        QVERIFY(QTest::qWaitForWindowActive(&screen));
        QSignalSpy pressed(keys, &FunctionKeyRow::pressed);
        QSignalSpy left(field, &xInput::leave);
        // A key a receiver of keyDown handles does not reach the field.
        QList<int> seen;
        connect(field, &xInput::keyDown, field, [&](int key, Qt::KeyboardModifiers, bool* handled) {
            seen << key;
            *handled = key == Qt::Key_X;
        });
        field->setFocus();
        QTest::keyClicks(field, QStringLiteral("axb"));
        QCOMPARE(field->text(), QStringLiteral("ab"));
        QCOMPARE(seen, (QList<int>{Qt::Key_A, Qt::Key_X, Qt::Key_B}));
        QCOMPARE(left.count(), 0);
        other->setFocus();
        QCOMPARE(left.count(), 1);

        field->setFocus();
        QTest::keyClick(field, Qt::Key_F5);
        QCOMPARE(pressed.count(), 1);
        QCOMPARE(pressed.last().first().toInt(), 4);
        QCOMPARE(left.count(), 2); // the field was left before the key acted

        QTest::keyClick(&screen, Qt::Key_F2); // no caption
        QTest::mouseClick(cmdFnuc[1], Qt::LeftButton);
        QCOMPARE(pressed.count(), 1);
        cmdFnuc[11]->setEnabled(false);
        QTest::keyClick(&screen, Qt::Key_F12);
        QCOMPARE(pressed.count(), 1);
        QTest::mouseClick(cmdFnuc[0], Qt::LeftButton);
        QCOMPARE(pressed.last().first().toInt(), 0);

        xCmdBtn escape(Qt::Key_Escape, QStringLiteral("戻る"));
        QCOMPARE(escape.text(), QStringLiteral("Esc 戻る"));
    }
};

QTEST_MAIN(TestControls)
#include "tst_controls.moc"
