// The level sets shipped with the game: the default set loads and passes its own test,
// is laid out the way players meet it, and every level of both sets is cleared on the
// game's engine by its stored solution. `levels solve` output replays the same way.
#include "CliRunner.h"
#include "EngineReplay.h"
#include "LevelSetTestFiles.h"
#include "SolutionText.h"
#include "levels/LevelSetReader.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"
#include "testsupport/HeadlessPlatform.h"
#include "testsupport/SourceFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <set>

using namespace tolva;
using namespace tolva::testing;
using tolva::levelgen::EngineClears;
using tolva::levelgen::ParseSolutions;

namespace {

void ReplayStoredSolutions(const std::string& folder, const std::string& solutionFile, int levels) {
    ShippedSet set(folder);
    ASSERT_EQ(set.load.LevelsStored(), levels);
    std::set<int> replayed;
    for (const auto& solution : ParseSolutions(ReadSource("tools/levelgen/" + solutionFile))) {
        ASSERT_TRUE(solution.solved) << folder << " level " << solution.level;
        HeadlessPlatform host;
        std::size_t failedAt = 0;
        EXPECT_TRUE(EngineClears(*set.game, solution.level, solution.clicks, host.Platform(), &failedAt))
            << folder << " level " << solution.level << ": stopped at click " << failedAt;
        replayed.insert(solution.level);
    }
    EXPECT_EQ(static_cast<int>(replayed.size()), levels);
}

} // namespace

TEST(ShippedLevelSets, DefaultSetPassesItsOwnTestGrowsAndMeetsEverySpellEarlyAndOften) {
    ShippedSet set("default");
    EXPECT_EQ(set.load.Integrity, LevelSetIntegrity::Ok);
    EXPECT_EQ(set.load.SetName, "Default");
    std::set<std::string> names;
    std::map<int, std::vector<int>> spellLevels;
    std::map<std::string, std::vector<int>> worlds;
    int shaped = 0;
    for (int n = 1; n <= 100; ++n) {
        const LevelRecord& level = set.Level(n);
        EXPECT_FALSE(level.LevelName.empty()) << n;
        names.insert(level.LevelName);
        worlds[level.levelgfxfolder].push_back(n);
        int holes = 0;
        std::set<int> colours;
        for (int x = 0; x < level.levelbricks; ++x)
            for (int y = 0; y < level.levelbricks; ++y) {
                const int v = level.BrickGrid(x, y);
                const int s = level.SpellGrid(x, y);
                EXPECT_TRUE(v == CellEmpty || (v >= 0 && v <= 9)) << n;
                if (v == CellEmpty) ++holes;
                else colours.insert(v);
                if (s >= 0) spellLevels[s].push_back(n);
                EXPECT_TRUE(s == NoSpell || (s <= 5 && v >= 0)) << n;
            }
        if (holes > 0) ++shaped;
        EXPECT_LE(colours.size(), n <= 10 ? 4u : 9u) << n;
    }
    EXPECT_EQ(names.size(), 100u);
    EXPECT_EQ(set.Level(1).levelbricks, 10);
    EXPECT_EQ(set.Level(100).levelbricks, 40);
    EXPECT_LE(set.Level(10).levelbricks, 14);
    EXPECT_GE(set.Level(90).levelbricks, 34);
    EXPECT_GE(shaped, 30);
    // Ten worlds of ten levels in a row; no level shows the standard background.
    EXPECT_EQ(worlds.size(), 10u);
    EXPECT_EQ(worlds.count(""), 0u);
    for (const auto& [folder, levels] : worlds) {
        EXPECT_EQ(levels.size(), 10u) << folder;
        EXPECT_EQ(levels.back() - levels.front(), 9) << folder;
        EXPECT_EQ(levels.front() % 10, 1) << folder;
    }
    for (int spell = 0; spell < SpellCount; ++spell) {
        auto& at = spellLevels[spell];
        ASSERT_FALSE(at.empty()) << spell;
        at.erase(std::unique(at.begin(), at.end()), at.end());
        EXPECT_LE(at.front(), 15) << "spell " << spell << " comes too late";
        for (std::size_t i = 1; i < at.size(); ++i) EXPECT_LE(at[i] - at[i - 1], 6) << "spell " << spell;
        EXPECT_GE(at.back(), 95) << spell;
    }
}

TEST(ShippedLevelSets, EveryDefaultLevelIsClearedByItsStoredSolution) {
    ReplayStoredSolutions("default", "default-solutions.txt", 100);
}

TEST(ShippedLevelSets, EveryMiniatureBorrowsAWorldOfTheDefaultSetAndIsClearedByItsStoredSolution) {
    ShippedSet set("miniatures");
    EXPECT_EQ(set.load.Integrity, LevelSetIntegrity::NotChecked);
    EXPECT_EQ(set.load.SetName, "Miniatures");
    ShippedSet standard("default");
    std::set<std::string> worlds;
    for (int n = 1; n <= 100; ++n) worlds.insert("..\\default\\" + standard.Level(n).levelgfxfolder);
    std::set<std::string> used;
    for (int n = 1; n <= 20; ++n) {
        EXPECT_EQ(worlds.count(set.Level(n).levelgfxfolder), 1u) << n;
        used.insert(set.Level(n).levelgfxfolder);
    }
    EXPECT_EQ(used.size(), 10u);
    ReplayStoredSolutions("miniatures", "miniatures-solutions.txt", 20);
}

TEST(ShippedLevelSets, SolverOutputReplaysOnTheEngine) {
    // The first three default levels, copied into a set of their own.
    TempFolder f;
    std::filesystem::create_directories(f / "first");
    const std::string all = ReadSource("game/levels/default/levels.set");
    f.Write("first/levels.set", all.substr(0, all.find("[level4]")));
    const CliRun run = Cli("levels solve " + Quote(f / "first") + " --budget 20");
    EXPECT_EQ(run.status, 0);
    const std::string& out = run.out;

    ShippedSet set("default");
    const auto solutions = ParseSolutions(out);
    ASSERT_EQ(solutions.size(), 3u) << out;
    for (const auto& solution : solutions) {
        HeadlessPlatform host;
        ASSERT_TRUE(solution.solved && !solution.clicks.empty()) << "level " << solution.level;
        EXPECT_TRUE(EngineClears(*set.game, solution.level, solution.clicks, host.Platform())) << solution.level;
        // Short of its last click, or with one click more, a solution clears nothing.
        auto clicks = solution.clicks;
        clicks.push_back(clicks.back());
        std::size_t failedAt = 0;
        EXPECT_FALSE(EngineClears(*set.game, solution.level, clicks, host.Platform(), &failedAt));
        EXPECT_EQ(failedAt, solution.clicks.size());
        clicks.resize(clicks.size() - 2);
        EXPECT_FALSE(EngineClears(*set.game, solution.level, clicks, host.Platform(), &failedAt));
        EXPECT_EQ(failedAt, clicks.size());
    }
}
