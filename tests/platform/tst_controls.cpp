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
    Commit(field, QString::fromUtf8(committed));
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
        // Kana committed as it is, without conversion, is added; text that never went through
        // the input method, or a commit without a reading composed before, adds nothing.
        Commit(&name, u"さん"_s);
        name.insert(u"Jr"_s);
        Commit(&name, u"様"_s);
        QCOMPARE(kana.text(), u"やまだ たろうさん"_s);
        QVERIFY(!kana.isReadOnly());
    }

    // On a shown screen: a number field groups its digits only when left; a key a receiver of
    // keyDown handles never reaches the field, and a function key needs a caption.
    void numberFieldsAndKeysOnAScreen() {
        QDialog screen;
        auto* amount = new xNum(&screen);
        auto* field = new xField(&screen);
        auto* keys = new FunctionKeyRow(&screen);
        std::array<QString, 12> captions{u"閉じる"_s};
        captions[4] = u"登録"_s, captions[11] = u"履歴照会"_s;
        keys->setCaptions(captions);
        const auto& cmdFnuc = keys->buttons();
        QCOMPARE(cmdFnuc[4]->text() + u'|' + cmdFnuc[11]->text() + u'|' + cmdFnuc[1]->text() +
                     u'|' + xCmdBtn(Qt::Key_Escape, u"戻る"_s).text(),
                 u"F5 登録|F12 履歴照会|F2|Esc 戻る"_s);
        screen.show();
        QVERIFY(QTest::qWaitForWindowActive(&screen));

        amount->setFocus();
        QTest::keyClicks(amount, u"1234567"_s);
        field->setFocus();
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
        for (auto [value, shown] : {std::pair{5, u"005"_s}, {0, u"000"_s}}) {
            amount->setValue(value);
            QCOMPARE(amount->text(), shown);
        }
        amount->clearValue();
        QVERIFY(amount->isEmpty());

        QSignalSpy pressed(keys, &FunctionKeyRow::pressed);
        QSignalSpy left(field, &xInput::leave);
        connect(field, &xInput::keyDown, field,
                [](int key, Qt::KeyboardModifiers, bool* handled) { *handled = key == Qt::Key_X; });
        field->setFocus();
        QTest::keyClicks(field, u"axb"_s);
        QCOMPARE(field->text(), u"ab"_s);
        QTest::keyClick(field, Qt::Key_F5);
        QCOMPARE(left.count(), 1); // the key takes the focus: the field's leave rules run first
        QTest::keyClick(&screen, Qt::Key_F2); // no caption
        QTest::mouseClick(cmdFnuc[1], Qt::LeftButton);
        cmdFnuc[11]->setEnabled(false);
        QTest::keyClick(&screen, Qt::Key_F12);
        QTest::mouseClick(cmdFnuc[0], Qt::LeftButton);
        QCOMPARE(pressed, (QList<QList<QVariant>>{{4}, {0}}));
    }

    // The postal code and date fields show their empty forms and take digits alone; full-width
    // digits, signs and points, typed or pasted, are read as ASCII.
    void postalCodeDateAndFullWidthDigits() {
        xZip zip;
        QCOMPARE(zip.text(), u"***-****"_s);
        Paste(&zip, u"０６０００４２"_s);
        QCOMPARE(zip.text(), u"060-0042"_s);

        xDate date;
        QVERIFY(date.isEmpty() && date.text().isEmpty());
        QCOMPARE(date.date(), QDate(1899, 12, 30));
        QTest::keyClicks(&date, u"20261322"_s);
        QCOMPARE(date.date(), xDate::EmptyDate); // no 13th month
        date.setDate(xDate::EmptyDate);
        QVERIFY(date.isEmpty());
        QTest::keyClicks(&date, u"20261122"_s);
        QCOMPARE(date.date(), QDate(2026, 11, 22));
        date.setDate(QDate(2026, 2, 3));
        QCOMPARE(date.text(), u"2026/02/03"_s);

        // Typed; in ASCII; the number read and whether it is one.
        const std::tuple<const char*, const char*, double, bool> numbers[] = {
            {"０１２３４５６７８９", "0123456789", 123456789, true},
            {" －１，２３４．５ ", " -1,234.5 ", 0, false},
            {"＋０．２５", "+0.25", 0.25, true},
            {" －０．５ ", " -0.5 ", -0.5, true},
            {"１ａ　ー−", "1ａ　ー−", 0, false},
            {"", "", 0, false}};
        for (const auto& [typed, ascii, value, isNumber] : numbers) {
            QCOMPARE(HalfWidthNumber(QString::fromUtf8(typed)), QString::fromUtf8(ascii));
            bool ok = !isNumber;
            QCOMPARE(NumberFromText(QString::fromUtf8(typed), &ok), value);
            QCOMPARE(ok, isNumber);
        }
        xField whole; // no sign where the pattern shows none and no negative is allowed
        whole.setNumericInput(u"000"_s, 0, 999);
        QTest::keyClicks(&whole, u"+"_s);
        Commit(&whole, u"０６０"_s);
        QCOMPARE(whole.text(), u"060"_s);
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

        // A longer text set by the program (a stored value) is kept whole: typing cannot
        // lengthen it, deleting shortens it, and then the limit holds.
        xField field(nullptr, 5);
        field.setText(u"ab"_s + yoshi + yoshi + yoshi + smile);
        QCOMPARE(field.maxLength(), 5);
        Commit(&field, u"𠮷"_s);
        QCOMPARE(field.text(), u"ab"_s + yoshi + yoshi + yoshi + smile);
        QTest::keyClick(&field, Qt::Key_Backspace);
        Commit(&field, u"𠮷"_s);
        QCOMPARE(field.text(), u"ab"_s + yoshi + yoshi + yoshi);
        xKana kana;
        kana.setText(u"かなかな"_s + yoshi);
        kana.setMaxLength(4);
        QCOMPARE(kana.text(), u"かなかな"_s);
        // A number field keeps its own rule under the limit.
        xField number(nullptr, 4);
        number.setNumericInput(u"0000"_s, 0, 9999);
        QTest::keyClicks(&number, u"12a345"_s);
        QCOMPARE(number.text(), u"1234"_s);
    }
};

QTEST_MAIN(TestControls)
#include "tst_controls.moc"
