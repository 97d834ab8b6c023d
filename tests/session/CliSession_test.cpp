// tolva2-cli session: whole games without a window in a game folder of the shipped sets,
// as a script drives them, and what they leave in the folder for the next start.
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"

#include "CliRunner.h"
#include "testsupport/SourceFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

using tolva::testing::Cli;
using tolva::testing::CliRun;
using tolva::testing::Quote;
using tolva::testing::ReadSource;
using tolva::testing::TempFolder;

namespace {

// A game folder with both shipped sets and no pictures or tolva2.ini.
struct GameDir {
    GameDir() {
        for (const char* set : {"default", "miniatures"}) {
            std::filesystem::create_directories(Dir / (std::string("levels/") + set));
            Dir.Write(std::string("levels/") + set + "/levels.set",
                      ReadSource(std::string("game/levels/") + set + "/levels.set"));
        }
    }
    CliRun Session(const std::string& script) {
        Dir.Write("script.txt", script);
        return Cli("session " + Quote(Dir.Path()) + " < " + Quote(Dir / "script.txt"));
    }
    TempFolder Dir;
};

// The clicks of the stored solution of default level 1, each followed by time enough for
// the board to settle, as a player's next click would be.
std::string SolutionOfLevel1() {
    std::istringstream lines(ReadSource("tools/levelgen/default-solutions.txt"));
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("level 1:", 0) != 0) continue;
        std::istringstream cells(line.substr(8));
        std::string script;
        for (std::string cell; cells >> cell;) {
            cell[cell.find(',')] = ' ';
            script += "click " + cell + "\nwait 2000\n";
        }
        return script;
    }
    return {};
}

bool Contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

} // namespace

TEST(CliSession, AGameThatEndsWithAPlaceKeepsItInTheTableAfterARestart) {
    GameDir game;
    const std::string solution = SolutionOfLevel1();
    ASSERT_FALSE(solution.empty());
    CliRun r = game.Session("newgame 1\n" + solution + "wait 20000\nlabels\ninitials ab\nendgame\ntable\nquit\n");
    EXPECT_EQ(r.status, 0) << r.out;
    // Level 1 is cleared and level 2 runs with its code.
    EXPECT_TRUE(Contains(r.out, "Level: 2\nBonus: 0\nLevelName: ")) << r.out;
    EXPECT_TRUE(Contains(r.out, "LevelCode: LEVEL-CODE:")) << r.out;
    EXPECT_TRUE(Contains(r.out, "message: Are you sure you want to end this game ?\n"
                                "message: G A M E   O V E R !\n1\tAB \t2\t"))
        << r.out;

    // The table is in the set's own file (whose printed form is the hiscore command's
    // test), and the next start shows it unchanged.
    const std::string table = r.out.substr(r.out.find("1\tAB "));
    const CliRun shown = Cli("hiscore show " + Quote(game.Dir / "levels/default/hiscore.hi"));
    EXPECT_EQ(shown.out, table);
    const CliRun again = game.Session("table\nquit\n");
    EXPECT_EQ(again.status, 0);
    EXPECT_EQ(again.out, table);
    EXPECT_TRUE(Contains(game.Dir.Read("tolva2.ini"), "levelset=levels\\default\\\r\n"));
}

TEST(CliSession, ChoosingAnotherSetDuringAGameEndsItSilentlyAndEachSetKeepsItsTable) {
    GameDir game;
    CliRun r = game.Session("newgame 1\nclick 1 7\nwait 2000\ninitials xyz\nset miniatures\ntable\nlabels\nquit\n");
    EXPECT_EQ(r.status, 0) << r.out;
    // One question, and no game-over message: the game ends silently, its score takes a
    // place in the default set's table, and the Miniatures table is empty.
    EXPECT_TRUE(Contains(r.out, "message: This will end your current game, sure to load new level-sets ?\n1\t...\t0\t0\n"))
        << r.out;
    EXPECT_FALSE(Contains(r.out, "G A M E")) << r.out;
    const CliRun defaultTable = Cli("hiscore show " + Quote(game.Dir / "levels/default/hiscore.hi"));
    EXPECT_EQ(defaultTable.Lines().at(0).substr(0, 7), "1\tXYZ\t1");
    EXPECT_EQ(defaultTable.Lines().back(), "checksum: ok");

    // The choice survives the restart; the next game plays the Miniatures levels.
    EXPECT_TRUE(Contains(game.Dir.Read("tolva2.ini"), "levelset=levels\\miniatures\\\r\n"));
    r = game.Session("newgame 1\nlabels\nset default\ntable\nset nosuchset\nquit\n");
    EXPECT_EQ(r.status, 1);   // the unknown set is an error of the script
    EXPECT_TRUE(Contains(r.out, "error: no level set 'nosuchset' in the menu\n")) << r.out;
    EXPECT_TRUE(Contains(r.out, "LevelCode: \n")) << r.out;   // no level codes outside the default set
    EXPECT_TRUE(Contains(r.out, "1\tXYZ\t1\t")) << r.out;      // back in the default set, its own table
}

TEST(CliSession, StopMessagesAndBadScriptsEndAsDocumented) {
    // No default set: the stop message, and status 1.
    TempFolder empty;
    empty.Write("script.txt", "quit\n");
    CliRun r = Cli("session " + Quote(empty.Path()) + " < " + Quote(empty / "script.txt"));
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out, "message: ERROR! Unable to locate default levels.\nPlease re-install TOLVA II.\n");

    // Bad arguments are usage errors.
    EXPECT_EQ(Cli("session").status, 2);
    EXPECT_EQ(Cli("session " + Quote(empty / "missing")).status, 2);
    EXPECT_EQ(Cli("session " + Quote(empty.Path()) + " --seed x").status, 2);

    // A malformed line is reported in its place and the session goes on.
    GameDir game;
    r = game.Session("newgame 0\nfly\nnewgame 3\nlabels\n");
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(Contains(r.out, "error: newgame needs a level from 1 to 100\nerror: unknown command 'fly'")) << r.out;
    EXPECT_TRUE(Contains(r.out, "Level: 3\n")) << r.out;
    // Input that ends without quit saves no settings, as a killed game would not: the
    // first start only marks itself done.
    EXPECT_EQ(game.Dir.Read("tolva2.ini"), "[main]\r\nnotfirstuse=yes\r\n");

    // But a new place in the table is written as soon as its initials are in: a game
    // killed afterwards keeps it.
    r = game.Session("newgame 1\nclick 1 7\nwait 2000\ninitials kim\nendgame\n");
    EXPECT_EQ(r.status, 0) << r.out;
    EXPECT_EQ(Cli("hiscore show " + Quote(game.Dir / "levels/default/hiscore.hi")).Lines().at(0).substr(0, 7), "1\tKIM\t1");
}

TEST(CliSession, HoverKeysAndCursorForetellAndMakeTheClick) {
    GameDir game;
    // Before a game nothing is outlined; in level 1 of the default set the 1s at (1, 7) are
    // a group of six, the 7 at (0, 9) stands alone, and off the board there is nothing.
    CliRun r = game.Session("hover 1 7\nnewgame 1\nhover -1 0\nhover 0 9\ncursor\nhover 1 7\n"
                            "key Left\ncursor\nkey space\nwait 2000\nlabels\n"
                            "arm gun\nhover 1 7\nkey F9\nquit\n");
    EXPECT_EQ(r.status, 1) << r.out;   // the unknown key
    EXPECT_TRUE(Contains(r.out, "group\t0\t0\ngroup\t0\t0\ngroup\t0\t0\ncursor\tnone\ngroup\t6\t36\n")) << r.out;
    // The first arrow shows the cursor where the pointer rests, Space clicks there, and
    // the score rises by the points foretold.
    EXPECT_TRUE(Contains(r.out, "cursor\t1\t7\nScore: 000.000.036\n")) << r.out;
    // With a spell armed nothing is outlined.
    EXPECT_TRUE(Contains(r.out, "Pointer: X:1,Y:7  TYPE:1\ngroup\t0\t0\nerror: no key 'F9'")) << r.out;

    // Switched off in tolva2.ini, nothing is outlined, and the key stays as it was put.
    game.Dir.Write("tolva2.ini", "[main]\r\nshowgroup=0\r\n");
    r = game.Session("newgame 1\nhover 1 7\nquit\n");
    EXPECT_TRUE(Contains(r.out, "group\t0\t0\n")) << r.out;
    EXPECT_EQ(tolva::ReadIni(game.Dir / "tolva2.ini", "main", "showgroup"), "0");
}

TEST(CliSession, UndoTakesMovesBackToTheLevelsStartAndMakesAPracticeGame) {
    GameDir game;
    // Two moves, three undos: the board and the labels are as at the level's start, and
    // the third undo finds nothing more to take back.
    CliRun r = game.Session("newgame 1\ngrid\nlabels\nclick 1 7\nwait 2000\nclick 3 6\nwait 2000\nundo\nundo\nundo\n"
                            "grid\nlabels\nclick 1 7\nwait 2000\nendgame\ntable\nquit\n");
    EXPECT_EQ(r.status, 0) << r.out;
    const std::string start = r.out.substr(0, r.out.find("Pointer:"));
    ASSERT_TRUE(Contains(start, "Score: 000.000.000\n")) << r.out;
    EXPECT_NE(r.out.find(start, 1), std::string::npos) << r.out;
    // The game, played on, ends without a place in the table, and says why.
    EXPECT_TRUE(Contains(r.out, "message: G A M E   O V E R !\nmessage: A move was taken back in this game")) << r.out;
    EXPECT_TRUE(Contains(r.out, "\n1\t...\t0\t0\n")) << r.out;
}

TEST(CliSession, ASavedGameResumesOnceAndADamagedOneIsMovedAside) {
    GameDir game;
    CliRun r = game.Session("newgame 1\nclick 1 7\nwait 2000\nsave\nlabels\n");
    EXPECT_EQ(r.status, 0) << r.out;
    EXPECT_TRUE(r.out.empty()) << r.out;   // no question, no score offered, nothing after save
    ASSERT_TRUE(std::filesystem::exists(game.Dir / "savegame.sav"));
    const std::string saved = game.Dir.Read("savegame.sav");

    // Resumed in a new start: the board and the score as they were, the file gone.
    r = game.Session("grid\nresume\ngrid\nlabels\nresume\nendgame\nquit\n");
    EXPECT_EQ(r.status, 1) << r.out;   // the second resume: no saved game
    EXPECT_TRUE(Contains(r.out, "Score: 000.000.036\n")) << r.out;
    EXPECT_TRUE(Contains(r.out, "Clicks: CLICKS: 1\n")) << r.out;
    EXPECT_TRUE(Contains(r.out, "error: no saved game to resume\n")) << r.out;
    EXPECT_FALSE(std::filesystem::exists(game.Dir / "savegame.sav"));

    // One byte changed by hand: refused, moved aside, and no game is started.
    std::string changed = saved;
    changed[changed.size() / 2] = static_cast<char>(changed[changed.size() / 2] + 1);
    game.Dir.Write("savegame.sav", changed);
    const std::string ini = game.Dir.Read("tolva2.ini");
    r = game.Session("resume\nlabels\nquit\n");
    EXPECT_TRUE(Contains(r.out, "message: The saved game is damaged and cannot be resumed.\nScore: 000.000.000\nLevel: \n")) << r.out;
    EXPECT_FALSE(std::filesystem::exists(game.Dir / "savegame.sav"));
    EXPECT_EQ(game.Dir.Read("savegame.bad"), changed);
    EXPECT_EQ(game.Dir.Read("tolva2.ini"), ini);

    // A save of the other set resumes in that set.
    r = game.Session("set miniatures\nnewgame 1\nclick 0 0\nwait 2000\nsave\n");
    r = game.Session("resume\nlabels\nquit\n");
    EXPECT_TRUE(Contains(r.out, "LevelName: " )) << r.out;
    EXPECT_FALSE(Contains(r.out, "LevelName: First Steps")) << r.out;
}
