// Importing Japan Post's directory: both forms, split rows, notes, and a failed import that
// leaves the old content whole.
#include "data/ShopDatabase.h"
#include "data/ZipImport.h"
#include "frame/Globals.h"
#include "platform/Failure.h"
#include "support/Harness.h"

#include <QFile>
#include <QProcess>
#include <QtTest>
#include <iconv.h>

namespace {

QByteArray toShiftJis(const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    iconv_t converter = iconv_open("CP932", "UTF-8");
    QByteArray out(utf8.size() * 2, '\0');
    char* in = const_cast<char*>(utf8.constData());
    size_t inLeft = size_t(utf8.size());
    char* to = out.data();
    size_t outLeft = size_t(out.size());
    iconv(converter, &in, &inLeft, &to, &outLeft);
    iconv_close(converter);
    out.resize(out.size() - qsizetype(outLeft));
    return out;
}

// One KEN_ALL row: the code and the three kanji columns; the rest as Japan Post fills it.
QString kenAll(const char* zip, const char* todo, const char* city, const char* town) {
    return QStringLiteral(
               "01101,\"060  "
               "\",\"%1\",\"ﾎｯｶｲﾄﾞｳ\",\"ｻｯﾎﾟﾛｼ\",\"ｶﾅ\",\"%2\",\"%3\",\"%4\",0,0,1,0,0,0\r\n")
        .arg(QString::fromUtf8(zip), QString::fromUtf8(todo), QString::fromUtf8(city),
             QString::fromUtf8(town));
}

QStringList zipList() {
    RecordSet rows =
        gCon.execute(QStringLiteral("select * from ZipList order by ZIP1, ZIP2, TOWN"));
    QStringList all;
    for (; !rows.eof(); rows.moveNext())
        all << QStringLiteral("%1-%2 %3%4/%5")
                   .arg(rows.field(0).toInt(), 3, 10, QLatin1Char('0'))
                   .arg(rows.field(1).toInt(), 4, 10, QLatin1Char('0'))
                   .arg(rows.field(2).toString(), rows.field(3).toString(),
                        rows.field(4).toString());
    return all;
}

QString writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(bytes);
    return path;
}

} // namespace

class TestZipImport : public QObject {
    Q_OBJECT
    Harness harness;

    QString kenAllFile() {
        const QString text =
            kenAll("0600042", "北海道", "札幌市中央区", "大通西（１～") +
            kenAll("0600042", "北海道", "札幌市中央区", "１９丁目）") +
            kenAll("0600000", "北海道", "札幌市中央区", "以下に掲載がない場合") +
            kenAll("1000301", "東京都", "利島村", "利島村一円") +
            kenAll("5220317", "滋賀県", "犬上郡多賀町", "一円") +
            kenAll("4520961", "愛知県", "清須市", "春日") +
            kenAll("4520961", "愛知県", "清須市", "清洲") +
            kenAll("4506201", "愛知県", "名古屋市中村区", "名駅ミッドランドスクエア（高層棟）１階");
        return writeFile(harness.path(QStringLiteral("KEN_ALL.CSV")), toShiftJis(text));
    }

private slots:
    void init() { HARNESS_INIT(harness); }
    void cleanup() { HARNESS_TEARDOWN(harness); }

    void kenAllInShiftJisIsJoinedAndCleaned() {
        QCOMPARE(ImportZipFile(gCon, kenAllFile()), 7);
        QCOMPARE(zipList(),
                 (QStringList{
                     QStringLiteral("060-0000 北海道札幌市中央区/"),
                     QStringLiteral("060-0042 北海道札幌市中央区/大通西"),
                     QStringLiteral("100-0301 東京都利島村/利島村"),
                     QStringLiteral("450-6201 愛知県名古屋市中村区/名駅ミッドランドスクエア１階"),
                     QStringLiteral("452-0961 愛知県清須市/春日"),
                     QStringLiteral("452-0961 愛知県清須市/清洲"),
                     QStringLiteral("522-0317 滋賀県犬上郡多賀町/一円")}));
    }

    void utf8FormReplacesTheOldContent() {
        ImportZipFile(gCon, kenAllFile());
        const QString utf8 = kenAll("1000001", "東京都", "千代田区", "千代田") +
                             kenAll("1000005", "東京都", "千代田区", "丸の内（次のビルを除く）");
        ZipFileForm form = ZipFileForm::KenAll;
        QCOMPARE(ParseZipDirectory(utf8.toUtf8(), &form).size(), 2);
        QCOMPARE(form, ZipFileForm::Utf8);
        QCOMPARE(ImportZipFile(gCon, writeFile(harness.path(QStringLiteral("utf_ken_all.csv")),
                                               utf8.toUtf8())),
                 2);
        QCOMPARE(zipList(), (QStringList{QStringLiteral("100-0001 東京都千代田区/千代田"),
                                         QStringLiteral("100-0005 東京都千代田区/丸の内")}));
    }

    void aBrokenFileLeavesThePreviousContent() {
        ImportZipFile(gCon, kenAllFile());
        const QStringList before = zipList();
        const QList<QByteArray> broken{QByteArray("a,b,c\r\n"),
                                       kenAll("0600042", "北海道", "札幌市", "x").toUtf8() +
                                           QByteArray("1,2,3,4\r\n"),
                                       kenAll("06000AB", "北海道", "札幌市", "x").toUtf8(),
                                       QByteArray("\xff\xfe\x00\x01", 4), QByteArray()};
        for (const QByteArray& bytes : broken) {
            try {
                ImportZipFile(gCon, writeFile(harness.path(QStringLiteral("broken.csv")), bytes));
                QFAIL("a broken file was imported");
            } catch (const Failure& failure) {
                QVERIFY(failure.description().contains(QStringLiteral("形式ではありません")));
            }
            QCOMPARE(zipList(), before);
        }
        // A failure while writing (here a trigger breaking a unique key) rolls the replacement
        // back too.
        CreateBeforeInsertTrigger(QStringLiteral("refuse"), QStringLiteral("ZipList"),
                                  QStringLiteral("insert into San_Item values('001', 'x')"));
        const QString utf8 = kenAll("1000001", "東京都", "千代田区", "千代田");
        QVERIFY_THROWS_EXCEPTION(
            Failure,
            ImportZipFile(gCon, writeFile(harness.path(QStringLiteral("u.csv")), utf8.toUtf8())));
        QCOMPARE(zipList(), before);
    }

    void theAdminToolImportsAndRefuses() {
        gCon.close();
        QProcess tool;
        tool.start(QStringLiteral(MIRVANE_ADMIN_PROGRAM),
                   {QStringLiteral("import-zip"), kenAllFile(), harness.folder()});
        tool.waitForFinished(60000);
        QCOMPARE(tool.exitCode(), 0);
        QVERIFY(QString::fromUtf8(tool.readAllStandardOutput()).contains(QStringLiteral("7 件")));
        tool.start(QStringLiteral(MIRVANE_ADMIN_PROGRAM),
                   {QStringLiteral("import-zip"),
                    writeFile(harness.path(QStringLiteral("x.csv")), "1,2\n"), harness.folder()});
        tool.waitForFinished(60000);
        QCOMPARE(tool.exitCode(), 1);
        QVERIFY(
            QString::fromUtf8(tool.readAllStandardError()).contains(QStringLiteral("元のまま")));
        OpenDatabase();
        QCOMPARE(zipList().size(), 7);
    }
};

QTEST_MAIN(TestZipImport)
#include "tst_zipimport.moc"
