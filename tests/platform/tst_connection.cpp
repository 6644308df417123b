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

    void rowsAreReadForwardWithFieldsByNameOrPositionAndNullKeptApart() {
        gCon.execute(QStringLiteral("delete from San_Meka"));
        insertMaker(QStringLiteral("002"), QStringLiteral("ニコン"));
        insertMaker(QStringLiteral("001"), QStringLiteral("HOYA"));

        RecordSet rows = gCon.execute(QStringLiteral("select * from san_meka order By meka_no"));
        QCOMPARE(rows.fieldCount(), 2);
        QVERIFY(!rows.eof());
        QCOMPARE(rows.field(QStringLiteral("MEKA_NO")).toString(), QStringLiteral("001"));
        QCOMPARE(rows.field(1).toString(), QStringLiteral("HOYA"));
        for (const auto& unknown : std::initializer_list<std::function<void()>>{
                 [&] { rows.field(QStringLiteral("Item_Name")); }, [&] { rows.field(2); },
                 [&] {
                     rows.field(-1);
                 }})
            QCOMPARE(failureNumber(unknown), ErrorNumber::NoSuchField);
        rows.moveNext();
        QCOMPARE(rows.field(QStringLiteral("meka_name")).toString(), QStringLiteral("ニコン"));
        rows.moveNext();
        QVERIFY(rows.eof());
        QCOMPARE(failureNumber([&] { rows.field(0); }), ErrorNumber::NoCurrentRow);
        QCOMPARE(failureNumber([&] { rows.moveNext(); }), ErrorNumber::NoCurrentRow);
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
    }

    void singleQuotesAndJapaneseAreStoredAsTyped() {
        const QString typed = QStringLiteral("  O'Neil 'の' ''眼鏡店  ");
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
        QCOMPARE(makerName("100"), QStringLiteral("残る"));

        QCOMPARE(failureNumber([] { gCon.commitTrans(); }), ErrorNumber::TransactionState);
        QCOMPARE(failureNumber([] { gCon.rollbackTrans(); }), ErrorNumber::TransactionState);
        gCon.beginTrans();
        QCOMPARE(failureNumber([] { gCon.beginTrans(); }), ErrorNumber::TransactionState);
        gCon.rollbackTrans();
    }

    void aBrokenUniqueKeyGivesTheDatabaseFailureNumberOtherErrorsTheirOwn() {
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
            QCOMPARE(failureNumber([&] { gCon.execute(sql); }), number);
        // The same sequence number under another customer is a different purchase.
        gCon.execute(QStringLiteral("insert into San_Uriage (Uri_UserNo, Uri_Seq, Uri_Date) "
                                    "values (2, 1, 20261122)"));
    }

    void databasesThatCannotBeOpenedGiveTheDatabaseFailureNumber() {
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
            QCOMPARE(failureNumber(attempt), ErrorNumber::DatabaseFailed);
            QVERIFY(!other.isOpen());
        }
        QVERIFY(!QFile::exists(none));
    }
};

QTEST_MAIN(TestConnection)
#include "tst_connection.moc"
