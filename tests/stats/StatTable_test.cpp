#include "stats/StatTable.h"

#include "CliRunner.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using tolva::ColumnValues;

using tolva::StatRecord;
using tolva::StatTable;
using tolva::testing::Cli;
using tolva::testing::Quote;
using tolva::testing::TempFolder;

namespace {

// A table in which exactly the given levels were played once.
StatTable PlayedLevels(const std::vector<int>& levels) {
    StatTable table;
    for (int level : levels) table.Row(level - 1).Played = 1;
    return table;
}

} // namespace

TEST(StatTable, ReadsEveryKeyWhateverItsCaseAndOrder) {
    TempFolder dir;
    dir.Write("stat.ini",
              "[LEVEL3]\r\nPLAYED=4\r\nSPELL2_max=5\r\nMaxClicks=30\r\nSPELL2_min=1\r\n"
              "minclicks=12\r\nGAMEOVER=2\r\nSPELL5_MIN=7\r\nSPELL5_max=9\r\n"
              "[level100]\nplayed=1\nSPELL0_min=2.5\nSPELL0_max=3.5\nmaxclicks= 17 \n"
              "[LEVEL101]\nPLAYED=9\n");
    StatTable table;   // the progress it reports is the loading window's test
    table.OpenStatFile(dir / "stat.ini");

    // Every field at once, in column order: CLL, CLH, S0L, S0H ... S5H, Game Over, Played.
    const std::array<std::int16_t, 16> columns = {12, 30, 0, 0, 0, 0, 1, 5, 0, 0, 0, 0, 7, 9, 2, 4};
    EXPECT_EQ(ColumnValues(table.Row(2)), columns);

    // Level 100 is row 99; halves round to the even number; the totals row and the
    // section of a level beyond 100 are left alone.
    EXPECT_EQ(table.Row(99).Played, 1);
    EXPECT_EQ(table.Row(99).Spell[0].Low, 2);
    EXPECT_EQ(table.Row(99).Spell[0].High, 4);
    EXPECT_EQ(table.Row(99).MaxClicks, 17);
    EXPECT_EQ(table.Totals(), StatRecord{});
    EXPECT_EQ(table.Row(0), StatRecord{});
}

TEST(StatTable, DamagedValuesGiveZerosAndTheRestStillLoads) {
    TempFolder dir;
    dir.Write("stat.ini",
              "[LEVEL1]\nPLAYED=32768\nGAMEOVER=-32769\nMAXCLICKS=32767\nMINCLICKS=-32768\n"
              "SPELL1_min=abc\nSPELL1_max=12abc\nSPELL3_max=1e3\n"
              "garbage line without equals\n" + std::string("\0\xff\n", 3) + "[LEVEL2]\nPLAYED=6\n");
    StatTable table;
    table.Row(0).Played = 77;   // a stale value stays where the file holds nothing readable
    table.Clear();
    table.OpenStatFile(dir / "stat.ini");
    const std::array<std::int16_t, 16> first = {-32768, 32767, 0, 0, 0, 12, 0, 0, 0, 1000, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(ColumnValues(table.Row(0)), first);
    EXPECT_EQ(table.Row(1).Played, 6);

    // A missing file reads as an all-zero table.
    StatTable empty;
    empty.OpenStatFile(dir / "missing.ini");
    for (int i = 0; i <= StatTable::TotalsRow; ++i) EXPECT_EQ(empty.Row(i), StatRecord{}) << i;
}

TEST(StatTable, ScreenTotalsAddEveryLevelAndKeepOverflowingSumsAsTheyWere) {
    StatTable table;
    table.Row(0).Played = 1;
    table.Row(0).MinClicks = 32000;
    table.Row(1).MinClicks = 1000;   // would pass 32767: skipped
    table.Row(2).MinClicks = 500;    // still fits after the skip
    table.Row(3).GameOver = -5;      // a hand-edited negative value counts as it is
    table.Row(4).Played = 2;
    table.Row(5).Spell[4].High = -32768;
    table.Row(6).Spell[4].High = -1;   // would pass -32768: skipped
    table.Row(99).Played = 3;

    EXPECT_EQ(table.SumAllLevels(), 3);
    EXPECT_EQ(table.Totals().MinClicks, 32500);
    EXPECT_EQ(table.Totals().GameOver, -5);
    EXPECT_EQ(table.Totals().Played, 6);
    EXPECT_EQ(table.Totals().Spell[4].High, -32768);

    // Summing again starts from zero: two redraws leave the totals as they were.
    const StatRecord first = table.Totals();
    EXPECT_EQ(table.SumAllLevels(), 3);
    EXPECT_EQ(table.Totals(), first);
}

TEST(StatTable, GreenBarMarksTheRunOfLevelsWithoutAGap) {
    // Nothing played: the bar stands beside row 1 only.
    EXPECT_EQ(PlayedLevels({}).ProgressBars(), std::vector<int>{1});
    // Level 1 alone says nothing about the run: the bar looks at level i + 1.
    EXPECT_EQ(PlayedLevels({1}).ProgressBars(), std::vector<int>{1});
    // Levels 1, 2 and 5 (the bar to row 2) are the command line's and the window's test.
    std::vector<int> all;
    for (int level = 1; level <= 100; ++level) all.push_back(level);
    StatTable full = PlayedLevels(all);
    EXPECT_EQ(full.ProgressBars(), std::vector<int>{100});
    EXPECT_EQ(full.BarReach(), 100);

    // Level 100 played but 50 not: a bar to row 49 and one over all rows.
    std::vector<int> gap = all;
    gap.erase(gap.begin() + 49);
    EXPECT_EQ(PlayedLevels(gap).ProgressBars(), (std::vector<int>{49, 100}));
    EXPECT_EQ(PlayedLevels(gap).BarReach(), 100);

    // All but level 100: the bar ends with row 99.
    std::vector<int> but100(all.begin(), all.end() - 1);
    EXPECT_EQ(PlayedLevels(but100).ProgressBars(), std::vector<int>{99});
}

TEST(StatTable, CommandLineShowsTheTableTotalsAndBar) {
    TempFolder dir;
    dir.Write("stat.ini",
              "[LEVEL1]\r\nPLAYED=2\r\nMINCLICKS=8\r\nMAXCLICKS=11\r\n"
              "[LEVEL2]\r\nPLAYED=1\r\nGAMEOVER=1\r\nSPELL5_min=1\r\nSPELL5_max=3\r\n"
              "[LEVEL5]\r\nPLAYED=1\r\nSPELL0_max=4\r\n");
    const auto run = Cli("stats show " + Quote(dir.Path()));
    ASSERT_EQ(run.status, 0);
    const auto lines = run.Lines();
    ASSERT_EQ(lines.size(), 102u);
    EXPECT_EQ(lines[0], "1\t8\t11\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\t2");
    EXPECT_EQ(lines[1], "2\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\t1\t3\t1\t1");
    EXPECT_EQ(lines[100], "totals\t3\t8\t11\t0\t4\t0\t0\t0\t0\t0\t0\t0\t0\t1\t3\t1\t4");
    EXPECT_EQ(lines[101], "bar: 2");

    for (const std::string& bad : {std::string("stats"), std::string("stats show"), std::string("stats show a b"),
                                   "stats list " + Quote(dir.Path()), "stats show " + Quote(dir / "no-such-folder")})
        EXPECT_EQ(Cli(bad).status, 2) << bad;
}
