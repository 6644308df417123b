// The prescription fields as wired on a screen: input settings, leave rules on leaving, the
// skip over a dependent field, and the register's arrow ring over both eyes.
#include "platform/controls/NumericInput.h"
#include "platform/controls/xField.h"
#include "prescription/PrescriptionWiring.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QtTest>

namespace {
enum { Sph, Cyl, Ax, S, P1, B1, P2, B2, Gai, Tama, Pd, Ragan, Kyosei };

struct Prescription {
    explicit Prescription(PrescriptionScreen screen) {
        auto* layout = new QVBoxLayout(&dialog);
        for (EyeFields* eye : {&right, &left}) {
            auto* row = new QHBoxLayout;
            for (int index : PrescriptionWiring::ScreenOrder) {
                (*eye)[index] = new xField(&dialog, 10);
                row->addWidget((*eye)[index]);
            }
            layout->addLayout(row);
        }
        new PrescriptionWiring(screen, right, left, &dialog);
        dialog.show();
    }
    QDialog dialog;
    EyeFields right{};
    EyeFields left{};
};
} // namespace

class TestWiring : public QObject {
    Q_OBJECT

private slots:
    void leavingAFieldAppliesItsRule() {
        Prescription p(PrescriptionScreen::Register);
        QVERIFY(QTest::qWaitForWindowActive(&p.dialog));
        p.right[Sph]->setFocus();
        QTest::keyClicks(p.right[Sph], QStringLiteral("125"));
        p.right[Cyl]->setFocus();
        QCOMPARE(p.right[Sph]->text(), QStringLiteral("+1.25"));
        p.left[Pd]->setFocus();
        QTest::keyClicks(p.left[Pd], QStringLiteral("64.25")); // one decimal only
        QCOMPARE(p.left[Pd]->text(), QStringLiteral("64.2"));
        p.left[Pd]->setText(QStringLiteral("64.25")); // as pasted: the rule still holds
        p.left[Ax]->setFocus();
        QCOMPARE(p.left[Pd]->text(), QStringLiteral("64.3"));
        QTest::keyClicks(p.left[Ax], QStringLiteral("90"));
        QTest::keyClick(p.left[Ax], Qt::Key_Tab);
        QCOMPARE(p.left[Ax]->text(), QStringLiteral("90"));
    }

    void inputSettingsDifferByScreenAndEye() {
        Prescription reg(PrescriptionScreen::Register);
        Prescription history(PrescriptionScreen::History);
        QCOMPARE(reg.right[Sph]->numericInput()->highest(), 999.99);
        QCOMPARE(history.right[Sph]->numericInput()->highest(), 99.99);
        QCOMPARE(reg.right[P1]->numericInput()->pattern(), QStringLiteral("0.0"));
        QCOMPARE(reg.left[P1]->numericInput()->pattern(), QStringLiteral("0.00"));
        QCOMPARE(history.left[P1]->numericInput()->pattern(), QStringLiteral("0.0"));
        QCOMPARE(reg.left[Pd]->numericInput()->lowest(), -99.9);
        QCOMPARE(reg.right[Pd]->numericInput()->lowest(), 0.0);
        QCOMPARE(history.left[Pd]->numericInput()->lowest(), 0.0);
        QCOMPARE(reg.right[Cyl]->numericInput()->pattern(), QStringLiteral("+0.00"));
        QVERIFY(reg.right[B1]->numericInput() == nullptr);
        // A keystroke past the pattern's decimals or the range is refused.
        QTest::keyClicks(history.right[Cyl], QStringLiteral("-1.255"));
        QCOMPARE(history.right[Cyl]->text(), QStringLiteral("-1.25"));
        QTest::keyClicks(history.right[Sph], QStringLiteral("125"));
        QCOMPARE(history.right[Sph]->text(), QStringLiteral("12"));
        QTest::keyClicks(reg.right[Sph], QStringLiteral("125"));
        QCOMPARE(reg.right[Sph]->text(), QStringLiteral("125"));
        QTest::keyClicks(reg.right[Gai], QStringLiteral("-70"));
        QCOMPARE(reg.right[Gai]->text(), QStringLiteral("70"));
    }

    void anEmptyFieldSkipsTheValueThatDependsOnIt() {
        for (PrescriptionScreen screen :
             {PrescriptionScreen::Register, PrescriptionScreen::History}) {
            Prescription p(screen);
            QVERIFY(QTest::qWaitForWindowActive(&p.dialog));
            p.left[Cyl]->setFocus();
            QTest::keyClick(p.left[Cyl], Qt::Key_Return);
            QCOMPARE(p.dialog.focusWidget(), p.left[S]);
            p.right[P1]->setFocus();
            QTest::keyClick(p.right[P1], Qt::Key_Tab);
            QCOMPARE(p.dialog.focusWidget(), p.right[P2]);
            QTest::keyClick(p.right[P2], Qt::Key_Enter);
            QCOMPARE(p.dialog.focusWidget(), p.right[Gai]);
            // Not empty: the key keeps its ordinary effect.
            p.right[Cyl]->setText(QStringLiteral("+0.50"));
            p.right[Cyl]->setFocus();
            QTest::keyClick(p.right[Cyl], Qt::Key_Tab);
            QCOMPARE(p.dialog.focusWidget(), p.right[Ax]);
        }
    }

    void theRegistersArrowsRunRoundBothEyes() {
        Prescription p(PrescriptionScreen::Register);
        QVERIFY(QTest::qWaitForWindowActive(&p.dialog));
        p.right[Pd]->setFocus();
        QTest::keyClick(p.right[Pd], Qt::Key_Right);
        QCOMPARE(p.dialog.focusWidget(), p.left[Sph]);
        QTest::keyClick(p.left[Sph], Qt::Key_Left);
        QCOMPARE(p.dialog.focusWidget(), p.right[Pd]);
        QTest::keyClick(p.right[Pd], Qt::Key_Left);
        QCOMPARE(p.dialog.focusWidget(), p.right[Kyosei]);
        p.left[Pd]->setFocus();
        QTest::keyClick(p.left[Pd], Qt::Key_Right);
        QCOMPARE(p.dialog.focusWidget(), p.right[Sph]);
        QTest::keyClick(p.right[Sph], Qt::Key_Left);
        QCOMPARE(p.dialog.focusWidget(), p.left[Pd]);
        // Whatever the caret position: Right from Tama goes to Ragan (screen order).
        p.right[Tama]->setText(QStringLiteral("12"));
        p.right[Tama]->setFocus();
        p.right[Tama]->setCursorPosition(0);
        QTest::keyClick(p.right[Tama], Qt::Key_Right);
        QCOMPARE(p.dialog.focusWidget(), p.right[Ragan]);
    }

    void theHistoryHasNoArrows() {
        Prescription p(PrescriptionScreen::History);
        QVERIFY(QTest::qWaitForWindowActive(&p.dialog));
        p.right[Pd]->setText(QStringLiteral("62"));
        p.right[Pd]->setFocus();
        p.right[Pd]->setCursorPosition(0);
        QTest::keyClick(p.right[Pd], Qt::Key_Right);
        QCOMPARE(p.dialog.focusWidget(), p.right[Pd]);
        QCOMPARE(p.right[Pd]->cursorPosition(), 1);
    }
};

QTEST_MAIN(TestWiring)
#include "tst_wiring.moc"
