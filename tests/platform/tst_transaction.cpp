// The transaction guard: what a scope leaves behind when it commits, throws, fails a statement
// or simply ends, on both engines.
#include "data/ShopDatabase.h"
#include "frame/Globals.h"
#include "platform/Failure.h"
#include "platform/db/SqlText.h"
#include "platform/db/Transaction.h"
#include "support/Harness.h"

#include <QtTest>

namespace {

void insertMaker(const QString& number) {
    gCon.execute(QStringLiteral("insert into San_Meka values(") + SqlStr(number) +
                 QStringLiteral(",'x')"));
}

} // namespace

class TestTransaction : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void onlyACommittedScopeKeepsItsWrites() {
        struct Case {
            const char* name;
            std::function<void(Transaction&)> afterWrite;
            int kept;
        };
        const Case cases[] = {
            {"an exception leaves the scope",
             [](Transaction&) { throw Failure(ErrorNumber::Unexpected, QStringLiteral("x")); }, 0},
            // A broken key; on PostgreSQL every later statement of the transaction fails too.
            {"a statement fails", [](Transaction&) { insertMaker(QStringLiteral("001")); }, 0},
            {"the connection is closed first", [](Transaction&) { gCon.close(); }, 0},
            {"the scope ends without commit", [](Transaction&) {}, 0},
            {"commit", [](Transaction& transaction) { transaction.commit(); }, 1},
        };
        for (const Case& c : cases) {
            gCon.execute(QStringLiteral("delete from San_Meka where Meka_No = '100'"));
            try {
                Transaction transaction(gCon);
                insertMaker(QStringLiteral("100"));
                c.afterWrite(transaction);
            } catch (const Failure&) {
            }
            if (!gCon.isOpen())
                OpenDatabase();
            QVERIFY2(!gCon.inTransaction(), c.name);
            // Also shows the connection takes statements again.
            const int kept =
                QueryCount(QStringLiteral("select * from San_Meka where Meka_No = '100'"));
            QVERIFY2(kept == c.kept,
                     qPrintable(
                         QStringLiteral("%1: %2 rows kept").arg(QLatin1String(c.name)).arg(kept)));
        }
    }
};

QTEST_MAIN(TestTransaction)
#include "tst_transaction.moc"
