// The folder order of src/: a folder includes its own files and those of the folders below it,
// never one beside it or above it (only the screens open each other); and only platform/db
// speaks Qt Sql, so a second engine stays a change there alone.
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int ScreenRank = 4;

// A folder's place in the order from the bottom; -1 for a folder that has none.
int rankOf(const QString& folder) {
    static const std::pair<const char*, int> order[] = {
        {"platform", 0}, {"frame", 1},  {"domain", 2},   {"data", 3},         {"customer", 4},
        {"history", 4},  {"search", 4}, {"print", 4},    {"prescription", 4}, {"masters", 4},
        {"pickers", 4},  {"orders", 4}, {"analysis", 4}, {"shell", 5}};
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
        return {file + u": its folder has no place in the order"_s};
    static const QRegularExpression include(u"^\\s*#\\s*include\\s*([<\"])([^>\"]+)[>\"]"_s,
                                            QRegularExpression::MultilineOption);
    QStringList found;
    for (const QRegularExpressionMatch& match : include.globalMatch(text)) {
        const QString target = match.captured(2);
        if (match.captured(1) == QLatin1String("<")) {
            if (target.startsWith(QLatin1String("QSql")) ||
                target.startsWith(QLatin1String("QtSql")))
                if (!file.startsWith(QLatin1String("platform/db/")))
                    found << file + u": <"_s + target + QLatin1Char('>');
            continue;
        }
        if (!target.contains(QLatin1Char('/')))
            continue; // a file of its own folder
        const QString used = target.section(QLatin1Char('/'), 0, 0);
        const int rank = rankOf(used);
        const bool allowed = rank >= 0 && (used == folder || rank < own ||
                                           (own == ScreenRank && rank == ScreenRank));
        if (!allowed)
            found << file + u": \""_s + target + QLatin1Char('"');
    }
    return found;
}

} // namespace

class TestLayering : public QObject {
    Q_OBJECT

private slots:
    void everyFileUnderSrcKeepsTheOrder() {
        // The check itself finds what breaks the order: a file, its includes and how many of
        // them break it.
        const std::tuple<QString, QString, qsizetype> samples[] = {
            {u"frame/Log.cpp"_s, u"#include \"shell/FrmMenu.h\""_s, 1},
            {u"data/Lookups.cpp"_s, u"#include <QSqlQuery>\n#include <QtSql/QSqlError>"_s, 2},
            {u"search/FrmKensaku.cpp"_s,
             u"#include \"customer/FrmKokyaku.h\"\n#include \"data/Lookups.h\"\n"
             "#include \"FrmX.h\""_s,
             0},
            {u"shell/FrmMenu.cpp"_s,
             u"#include \"masters/FrmMaster.h\"\n#include \"frame/Globals.h\""_s, 0}};
        for (const auto& [file, text, count] : samples)
            QVERIFY2(offences(file, text).size() == count, qPrintable(file));
        const QDir src(QStringLiteral(MIRVANE_SOURCE_DIR));
        QStringList files, found;
        QDirIterator it(src.path(), {u"*.h"_s, u"*.cpp"_s}, QDir::Files,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            QFile source(it.next());
            QVERIFY2(source.open(QIODevice::ReadOnly), qPrintable(source.fileName()));
            files << src.relativeFilePath(source.fileName());
            found << offences(files.last(), QString::fromUtf8(source.readAll()));
        }
        // The walk did reach the sources.
        QVERIFY2(files.contains(u"platform/db/Connection.cpp"_s), qPrintable(src.path()));
        QVERIFY2(found.isEmpty(), qPrintable(u"\n"_s + found.join(QLatin1Char('\n'))));
    }
};

QTEST_GUILESS_MAIN(TestLayering)
#include "tst_layering.moc"
