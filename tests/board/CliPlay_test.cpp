// tolva2-cli play, run as a script runs it: a short game on a small set made here, with
// plain clicks, a collected spell, the gun, the test tube, a bonus count-up, the next
// level, a game over and a few malformed lines.
#include "support/TempFolder.h"

#include "CliRunner.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <vector>

using tolva::testing::TempFolder;

namespace {

using tolva::testing::Cli;
using tolva::testing::CliRun;
using tolva::testing::Quote;

// A row of a board of ten: the values given, then holes.
std::string Row(const std::vector<int>& values = {}) {
    std::string line;
    for (int x = 0; x < 10; ++x) {
        if (x > 0) line += ' ';
        line += std::to_string(x < static_cast<int>(values.size()) ? values[static_cast<std::size_t>(x)] : -1);
    }
    return line + "\n";
}

// Two levels of ten with their bricks in the two or three bottom rows. Level 1 hides a
// gun under its first 3 and has a row of nine 1s, a step of the level bonus.
std::string TwoLevels() {
    std::string set = "[main]\nLEVELSET=Play Test\n[level1]\nlevelbricks=10\nlevelgfxfolder=\nLevelName=Spells\n";
    for (int y = 0; y < 7; ++y) set += "r" + std::to_string(y) + "=-1\n";
    set += "r7=6,6\nr8=3,3,4,4\ns8=2\nr9=1,1,1,1,1,1,1,1,1,5\n";
    set += "[level2]\nlevelbricks=10\nlevelgfxfolder=\nLevelName=Tube\n";
    for (int y = 0; y < 8; ++y) set += "r" + std::to_string(y) + "=-1\n";
    return set + "r8=9\nr9=7,7,8,8\n";
}

} // namespace

TEST(CliPlay, AScriptedGameShowsEveryEventAndTheGrids) {
    TempFolder f;
    std::filesystem::create_directories(f / "mine");
    f.Write("mine/levels.set", TwoLevels());
    f.Write("script.txt",
            "# a short game\n"
            "click 0 8\n"
            "wait 200\n"
            "click 0 9\n"
            "wait 200\n"
            "spells\n"
            "arm gun\n"
            "click 4 9\n"
            "wait 200\n"
            "arm test tube\n"
            "click 1 9\n"
            "wait 90\n"
            "click 2 9\n"
            "wait 200\r\n"
            "grid\n"
            "\n"
            "click 0 9\n"
            "wait 200\n"
            "click 0 9\n"
            "wait -5\n"
            "arm dragon\n"
            "frobnicate\n");
    const CliRun r = Cli("play " + Quote(f / "mine") + " --level 1 --seed 7 < " + Quote(f / "script.txt"));
    std::string grid;
    for (int y = 0; y < 10; ++y) grid += Row();
    std::string tubeGrid;
    for (int y = 0; y < 8; ++y) tubeGrid += Row();
    tubeGrid += Row({9}) + Row({8, 8, 8, 8});
    const std::string expected =
        "NewLevel 1\n"
        // The pair of 3s uncovers the gun; the holes close up 200 ms later.
        "BonusTimes 0\nNewScore 4\nBricksRemoved 2\nRemoveClick 1\nCanDoNextMove\n"
        // Nine 1s earn a step; at the closing up the gun reaches the bottom row.
        "BonusTimes 1\nNewScore 81\nBricksRemoved 9\nRemoveClick 1\nNewSpell 2\nCanDoNextMove\n" +
        grid +
        // The gun from the stock takes the last row, which clears the level at the closing
        // up: one step of the bonus is counted, then the next level starts.
        "SpellClick 2 1\nSpellInUse true\nSpellInUse false\nSpellUsed 2\nNewScore 25\nBricksRemoved 5\nCanDoNextMove\n"
        "BonusScore 100000 1\nNewScore 100000\nNewLevel 2\nCanDoNextMove\n"
        // The test tube, armed without stock: a mark, then the pour onto the 8s.
        "SpellClick 3 2\nSpellInUse true\nSpellInUse false\nSpellUsed 3\nCanDoNextMove\nCanDoNextMove\n" +
        tubeGrid +
        // Four 8s go; the 9 falls alone and the game is over; a click then does nothing.
        "BonusTimes 0\nNewScore 16\nBricksRemoved 4\nRemoveClick 2\nGameOver\nCanDoNextMove\n"
        "error: wait needs milliseconds from 0 to 3600000\n"
        "error: no spell 'dragon'; use 0..5 or a name such as gun or test tube\n"
        "error: unknown command 'frobnicate'; use click, arm, wait, grid or spells\n";
    EXPECT_EQ(r.out, expected);
    EXPECT_EQ(r.status, 1);   // some lines were malformed
    EXPECT_EQ(f.EntryCount(), 2u);   // and nothing was written beside the set
}

TEST(CliPlay, RefusesWhatItCannotPlay) {
    TempFolder f;
    std::filesystem::create_directories(f / "empty");
    EXPECT_EQ(Cli("play " + Quote(f / "empty") + " --level 1 < /dev/null").status, 1);
    EXPECT_EQ(Cli("play " + Quote(f / "nowhere") + " --level 1 < /dev/null").status, 1);
    std::filesystem::create_directories(f / "mine");
    f.Write("mine/levels.set", TwoLevels());
    EXPECT_EQ(Cli("play " + Quote(f / "mine") + " < /dev/null").status, 2);
    EXPECT_EQ(Cli("play " + Quote(f / "mine") + " --level 101 < /dev/null").status, 2);
    EXPECT_EQ(Cli("play " + Quote(f / "mine") + " --level 1 --seed x < /dev/null").status, 2);
    // A level beyond the set starts level 1; an empty script ends the game at once.
    const CliRun r = Cli("play " + Quote(f / "mine") + " --level 9 < /dev/null");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "NewLevel 1\n");
}
