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

// The listed customers as the customer list hands them to printing.
using List = std::vector<ListRow>;

void addRow(List& list, const QString& name, const QString& yubin, const QString& kazok,
            bool marked, const QString& jusyo1 = QStringLiteral("札幌市中央区大通西"),
            const QString& lastVisit = QStringLiteral("2026/11/01")) {
    const ListedCustomer c{1,
                           name,
                           QStringLiteral("かな"),
                           yubin,
                           jusyo1,
                           QStringLiteral("1-2-3"),
                           QStringLiteral("011-222-3333"),
                           kazok.toInt(),
                           0,
                           QString(lastVisit).remove(QLatin1Char('/')).toLongLong()};
    list.push_back({c, c, marked});
}

List* makeList() {
    return new List;
}

QString pdfText(const QString& path) {
    QProcess extract;
    extract.start(QStringLiteral("pdftotext"),
                  {QStringLiteral("-layout"), path, QStringLiteral("-")});
    extract.waitForFinished(30000);
    return QString::fromUtf8(extract.readAllStandardOutput());
}

} // namespace

class TestPrint : public QObject {
    Q_OBJECT
    Harness harness;

    void press(const List* list, bool allCustomers, int button, const QString& question,
               int answer = Answer::Yes, const QString& failure = {}) {
        harness.msgs.expect(question, answer);
        if (!failure.isEmpty())
            harness.msgs.expectBox(failure, QString());
        FrmPrint screen(*list, allCustomers);
        harness.screens.expect<FrmPrint>([button](FrmPrint& s) {
            QTest::mouseClick(s.cmdPrint[button], Qt::LeftButton);
            QTest::mouseClick(s.cmdEnd, Qt::LeftButton);
        });
        ShowModal(screen);
    }

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void verticalPostcardsGoToTheMarkedCustomers() {
        std::unique_ptr<List> list(makeList());
        addRow(*list, QStringLiteral(" 山田 太郎 "), QStringLiteral("123-4567"),
               QStringLiteral("0"), true);
        addRow(*list, QStringLiteral("鈴木 花子"), QString(), QStringLiteral("2"), true);
        addRow(*list, QStringLiteral("佐藤 次郎"), QStringLiteral("060-0001"), QStringLiteral("2"),
               false);
        press(list.get(), true, 0, OpeQes_009);
        QCOMPARE(ReportJobs().size(), 1);
        const ReportJobRecord& job = ReportJobs().first();
        QCOMPARE(job.documentName, QStringLiteral("顧客ハガキ"));
        QCOMPARE(job.settings, QStringLiteral(" 1,9,2970,2100,,1,7,,2,1,,,0"));
        QCOMPARE(job.forms, QStringList{QStringLiteral("PrnSan001.jfm")});
        QCOMPARE(job.longOptions, (QList<std::pair<int, long>>{{6, 1}, {9, 1}}));
        QCOMPARE(job.pages.size(), 2);
        const QHash<QString, QString>& first = job.pages[0];
        QString digits;
        for (int i = 1; i <= 7; ++i)
            digits += first.value(QStringLiteral("Yubin_%1").arg(i));
        QCOMPARE(digits, QStringLiteral("1234567"));
        // The household's representative in a list of everyone: the family is addressed.
        QCOMPARE(first.value(QStringLiteral("Name")), QStringLiteral("山田 太郎"));
        QCOMPARE(first.value(QStringLiteral("Sama")), QStringLiteral("御家族様"));
        QCOMPARE(job.pages[1].value(QStringLiteral("Name")), QStringLiteral("鈴木 花子  様"));
        QVERIFY(!job.pages[1].contains(QStringLiteral("Yubin_1")));
        QVERIFY(job.ended && job.closed && !job.aborted);
        QVERIFY(QFile::exists(job.output));
        QVERIFY(job.output.startsWith(harness.path(QStringLiteral("Print/"))));
    }

    void horizontalPostcardsAndAListWithConditions() {
        std::unique_ptr<List> list(makeList());
        addRow(*list, QStringLiteral("山田 太郎"), QStringLiteral("123-4567"), QStringLiteral("0"),
               true);
        press(list.get(), false, 2, OpeQes_012);
        const ReportJobRecord& job = ReportJobs().first();
        QCOMPARE(job.forms, QStringList{QStringLiteral("PrnSan004.jfm")});
        QCOMPARE(job.pages[0].value(QStringLiteral("Yubin")), QStringLiteral("〒 123-4567"));
        // With conditions everyone is addressed by name, heads of family too.
        QCOMPARE(job.pages[0].value(QStringLiteral("Name")), QStringLiteral("山田 太郎  様"));
        QVERIFY(!job.pages[0].contains(QStringLiteral("Sama")));
        const QString text = pdfText(job.output);
        QVERIFY2(text.contains(QStringLiteral("123-4567")), qPrintable(text));
    }

    void noMarkedRowPrintsNoPostcardAndNoOpensNoJob() {
        std::unique_ptr<List> list(makeList());
        addRow(*list, QStringLiteral("山田 太郎"), QStringLiteral("123-4567"), QStringLiteral("0"),
               false);
        press(list.get(), true, 0, OpeQes_009, Answer::No);
        QCOMPARE(ReportJobs().size(), 0);
        press(list.get(), true, 0, OpeQes_009);
        QCOMPARE(ReportJobs().first().pages.size(), 0);
        QVERIFY(ReportJobs().first().ended);
    }

    void theLedgerHas36LinesAPage() {
        std::unique_ptr<List> list(makeList());
        for (int i = 1; i <= 36; ++i)
            addRow(*list, QStringLiteral("Customer%1").arg(i), QStringLiteral("060-0001"),
                   QStringLiteral("1"), i % 2 == 0);
        press(list.get(), true, 1, OpeQes_010);
        QCOMPARE(ReportJobs().last().pages.size(), 1);
        addRow(*list, QStringLiteral("Customer37"), QString(), QStringLiteral("1"), false,
               QStringLiteral(" 函館市 "), QStringLiteral("2019/07/07"));
        press(list.get(), true, 1, OpeQes_010);
        const ReportJobRecord& job = ReportJobs().last();
        QCOMPARE(job.documentName, QStringLiteral("顧客台帳"));
        QCOMPARE(job.settings, QStringLiteral("1,9,2970,2100,,1,7,,2,1,,,0"));
        QCOMPARE(job.pages.size(), 2);
        QCOMPARE(job.pages[0].value(QStringLiteral("Name_36")), QStringLiteral("Customer36"));
        QCOMPARE(job.pages[0].value(QStringLiteral("LastDate_1")), QStringLiteral("2026/11/01"));
        QCOMPARE(job.pages[1].value(QStringLiteral("Page")), QStringLiteral("2"));
        QCOMPARE(job.pages[1].value(QStringLiteral("yy")), QStringLiteral("2026"));
        QCOMPARE(job.pages[1].value(QStringLiteral("Jusyo1_1")), QStringLiteral("函館市"));
        QVERIFY(!job.pages[1].contains(QStringLiteral("Name_2")));
        // pdftotext maps some glyphs of the CJK font badly; digits and dates come back whole.
        const QString text = pdfText(job.output);
        QVERIFY2(text.contains(QStringLiteral("2019/07/07")) &&
                     text.contains(QStringLiteral("060-0001")),
                 qPrintable(text.left(400)));
        QCOMPARE(text.count(QLatin1Char('\f')), 2); // two pages
    }

    void aMissingTemplateAbortsTheDocument() {
        QVERIFY(QFile::remove(harness.path(QStringLiteral("jfm/PrnSan003.jfm"))));
        std::unique_ptr<List> list(makeList());
        addRow(*list, QStringLiteral("山田"), QString(), QStringLiteral("0"), true);
        press(list.get(), true, 1, OpeQes_010, Answer::Yes, QStringLiteral("jvSetForm Error -3"));
        const ReportJobRecord& job = ReportJobs().first();
        QVERIFY(job.aborted && job.closed && !job.ended);
        QVERIFY(QDir(harness.path(QStringLiteral("Print"))).entryList(QDir::Files).isEmpty());
    }
};

QTEST_MAIN(TestPrint)
#include "tst_print.moc"
