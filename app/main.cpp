#include "frame/Globals.h"
#include "shell/BasSubMain.h"

#include <QApplication>
#include <QFont>

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Mirvane"));
    QFont font(QStringLiteral("Noto Sans CJK JP"));
    font.setPointSize(11);
    QApplication::setFont(font);
    const int exitCode = Main();
    gCon.close();
    return exitCode;
}
