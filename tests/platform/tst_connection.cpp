// The database layer: rows, fields, Null, transactions, the transaction guard (what a scope
// leaves behind when it commits, throws, fails a statement or simply ends) and the error
// numbers screens test for.
#include "data/ShopDatabase.h"
#include "frame/Globals.h"
#include "platform/Failure.h"
#include "platform/db/SqlText.h"
#include "platform/db/Transaction.h"
#include "support/Harness.h"

#include <QtTest>

namespace {

void insertMaker(const QString& number, const QString& name = QStringLiteral("x")) {
    gCon.execute(QStringLiteral("insert into San_Meka values(") + SqlStr(number) +
                 QLatin1Char(',') + SqlStr(name) + QLatin1Char(')'));
}

QString makerName(const char* number) {
    return QueryValue(QStringLiteral("select Meka_Name from San_Meka where Meka_No = '%1'")
                          .arg(QString::fromLatin1(number)))
        .toString();
}

} // namespace

class TestConnection : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void rowsAreReadForwardNullIsKeptApartAndTextIsStoredAsTyped() {
        gCon.execute(QStringLiteral("delete from San_Meka"));
        insertMaker(QStringLiteral("002"), QStringLiteral("ニコン"));
        insertMaker(QStringLiteral("001"), QStringLiteral("HOYA"));

        RecordSet rows = gCon.execute(QStringLiteral("select * from san_meka order By meka_no"));
        QCOMPARE(rows.field(QStringLiteral("MEKA_NO")).toString(), QStringLiteral("001"));
        QCOMPARE(rows.field(1).toString(), QStringLiteral("HOYA"));
        QCOMPARE(FailureNumber([&] { rows.field(QStringLiteral("Item_Name")); }),
                 ErrorNumber::NoSuchField);
        for (int position : {2, -1})
            QCOMPARE(FailureNumber([&] { rows.field(position); }), ErrorNumber::NoSuchField);
        rows.moveNext();
        QCOMPARE(rows.field(QStringLiteral("meka_name")).toString(), QStringLiteral("ニコン"));
        rows.moveNext();
        QVERIFY(rows.eof());
        QCOMPARE(FailureNumber([&] { rows.field(0); }), ErrorNumber::NoCurrentRow);
        QCOMPARE(FailureNumber([&] { rows.moveNext(); }), ErrorNumber::NoCurrentRow);
        QVERIFY(gCon.execute(QStringLiteral("select * from San_Meka where Meka_No = 'x'")).eof());

        gCon.execute(QStringLiteral("insert into San_User (User_No, User_Name, User_Kana) "
                                    "values (1, '', NULL)"));
        RecordSet user = gCon.execute(
            QStringLiteral("select User_Name, User_Kana, User_Dlt_F, User_No from San_User"));
        QVERIFY(!user.field(0).isNull());
        QCOMPARE(user.field(0).toString(), QString());
        QVERIFY(user.field(1).isNull());
        QVERIFY(user.field(QStringLiteral("user_dlt_f")).isNull());
        QCOMPARE(user.field(3).toLongLong(), 1);
        QVERIFY(QueryValue(QStringLiteral("select max(User_No) from San_User where User_No > 5"))
                    .isNull());

        // Quotes, a backslash and the word like in a text are text on both engines.
        const QString typed = QStringLiteral("  O'Neil 'の' ''眼鏡店 like \\ ");
        gCon.execute(QStringLiteral("insert into San_User (User_No, User_Name) values (7, ") +
                     SqlStr(typed) + QLatin1Char(')'));
        QCOMPARE(QueryValue(QStringLiteral("select User_Name from San_User where User_No = 7"))
                     .toString(),
                 typed.trimmed());
        // A quote cannot end the literal early and smuggle in a statement of its own.
        const QString hostile = QStringLiteral("x'); delete from San_Meka; --");
        insertMaker(QStringLiteral("900"), hostile);
        QCOMPARE(makerName("900"), hostile);
    }

    void transactionsCommitAndRollBackAndOnlyACommittedGuardKeepsItsWrites() {
        gCon.beginTrans();
        insertMaker(QStringLiteral("100"), QStringLiteral("残る"));
        gCon.commitTrans();
        gCon.beginTrans();
        QVERIFY(gCon.inTransaction());
        insertMaker(QStringLiteral("101"), QStringLiteral("消える"));
        gCon.execute(QStringLiteral("update San_Meka set Meka_Name = 'x' where Meka_No = '100'"));
        gCon.rollbackTrans();
        QVERIFY(!gCon.inTransaction());
        QCOMPARE(QueryCount(QStringLiteral("select * from San_Meka where Meka_No = '101'")), 0);
        QCOMPARE(makerName("100"), QStringLiteral("残る"));

        QCOMPARE(FailureNumber([] { gCon.commitTrans(); }), ErrorNumber::TransactionState);
        QCOMPARE(FailureNumber([] { gCon.rollbackTrans(); }), ErrorNumber::TransactionState);
        gCon.beginTrans();
        QCOMPARE(FailureNumber([] { gCon.beginTrans(); }), ErrorNumber::TransactionState);
        gCon.rollbackTrans();

        const struct {
            const char* name;
            std::function<void(Transaction&)> afterWrite;
            const char* kept;
        } cases[] = {
            {"an exception leaves the scope",
             [](Transaction&) { throw Failure(ErrorNumber::Unexpected, QStringLiteral("x")); }, ""},
            // A broken key; on PostgreSQL every later statement of the transaction fails too.
            {"a statement fails", [](Transaction&) { insertMaker(QStringLiteral("001")); }, ""},
            {"the connection is closed first", [](Transaction&) { gCon.close(); }, ""},
            {"the scope ends without commit", [](Transaction&) {}, ""},
            {"commit", [](Transaction& transaction) { transaction.commit(); }, "x"},
        };
        for (const auto& c : cases) {
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
            QVERIFY2(makerName("100") == QLatin1String(c.kept), c.name);
        }
    }

    void brokenKeysAndDatabasesThatCannotBeOpenedGiveTheDatabaseFailureNumber() {
        gCon.execute(QStringLiteral("insert into San_User (User_No) values (1)"));
        gCon.execute(QStringLiteral("insert into San_Uriage (Uri_UserNo, Uri_Seq, Uri_Date) "
                                    "values (1, 1, 20261122)"));
        const QList<std::pair<QString, long>> statements{
            {QStringLiteral("insert into San_User (User_No) values (1)"),
             ErrorNumber::DatabaseFailed},
            {QStringLiteral("insert into San_Meka values('001', 'x')"),
             ErrorNumber::DatabaseFailed},
            {QStringLiteral("insert into San_Uriage (Uri_UserNo, Uri_Seq, Uri_Date) "
                            "values (1, 1, 20261123)"),
             ErrorNumber::DatabaseFailed},
            {QStringLiteral("select * from NoSuchTable"), ErrorNumber::StatementFailed},
            {QString(), ErrorNumber::StatementFailed}};
        for (const auto& [sql, number] : statements)
            QCOMPARE(FailureNumber([&] { gCon.execute(sql); }), number);
        // The same sequence number under another customer is a different purchase.
        gCon.execute(QStringLiteral("insert into San_Uriage (Uri_UserNo, Uri_Seq, Uri_Date) "
                                    "values (2, 1, 20261122)"));

        const QString none = harness.path(QStringLiteral("DB/none.mdb"));
        QFile garbage(harness.path(QStringLiteral("DB/garbage.mdb")));
        QVERIFY(garbage.open(QIODevice::WriteOnly));
        garbage.write(QByteArray(4096, 'x'));
        garbage.close();
        Connection other;
        // A server nobody answers on; then files, which belong to the run on files.
        const QList<std::function<void()>> attempts{
            [&] {
                other.openServer(QStringLiteral(
                    "host=127.0.0.1 port=1 dbname=none user=none connect_timeout=2"));
            },
            [&] { other.open(none); }, [&] { other.open(garbage.fileName()); },
            [&] { other.create(harness.databaseFile()); },
            [&] {
                other.execute(QStringLiteral("select 1"));
            }};
        for (const auto& attempt : attempts.mid(0, Harness::onServer() ? 1 : attempts.size())) {
            QCOMPARE(FailureNumber(attempt), ErrorNumber::DatabaseFailed);
            QVERIFY(!other.isOpen());
        }
        QVERIFY(!QFile::exists(none));
    }
};

QTEST_MAIN(TestConnection)
#include "tst_connection.moc"
