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

using namespace Qt::StringLiterals;

class TestConnection : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void rowsAreReadForwardNullIsKeptApartAndTextIsStoredAsTyped() {
        // Quotes, a backslash and the word like are text on both engines; a quote cannot end the
        // literal early and smuggle in a statement of its own.
        const QString typed = u"  O'Neil 'の' ''眼鏡店 like \\ x'); delete from San_Meka; -- "_s;
        gCon.execute(u"insert into San_Meka values('000', "_s + SqlStr(typed) + u")"_s);
        RecordSet rows =
            gCon.execute(u"select * from san_meka where Meka_No < '002' order By meka_no"_s);
        QCOMPARE(rows.field(u"MEKA_NO"_s).toString() + rows.field(1).toString(),
                 u"000"_s + typed.trimmed());
        QCOMPARE(FailureNumber([&] { rows.field(u"Item_Name"_s); }), ErrorNumber::NoSuchField);
        for (int position : {2, -1})
            QCOMPARE(FailureNumber([&] { rows.field(position); }), ErrorNumber::NoSuchField);
        rows.moveNext();
        QCOMPARE(rows.field(u"meka_name"_s).toString(), u"HOYA"_s);
        rows.moveNext();
        QVERIFY(rows.eof());
        QCOMPARE(FailureNumber([&] { rows.field(0); }), ErrorNumber::NoCurrentRow);
        QCOMPARE(FailureNumber([&] { rows.moveNext(); }), ErrorNumber::NoCurrentRow);
        QVERIFY(gCon.execute(u"select * from San_Meka where Meka_No = 'x'"_s).eof());

        gCon.execute(u"insert into San_User (User_No, User_Name, User_Kana) "
                     "values (1, '', NULL)"_s);
        RecordSet user = gCon.execute(u"select User_Name, User_Kana, User_Dlt_F from San_User"_s);
        QVERIFY(!user.field(0).isNull() && user.field(0).toString().isEmpty());
        QVERIFY(user.field(1).isNull() && user.field(u"user_dlt_f"_s).isNull());
    }

    // Only a committed guard keeps its writes (a new row and a changed one); each other way out
    // of its scope rolls them back and leaves the connection out of the transaction.
    void transactionsCommitAndRollBackAndOnlyACommittedGuardKeepsItsWrites() {
        QCOMPARE(FailureNumber([] { gCon.commitTrans(); }), ErrorNumber::TransactionState);
        QCOMPARE(FailureNumber([] { gCon.rollbackTrans(); }), ErrorNumber::TransactionState);
        gCon.beginTrans();
        QCOMPARE(FailureNumber([] { gCon.beginTrans(); }), ErrorNumber::TransactionState);
        gCon.rollbackTrans();

        // How the scope is left after the writes, and how many of the two rows written are kept.
        const std::tuple<const char*, std::function<void(Transaction&)>, int> cases[] = {
            {"an exception leaves the scope",
             [](Transaction&) { throw Failure(ErrorNumber::Unexpected, u"x"_s); }, 0},
            // A broken key; on PostgreSQL every later statement of the transaction fails too.
            {"a statement fails",
             [](Transaction&) { gCon.execute(u"insert into San_Meka values('001', 'x')"_s); }, 0},
            {"the connection is closed first", [](Transaction&) { gCon.close(); }, 0},
            {"the scope ends without commit", [](Transaction&) {}, 0},
            {"commit", [](Transaction& transaction) { transaction.commit(); }, 2},
        };
        for (const auto& [name, afterWrite, kept] : cases) {
            try {
                Transaction transaction(gCon);
                gCon.execute(u"insert into San_Meka values('100', 'y')"_s);
                gCon.execute(u"update San_Meka set Meka_Name = 'y' where Meka_No = '001'"_s);
                afterWrite(transaction);
            } catch (const Failure&) {
            }
            if (!gCon.isOpen())
                OpenDatabase();
            QVERIFY2(!gCon.inTransaction(), name);
            // Also shows the connection takes statements again.
            QVERIFY2(QueryCount(u"select * from San_Meka where Meka_Name = 'y'"_s) == kept, name);
        }
    }

    void brokenKeysAndDatabasesThatCannotBeOpenedGiveTheDatabaseFailureNumber() {
        const QString purchase =
            u"insert into San_Uriage (Uri_UserNo, Uri_Seq, Uri_Date) values "_s;
        gCon.execute(u"insert into San_User (User_No) values (1)"_s);
        gCon.execute(purchase + u"(1, 1, 20261122)"_s);
        const QList<std::pair<QString, long>> statements{
            {u"insert into San_User (User_No) values (1)"_s, ErrorNumber::DatabaseFailed},
            {purchase + u"(1, 1, 20261123)"_s, ErrorNumber::DatabaseFailed},
            {u"select * from NoSuchTable"_s, ErrorNumber::StatementFailed},
            {QString(), ErrorNumber::StatementFailed}};
        for (const auto& [sql, number] : statements)
            QCOMPARE(FailureNumber([&] { gCon.execute(sql); }), number);
        // The same sequence number under another customer is a different purchase.
        gCon.execute(purchase + u"(2, 1, 20261122)"_s);

        const QString none = harness.path(u"DB/none.mdb"_s);
        const QString garbage = WriteFile(harness.path(u"DB/garbage.mdb"_s), QByteArray(4096, 'x'));
        Connection other;
        // A server nobody answers on; then files, which belong to the run on files.
        const QList<std::function<void()>> attempts{
            [&] { other.openServer(u"host=127.0.0.1 port=1 dbname=none connect_timeout=2"_s); },
            [&] { other.open(none); },
            [&] { other.open(garbage); },
            [&] { other.create(harness.databaseFile()); },
            [&] { other.execute(u"select 1"_s); },
        };
        for (const auto& attempt : attempts.mid(0, Harness::onServer() ? 1 : attempts.size())) {
            QCOMPARE(FailureNumber(attempt), ErrorNumber::DatabaseFailed);
            QVERIFY(!other.isOpen());
        }
        QVERIFY(!QFile::exists(none));
    }
};

QTEST_MAIN(TestConnection)
#include "tst_connection.moc"
