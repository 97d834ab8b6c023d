// TOLVA II: the game's entry point. It makes the application and the game folder and
// hands over to the composition root, whose start-up is the game's.
#include "app/GameApp.h"
#include "support/StartupMemory.h"
#include "support/StartupTrace.h"
#include "support/ZenkorModule.h"
#include "support/platform/qt/QtEventLoop.h"

#include <QApplication>
#include <QDateTime>

int main(int argc, char** argv) {
    tolva::StartupTrace::Mark("libraries loaded, main entered");
    tolva::BeginStartupMemory();
    QApplication app(argc, argv);
    tolva::StartupTrace::Mark("application");
    Q_INIT_RESOURCE(builtin);
    QApplication::setApplicationName("TOLVA II");
    QApplication::setApplicationVersion(TOLVA_VERSION);
    tolva::InitAppPath(argc, argv);

    // The start-up words are looked for anywhere in the whole command line.
    std::string commandLine;
    for (int i = 1; i < argc; ++i) commandLine += std::string(argv[i]) + ' ';

    tolva::QtEventLoop loop;
    tolva::GameApp game(loop, commandLine);
    if (!game.Start(static_cast<std::uint64_t>(QDateTime::currentMSecsSinceEpoch()))) return 1;
    return QApplication::exec();
}
