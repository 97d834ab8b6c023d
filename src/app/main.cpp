// TOLVA II: the game's entry point. It makes the application and the game folder and
// hands over to the composition root, whose start-up is the game's.
#include "app/GameApp.h"
#include "support/StartupTrace.h"
#include "support/ZenkorModule.h"
#include "support/platform/qt/QtEventLoop.h"

#include <QApplication>
#include <QDateTime>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

int main(int argc, char** argv) {
    tolva::StartupTrace::Mark("libraries loaded, main entered");
#if defined(__GLIBC__)
    // Start-up reads and decodes pictures one after another, each in buffers of a
    // megabyte or more. By default each such buffer is a mapping of its own, handed back
    // when freed, and the next one has to be faulted in afresh page by page, which costs
    // more than the decoding. Kept in the heap, the pages are used again; the game gives
    // back what is left over once the start-up is done, and goes back to mappings of their
    // own for large buffers (GameApp::LoadUnseenPictures).
    mallopt(M_MMAP_THRESHOLD, 64 << 20);
    mallopt(M_TRIM_THRESHOLD, 64 << 20);
#endif
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
