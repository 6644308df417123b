// The folder order of src/: a folder includes its own files and those of the folders below it,
// never one beside it or above it (only the screens open each other); and only platform/db
// speaks Qt Sql, so a second engine stays a change there alone.
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QtTest>

namespace {

constexpr int ScreenRank = 4;

// A folder's place in the order from the bottom; -1 for a folder that has none.
int rankOf(const QString& folder) {
    static const std::pair<const char*, int> order[] = {
        {"platform", 0},     {"frame", 1},   {"domain", 2},  {"data", 3},
        {"customer", 4},     {"history", 4}, {"search", 4},  {"print", 4},
        {"prescription", 4}, {"masters", 4}, {"pickers", 4}, {"shell", 5}};
    for (const auto& [name, rank] : order)
        if (folder == QLatin1String(name))
            return rank;
    return -1;
}

// What breaks the order in one file, given by its path under src/ and its text.
QStringList offences(const QString& file, const QString& text) {
    const QString folder = file.section(QLatin1Char('/'), 0, 0);
    const int own = rankOf(folder);
    if (own < 0)
        return {file + QStringLiteral(": its folder has no place in the order")};
    static const QRegularExpression include(
        QStringLiteral("^\\s*#\\s*include\\s*([<\"])([^>\"]+)[>\"]"),
        QRegularExpression::MultilineOption);
    QStringList found;
    for (const QRegularExpressionMatch& match : include.globalMatch(text)) {
        const QString target = match.captured(2);
        if (match.captured(1) == QLatin1String("<")) {
            if (target.startsWith(QLatin1String("QSql")) ||
                target.startsWith(QLatin1String("QtSql")))
                if (!file.startsWith(QLatin1String("platform/db/")))
                    found << file + QStringLiteral(": <") + target + QLatin1Char('>');
            continue;
        }
        if (!target.contains(QLatin1Char('/')))
            continue; // a file of its own folder
        const QString used = target.section(QLatin1Char('/'), 0, 0);
        const int rank = rankOf(used);
        const bool allowed = rank >= 0 && (used == folder || rank < own ||
                                           (own == ScreenRank && rank == ScreenRank));
        if (!allowed)
            found << file + QStringLiteral(": \"") + target + QLatin1Char('"');
    }
    return found;
}

} // namespace

class TestLayering : public QObject {
    Q_OBJECT

private slots:
    void theCheckFindsWhatBreaksTheOrder_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("expected");
        const auto row = [](const char* name, const char* file, const char* text, int count) {
            QTest::newRow(name) << QString::fromUtf8(file) << QString::fromUtf8(text) << count;
        };
        row("frame opens the menu", "frame/Log.cpp", "#include \"shell/FrmMenu.h\"", 1);
        row("Qt Sql outside platform/db", "data/Lookups.cpp",
            "#include <QSqlQuery>\n#include <QtSql/QSqlError>", 2);
        row("screens open screens", "search/FrmKensaku.cpp",
            "#include \"customer/FrmKokyaku.h\"\n#include \"data/Lookups.h\"\n#include \"FrmX.h\"",
            0);
        row("the shell opens the screens", "shell/FrmMenu.cpp",
            "#include \"masters/FrmMaster.h\"\n#include \"frame/Globals.h\"", 0);
    }

    void theCheckFindsWhatBreaksTheOrder() {
        QFETCH(QString, file);
        QFETCH(QString, text);
        QFETCH(int, expected);
        const QStringList found = offences(file, text);
        QVERIFY2(found.size() == expected, qPrintable(found.join(QLatin1Char('\n'))));
    }

    void everyFileUnderSrcKeepsTheOrder() {
        const QDir src(QStringLiteral(MIRVANE_SOURCE_DIR));
        QStringList files;
        QStringList found;
        QDirIterator it(src.path(), {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            QFile source(it.next());
            QVERIFY2(source.open(QIODevice::ReadOnly), qPrintable(source.fileName()));
            files << src.relativeFilePath(source.fileName());
            found << offences(files.last(), QString::fromUtf8(source.readAll()));
        }
        // The walk did reach the sources.
        QVERIFY2(files.contains(QStringLiteral("platform/db/Connection.cpp")),
                 qPrintable(src.path()));
        QVERIFY2(found.isEmpty(), qPrintable(QStringLiteral("\n") + found.join(QLatin1Char('\n'))));
    }
};

QTEST_GUILESS_MAIN(TestLayering)
#include "tst_layering.moc"
