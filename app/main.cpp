#include "frame/Globals.h"
#include "shell/BasSubMain.h"

#include <QApplication>
#include <QFont>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Mirvane"));
    QFont font(QStringLiteral("Noto Sans CJK JP"));
    font.setPointSize(11);
    QApplication::setFont(font);
    // Qt's own texts (the file dialog's, the standard buttons') in Japanese like the rest.
    QTranslator qtTexts;
    if (qtTexts.load(QLocale(QLocale::Japanese, QLocale::Japan), QStringLiteral("qtbase"),
                     QStringLiteral("_"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&qtTexts);
    const int exitCode = Main();
    gCon.close();
    return exitCode;
}
