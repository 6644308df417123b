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

using namespace Qt::StringLiterals;

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
        xField name;
        xKana kana;
        kana.linkTo(&name);

        // や → やま → やまd (romaji on its way) → やまだ, converted to 山田, committed.
        type(&name, {"や", "やま", "やまd", "やまだ", "山田"}, "山田");
        QCOMPARE(kana.text(), u"やまだ"_s);

        // A blank typed by hand, then the given name composed in katakana: kept as hiragana.
        name.insert(u" "_s), kana.insert(u" "_s);
        type(&name, {"タロウ", "太郎"}, "太郎");
        QCOMPARE(name.text() + u'|' + kana.text(), u"山田 太郎|やまだ たろう"_s);

        // Kana committed as it is, without conversion; text that never went through the input
        // method adds nothing.
        type(&name, {}, "さん");
        name.insert(u"Jr"_s);
        QCOMPARE(kana.text(), u"やまだ たろうさん"_s);
        // The field stays editable, and a commit without a reading composed before adds nothing.
        kana.setText(u"やまだ たろう"_s);
        QVERIFY(!kana.isReadOnly());
        type(&name, {}, "様");
        QCOMPARE(kana.text(), u"やまだ たろう"_s);
    }

    void numberPostalCodeAndDateFieldsShowTheirFormsAndEmptyForms() {
        QDialog screen;
        auto* amount = new xNum(&screen);
        auto* other = new xField(&screen);
        screen.show();
        QVERIFY(QTest::qWaitForWindowActive(&screen));

        amount->setFocus();
        QTest::keyClicks(amount, u"1234567"_s);
        other->setFocus();
        QCOMPARE(amount->text(), u"1,234,567"_s);
        QCOMPARE(amount->Value(), 1234567.0);
        amount->setFocus();
        QCOMPARE(amount->text(), u"1234567"_s);
        // Letters are refused; the range holds, against a minus too.
        amount->setRange(0, 99999);
        amount->clear();
        QTest::keyClicks(amount, u"12a345678-"_s);
        QCOMPARE(amount->text(), u"12345"_s);

        amount->setDisplayFormat(u"000"_s);
        amount->setValue(5);
        QCOMPARE(amount->text(), u"005"_s);
        amount->setValue(0);
        QCOMPARE(amount->text(), u"000"_s);
        amount->clearValue();
        QVERIFY(amount->isEmpty());

        xZip zip;
        QCOMPARE(zip.text(), u"***-****"_s);
        QTest::keyClicks(&zip, u"0600001"_s);
        QCOMPARE(zip.text(), u"060-0001"_s);
        for (const QString& set : {u"100-0001"_s, QString()}) {
            zip.setText(set);
            QCOMPARE(zip.text(), set.isEmpty() ? u"***-****"_s : set);
        }

        xDate date;
        QVERIFY(date.isEmpty() && date.text().isEmpty());
        QCOMPARE(date.date(), QDate(1899, 12, 30));
        date.setDate(QDate(2026, 2, 3));
        QCOMPARE(date.text(), u"2026/02/03"_s);
        date.setDate(xDate::EmptyDate);
        QVERIFY(date.isEmpty());
        QTest::keyClicks(&date, u"20261322"_s);
        QCOMPARE(date.date(), xDate::EmptyDate); // no 13th month
        date.clear();
        QTest::keyClicks(&date, u"20261122"_s);
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
        signedValue.setNumericInput(u"+0.00"_s, -9.99, 9.99);
        type(&signedValue, {}, "－１．２５");
        QCOMPARE(signedValue.text(), u"-1.25"_s);
        xField whole; // no sign where the pattern shows none and no negative is allowed
        whole.setNumericInput(u"000"_s, 0, 999);
        QTest::keyClicks(&whole, u"+"_s);
        type(&whole, {}, "０６０");
        QCOMPARE(whole.text(), u"060"_s);
        xNum amount;
        Paste(&amount, u"１２，３４５"_s);
        QCOMPARE(amount.Value(), 12345.0);
        xZip zip;
        Paste(&zip, u"０６０００４２"_s);
        QCOMPARE(zip.text(), u"060-0042"_s);
        xDate date;
        Paste(&date, u"２０２６１１２２"_s);
        QCOMPARE(date.date(), QDate(2026, 11, 22));
    }

    // A limit counts characters: 𠮷 and an emoji are two UTF-16 units each and stay whole. What
    // goes past the limit is what came last, before the cursor; a lone half never stays.
    void limitsKeepWholeCharacters() {
        const QString yoshi = u"𠮷"_s, smile = u"😀"_s, half = smile.left(1);
        // The text, its cursor and limit; the text fitted and its cursor.
        const std::tuple<QString, int, int, QString, int> cases[] = {
            {u"ab"_s + yoshi, 4, 3, u"ab"_s + yoshi, 4},
            {u"ab"_s + yoshi + u"c"_s, 5, 3, u"ab"_s + yoshi, 4},
            {u"ab"_s + smile + yoshi, 6, 3, u"ab"_s + smile, 4},
            {u"x"_s + smile + u"yz"_s, 3, 3, u"xyz"_s, 1},
            {u"ab"_s + half + u"c"_s, 4, 9, u"abc"_s, 3},
            {u"abcd"_s, 0, 2, u"ab"_s, 0},
            {u"a"_s + smile + u"b"_s, 2, 2, u"ab"_s, 1},
        };
        for (auto [text, cursor, limit, fitted, fittedCursor] : cases) {
            FitToCharacters(text, cursor, limit);
            QCOMPARE(text, fitted);
            QCOMPARE(cursor, fittedCursor);
        }
        QCOMPARE(CharacterCount(u"あ"_s + yoshi + smile), 3);

        // The same on a field: typed, pasted, committed by an input method.
        QDialog screen;
        auto* field = new xField(&screen, 5);
        auto* number = new xField(&screen, 4);
        number->setNumericInput(u"0000"_s, 0, 9999);
        screen.show();
        QVERIFY(QTest::qWaitForWindowActive(&screen));
        field->setFocus();
        type(field, {}, "あいう");
        QApplication::clipboard()->setText(yoshi + smile + u"x"_s);
        QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
        QTest::keyClicks(field, u"z"_s);
        QCOMPARE(field->text(), u"あいう"_s + yoshi + smile);
        // A longer text set by the program (a stored value) is kept whole: typing cannot
        // lengthen it, deleting shortens it, and then the limit holds.
        field->setText(u"ab"_s + yoshi + yoshi + yoshi + smile);
        QCOMPARE(field->maxLength(), 5);
        type(field, {}, "𠮷");
        QCOMPARE(field->text(), u"ab"_s + yoshi + yoshi + yoshi + smile);
        QTest::keyClick(field, Qt::Key_Backspace);
        type(field, {}, "𠮷");
        QCOMPARE(field->text(), u"ab"_s + yoshi + yoshi + yoshi);
        xKana kana;
        kana.setText(u"かなかな"_s + yoshi);
        kana.setMaxLength(4);
        QCOMPARE(kana.text(), u"かなかな"_s);
        // A number field keeps its own rule under the limit.
        number->setFocus();
        QTest::keyClicks(number, u"12a345"_s);
        QCOMPARE(number->text(), u"1234"_s);
    }

    void keysReachTheFieldFirstAndFunctionKeysNeedACaption() {
        QDialog screen;
        auto* field = new xField(&screen);
        auto* other = new xField(&screen);
        auto* keys = new FunctionKeyRow(&screen);
        std::array<QString, 12> captions{u"閉じる"_s};
        captions[4] = u"登録"_s, captions[11] = u"履歴照会"_s;
        keys->setCaptions(captions);
        const auto& cmdFnuc = keys->buttons();
        QCOMPARE(cmdFnuc[4]->text() + u'|' + cmdFnuc[11]->text() + u'|' + cmdFnuc[1]->text(),
                 u"F5 登録|F12 履歴照会|F2"_s);

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
        QTest::keyClicks(field, u"axb"_s);
        QCOMPARE(field->text(), u"ab"_s);
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

        xCmdBtn escape(Qt::Key_Escape, u"戻る"_s);
        QCOMPARE(escape.text(), u"Esc 戻る"_s);
    }
};

QTEST_MAIN(TestControls)
#include "tst_controls.moc"
