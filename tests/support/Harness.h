#pragma once

#include "support/ModalScript.h"
#include "support/MsgScript.h"

#include <QDateTime>
#include <QTemporaryDir>
#include <memory>

// A fresh program folder per test: DB/ with a new database made by the admin tool's code,
// Log/ and jfm/, the clock fixed, and the box and screen scripts installed.
// Call setUp() from a test's init() and tearDown() from its cleanup().
class Harness {
public:
    struct Options {
        bool createDatabase = true;
        bool openDatabase = true;
    };

    static const QDateTime FixedNow;

    void setUp(Options options);
    void setUp() { setUp(Options{}); }
    // Checks that every expected box and screen came and nothing else did.
    // Returns the problems found, empty when all went as scripted.
    QStringList tearDown();

    QString folder() const;
    QString databaseFile() const;
    QString path(const QString& relative) const;

    MsgScript msgs;
    ModalScript screens;

private:
    std::unique_ptr<QTemporaryDir> dir_;
};

// Runs a query on gCon and gives its first column of the first row (a null QVariant when
// there is no row). For checking what the database holds.
QVariant QueryValue(const QString& sql);
// The number of rows a query gives.
int QueryCount(const QString& sql);

// In a test's cleanup(): fails the test with the harness's findings.
#define HARNESS_TEARDOWN(harness)                                                                  \
    do {                                                                                           \
        const QStringList problems = (harness).tearDown();                                         \
        QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char('\n'))));                \
    } while (false)
