// tolva2-cli autoplay, run as a script runs it: the shipped default set played round from
// level 1 to level 1, short runs that replay exactly by their seed, and bad arguments.
#include "support/TempFolder.h"

#include "CliRunner.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace {

struct AutoplayRun {
    int status = -1;
    std::vector<std::string> lines;
};

AutoplayRun Cli(const std::string& arguments) {
    const tolva::testing::CliRun run = tolva::testing::Cli("autoplay " + arguments);
    return {run.status, run.Lines()};
}

const std::string DefaultSet = "'" + std::string(TOLVA_SOURCE_DIR) + "/game/levels/default'";

} // namespace

TEST(CliAutoplay, PlaysTheWholeDefaultSetRoundToLevelOne) {
    for (const char* aniDraw : {"on", "off"}) {
        const AutoplayRun run = Cli(DefaultSet + " --anidraw " + aniDraw);
        ASSERT_EQ(run.status, 0) << aniDraw << ": " << (run.lines.empty() ? "" : run.lines.back());
        ASSERT_EQ(run.lines.size(), 102u);   // 101 level starts and the summary
        for (int n = 1; n <= 100; ++n) {
            char head[16];
            std::snprintf(head, sizeof head, "level %3d ", n);
            EXPECT_EQ(run.lines[static_cast<std::size_t>(n - 1)].rfind(head, 0), 0u) << run.lines[static_cast<std::size_t>(n - 1)];
        }
        EXPECT_EQ(run.lines[100].rfind("level   1 ", 0), 0u);
        EXPECT_NE(run.lines[100].find("left level 100:"), std::string::npos);
        EXPECT_EQ(run.lines[101].rfind("autoplay: 101 level starts, 100 levels played", 0), 0u) << run.lines[101];
        EXPECT_NE(run.lines[101].find("no fault"), std::string::npos);
    }
}

TEST(CliAutoplay, ASeedReplaysTheSameGameAndBadArgumentsAreRefused) {
    const AutoplayRun first = Cli(DefaultSet + " --levels 8 --seed 5");
    const AutoplayRun again = Cli(DefaultSet + " --levels 8 --seed 5");
    const AutoplayRun other = Cli(DefaultSet + " --levels 8 --seed 6");
    ASSERT_EQ(first.status, 0);
    ASSERT_EQ(first.lines.size(), 9u);
    EXPECT_EQ(first.lines, again.lines);
    EXPECT_NE(first.lines, other.lines);
    EXPECT_EQ(first.lines[8].rfind("autoplay: 8 level starts, 7 levels played", 0), 0u) << first.lines[8];

    tolva::testing::TempFolder empty;
    EXPECT_EQ(Cli("'" + empty.Path() + "'").status, 1);   // no levels.set
    EXPECT_EQ(Cli("").status, 2);
    EXPECT_EQ(Cli(DefaultSet + " --levels 0").status, 2);
    EXPECT_EQ(Cli(DefaultSet + " --seed").status, 2);
    EXPECT_EQ(Cli(DefaultSet + " --anidraw maybe").status, 2);
    EXPECT_EQ(Cli(DefaultSet + " extra").status, 2);
}
