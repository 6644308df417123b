// The database layer: rows, fields, Null, transactions and the error numbers screens test for.
#include "frame/Globals.h"
#include "platform/Failure.h"
#include "platform/db/SqlText.h"
#include "support/Harness.h"

#include <QFile>
#include <QtTest>

namespace {

long failureNumber(const std::function<void()>& action) {
    try {
        action();
    } catch (const Failure& failure) {
        return failure.number();
    }
    return 0;
}

void insertMaker(const QString& number, const QString& name) {
    gCon.execute(QStringLiteral("insert into San_Meka values(") + SqlStr(number) +
                 QLatin1Char(',') + SqlStr(name) + QLatin1Char(')'));
}

} // namespace

class TestConnection : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void rowsAreReadForwardWithFieldsByNameOrPosition() {
        gCon.execute(QStringLiteral("delete from San_Meka"));
        insertMaker(QStringLiteral("002"), QStringLiteral("ニコン"));
        insertMaker(QStringLiteral("001"), QStringLiteral("HOYA"));

        RecordSet rows = gCon.execute(QStringLiteral("select * from san_meka order By meka_no"));
        QCOMPARE(rows.fieldCount(), 2);
        QVERIFY(!rows.eof());
        QCOMPARE(rows.field(QStringLiteral("MEKA_NO")).toString(), QStringLiteral("001"));
        QCOMPARE(rows.field(1).toString(), QStringLiteral("HOYA"));
        rows.moveNext();
        QCOMPARE(rows.field(QStringLiteral("meka_name")).toString(), QStringLiteral("ニコン"));
        rows.moveNext();
        QVERIFY(rows.eof());
        QCOMPARE(failureNumber([&] { rows.field(0); }), ErrorNumber::NoCurrentRow);
        QCOMPARE(failureNumber([&] { rows.moveNext(); }), ErrorNumber::NoCurrentRow);

        RecordSet none = gCon.execute(QStringLiteral("select * from San_Meka where Meka_No = 'x'"));
        QVERIFY(none.eof());
    }

    void unknownFieldsFail() {
        RecordSet rows = gCon.execute(QStringLiteral("select Item_No from San_Item"));
        QCOMPARE(failureNumber([&] { rows.field(QStringLiteral("Item_Name")); }),
                 ErrorNumber::NoSuchField);
        QCOMPARE(failureNumber([&] { rows.field(1); }), ErrorNumber::NoSuchField);
        QCOMPARE(failureNumber([&] { rows.field(-1); }), ErrorNumber::NoSuchField);
    }

    void nullIsKeptApartFromEmptyText() {
        gCon.execute(QStringLiteral("insert into San_User (User_No, User_Name, User_Kana) "
                                    "values (1, '', NULL)"));
        RecordSet rows = gCon.execute(QStringLiteral("select User_Name, User_Kana, User_Dlt_F, "
                                                     "User_No from San_User"));
        QVERIFY(!rows.field(0).isNull());
        QCOMPARE(rows.field(0).toString(), QString());
        QVERIFY(rows.field(1).isNull());
        QVERIFY(rows.field(QStringLiteral("user_dlt_f")).isNull());
        QCOMPARE(rows.field(3).toLongLong(), 1);

        RecordSet empty = gCon.execute(QStringLiteral("select max(User_No) from San_User "
                                                      "where User_No > 5"));
        QVERIFY(empty.field(0).isNull());
    }

    void singleQuotesAndJapaneseAreStoredAsTyped() {
        const QString typed = QStringLiteral("  O'Neil 'の' ''眼鏡店  ");
        gCon.execute(QStringLiteral("insert into San_User (User_No, User_Name) values (7, ") +
                     SqlStr(typed) + QLatin1Char(')'));
        QCOMPARE(QueryValue(QStringLiteral("select User_Name from San_User where User_No = 7"))
                     .toString(),
                 typed.trimmed());
        QCOMPARE(QueryCount(QStringLiteral("select * from San_User where User_Name = ") +
                            SqlStr(QStringLiteral("O'Neil 'の' ''眼鏡店"))),
                 1);
        // A quote cannot end the literal early and smuggle in a statement of its own.
        const QString hostile = QStringLiteral("x'); delete from San_Meka; --");
        insertMaker(QStringLiteral("900"), hostile);
        QCOMPARE(QueryValue(QStringLiteral("select Meka_Name from San_Meka where Meka_No = '900'"))
                     .toString(),
                 hostile);
        QVERIFY(QueryCount(QStringLiteral("select * from San_Meka")) > 1);
    }

    void transactionsCommitAndRollBack() {
        QVERIFY(!gCon.inTransaction());
        gCon.beginTrans();
        QVERIFY(gCon.inTransaction());
        insertMaker(QStringLiteral("100"), QStringLiteral("残る"));
        gCon.commitTrans();
        QVERIFY(!gCon.inTransaction());

        gCon.beginTrans();
        insertMaker(QStringLiteral("101"), QStringLiteral("消える"));
        gCon.execute(QStringLiteral("update San_Meka set Meka_Name = 'x' where Meka_No = '100'"));
        gCon.rollbackTrans();
        QVERIFY(!gCon.inTransaction());
        QCOMPARE(QueryCount(QStringLiteral("select * from San_Meka where Meka_No = '101'")), 0);
        QCOMPARE(QueryValue(QStringLiteral("select Meka_Name from San_Meka where Meka_No = '100'"))
                     .toString(),
                 QStringLiteral("残る"));

        QCOMPARE(failureNumber([] { gCon.commitTrans(); }), ErrorNumber::TransactionState);
        QCOMPARE(failureNumber([] { gCon.rollbackTrans(); }), ErrorNumber::TransactionState);
        gCon.beginTrans();
        QCOMPARE(failureNumber([] { gCon.beginTrans(); }), ErrorNumber::TransactionState);
        gCon.rollbackTrans();
    }

    void brokenUniqueKeysGiveTheDatabaseFailureNumber() {
        gCon.execute(QStringLiteral("insert into San_User (User_No) values (1)"));
        QCOMPARE(failureNumber([] {
                     gCon.execute(QStringLiteral("insert into San_User (User_No) values (1)"));
                 }),
                 ErrorNumber::DatabaseFailed);
        QCOMPARE(failureNumber([] { insertMaker(QStringLiteral("001"), QStringLiteral("x")); }),
                 ErrorNumber::DatabaseFailed);
        gCon.execute(QStringLiteral("insert into San_Uriage (Uri_UserNo, Uri_Seq, Uri_Date) "
                                    "values (1, 1, 20261122)"));
        QCOMPARE(failureNumber([] {
                     gCon.execute(QStringLiteral("insert into San_Uriage (Uri_UserNo, Uri_Seq, "
                                                 "Uri_Date) values (1, 1, 20261123)"));
                 }),
                 ErrorNumber::DatabaseFailed);
        // The same sequence number under another customer is a different purchase.
        gCon.execute(QStringLiteral("insert into San_Uriage (Uri_UserNo, Uri_Seq, Uri_Date) "
                                    "values (2, 1, 20261122)"));
    }

    void otherStatementErrorsHaveTheirOwnNumber() {
        QCOMPARE(failureNumber([] { gCon.execute(QStringLiteral("select * from NoSuchTable")); }),
                 ErrorNumber::StatementFailed);
        QCOMPARE(failureNumber([] { gCon.execute(QString()); }), ErrorNumber::StatementFailed);
    }

    void databasesThatCannotBeOpenedGiveTheDatabaseFailureNumber() {
        Connection other;
        // A server nobody answers on.
        QCOMPARE(failureNumber([&] {
                     other.openServer(QStringLiteral(
                         "host=127.0.0.1 port=1 dbname=none user=none connect_timeout=2"));
                 }),
                 ErrorNumber::DatabaseFailed);
        QVERIFY(!other.isOpen());
        if (Harness::onServer())
            return; // the file cases belong to the run on files
        QCOMPARE(failureNumber([&] { other.open(harness.path(QStringLiteral("DB/none.mdb"))); }),
                 ErrorNumber::DatabaseFailed);
        QVERIFY(!QFile::exists(harness.path(QStringLiteral("DB/none.mdb"))));
        QVERIFY(!other.isOpen());

        QFile garbage(harness.path(QStringLiteral("DB/garbage.mdb")));
        QVERIFY(garbage.open(QIODevice::WriteOnly));
        garbage.write(QByteArray(4096, 'x'));
        garbage.close();
        QCOMPARE(failureNumber([&] { other.open(garbage.fileName()); }),
                 ErrorNumber::DatabaseFailed);
        QVERIFY(!other.isOpen());

        QCOMPARE(failureNumber([&] { other.create(harness.databaseFile()); }),
                 ErrorNumber::DatabaseFailed);
        QCOMPARE(failureNumber([&] { other.execute(QStringLiteral("select 1")); }),
                 ErrorNumber::DatabaseFailed);
    }
};

QTEST_MAIN(TestConnection)
#include "tst_connection.moc"
