// The prescription rules on the values where they break: 0, the upper limit, -0, negative
// unsigned values, rounding, the hundredths entry, non-numbers; display and storage.
#include "domain/Prescription.h"
#include "platform/Failure.h"
#include "prescription/LeaveRules.h"

#include <QtTest>

namespace {
enum { Sph, Cyl, Ax, S, P1, B1, P2, B2, Gai, Tama, Pd, Ragan, Kyosei };

QString onRegister(int index, const char* typed) {
    return ApplyLeaveRule(index, QString::fromUtf8(typed), true);
}
QString onHistory(int index, const char* typed) {
    return ApplyLeaveRule(index, QString::fromUtf8(typed), false);
}
} // namespace

class TestLeaveRules : public QObject {
    Q_OBJECT

private slots:
    void theNumericTest() {
        for (const char* number : {"1", "-1", "+1.5", " 2.25 ", ".5", "3.", "-0", "0"})
            QVERIFY2(IsPrescriptionNumber(QString::fromUtf8(number)), number);
        for (const char* other :
             {"", " ", "+", "-", ".", "1.2.3", "1e2", "abc", "1,5", "--1", "1 2"})
            QVERIFY2(!IsPrescriptionNumber(QString::fromUtf8(other)), other);
    }

    void signedValues() {
        QCOMPARE(onHistory(Cyl, "0"), QString());
        QCOMPARE(onHistory(Cyl, "9.99"), QString());
        QCOMPARE(onHistory(Cyl, "9.98"), QStringLiteral("+9.98"));
        QCOMPARE(onHistory(Cyl, "-9.99"), QStringLiteral("-9.99"));
        QCOMPARE(onHistory(Cyl, "-.5"), QStringLiteral("-0.50"));
        QCOMPARE(onHistory(Cyl, "abc"), QString());
        QCOMPARE(onHistory(Sph, "-0"), QString());
        QCOMPARE(onHistory(Sph, "99.99"), QString());
        QCOMPARE(onHistory(Sph, "1.5"), QStringLiteral("+1.50"));
        QCOMPARE(onHistory(Sph, "+1.255"), QStringLiteral("+1.26"));
        QCOMPARE(onHistory(S, "125"), QStringLiteral("+125.00")); // no hundredths step here
        QCOMPARE(onHistory(S, ""), QString());
    }

    void theRegistersHundredthsEntry() {
        QCOMPARE(onRegister(Sph, "125"), QStringLiteral("+1.25"));
        QCOMPARE(onRegister(Sph, "-125"), QStringLiteral("-125.00"));
        QCOMPARE(onRegister(Sph, "99"), QStringLiteral("+99.00"));
        QCOMPARE(onRegister(Sph, "100.5"), QStringLiteral("+1.00")); // 100.5 -> 100, to even
        QCOMPARE(onRegister(Sph, "101.5"), QStringLiteral("+1.02"));
        QCOMPARE(onRegister(Sph, "9999"), QString()); // 99.99 is the upper limit
        QCOMPARE(onRegister(S, ""), QString());
        QCOMPARE(onRegister(S, "x125"), QString());
        QCOMPARE(onRegister(S, "250"), QStringLiteral("+2.50"));
        QCOMPARE(onRegister(Cyl, "125"), QStringLiteral("+125.00")); // only Sph and S
        QCOMPARE(RoundHalfEven(124.5), 124.0);
        QCOMPARE(RoundHalfEven(125.5), 126.0);
        QCOMPARE(RoundHalfEven(-2.5), -2.0);
        QCOMPARE(RoundHalfEven(100.49), 100.0);
    }

    void unsignedValues() {
        QCOMPARE(onHistory(Kyosei, "-0.5"), QString());
        QCOMPARE(onHistory(Kyosei, "1"), QStringLiteral("1.00"));
        QCOMPARE(onHistory(Kyosei, "9.99"), QString());
        QCOMPARE(onHistory(Ragan, "0.1"), QStringLiteral("0.10"));
        QCOMPARE(onHistory(P1, "1.2"), QStringLiteral("1.20"));
        QCOMPARE(onHistory(P2, "0"), QString());
        QCOMPARE(onHistory(P2, "x"), QString());
        QCOMPARE(onHistory(Pd, "99.9"), QString());
        QCOMPARE(onHistory(Pd, "64.25"), QStringLiteral("64.3"));
        QCOMPARE(onHistory(Pd, "62"), QStringLiteral("62.0"));
        QCOMPARE(onRegister(Pd, "-31"), QString());
    }

    void integerValuesKeepWhatIsNotANumber() {
        QCOMPARE(onHistory(Ax, "12.6"), QStringLiteral("13"));
        QCOMPARE(onHistory(Ax, "12.5"), QStringLiteral("13"));
        QCOMPARE(onHistory(Ax, "0"), QStringLiteral("0"));
        QCOMPARE(onHistory(Gai, "abc"), QStringLiteral("abc"));
        QCOMPARE(onHistory(Tama, ""), QString());
        QCOMPARE(onHistory(Tama, "-2.5"), QStringLiteral("-3"));
        // The base directions have no rule.
        QCOMPARE(onHistory(B1, " IN "), QStringLiteral(" IN "));
    }
};

QTEST_MAIN(TestLeaveRules)
#include "tst_leaverules.moc"
