// Printing from the customer list: the pages and fields each job produced, and the PDF itself.
#include "data/SettingStore.h"
#include "frame/MessageCatalogue.h"
#include "platform/report/Report.h"
#include "platform/ui/ShowModal.h"
#include "print/FrmPrint.h"
#include "support/Controls.h"
#include "support/Harness.h"
#include "support/Papers.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

ListRow row(const QString& name, const QString& yubin, int kazok, bool marked,
            const QString& jusyo1 = u"札幌市"_s, qint64 lastVisit = 20261101,
            const QString& jusyo2 = {}, const QString& tel = {}) {
    const ListedCustomer c{1, name, {}, yubin, jusyo1, jusyo2, tel, kazok, 0, lastVisit, {}};
    return {c, c, marked};
}

// A household at one address and telephone number.
ListRow member(const char* name, int kazok, bool marked, const char* tel = "011-222-3333") {
    return row(QString::fromUtf8(name), u"060-0042"_s, kazok, marked,
               u"札幌市北区北七条西５－６－７"_s, 20261101, u"メゾン北七条２０１"_s,
               QString::fromUtf8(tel));
}

// Real names (2 to 20 characters) and addresses (up to 50 and 50 characters, numbers with
// －, buildings with 号室) that must print whole.
const QStringList Names = u"ｻﾄｳ ﾀﾛｳ|O'Neil Mary|勅使河原 左衛門三郎太郎兵衛之助|"
                          u"西園寺公望之介右衛門三郎左衛門尉"_s.split(u'|');
const QString Sapporo =
    u"北海道札幌市中央区北一条西二十丁目１２－３４ サンハイツ札幌駅前１０２号室"_s;
const QString Addresses[][2] = {
    {u"北海道札幌市中央区北一条西二十丁目12-34-567"_s,
     u"グランドメゾン札幌ABCタワー１５０１号室"_s},
    {u"鹿児島県鹿児島郡三島村大字硫黄島字長浜一〇三番地の二十七号 ふるさと会館内"_s,
     u"鹿児島県鹿児島郡三島村大字硫黄島字長浜一〇三番地 ちょっとした別館ホテル１０号室"_s},
    {u"愛知県名古屋市中村区名駅南一丁目２７番２号日本生命笹島ビル１７階総合受付センター"_s,
     u"京都府京都市下京区烏丸通七条下る東塩小路町７２１－１ 京都タワービル東館１２３号室"_s}};

QString plain(const QString& value) {
    return value.normalized(QString::NormalizationForm_KC).remove(QRegularExpression(u"\\s"_s));
}

// What drew a field of a page, as one text without blanks, in compatibility form (full-width
// digits and hyphens as ASCII), so that nothing lost goes unnoticed.
QString drawnText(const QList<DrawnText>& page, const QString& field) {
    QString text;
    for (const DrawnText& run : page)
        if (run.field == field)
            text += run.text;
    return plain(text);
}

// Every glyph inside its field and the page, no two fields over each other; whole texts when
// digits stay digits.
void checkLayout(const ReportJobRecord& job, bool wholeTexts) {
    QCOMPARE(FirstCutOff(job), QString());
    for (qsizetype p = 0; p < job.drawn.size(); ++p) {
        const QList<DrawnText>& page = job.drawn[p];
        for (const DrawnText& run : page) {
            if (run.field.isEmpty())
                continue;
            const QString where = u"page %1 %2 %3"_s.arg(p).arg(run.field, run.text);
            for (const DrawnText& other : page)
                QVERIFY2(other.field == run.field || other.field.isEmpty() ||
                             !other.box.adjusted(1e-3, 1e-3, -1e-3, -1e-3).intersects(run.box),
                         qPrintable(where + u" over "_s + other.field));
        }
        for (auto it = job.pages[p].cbegin(); wholeTexts && it != job.pages[p].cend(); ++it)
            if (it.key() != u"Sama"_s) // drawn in the name's field
                QCOMPARE(
                    drawnText(page, it.key()),
                    plain(it.value() + (it.key() == u"Name"_s ? job.pages[p][u"Sama"_s] : u""_s)));
    }
}

// Fields of one page of a job, named with blanks between, as their texts joined by '|' ("-" for
// a field the page does not have).
QString fields(const ReportJobRecord& job, int page, const QString& names) {
    QStringList texts;
    for (const QString& name : names.split(u' '))
        texts << job.pages[page].value(name, u"-"_s);
    return texts.join(u'|');
}

} // namespace

class TestPrint : public QObject {
    Q_OBJECT
    Harness harness;

    // Presses one of the three print buttons and answers its question; a document with pages
    // says it went to a PDF under Print/.
    void press(const std::vector<ListRow>& list, bool allCustomers, int button,
               const std::function<void(FrmPrint&)>& choose = {}, int answer = Answer::Yes,
               const QString& failure = {}) {
        harness.msgs.expect(QStringList{OpeQes_009, OpeQes_010, OpeQes_012}[button], answer);
        if (!failure.isEmpty())
            harness.msgs.expectBox(failure, QString());
        const bool pages = answer == Answer::Yes && failure.isEmpty() &&
                           std::any_of(list.begin(), list.end(),
                                       [&](const ListRow& r) { return r.marked || button == 1; });
        if (pages)
            harness.msgs.expectBoxStartingWith(
                u"ＰＤＦファイルに出力しました。\r"_s + harness.path(u"Print/"_s), u"印刷選択"_s);
        FrmPrint screen(list, allCustomers);
        if (choose)
            choose(screen);
        Find<QPushButton>(screen, u"cmdPrint"_s, button).click();
    }

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    // Esc closes the screen as "閉じる" does, printing nothing. Postcards go to the marked
    // customers, none when none is marked, nothing at all on No. A household's representative
    // in a list of everyone is written to as the family; with conditions everyone by name.
    void theKeysThePostcardsAndTheLedger() {
        std::vector<ListRow> list{row(u" 山田 太郎 "_s, u"123-4567"_s, 0, true),
                                  row(u"鈴木 花子"_s, QString(), 2, true),
                                  row(u"佐藤 次郎"_s, u"060-0001"_s, 2, false)};
        FrmPrint shown(list, true);
        harness.screens.expect<FrmPrint>([](FrmPrint& s) { QTest::keyClick(&s, Qt::Key_Escape); });
        QCOMPARE(ShowModal(shown), int(QDialog::Accepted));
        press(list, true, 0, {}, Answer::No);
        QVERIFY(ReportJobs().isEmpty());
        press({list[2]}, true, 0);
        QVERIFY(ReportJobs()[0].pages.isEmpty() && ReportJobs()[0].ended);
        press(list, true, 0);
        press(list, false, 2);
        const ReportJobRecord &vertical = ReportJobs()[1], &horizontal = ReportJobs()[2];
        QCOMPARE((QList{vertical.pages.size(), horizontal.pages.size()}), (QList<qsizetype>{2, 2}));
        QCOMPARE(fields(vertical, 0,
                        u"Yubin_1 Yubin_2 Yubin_3 Yubin_4 Yubin_5 Yubin_6 Yubin_7 Name Sama"_s),
                 u"1|2|3|4|5|6|7|山田 太郎|御家族様"_s);
        QCOMPARE(fields(vertical, 1, u"Yubin_1 Name"_s), u"-|鈴木 花子  様"_s);
        QCOMPARE(fields(horizontal, 0, u"Yubin Name Sama"_s), u"〒 123-4567|山田 太郎  様|-"_s);

        // The ledger lists every customer, marked or not, 36 lines a page, and the PDF has them.
        // Without its template the document is aborted and no file is left.
        list.clear();
        for (int i = 1; i <= 36; ++i)
            list.push_back(row(u"Customer%1"_s.arg(i), u"060-0001"_s, 1, i % 2 == 0));
        list.push_back(row(u"Customer37"_s, QString(), 1, false, u" 函館市 "_s, 20190707));
        press(list, true, 1);
        const ReportJobRecord& job = ReportJobs().last();
        QCOMPARE(job.pages.size(), 2);
        QCOMPARE(fields(job, 0, u"Name_36"_s), u"Customer36"_s);
        QCOMPARE(fields(job, 1, u"Name_1 Page yy Jusyo1_1 LastDate_1 Name_2"_s),
                 u"Customer37|2|2026|函館市|2019/07/07|-"_s);
        QVERIFY(job.ended && job.closed && !job.aborted);
        QCOMPARE(ReadFile(job.output).count("/Type /Page\n"), 2); // the PDF has both pages
        QVERIFY(QFile::remove(harness.installPath(u"jfm/PrnSan003.jfm"_s)));
        press(list, true, 1, {}, Answer::Yes, u"jvSetForm Error -3"_s);
        // The PDFs of the cards and the ledger alone.
        QCOMPARE(QDir(harness.path(u"Print"_s)).entryList(QDir::Files).size(), 3);
    }

    // Long names and addresses print whole inside their fields on the cards and the ledger, in
    // either way of writing numbers.
    void longNamesAndAddressesPrintWhole() {
        std::vector<ListRow> list;
        for (const QString& name : Names)
            for (const auto& address : Addresses)
                list.push_back(row(name, u"060-0042"_s, 2, true, address[0], 20261101, address[1],
                                   u"011-222-3333"_s));
        for (const bool kanji : {false, true})
            for (const int button : {0, 2, 1}) {
                press(list, false, button,
                      [&](FrmPrint& s) { Find<QCheckBox>(s, u"chkKansuji"_s).setChecked(kanji); });
                QCOMPARE(ReportJobs().last().drawn.size(),
                         button == 1 ? 1 : qsizetype(list.size()));
                checkLayout(ReportJobs().last(), !kanji);
            }
    }

    // Lines break at a blank before the building, then where a number starts or ends, never
    // inside a number with its unit; what cannot break gets smaller, below the floor if it must.
    // Vertical numbers are full-width or kanji numerals (十 for 10 to 19).
    void linesBreakAtNaturalPlaces() {
        // The text, the field's width in ems of 12 points, the lines set and whether it shrank.
        const std::tuple<QString, double, QString, bool> cases[] = {
            {Sapporo, 30,
             u"北海道札幌市中央区北一条西二十丁目１２－３４|サンハイツ札幌駅前１０２号室"_s, false},
            {Sapporo, 20,
             u"北海道札幌市中央区北一条西二十丁目|１２－３４ サンハイツ札幌駅前１０２号室"_s,
             false},
            {u"札幌市１２３４５６７８９０号"_s, 8, u"札幌市|１２３４５６７８９０号"_s, true},
            {u"ガーデンコート"_s, 3, u"ガーデ|ンコー|ト"_s, false},
        };
        for (const auto& [text, ems, expected, shrunk] : cases) {
            FormItem item;
            item.w = ems * EmMm(12) + 0.01, item.h = 60, item.points = item.minPoints = 12;
            const SetText set = SetFieldText(item, text, VerticalDigits::FullWidth);
            QMap<double, QString> lines;
            for (const SetGlyph& glyph : set.glyphs)
                lines[glyph.box.y()] += glyph.text;
            QCOMPARE(lines.values().join(u'|'), expected);
            QCOMPARE(set.points < 12, shrunk);
        }
        for (const QString& n :
             u"12 十二 １２|10 十 １０|102 一〇二 １０２|２０ 二〇 ２０|7 七 ７"_s.split(u'|')) {
            const QStringList forms = n.split(u' ');
            QCOMPARE(VerticalNumber(forms[0], VerticalDigits::Kanji), forms[1]);
            QCOMPARE(VerticalNumber(forms[0], VerticalDigits::FullWidth), forms[2]);
        }
    }

    // Household cards: one per household, its members as the family list groups them, the
    // representative first (on the right of a vertical card), the family name once, each with
    // his own 様; more than four members are written to all at once.
    void oneCardPerHousehold() {
        const std::vector<ListRow> list{
            member("山田 花子", 1, false),     member("山田 一郎", 0, true),
            member("山田 健太", 1, true),      member("森 環", 2, true, "011-999-0000"),
            member("鈴木 一", 0, true, "022"), member("鈴木 二", 1, true, "022"),
            member("鈴木 三", 1, true, "022"), member("鈴木 四", 1, true, "022"),
            member("鈴木 五", 1, true, "022")};
        press(list, true, 0,
              [](FrmPrint& s) { Find<QCheckBox>(s, u"chkRenmei"_s).setChecked(true); });
        const ReportJobRecord& job = ReportJobs().last();
        QCOMPARE(job.pages.size(), 3);
        checkLayout(job, false);
        QList<double> columns; // of the family name and each 様
        for (const DrawnText& run : job.drawn[0])
            if (run.text == u"山"_s || run.text == u"様"_s)
                columns << run.box.x();
        // The family name once, in the representative's column; 花子, her mark off, not named.
        QVERIFY(columns.size() == 3 && columns[0] == columns[1] && columns[1] > columns[2]);
        QCOMPARE(drawnText(job.drawn[0], u"Name"_s), u"山田一郎様健太様"_s);
        QCOMPARE(fields(job, 1, u"Name"_s), u"森 環  様"_s);
        QCOMPARE(fields(job, 2, u"Name Sama"_s), u"鈴木 一|御一同様"_s);
    }

    // The printer's offset is kept in the database and moves everything printed; the postal
    // code's boxes are printed in vermilion only on plain paper.
    void offsetAndPostalCodeBoxes() {
        const std::vector<ListRow> list{member("山田 一郎", 2, true)};
        press(list, false, 0, [](FrmPrint& s) {
            Find<QDoubleSpinBox>(s, u"txtOffsetX"_s).setValue(10);
            Find<QDoubleSpinBox>(s, u"txtOffsetY"_s).setValue(-1.5);
        });
        QCOMPARE(SettingStore::ReadPrintOffset().y, -1.5); // x: the next screen shows it
        press(list, false, 0, [](FrmPrint& s) {
            auto& x = Find<QDoubleSpinBox>(s, u"txtOffsetX"_s);
            QCOMPARE(x.value(), 10.0);
            x.setValue(0);
            Find<QDoubleSpinBox>(s, u"txtOffsetY"_s).setValue(0);
            Find<QCheckBox>(s, u"chkYubinWaku"_s).setChecked(true);
        });
        // The same card rendered (100 dpi): the leftmost column of black ink or of vermilion,
        // -1 when there is none.
        const auto leftmostInk = [this](int job, bool red) {
            const QString png = harness.path(u"card%1"_s.arg(job));
            QProcess::execute(u"pdftoppm"_s, {u"-r"_s, u"100"_s, u"-png"_s, u"-singlefile"_s,
                                              ReportJobs()[job].output, png});
            const QImage image(png + u".png"_s);
            for (int x = 0; x < image.width(); ++x)
                for (int y = 0; y < image.height(); ++y) {
                    if (const QColor c = image.pixelColor(x, y);
                        red ? c.red() > 180 && c.green() < 140 : c.red() < 100 && c.green() < 100)
                        return x;
                }
            return -1;
        };
        // Moved 10 mm to the right (39 pixels), red boxes only the second time.
        QVERIFY(std::abs(leftmostInk(0, false) - leftmostInk(1, false) - 39) <= 1);
        QVERIFY(leftmostInk(0, true) == -1 && leftmostInk(1, true) > 0);
    }
};

QTEST_MAIN(TestPrint)
#include "tst_print.moc"
