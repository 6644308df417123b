// Printing from the customer list: the pages and fields each job produced, and the PDF itself.
#include "frame/MessageCatalogue.h"
#include "platform/report/Report.h"
#include "platform/ui/ShowModal.h"
#include "print/FrmPrint.h"
#include "support/Harness.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QPushButton>
#include <QtTest>

namespace {

ListRow row(const QString& name, const QString& yubin, int kazok, bool marked,
            const QString& jusyo1 = QStringLiteral("札幌市"), qint64 lastVisit = 20261101) {
    const ListedCustomer c{1, name, {}, yubin, jusyo1, {}, {}, kazok, 0, lastVisit};
    return {c, c, marked};
}

// One field of one page of a job.
QString field(const ReportJobRecord& job, int page, const char* name) {
    return job.pages[page].value(QString::fromLatin1(name));
}

} // namespace

class TestPrint : public QObject {
    Q_OBJECT
    Harness harness;

    // Presses one of the three print buttons and answers its question.
    void press(const std::vector<ListRow>& list, bool allCustomers, int button,
               int answer = Answer::Yes, const QString& failure = {}) {
        const QString questions[] = {OpeQes_009, OpeQes_010, OpeQes_012};
        harness.msgs.expect(questions[button], answer);
        if (!failure.isEmpty())
            harness.msgs.expectBox(failure, QString());
        FrmPrint(list, allCustomers).cmdPrint[button]->click();
    }

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    // Postcards go to the marked customers, none when none is marked, nothing at all on No. A
    // household's representative in a list of everyone is written to as the family; with
    // conditions everyone is addressed by name.
    void postcards() {
        const std::vector<ListRow> list{
            row(QStringLiteral(" 山田 太郎 "), QStringLiteral("123-4567"), 0, true),
            row(QStringLiteral("鈴木 花子"), QString(), 2, true),
            row(QStringLiteral("佐藤 次郎"), QStringLiteral("060-0001"), 2, false)};
        press(list, true, 0, Answer::No);
        QVERIFY(ReportJobs().isEmpty());
        press({list[2]}, true, 0);
        QVERIFY(ReportJobs()[0].pages.isEmpty() && ReportJobs()[0].ended);
        press(list, true, 0);
        press(list, false, 2);
        const ReportJobRecord& vertical = ReportJobs()[1];
        const ReportJobRecord& horizontal = ReportJobs()[2];
        QCOMPARE(vertical.forms, QStringList{QStringLiteral("PrnSan001.jfm")});
        QCOMPARE(horizontal.forms, QStringList{QStringLiteral("PrnSan004.jfm")});
        QCOMPARE(vertical.pages.size(), 2);
        QCOMPARE(horizontal.pages.size(), 2);
        QString digits;
        for (int i = 1; i <= 7; ++i)
            digits += vertical.pages[0].value(QStringLiteral("Yubin_%1").arg(i));
        QCOMPARE(digits, QStringLiteral("1234567"));
        QCOMPARE(field(horizontal, 0, "Yubin"), QStringLiteral("〒 123-4567"));
        QVERIFY(!vertical.pages[1].contains(QStringLiteral("Yubin_1")));
        QVERIFY(!horizontal.pages[1].contains(QStringLiteral("Yubin")));
        QCOMPARE(field(vertical, 0, "Name"), QStringLiteral("山田 太郎"));
        QCOMPARE(field(vertical, 0, "Sama"), QStringLiteral("御家族様"));
        QCOMPARE(field(vertical, 1, "Name"), QStringLiteral("鈴木 花子  様"));
        QCOMPARE(field(horizontal, 0, "Name"), QStringLiteral("山田 太郎  様"));
        QVERIFY(!horizontal.pages[0].contains(QStringLiteral("Sama")));
    }

    // The screen is worked with the keys: the focused button shows its focus from the start,
    // and Esc closes the screen as "閉じる" does, printing nothing.
    void theFocusShowsAndEscCloses() {
        FrmPrint print({row(QStringLiteral("山田"), QString(), 0, true)}, true);
        harness.screens.expect<FrmPrint>([](FrmPrint& s) {
            QCOMPARE(s.focusWidget(), s.cmdPrint[0]);
            const QImage focused = s.cmdPrint[0]->grab().toImage();
            s.cmdPrint[1]->setFocus(Qt::OtherFocusReason);
            QVERIFY(s.cmdPrint[0]->grab().toImage() != focused);
            QTest::keyClick(&s, Qt::Key_Escape);
            QVERIFY(!s.isVisible());
        });
        QCOMPARE(ShowModal(print), int(QDialog::Accepted));
        QVERIFY(ReportJobs().isEmpty());
    }

    // The ledger lists every customer, marked or not, 36 lines a page. Without its template the
    // document is aborted and no file is left.
    void theLedgerHas36LinesAPage() {
        std::vector<ListRow> list;
        for (int i = 1; i <= 36; ++i)
            list.push_back(row(QStringLiteral("Customer%1").arg(i), QStringLiteral("060-0001"), 1,
                               i % 2 == 0));
        press(list, true, 1);
        QCOMPARE(ReportJobs().last().pages.size(), 1);
        list.push_back(row(QStringLiteral("Customer37"), QString(), 1, false,
                           QStringLiteral(" 函館市 "), 20190707));
        press(list, true, 1);
        const ReportJobRecord& job = ReportJobs().last();
        QCOMPARE(job.forms, QStringList{QStringLiteral("PrnSan003.jfm")});
        QCOMPARE(job.pages.size(), 2);
        QCOMPARE(field(job, 0, "Name_36"), QStringLiteral("Customer36"));
        QCOMPARE(field(job, 1, "Name_1"), QStringLiteral("Customer37"));
        QCOMPARE(field(job, 1, "Page"), QStringLiteral("2"));
        QCOMPARE(field(job, 1, "yy"), QStringLiteral("2026"));
        QCOMPARE(field(job, 1, "Jusyo1_1"), QStringLiteral("函館市"));
        QVERIFY(!job.pages[1].contains(QStringLiteral("Name_2")));
        QVERIFY(job.ended && job.closed && !job.aborted);
        // pdftotext maps some glyphs of the CJK font badly; digits and dates come back whole.
        QProcess extract;
        extract.start(QStringLiteral("pdftotext"), {job.output, QStringLiteral("-")});
        extract.waitForFinished(30000);
        const QString text = QString::fromUtf8(extract.readAllStandardOutput());
        QVERIFY2(text.contains(QStringLiteral("2019/07/07")) &&
                     text.contains(QStringLiteral("060-0001")),
                 qPrintable(text.left(400)));
        QCOMPARE(text.count(QLatin1Char('\f')), 2);
        QVERIFY(QFile::remove(harness.path(QStringLiteral("jfm/PrnSan003.jfm"))));
        press(list, true, 1, Answer::Yes, QStringLiteral("jvSetForm Error -3"));
        QVERIFY(ReportJobs().last().aborted && ReportJobs().last().closed);
        QVERIFY(!ReportJobs().last().ended);
        QCOMPARE(QDir(harness.path(QStringLiteral("Print"))).entryList(QDir::Files).size(), 2);
    }
};

QTEST_MAIN(TestPrint)
#include "tst_print.moc"
