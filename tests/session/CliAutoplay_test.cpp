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

tolva::testing::CliRun Autoplay(const std::string& arguments) { return tolva::testing::Cli("autoplay " + arguments); }

const std::string DefaultSet = "'" + std::string(TOLVA_SOURCE_DIR) + "/game/levels/default'";

} // namespace

TEST(CliAutoplay, PlaysTheWholeDefaultSetRoundToLevelOne) {
    for (const char* aniDraw : {"on", "off"}) {
        const tolva::testing::CliRun run = Autoplay(DefaultSet + " --anidraw " + aniDraw);
        const auto lines = run.Lines();
        ASSERT_EQ(run.status, 0) << aniDraw << ": " << (lines.empty() ? "" : lines.back());
        ASSERT_EQ(lines.size(), 102u);   // 101 level starts and the summary
        for (int n = 1; n <= 100; ++n) {
            char head[16];
            std::snprintf(head, sizeof head, "level %3d ", n);
            EXPECT_EQ(lines[static_cast<std::size_t>(n - 1)].rfind(head, 0), 0u) << lines[static_cast<std::size_t>(n - 1)];
        }
        EXPECT_EQ(lines[100].rfind("level   1 ", 0), 0u);
        EXPECT_NE(lines[100].find("left level 100:"), std::string::npos);
        EXPECT_EQ(lines[101].rfind("autoplay: 101 level starts, 100 levels played", 0), 0u) << lines[101];
        EXPECT_NE(lines[101].find("no fault"), std::string::npos);
    }
}

TEST(CliAutoplay, ASeedReplaysTheSameGameAndBadArgumentsAreRefused) {
    const tolva::testing::CliRun first = Autoplay(DefaultSet + " --levels 8 --seed 5");
    const auto lines = first.Lines();
    ASSERT_EQ(first.status, 0);
    ASSERT_EQ(lines.size(), 9u);
    EXPECT_EQ(first.out, Autoplay(DefaultSet + " --levels 8 --seed 5").out);
    EXPECT_NE(first.out, Autoplay(DefaultSet + " --levels 8 --seed 6").out);
    EXPECT_EQ(lines[8].rfind("autoplay: 8 level starts, 7 levels played", 0), 0u) << lines[8];

    tolva::testing::TempFolder empty;
    EXPECT_EQ(Autoplay("'" + empty.Path() + "'").status, 1);   // no levels.set
    EXPECT_EQ(Autoplay("").status, 2);
    EXPECT_EQ(Autoplay(DefaultSet + " --levels 0").status, 2);
    EXPECT_EQ(Autoplay(DefaultSet + " --seed").status, 2);
    EXPECT_EQ(Autoplay(DefaultSet + " --anidraw maybe").status, 2);
    EXPECT_EQ(Autoplay(DefaultSet + " extra").status, 2);
}
