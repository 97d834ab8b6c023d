// TOLVA II: the game's entry point. It makes the application and the game folder and
// hands over to the composition root, whose start-up is the game's.
#include "app/GameApp.h"
#include "support/StartupMemory.h"
#include "support/StartupTrace.h"
#include "support/ZenkorModule.h"
#include "support/platform/qt/QtEventLoop.h"

#include <QApplication>
#include <QDateTime>

#include <cstdio>
#include <cstring>

namespace {

// The text of --help, which the manual page is made from.
constexpr const char* Usage = R"(usage: tolva2 [--game-dir DIR]

TOLVA II, a brick-clearing puzzle game: a click on a group of two or more bricks of
one colour takes it away and scores the square of its size; the rest falls and empty
columns close towards the left. Spells hidden under the bricks change the board. An
empty board gives a bonus and the next level; a board without a pair ends the game.

  --game-dir DIR  run with DIR as a portable game folder: the game's files are read
                  from DIR and everything the game writes goes to DIR
  --help          show this text and end
  --version       show the version and end

Files:
Installed (the program in PREFIX/games with PREFIX/share/games/tolva2 beside it),
the game reads its pictures, sounds, help and level sets from
PREFIX/share/games/tolva2 and writes tolva2.ini, stat.ini and each level set's
hiscore.hi to $XDG_DATA_HOME/tolva2 (~/.local/share/tolva2 if XDG_DATA_HOME is not
set), made on the first start. A file there takes the place of the installed file
of the same name, and level sets in its levels/ folder appear in the level-set menu
beside the installed ones. Anywhere else the program's own folder is the game
folder, read and written in place.
)";

// Answers --help and --version before any window exists, so that they work without a
// display; gives true when the program should end.
bool AnsweredInformation(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--help") == 0) {
            std::fputs(Usage, stdout);
            return true;
        }
        if (std::strcmp(argv[i], "--version") == 0) {
            std::printf("tolva2 %s\n", TOLVA_VERSION);
            return true;
        }
    }
    return false;
}

} // namespace

int main(int argc, char** argv) {
    if (AnsweredInformation(argc, argv)) return 0;
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
