// The prescription values: the leave rules on the values where they break (0, the upper limit,
// -0, negative unsigned values, rounding, the hundredths entry, non-numbers), display and
// storage, and the fields as wired on a screen: input settings, leave rules on leaving, the skip
// over a dependent field and the register's arrow ring over both eyes.
#include "domain/Prescription.h"
#include "platform/controls/xField.h"
#include "prescription/LeaveRules.h"
#include "prescription/PrescriptionWiring.h"
#include "support/Harness.h"

#include <QGridLayout>
#include <QtTest>
#include <span>

using namespace Qt::StringLiterals;

namespace {
enum { Sph, Cyl, Ax, S, P1, B1, P2, B2, Gai, Tama, Pd, Ragan, Kyosei };

// A value typed and the field left: the field's index, what was typed, what it shows then.
struct Typed {
    int index;
    const char* typed;
    const char* shown;
};

// The rows whose rule gives other text than the table says, as "index typed -> shown".
QStringList mismatches(std::span<const Typed> cases, bool onRegister) {
    QStringList wrong;
    for (const Typed& c : cases) {
        const QString shown = ApplyLeaveRule(c.index, QString::fromUtf8(c.typed), onRegister);
        if (shown != QString::fromUtf8(c.shown))
            wrong << QString::number(c.index) + QLatin1Char(' ') + QString::fromUtf8(c.typed) +
                         u" -> "_s + shown;
    }
    return wrong;
}

struct WiredEyes {
    explicit WiredEyes(PrescriptionScreen screen) {
        for (EyeFields* eye : {&right, &left})
            for (int index : PrescriptionWiring::ScreenOrder)
                (*eye)[index] = new xField(&dialog, 10);
        const QString pdCaptions[] = {u"PD"_s, u"PD"_s};
        dialog.setLayout(PrescriptionGrid(&dialog, right, left, pdCaptions));
        new PrescriptionWiring(screen, right, left, &dialog);
        dialog.show();
        // The focus checks fail if it never becomes active.
        (void)QTest::qWaitForWindowActive(&dialog);
    }
    QWidget* focus() const { return dialog.focusWidget(); }
    QDialog dialog;
    EyeFields right{}, left{};
};
} // namespace

class TestPrescription : public QObject {
    Q_OBJECT

private slots:
    void theNumericTestAndTheLeaveRules() {
        for (const char* number : {"1", "-1", "+1.5", " 2.25 ", ".5", "3.", "-0", "0"})
            QVERIFY2(IsPrescriptionNumber(QString::fromUtf8(number)), number);
        for (const char* other :
             {"", " ", "+", "-", ".", "1.2.3", "1e2", "abc", "1,5", "--1", "1 2"})
            QVERIFY2(!IsPrescriptionNumber(QString::fromUtf8(other)), other);

        // Signed (Cyl up to 9.99, Sph and S up to 99.99): 0, -0, the upper limit and non-numbers
        // empty; "+" and two decimals, a half away from 0.
        const Typed signedValues[] = {{Cyl, "0", ""},           {Cyl, "9.99", ""},
                                      {Cyl, "9.98", "+9.98"},   {Cyl, "-9.99", "-9.99"},
                                      {Cyl, "-.5", "-0.50"},    {Cyl, "abc", ""},
                                      {Sph, "-0", ""},          {Sph, "99.99", ""},
                                      {Sph, "+1.255", "+1.26"}, {S, "125", "+125.00"}};
        // Unsigned: negatives empty too; Pd has one decimal and the upper limit 99.9.
        const Typed unsignedValues[] = {{Kyosei, "-0.5", ""},  {Kyosei, "1", "1.00"},
                                        {Kyosei, "9.99", ""},  {Ragan, "0.1", "0.10"},
                                        {P1, "1.2", "1.20"},   {P2, "0", ""},
                                        {P2, "x", ""},         {Pd, "99.9", ""},
                                        {Pd, "64.25", "64.3"}, {Pd, "62", "62.0"}};
        // Integer values keep what is not a number; the base directions have no rule.
        const Typed otherValues[] = {{Ax, "12.6", "13"},  {Ax, "12.5", "13"}, {Ax, "0", "0"},
                                     {Gai, "abc", "abc"}, {Tama, "", ""},     {Tama, "-2.5", "-3"},
                                     {B1, " IN ", " IN "}};
        // The register reads Sph and S above 99 as hundredths, rounded a half to even first.
        const Typed onRegister[] = {{Sph, "125", "+1.25"},   {Sph, "-125", "-125.00"},
                                    {Sph, "99", "+99.00"},   {Sph, "100.5", "+1.00"},
                                    {Sph, "101.5", "+1.02"}, {Sph, "9999", ""},
                                    {S, "x125", ""},         {S, "250", "+2.50"},
                                    {Cyl, "125", "+125.00"}, {Pd, "-31", ""}};
        QCOMPARE(mismatches(signedValues, false) + mismatches(unsignedValues, false) +
                     mismatches(otherValues, false) + mismatches(onRegister, true),
                 QStringList());
        for (auto [value, rounded] : {std::pair{124.5, 124.0}, {125.5, 126.0}, {-2.5, -2.0}})
            QCOMPARE(RoundHalfEven(value), rounded);
    }

    void storedValuesAreShownAndTypedValuesRead() {
        // The value's index, the number or base direction stored, what is shown.
        const std::tuple<int, double, const char*, const char*> display[] = {
            {Sph, 1.25, "", "+1.25"}, {Cyl, -0.5, "", "-0.50"}, {P1, 3, "", "3.00"},
            {Pd, 64.0, "", "64.0"},   {Ax, 180, "", "180"},     {Ax, 0, "", ""},
            {Kyosei, 0, "", ""},      {B2, 0, "", ""},          {B2, 0, "OUT", "OUT"}};
        for (const auto& [index, number, base, shown] : display) {
            Prescription eye;
            if (IsPrescriptionText(index))
                eye.base(index) = QString::fromUtf8(base);
            else
                eye.numbers[index] = number;
            QCOMPARE(PrescriptionText(eye, index), QString::fromUtf8(shown));
        }
        Prescription eye;
        SetPrescriptionText(eye, Sph, u"+1.25"_s);
        SetPrescriptionText(eye, Pd, u" 62.0 "_s);
        SetPrescriptionText(eye, B1, u" O'IN "_s);
        SetPrescriptionText(eye, Cyl, QString());
        QCOMPARE((std::array{eye.numbers[Sph], eye.numbers[Pd], eye.numbers[Cyl]}),
                 (std::array{1.25, 62.0, 0.0}));
        QCOMPARE(eye.b1, u" O'IN "_s); // as typed; written trimmed
        QCOMPARE(FailureNumber([&] { SetPrescriptionText(eye, Ax, u"abc"_s); }), 13L);
    }

    void inputSettingsDifferByScreenAndEye() {
        WiredEyes reg(PrescriptionScreen::Register);
        WiredEyes history(PrescriptionScreen::History);
        // A keystroke past the decimals or the range is refused; the base has no settings.
        // On the register or the history, on the left eye or the right: typed and shown.
        const std::tuple<bool, bool, int, const char*, const char*> typing[] = {
            {true, false, Sph, "125", "125"},       {false, false, Sph, "125", "12"},
            {true, false, P1, "1.234", "1.2"},      {true, true, P1, "1.234", "1.23"},
            {false, true, P1, "1.234", "1.2"},      {true, true, Pd, "-64.25", "-64.2"},
            {true, false, Pd, "-64", "64"},         {false, true, Pd, "-64", "64"},
            {false, false, Cyl, "-1.255", "-1.25"}, {true, false, Gai, "-70", "70"},
            {true, false, B1, "IN", "IN"}};
        for (const auto& [onRegister, leftEye, index, typed, shown] : typing) {
            const WiredEyes& p = onRegister ? reg : history;
            xField* field = (leftEye ? p.left : p.right)[index];
            QTest::keyClicks(field, QString::fromUtf8(typed));
            QCOMPARE(field->text(), QString::fromUtf8(shown));
        }
    }

    void leavingAppliesTheRulesAnEmptyFieldSkipsItsDependentAndArrowsMove() {
        for (PrescriptionScreen screen :
             {PrescriptionScreen::Register, PrescriptionScreen::History}) {
            WiredEyes p(screen);
            p.right[Sph]->setFocus();
            QTest::keyClicks(p.right[Sph], u"125"_s);
            p.right[Cyl]->setFocus();
            QCOMPARE(p.right[Sph]->text(),
                     screen == PrescriptionScreen::Register ? u"+1.25"_s : u"+12.00"_s);
            p.left[Pd]->setText(u"64.25"_s); // as pasted: the rule still holds
            p.left[Pd]->setFocus();
            p.left[Cyl]->setFocus();
            QCOMPARE(p.left[Pd]->text(), u"64.3"_s);

            QTest::keyClicks(p.right[Ax], u"90"_s);
            p.right[Ax]->setFocus();
            QTest::keyClick(p.right[Ax], Qt::Key_Tab);
            QCOMPARE(p.right[Ax]->text(), u"90"_s);

            // From each field, the key, and where the focus goes on the register and on the
            // history. An empty field skips the value that depends on it; not empty, the key keeps
            // its ordinary effect. The register's arrows run round both eyes, whatever the caret
            // position; the history's move the caret.
            const bool ring = screen == PrescriptionScreen::Register;
            p.right[Cyl]->setText(u"+0.50"_s);
            p.right[Tama]->setText(u"12"_s);
            const QList<std::tuple<xField*, Qt::Key, xField*, xField*>> moves{
                {p.left[Cyl], Qt::Key_Return, p.left[S], p.left[S]},
                {p.right[P1], Qt::Key_Tab, p.right[P2], p.right[P2]},
                {p.right[P2], Qt::Key_Enter, p.right[Gai], p.right[Gai]},
                {p.right[Cyl], Qt::Key_Tab, p.right[Ax], p.right[Ax]},
                {p.right[Pd], Qt::Key_Right, p.left[Sph], p.right[Pd]},
                {p.left[Sph], Qt::Key_Left, p.right[Pd], p.left[Sph]},
                {p.right[Pd], Qt::Key_Left, p.right[Kyosei], p.right[Pd]},
                {p.left[Pd], Qt::Key_Right, p.right[Sph], p.left[Pd]},
                {p.right[Sph], Qt::Key_Left, p.left[Pd], p.right[Sph]},
                {p.right[Tama], Qt::Key_Right, p.right[Ragan], p.right[Tama]}};
            for (const auto& [from, key, onRegister, onHistory] : moves) {
                from->setFocus();
                from->setCursorPosition(0);
                QTest::keyClick(from, key);
                QCOMPARE(p.focus(), ring ? onRegister : onHistory);
            }
            if (!ring)
                QCOMPARE(p.right[Tama]->cursorPosition(), 1);
        }
    }
};

QTEST_MAIN(TestPrescription)
#include "tst_prescription.moc"
