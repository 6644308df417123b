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
using Typed = std::tuple<int, const char*, const char*>;

// The rows whose rule gives other text than the table says, as "index typed -> shown".
QStringList mismatches(std::span<const Typed> cases, bool onRegister) {
    QStringList wrong;
    for (const auto& [index, typed, expected] : cases) {
        const QString shown = ApplyLeaveRule(index, QString::fromUtf8(typed), onRegister);
        if (shown != QString::fromUtf8(expected))
            wrong << u"%1 %2 -> %3"_s.arg(index).arg(QString::fromUtf8(typed), shown);
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

        // Signed (Cyl up to 9.99, Sph and S up to 99.99): 0, -0, the upper limit and
        // non-numbers empty; "+" and two decimals, a half away from 0. Unsigned: negatives empty
        // too; Pd has one decimal and the upper limit 99.9. Integer values keep what is not a
        // number; the base directions have no rule.
        const Typed anyScreen[] = {
            {Cyl, "0", ""},          {Cyl, "9.99", ""},      {Cyl, "9.98", "+9.98"},
            {Cyl, "-9.99", "-9.99"}, {Cyl, "-.5", "-0.50"},  {Cyl, "abc", ""},
            {Sph, "-0", ""},         {Sph, "99.99", ""},     {Sph, "+1.255", "+1.26"},
            {S, "125", "+125.00"},   {Kyosei, "-0.5", ""},   {Kyosei, "1", "1.00"},
            {Kyosei, "9.99", ""},    {Ragan, "0.1", "0.10"}, {P1, "1.2", "1.20"},
            {P2, "0", ""},           {P2, "x", ""},          {Pd, "99.9", ""},
            {Pd, "64.25", "64.3"},   {Pd, "62", "62.0"},     {Ax, "12.6", "13"},
            {Ax, "12.5", "13"},      {Ax, "0", "0"},         {Gai, "abc", "abc"},
            {Tama, "", ""},          {Tama, "-2.5", "-3"},   {B1, " IN ", " IN "}};
        // The register reads Sph and S above 99 as hundredths, rounded a half to even first.
        const Typed onRegister[] = {{Sph, "125", "+1.25"},   {Sph, "-125", "-125.00"},
                                    {Sph, "99", "+99.00"},   {Sph, "100.5", "+1.00"},
                                    {Sph, "101.5", "+1.02"}, {Sph, "9999", ""},
                                    {S, "x125", ""},         {S, "250", "+2.50"},
                                    {Cyl, "125", "+125.00"}, {Pd, "-31", ""}};
        QCOMPARE((mismatches(anyScreen, false) + mismatches(onRegister, true)).join(u"; "_s),
                 QString());
    }

    // A stored value as its field shows it, and the field's text read back into the value.
    void storedValuesAreShownAndTypedValuesRead() {
        // The value's index, the text read into it, what the field then shows.
        const std::tuple<int, const char*, const char*> cases[] = {
            {Sph, "1.25", "+1.25"}, {Sph, "+1.25", "+1.25"}, {Cyl, "-.5", "-0.50"},
            {Cyl, "", ""},          {P1, "3", "3.00"},       {Pd, " 62.0 ", "62.0"},
            {Ax, "180", "180"},     {Ax, "0", ""},           {Kyosei, "", ""},
            {B2, "", ""},           {B2, "OUT", "OUT"},      {B1, " O'IN ", " O'IN "}};
        for (const auto& [index, typed, shown] : cases) {
            Prescription eye;
            SetPrescriptionText(eye, index, QString::fromUtf8(typed));
            QCOMPARE(PrescriptionText(eye, index), QString::fromUtf8(shown));
        }
        Prescription eye;
        QCOMPARE(FailureNumber([&] { SetPrescriptionText(eye, Ax, u"abc"_s); }), 13L);
    }

    // On each screen: what a keystroke may add, the rules on leaving, the skip over a dependent
    // field and the arrows.
    void theWiredFieldsTypingLeavingAndMoving() {
        // A keystroke past the decimals or the range is refused; the base has no settings.
        // On the register or the history, on the left eye or the right: typed and shown.
        const std::tuple<bool, bool, int, const char*, const char*> typing[] = {
            {true, false, Sph, "125", "125"},       {false, false, Sph, "125", "12"},
            {true, false, P1, "1.234", "1.2"},      {true, true, P1, "1.234", "1.23"},
            {false, true, P1, "1.234", "1.2"},      {true, true, Pd, "-64.25", "-64.2"},
            {true, false, Pd, "-64", "64"},         {false, true, Pd, "-64", "64"},
            {false, false, Cyl, "-1.255", "-1.25"}, {true, false, Gai, "-70", "70"},
            {true, false, B1, "IN", "IN"}};
        for (PrescriptionScreen screen :
             {PrescriptionScreen::Register, PrescriptionScreen::History}) {
            WiredEyes p(screen);
            const EyeFields &r = p.right, &l = p.left;
            const bool ring = screen == PrescriptionScreen::Register;
            for (const auto& [onRegister, leftEye, index, typed, shown] : typing) {
                if (onRegister != ring)
                    continue;
                xField* field = (leftEye ? l : r)[index];
                QTest::keyClicks(field, QString::fromUtf8(typed));
                QCOMPARE(field->text(), QString::fromUtf8(shown));
                field->clear();
            }

            // Typed, set as a paste sets it, and left: the rules hold on both eyes.
            r[Sph]->setFocus();
            QTest::keyClicks(r[Sph], u"125"_s);
            QTest::keyClicks(r[Ax], u"90"_s);
            l[Pd]->setText(u"64.25"_s);
            for (xField* next : {r[Ax], l[Pd], l[Cyl]})
                next->setFocus();
            QCOMPARE(r[Sph]->text() + u'|' + r[Ax]->text() + u'|' + l[Pd]->text(),
                     ring ? u"+1.25|90|64.3"_s : u"+12.00|90|64.3"_s);

            // From each field, the key, and where the focus goes. An empty field skips the value
            // that depends on it; not empty, the key keeps its ordinary effect. The register's
            // arrows run round both eyes, whatever the caret position; the history's move the
            // caret and the focus stays.
            r[Cyl]->setText(u"+0.50"_s);
            r[Tama]->setText(u"12"_s);
            const QList<std::tuple<xField*, Qt::Key, xField*>> moves{
                {l[Cyl], Qt::Key_Return, l[S]},   {r[P1], Qt::Key_Tab, r[P2]},
                {r[P2], Qt::Key_Enter, r[Gai]},   {r[Cyl], Qt::Key_Tab, r[Ax]},
                {r[Pd], Qt::Key_Right, l[Sph]},   {l[Sph], Qt::Key_Left, r[Pd]},
                {r[Pd], Qt::Key_Left, r[Kyosei]}, {l[Pd], Qt::Key_Right, r[Sph]},
                {r[Sph], Qt::Key_Left, l[Pd]},    {r[Tama], Qt::Key_Right, r[Ragan]}};
            for (const auto& [from, key, to] : moves) {
                from->setFocus();
                from->setCursorPosition(0);
                QTest::keyClick(from, key);
                const bool arrow = key == Qt::Key_Left || key == Qt::Key_Right;
                QCOMPARE(p.dialog.focusWidget(), ring || !arrow ? to : from);
            }
            if (!ring)
                QCOMPARE(r[Tama]->cursorPosition(), 1);
        }
    }
};

QTEST_MAIN(TestPrescription)
#include "tst_prescription.moc"
