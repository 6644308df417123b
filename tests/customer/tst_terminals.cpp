// Two terminals of one shop registering at the same moment: the unique keys decide, exactly one
// registration stands, the other is told OpeErr_010 with nothing half stored.
#include "customer/FrmKokyaku.h"
#include "customer/PurchaseGrid.h"
#include "customer/UriageEntry.h"
#include "data/ShopDatabase.h"
#include "frame/Globals.h"
#include "frame/MessageCatalogue.h"
#include "platform/Failure.h"
#include "platform/controls/xDate.h"
#include "platform/controls/xField.h"
#include "platform/controls/xLabel.h"
#include "platform/db/SqlText.h"
#include "platform/ui/ShowModal.h"
#include "support/Harness.h"
#include "support/ShopData.h"

#include <QComboBox>
#include <QPushButton>
#include <QSemaphore>
#include <QThread>
#include <QtTest>

namespace {

// The other terminal: writes its row inside a transaction, lets this terminal start its own
// registration, then commits. Runs in a thread of its own with its own connection.
class OtherTerminal {
public:
    OtherTerminal(const QString& folder, std::function<QString(Connection&)> insert)
        : thread_(QThread::create([this, folder, insert] { run(folder, insert); })) {
        thread_->start();
        written_.acquire(); // the row is in, not yet committed
    }
    ~OtherTerminal() { thread_->wait(); }

    // Waits for the commit; true when the other terminal's registration stands.
    bool committed() {
        thread_->wait();
        return committed_;
    }

private:
    void run(const QString& folder, const std::function<QString(Connection&)>& insert) {
        Connection connection;
        OpenDatabaseIn(connection, folder);
        connection.beginTrans();
        connection.execute(insert(connection));
        written_.release();
        QThread::msleep(400);
        try {
            connection.commitTrans();
            committed_ = true;
        } catch (const Failure& failure) {
            committed_ = false;
            connection.rollbackTrans();
        }
    }

    std::unique_ptr<QThread> thread_;
    QSemaphore written_;
    bool committed_ = false;
};

QString nextCustomerInsert(Connection& connection) {
    const qint64 next = connection.execute(QStringLiteral("select max(User_No) from San_User"))
                            .field(0)
                            .toLongLong() +
                        1;
    return QStringLiteral("insert into San_User (User_No, User_Name) values (%1, '他端末の客')")
        .arg(next);
}

bool shown(const Harness& harness, const QString& msgCode) {
    const QString text = msgCode.mid(10);
    for (const MsgRequest& box : harness.msgs.shown())
        if (box.text == text)
            return true;
    return false;
}

} // namespace

class TestTerminals : public QObject {
    Q_OBJECT
    Harness harness;

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void twoNewCustomersAtTheSameMoment() {
        InsertCustomer({.no = 7});
        harness.msgs.expect(OpeQes_011, Answer::Yes);
        harness.msgs.expectEither(OpeInf_001, OpeErr_010);
        FrmKokyaku screen;
        bool otherStands = false;
        harness.screens.expect<FrmKokyaku>([&](FrmKokyaku& s) {
            s.txtName->setText(QStringLiteral("この端末の客"));
            OtherTerminal other(harness.folder(), nextCustomerInsert);
            QTest::keyClick(&s, Qt::Key_F5);
            otherStands = other.committed();
            if (!otherStands)
                return;
            // This terminal lost: nothing of it is stored, and F5 again takes the next number.
            QCOMPARE(s.EditMode, 0);
            harness.msgs.expect(OpeQes_011, Answer::Yes);
            harness.msgs.expect(OpeInf_001);
            QTest::keyClick(&s, Qt::Key_F5);
            QCOMPARE(s.lblNo->text(), QStringLiteral("9"));
        });
        ShowModal(screen);
        // Exactly one registration stood at number 8.
        QCOMPARE(shown(harness, OpeErr_010), otherStands);
        QCOMPARE(QueryValue(QStringLiteral("select User_Name from San_User where User_No = 8"))
                     .toString(),
                 otherStands ? QStringLiteral("他端末の客") : QStringLiteral("この端末の客"));
        QCOMPARE(QueryCount(QStringLiteral("select * from San_User")), otherStands ? 3 : 2);
        QVERIFY(!gCon.inTransaction());
    }

    void twoNewPurchasesOfOneCustomerAtTheSameMoment() {
        InsertCustomer({.no = 1});
        InsertPurchase({.user = 1, .seq = 1});
        harness.msgs.expect(OpeQes_001, Answer::Yes);
        harness.msgs.expectEither(OpeInf_001, OpeErr_010);
        FrmKokyaku screen;
        screen.setSyori(1);
        harness.screens.expect<FrmKokyaku>([&](FrmKokyaku& s) {
            UriageEntry& entry = *s.FraUriage;
            QTest::mouseClick(entry.cmdClear, Qt::LeftButton);
            entry.txtDatc->setDate(QDate(2026, 11, 22));
            entry.cboItem->setCurrentIndex(0);
            entry.cboYoto->setCurrentIndex(0);
            QTest::mouseClick(entry.cmdOk, Qt::LeftButton);
            OtherTerminal other(harness.folder(), [](Connection&) {
                return QStringLiteral("insert into San_Uriage (Uri_UserNo, Uri_Seq, Uri_Date) "
                                      "values (1, 2, 20261122)");
            });
            QTest::keyClick(&s, Qt::Key_F5);
            QVERIFY(other.committed());
            // On a server both take number 2 and this one is refused; a file's write lock makes
            // this one wait and take number 3. Refused, nothing of it is stored: F5 again.
            if (!shown(harness, OpeErr_010))
                return;
            QCOMPARE(QueryCount(QStringLiteral("select * from San_Uriage where Uri_UserNo = 1")),
                     2);
            QVERIFY(s.spdData->hasMarkedLines());
            harness.msgs.expect(OpeQes_001, Answer::Yes);
            harness.msgs.expect(OpeInf_001);
            QTest::keyClick(&s, Qt::Key_F5);
        });
        ShowModal(screen);
        RecordSet rows = gCon.execute(
            QStringLiteral("select Uri_Seq from San_Uriage where Uri_UserNo = 1 order by Uri_Seq"));
        QList<int> seqs;
        for (; !rows.eof(); rows.moveNext())
            seqs << rows.field(0).toInt();
        QCOMPARE(seqs, (QList<int>{1, 2, 3}));
    }
};

QTEST_MAIN(TestTerminals)
#include "tst_terminals.moc"
