// Printing from the customer list: the pages and fields each job produced, and the PDF itself.
#include "data/SettingStore.h"
#include "domain/Household.h"
#include "frame/MessageCatalogue.h"
#include "platform/report/Report.h"
#include "platform/ui/ShowModal.h"
#include "print/FrmPrint.h"
#include "support/Harness.h"

#include <QCheckBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QPushButton>
#include <QtTest>

namespace {

ListRow row(const QString& name, const QString& yubin, int kazok, bool marked,
            const QString& jusyo1 = QStringLiteral("札幌市"), qint64 lastVisit = 20261101,
            const QString& jusyo2 = {}, const QString& tel = {}) {
    const ListedCustomer c{1, name, {}, yubin, jusyo1, jusyo2, tel, kazok, 0, lastVisit};
    return {c, c, marked};
}

// A household at one address and telephone number.
ListRow member(const char* name, int kazok, bool marked, const char* tel = "011-222-3333") {
    return row(QString::fromUtf8(name), QStringLiteral("060-0042"), kazok, marked,
               QStringLiteral("札幌市北区北七条西５－６－７"), 20261101,
               QStringLiteral("メゾン北七条２０１"), QString::fromUtf8(tel));
}

// Real names (2 to 20 characters) and addresses (up to 50 and 50 characters, numbers with
// －, buildings with 号室) that must print whole.
const char* const Names[] = {"森 環",
                             "佐藤 由美子",
                             "長谷川美智子",
                             "勅使河原 左衛門三郎",
                             "ｻﾄｳ ﾀﾛｳ",
                             "O'Neil Mary",
                             "小鳥遊 ちょっぴ",
                             "勅使河原 左衛門三郎太郎兵衛之助",
                             "西園寺公望之介右衛門三郎左衛門尉"};
const char* const Addresses[][2] = {
    {"北海道札幌市中央区北一条西二十丁目１２－３４ サンハイツ札幌駅前１０２号室", ""},
    {"東京都千代田区千代田１－１", "皇居外苑マンション１０１号室"},
    {"北海道札幌市中央区北一条西二十丁目12-34-567", "グランドメゾン札幌ABCタワー１５０１号室"},
    {"鹿児島県鹿児島郡三島村大字硫黄島字長浜一〇三番地の二十七号 ふるさと会館内",
     "鹿児島県鹿児島郡三島村大字硫黄島字長浜一〇三番地 ちょっとした別館ホテル１０号室"},
    {"愛知県名古屋市中村区名駅南一丁目２７番２号日本生命笹島ビル１７階総合受付センター",
     "京都府京都市下京区烏丸通七条下る東塩小路町７２１－１ 京都タワービル東館１２３号室"}};

// What drew a field of a page, as one text without blanks, in compatibility form (full-width
// digits and hyphens as ASCII), so that nothing lost goes unnoticed.
QString drawnText(const QList<DrawnText>& page, const QString& field) {
    QString text;
    for (const DrawnText& run : page)
        if (run.field == field)
            text += run.text;
    return text.normalized(QString::NormalizationForm_KC)
        .remove(QRegularExpression(QStringLiteral("\\s")));
}

QString plain(const QString& value) {
    return value.normalized(QString::NormalizationForm_KC)
        .remove(QRegularExpression(QStringLiteral("\\s")));
}

// Every glyph inside its field and the page, at the field's floor or above, no two fields
// over each other; whole texts when digits stay digits.
void checkLayout(const QString& folder, const ReportJobRecord& job, bool wholeTexts) {
    FormTemplate form;
    QString error;
    QVERIFY(LoadFormTemplate(folder + QStringLiteral("/jfm/") + job.forms.last(), form, &error));
    QHash<QString, double> floors;
    for (const FormItem& item : form.items)
        floors.insert(item.name, item.minPoints);
    const auto inside = [](const QRectF& outer, const QRectF& r) {
        return r.adjusted(1e-3, 1e-3, -1e-3, -1e-3).intersected(outer) ==
               r.adjusted(1e-3, 1e-3, -1e-3, -1e-3);
    };
    for (qsizetype p = 0; p < job.drawn.size(); ++p) {
        const QList<DrawnText>& page = job.drawn[p];
        for (const DrawnText& run : page) {
            if (run.field.isEmpty())
                continue;
            const QString where = QStringLiteral("page %1 %2 %3").arg(p).arg(run.field, run.text);
            QVERIFY2(inside(job.fieldBoxes.value(run.field), run.box), qPrintable(where));
            QVERIFY2(inside(QRectF(QPointF(), job.pageSizes[p]), run.box), qPrintable(where));
            QVERIFY2(run.points >= floors.value(run.field), qPrintable(where));
            for (const DrawnText& other : page)
                if (other.field != run.field && !other.field.isEmpty() &&
                    other.box.adjusted(1e-3, 1e-3, -1e-3, -1e-3).intersects(run.box))
                    QFAIL(qPrintable(where + QStringLiteral(" over ") + other.field));
        }
        for (auto it = job.pages[p].cbegin(); wholeTexts && it != job.pages[p].cend(); ++it)
            if (it.key() != QLatin1String("Sama"))
                QCOMPARE(drawnText(page, it.key()),
                         plain(it.value() + job.pages[p].value(it.key() == QLatin1String("Name")
                                                                   ? QStringLiteral("Sama")
                                                                   : QString())));
    }
}

// One field of one page of a job.
QString field(const ReportJobRecord& job, int page, const char* name) {
    return job.pages[page].value(QString::fromLatin1(name));
}

} // namespace

class TestPrint : public QObject {
    Q_OBJECT
    Harness harness;

    // Presses one of the three print buttons and answers its question; a document with pages
    // says where its PDF went.
    void press(const std::vector<ListRow>& list, bool allCustomers, int button,
               int answer = Answer::Yes, const QString& failure = {},
               const std::function<void(FrmPrint&)>& choose = {}) {
        const QString questions[] = {OpeQes_009, OpeQes_010, OpeQes_012};
        harness.msgs.expect(questions[button], answer);
        if (!failure.isEmpty())
            harness.msgs.expectBox(failure, QString());
        const bool pages = answer == Answer::Yes && failure.isEmpty() &&
                           (button == 1 ? !list.empty()
                                        : std::any_of(list.begin(), list.end(),
                                                      [](const ListRow& r) { return r.marked; }));
        if (pages)
            harness.msgs.expectBoxStartingWith(QStringLiteral("ＰＤＦファイルに出力しました。\r") +
                                                   harness.path(QStringLiteral("Print/")),
                                               QStringLiteral("印刷選択"));
        FrmPrint screen(list, allCustomers);
        if (choose)
            choose(screen);
        screen.cmdPrint[button]->click();
        if (pages)
            QVERIFY(harness.msgs.shown().last().text.endsWith(ReportJobs().last().output));
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
        QVERIFY(QFile::remove(harness.installPath(QStringLiteral("jfm/PrnSan003.jfm"))));
        press(list, true, 1, Answer::Yes, QStringLiteral("jvSetForm Error -3"));
        QVERIFY(ReportJobs().last().aborted && ReportJobs().last().closed);
        QVERIFY(!ReportJobs().last().ended);
        QCOMPARE(QDir(harness.path(QStringLiteral("Print"))).entryList(QDir::Files).size(), 2);
    }

    // Long names and addresses print whole inside their fields on the cards and the ledger, in
    // either way of writing numbers; the name's 様 stays in the name's column or line.
    void longNamesAndAddressesPrintWhole() {
        std::vector<ListRow> list;
        for (const char* name : Names)
            for (const auto& address : Addresses)
                list.push_back(row(QString::fromUtf8(name), QStringLiteral("060-0042"), 2, true,
                                   QString::fromUtf8(address[0]), 20261101,
                                   QString::fromUtf8(address[1]), QStringLiteral("011-222-3333")));
        for (const bool kanji : {false, true})
            for (const int button : {0, 2, 1}) {
                press(list, false, button, Answer::Yes, {},
                      [&](FrmPrint& s) { s.chkKansuji->setChecked(kanji); });
                const ReportJobRecord& job = ReportJobs().last();
                QCOMPARE(job.drawn.size(), button == 1 ? 2 : qsizetype(list.size()));
                checkLayout(harness.installFolder(), job, !kanji);
                if (button == 1)
                    continue;
                for (const QList<DrawnText>& page : job.drawn) {
                    const auto first = std::find_if(page.begin(), page.end(), [](auto& r) {
                        return r.field == QLatin1String("Name");
                    });
                    const DrawnText& sama = *std::find_if(page.begin(), page.end(), [](auto& r) {
                        return r.text == QStringLiteral("様");
                    });
                    QCOMPARE(sama.field, QStringLiteral("Name"));
                    QCOMPARE(button == 0 ? sama.box.x() : sama.box.y(),
                             button == 0 ? first->box.x() : first->box.y());
                }
            }
    }

    // Lines break at a blank before the building, then where a number starts or ends, never
    // inside a number with its unit; what cannot break gets smaller, below the floor if it must.
    // Vertical numbers are full-width or kanji numerals (十 for 10 to 19).
    void linesBreakAtNaturalPlaces() {
        const QString address = QStringLiteral(
            "北海道札幌市中央区北一条西二十丁目１２－３４ サンハイツ札幌駅前１０２号室");
        const struct {
            QString text;
            double ems; // the field's width in ems of 12 points
            QString lines;
            bool shrunk;
        } cases[] = {
            {address, 30,
             QStringLiteral(
                 "北海道札幌市中央区北一条西二十丁目１２－３４|サンハイツ札幌駅前１０２号室"),
             false},
            {address, 20,
             QStringLiteral(
                 "北海道札幌市中央区北一条西二十丁目|１２－３４ サンハイツ札幌駅前１０２号室"),
             false},
            {QStringLiteral("札幌市１２３４５６７８９０号"), 8,
             QStringLiteral("札幌市|１２３４５６７８９０号"), true},
            {QStringLiteral("ガーデンコート"), 3, QStringLiteral("ガーデ|ンコー|ト"), false},
        };
        for (const auto& c : cases) {
            FormItem item;
            item.w = c.ems * EmMm(12) + 0.01, item.h = 60, item.points = item.minPoints = 12;
            const SetText set = SetFieldText(item, c.text, VerticalDigits::FullWidth);
            QMap<double, QString> lines;
            for (const SetGlyph& glyph : set.glyphs)
                lines[glyph.box.y()] += glyph.text;
            QCOMPARE(lines.values().join(u'|'), c.lines);
            QCOMPARE(set.points < 12, c.shrunk);
        }
        const char* const numbers[][3] = {{"12", "十二", "１２"},
                                          {"10", "十", "１０"},
                                          {"102", "一〇二", "１０２"},
                                          {"２０", "二〇", "２０"},
                                          {"7", "七", "７"}};
        for (const auto& n : numbers) {
            QCOMPARE(VerticalNumber(QString::fromUtf8(n[0]), VerticalDigits::Kanji),
                     QString::fromUtf8(n[1]));
            QCOMPARE(VerticalNumber(QString::fromUtf8(n[0]), VerticalDigits::FullWidth),
                     QString::fromUtf8(n[2]));
        }
    }

    // Household cards: one per household, its members as the family list groups them, the
    // representative first (on the right of a vertical card), the family name once, each with
    // his own 様; more than four members are written to all at once.
    void oneCardPerHousehold() {
        const std::vector<ListRow> list{member("山田 花子", 1, false),
                                        member("山田 一郎", 0, true),
                                        member("山田 健太", 1, true),
                                        member("山田 次郎", 3, false),
                                        member("森 環", 2, true, "011-999-0000"),
                                        member("鈴木 一", 0, true, "022"),
                                        member("鈴木 二", 1, true, "022"),
                                        member("鈴木 三", 1, true, "022"),
                                        member("鈴木 四", 1, true, "022"),
                                        member("鈴木 五", 1, true, "022")};
        QCOMPARE(MarkedHouseholds(list).size(), 3u);
        press(list, true, 0, Answer::Yes, {}, [](FrmPrint& s) { s.chkRenmei->setChecked(true); });
        const ReportJobRecord& job = ReportJobs().last();
        QCOMPARE(job.pages.size(), 3);
        checkLayout(harness.installFolder(), job, false);
        QList<double> samaColumns;
        double familyName = 0;
        for (const DrawnText& run : job.drawn[0]) {
            if (run.text == QStringLiteral("様"))
                samaColumns << run.box.x();
            if (run.text == QStringLiteral("山"))
                familyName = run.box.x();
        }
        QCOMPARE(samaColumns.size(), 3);
        QVERIFY(samaColumns[0] > samaColumns[1] && samaColumns[1] > samaColumns[2]);
        QCOMPARE(familyName, samaColumns[0]);
        QCOMPARE(drawnText(job.drawn[0], QStringLiteral("Name")),
                 QStringLiteral("山田一郎様花子様健太様"));
        QCOMPARE(field(job, 1, "Name"), QStringLiteral("森 環  様"));
        QCOMPARE(field(job, 2, "Name") + field(job, 2, "Sama"), QStringLiteral("鈴木 一御一同様"));
    }

    // The printer's offset is kept in the database and moves everything printed; the postal
    // code's boxes are printed in vermilion only on plain paper.
    void offsetAndPostalCodeBoxes() {
        const std::vector<ListRow> list{member("山田 一郎", 2, true)};
        press(list, false, 0, Answer::Yes, {}, [](FrmPrint& s) {
            s.txtOffsetX->setValue(10);
            s.txtOffsetY->setValue(-1.5);
        });
        QCOMPARE(SettingStore::ReadPrintOffset().x, 10.0);
        QCOMPARE(SettingStore::ReadPrintOffset().y, -1.5);
        press(list, false, 0, Answer::Yes, {}, [](FrmPrint& s) {
            QCOMPARE(s.txtOffsetX->value(), 10.0);
            s.txtOffsetX->setValue(0);
            s.txtOffsetY->setValue(0);
            s.chkYubinWaku->setChecked(true);
        });
        // The same card rendered: moved 10 mm to the right (39 pixels at 100 dpi), and with
        // red boxes only the second time.
        QList<QImage> images;
        for (int job : {0, 1}) {
            const QString png = harness.path(QStringLiteral("card%1").arg(job));
            QProcess::execute(QStringLiteral("pdftoppm"),
                              {QStringLiteral("-r"), QStringLiteral("100"), QStringLiteral("-png"),
                               QStringLiteral("-singlefile"), ReportJobs()[job].output, png});
            images << QImage(png + QStringLiteral(".png"));
        }
        // The leftmost pixel of black ink or of vermilion, -1 when there is none.
        const auto leftmostInk = [](const QImage& image, bool red) {
            for (int x = 0; x < image.width(); ++x)
                for (int y = 0; y < image.height(); ++y) {
                    const QColor c = image.pixelColor(x, y);
                    if (red ? c.red() > 180 && c.green() < 140 : c.red() < 100 && c.green() < 100)
                        return x;
                }
            return -1;
        };
        QVERIFY(!images[0].isNull() && !images[1].isNull());
        QVERIFY(std::abs(leftmostInk(images[0], false) - leftmostInk(images[1], false) - 39) <= 1);
        QCOMPARE(leftmostInk(images[0], true), -1);
        QVERIFY(leftmostInk(images[1], true) > 0);
    }
};

QTEST_MAIN(TestPrint)
#include "tst_print.moc"
