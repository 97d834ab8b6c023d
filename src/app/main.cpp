// TOLVA II: the game's entry point. Everything the game does at start-up and shutdown is
// frmMain's; this only makes the application, the game folder and the window.
#include "board/LevelModule.h"
#include "session/qt/frmMain.h"
#include "support/ZenkorModule.h"
#include "support/platform/qt/QtEventLoop.h"

#include <QApplication>

#include <memory>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    Q_INIT_RESOURCE(builtin);
    QApplication::setApplicationName("TOLVA II");
    QApplication::setApplicationVersion(TOLVA_VERSION);
    tolva::InitAppPath(argc, argv);

    // The start-up words are looked for anywhere in the whole command line.
    QString commandLine;
    for (int i = 1; i < argc; ++i) commandLine += QString::fromLocal8Bit(argv[i]) + ' ';

    auto game = std::make_unique<tolva::LevelModule>();
    tolva::QtEventLoop loop;
    tolva::frmMain window(*game, loop, commandLine);
    if (!window.Form_Load()) return 1;
    window.show();
    return QApplication::exec();
}
