// tolva2-cli hiscore, run as a user runs it: the built tool, files and shell redirection.
#include "hiscores/Hiscores.h"
#include "hiscores/SubmissionPage.h"
#include "settings/GameSettings.h"
#include "support/CliStreams.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

using tolva::Hiscores;
using tolva::testing::Quote;
using tolva::testing::TempFolder;

namespace {

using ToolRun = tolva::testing::CliStreams;

ToolRun Hiscore(const TempFolder& dir, const std::string& arguments, const std::string& input = "") {
    return tolva::testing::RunCli(dir, "hiscore " + arguments, input);
}

} // namespace

TEST(CliHiscore, ShowReadsWhatWriteWrites) {
    TempFolder dir;
    const std::string file = Quote(dir / "hiscore.hi");
    const std::string input = "ZEN,41,1234567\nA,B\xC9,3,99.5\r\n\n\"<i>,1,7\n";
    ASSERT_EQ(Hiscore(dir, "write " + file, input).status, 0);
    const ToolRun shown = Hiscore(dir, "show " + file);
    EXPECT_EQ(shown.status, 0);
    std::string expected = "1\tZEN\t41\t1234567\n2\tA,B\xC9\t3\t99.5\n3\t\"<i>\t1\t7\n";
    for (int place = 4; place <= 10; ++place) expected += std::to_string(place) + "\t...\t0\t0\n";
    EXPECT_EQ(shown.out, expected + "checksum: ok\n");

    // What the tool writes is what the game writes.
    Hiscores table;
    ASSERT_EQ(table.Load(dir / "hiscore.hi", tolva::DefaultSetKey), tolva::HiscoreLoad::Loaded);
    ASSERT_TRUE(table.SaveScore(dir / "game.hi", tolva::DefaultSetKey));
    EXPECT_EQ(dir.Read("game.hi"), dir.Read("hiscore.hi"));

    // The other key: a file of its own, and no table under the wrong key.
    ASSERT_EQ(Hiscore(dir, "write --key other " + Quote(dir / "other.hi"), input).status, 0);
    EXPECT_NE(dir.Read("other.hi"), dir.Read("hiscore.hi"));
    EXPECT_EQ(Hiscore(dir, "show " + Quote(dir / "other.hi") + " --key other").out, expected + "checksum: ok\n");
    // Under the wrong key: ten free places and no checksum.
    std::string none;
    for (int place = 1; place <= 10; ++place) none += std::to_string(place) + "\t...\t0\t0\n";
    EXPECT_EQ(Hiscore(dir, "show " + Quote(dir / "other.hi")).out, none + "checksum: none\n");

    // A changed byte: the entries as stored, and the verdict the game would give.
    std::string bytes = dir.Read("hiscore.hi");
    const std::string score = tolva::EncryptNumber("1234567", tolva::DefaultSetKey);
    bytes.replace(bytes.find(score), score.size(), tolva::EncryptNumber("1234568", tolva::DefaultSetKey));
    dir.Write("hiscore.hi", bytes);
    const ToolRun bad = Hiscore(dir, "show " + file);
    EXPECT_EQ(bad.out.substr(0, 16), "1\tZEN\t41\t1234568");
    EXPECT_EQ(bad.out.substr(bad.out.size() - 14), "checksum: bad\n");
}

TEST(CliHiscore, StringIsTheGamesInternetForm) {
    TempFolder dir;
    ASSERT_EQ(Hiscore(dir, "write " + Quote(dir / "t.hi") + " --key other", "ABC,5,1234\n").status, 0);
    const ToolRun run = Hiscore(dir, "string --key other " + Quote(dir / "t.hi"));
    EXPECT_EQ(run.status, 0);
    Hiscores table;
    table.Load(dir / "t.hi", tolva::OtherSetKey);
    EXPECT_EQ(run.out, table.MakeHiscoreString(tolva::OtherSetKey));  // no line end
}

TEST(CliHiscore, BadArgumentsAndFailedWrites) {
    TempFolder dir;
    const std::string file = Quote(dir / "t.hi");
    ASSERT_EQ(Hiscore(dir, "write " + file, "A,1,10\n").status, 0);
    const std::string good = dir.Read("t.hi");

    for (const std::string& args : std::vector<std::string>{"", "list " + file, "show", "show " + file + " --key", "show " + file + " --key 99999",
                                   "show " + file + " --key 7x", "show " + file + " --sort", "show a b"}) {
        const ToolRun run = Hiscore(dir, args);
        EXPECT_EQ(run.status, 2) << args;
        EXPECT_EQ(run.out, "") << args;
        EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << args;
    }
    std::string eleven;
    for (int i = 0; i < 11; ++i) eleven += "A,1,1\n";
    for (const std::string& input : std::vector<std::string>{"A,1\n", "A,x,5\n", "A,1,5y\n", "A,40000,5\n", "A,1,\n", eleven}) {
        const ToolRun run = Hiscore(dir, "write " + file, input);
        EXPECT_EQ(run.status, 2) << input;
        EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << input;
        EXPECT_EQ(dir.Read("t.hi"), good) << input;
    }

    // A name longer than the game reads back is refused, and the file stays as it was;
    // the longest name that reads back whole is written.
    for (const std::size_t length : {std::size_t{2048}, std::size_t{3000}, std::size_t{10} << 20}) {
        const ToolRun run = Hiscore(dir, "write " + file, "B,2,20\n" + std::string(length, 'N') + ",1,10\n");
        EXPECT_EQ(run.status, 1) << length;
        EXPECT_NE(run.err.find("line 2"), std::string::npos) << run.err;
        EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << length;
        EXPECT_EQ(dir.Read("t.hi"), good) << length;
    }
    ASSERT_EQ(Hiscore(dir, "write " + Quote(dir / "long.hi"), std::string(2047, 'N') + ",1,10\n").status, 0);
    Hiscores longest;
    EXPECT_EQ(longest.Load(dir / "long.hi", tolva::DefaultSetKey), tolva::HiscoreLoad::Loaded);
    EXPECT_EQ(longest[0].Name, std::string(2047, 'N'));

    const ToolRun missing = Hiscore(dir, "write " + Quote(dir / "no/t.hi"), "A,1,10\n");
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(std::count(missing.err.begin(), missing.err.end(), '\n'), 1);
}

TEST(CliHiscore, PageGivesTheBytesASubmissionFromTheGameFolderWouldWrite) {
    TempFolder game;
    std::filesystem::create_directories(game / "levels/default");
    Hiscores table;
    table[0] = {"Q\"<i>", 8, 31000};
    ASSERT_TRUE(table.SaveScore(game / "levels/default/hiscore.hi", tolva::DefaultSetKey));
    game.Write("stat.ini", "[LEVEL1]\r\nclicks=4\r\n");
    game.Write("tolva2.ini", "[main]\r\nHiscoreUrl=http://127.0.0.1:8/h.asp\r\nsupplystatfile=1\r\n");

    tolva::GameSettings settings;
    settings.HiscoreUrl = "http://127.0.0.1:8/h.asp";
    settings.SupplyStatFile = true;
    const ToolRun with = Hiscore(game, "page " + Quote(game.Path() + "/"));
    EXPECT_EQ(with.status, 0);
    EXPECT_EQ(with.out, tolva::MakeSubmissionPage(game.Path() + "\\", settings, table, tolva::DefaultSetKey));

    game.Write("tolva2.ini", "[main]\r\nHiscoreUrl=http://127.0.0.1:8/h.asp\r\nsupplystatfile=0\r\n");
    const ToolRun without = Hiscore(game, "page " + Quote(game.Path()));
    EXPECT_EQ(without.status, 0);
    settings.SupplyStatFile = false;
    EXPECT_EQ(without.out, tolva::MakeSubmissionPage(game.Path() + "\\", settings, table, tolva::DefaultSetKey));

    const ToolRun missing = Hiscore(game, "page " + Quote(game / "nope"));
    EXPECT_NE(missing.status, 0);
    EXPECT_TRUE(missing.out.empty());
    EXPECT_NE(missing.err.find("not a folder"), std::string::npos);
}
