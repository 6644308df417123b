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

namespace {

void insertMaker(const QString& number, const QString& name = u"x"_s) {
    gCon.execute(u"insert into San_Meka values("_s + SqlStr(number) + QLatin1Char(',') +
                 SqlStr(name) + QLatin1Char(')'));
}

QString makerName(const char* number) {
    return QueryValue(u"select Meka_Name from San_Meka where Meka_No = '%1'"_s.arg(
                          QString::fromLatin1(number)))
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
        gCon.execute(u"delete from San_Meka"_s);
        insertMaker(u"002"_s, u"ニコン"_s);
        insertMaker(u"001"_s, u"HOYA"_s);

        RecordSet rows = gCon.execute(u"select * from san_meka order By meka_no"_s);
        QCOMPARE(rows.field(u"MEKA_NO"_s).toString() + rows.field(1).toString(), u"001HOYA"_s);
        QCOMPARE(FailureNumber([&] { rows.field(u"Item_Name"_s); }), ErrorNumber::NoSuchField);
        for (int position : {2, -1})
            QCOMPARE(FailureNumber([&] { rows.field(position); }), ErrorNumber::NoSuchField);
        rows.moveNext();
        QCOMPARE(rows.field(u"meka_name"_s).toString(), u"ニコン"_s);
        rows.moveNext();
        QVERIFY(rows.eof());
        QCOMPARE(FailureNumber([&] { rows.field(0); }), ErrorNumber::NoCurrentRow);
        QCOMPARE(FailureNumber([&] { rows.moveNext(); }), ErrorNumber::NoCurrentRow);
        QVERIFY(gCon.execute(u"select * from San_Meka where Meka_No = 'x'"_s).eof());

        gCon.execute(u"insert into San_User (User_No, User_Name, User_Kana) "
                     "values (1, '', NULL)"_s);
        RecordSet user =
            gCon.execute(u"select User_Name, User_Kana, User_Dlt_F, User_No from San_User"_s);
        QVERIFY(!user.field(0).isNull() && user.field(0).toString().isEmpty());
        QVERIFY(user.field(1).isNull() && user.field(u"user_dlt_f"_s).isNull());
        QCOMPARE(user.field(3).toLongLong(), 1);
        QVERIFY(QueryValue(u"select max(User_No) from San_User where User_No > 5"_s).isNull());

        // Quotes, a backslash and the word like in a text are text on both engines.
        const QString typed = u"  O'Neil 'の' ''眼鏡店 like \\ "_s;
        gCon.execute(u"insert into San_User (User_No, User_Name) values (7, "_s + SqlStr(typed) +
                     QLatin1Char(')'));
        QCOMPARE(QueryValue(u"select User_Name from San_User where User_No = 7"_s).toString(),
                 typed.trimmed());
        // A quote cannot end the literal early and smuggle in a statement of its own.
        const QString hostile = u"x'); delete from San_Meka; --"_s;
        insertMaker(u"900"_s, hostile);
        QCOMPARE(makerName("900"), hostile);
    }

    void transactionsCommitAndRollBackAndOnlyACommittedGuardKeepsItsWrites() {
        gCon.beginTrans();
        insertMaker(u"100"_s, u"残る"_s);
        gCon.commitTrans();
        gCon.beginTrans();
        QVERIFY(gCon.inTransaction());
        insertMaker(u"101"_s, u"消える"_s);
        gCon.execute(u"update San_Meka set Meka_Name = 'x' where Meka_No = '100'"_s);
        gCon.rollbackTrans();
        QVERIFY(!gCon.inTransaction());
        QCOMPARE(QueryCount(u"select * from San_Meka where Meka_No = '101'"_s), 0);
        QCOMPARE(makerName("100"), u"残る"_s);

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
             [](Transaction&) { throw Failure(ErrorNumber::Unexpected, u"x"_s); }, ""},
            // A broken key; on PostgreSQL every later statement of the transaction fails too.
            {"a statement fails", [](Transaction&) { insertMaker(u"001"_s); }, ""},
            {"the connection is closed first", [](Transaction&) { gCon.close(); }, ""},
            {"the scope ends without commit", [](Transaction&) {}, ""},
            {"commit", [](Transaction& transaction) { transaction.commit(); }, "x"},
        };
        for (const auto& c : cases) {
            gCon.execute(u"delete from San_Meka where Meka_No = '100'"_s);
            try {
                Transaction transaction(gCon);
                insertMaker(u"100"_s);
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
        const QString purchase =
            u"insert into San_Uriage (Uri_UserNo, Uri_Seq, Uri_Date) values "_s;
        gCon.execute(u"insert into San_User (User_No) values (1)"_s);
        gCon.execute(purchase + u"(1, 1, 20261122)"_s);
        const QList<std::pair<QString, long>> statements{
            {u"insert into San_User (User_No) values (1)"_s, ErrorNumber::DatabaseFailed},
            {u"insert into San_Meka values('001', 'x')"_s, ErrorNumber::DatabaseFailed},
            {purchase + u"(1, 1, 20261123)"_s, ErrorNumber::DatabaseFailed},
            {u"select * from NoSuchTable"_s, ErrorNumber::StatementFailed},
            {QString(), ErrorNumber::StatementFailed}};
        for (const auto& [sql, number] : statements)
            QCOMPARE(FailureNumber([&] { gCon.execute(sql); }), number);
        // The same sequence number under another customer is a different purchase.
        gCon.execute(purchase + u"(2, 1, 20261122)"_s);

        const QString none = harness.path(u"DB/none.mdb"_s),
                      noServer = u"host=127.0.0.1 port=1 dbname=none user=none connect_timeout=2"_s;
        const QString garbage = WriteFile(harness.path(u"DB/garbage.mdb"_s), QByteArray(4096, 'x'));
        Connection other;
        // A server nobody answers on; then files, which belong to the run on files.
        const QList<std::function<void()>> attempts{
            [&] { other.openServer(noServer); }, [&] { other.open(none); },
            [&] { other.open(garbage); }, [&] { other.create(harness.databaseFile()); },
            [&] {
                other.execute(u"select 1"_s);
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
