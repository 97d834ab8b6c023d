#include "stats/StatLog.h"

#include "support/TempFolder.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>

#include <initializer_list>

using tolva::LevelTally;
using tolva::ReadIni;
using tolva::StatLog;
using tolva::testing::TempFolder;

namespace {

LevelTally Tally(std::int16_t clicks, std::array<std::int16_t, 6> spells = {}) {
    LevelTally t;
    t.LevelClicks = clicks;
    t.SpellClicks = spells;
    return t;
}

// The values of `keys` in the level's section of the log, joined by blanks; a key that
// is not there shows as "-".
std::string Keys(const StatLog& log, int level, std::initializer_list<const char*> keys) {
    std::string values;
    for (const char* key : keys) {
        const std::string value = ReadIni(log.File(), "LEVEL" + std::to_string(level), key);
        values += (values.empty() ? "" : " ") + (value.empty() ? std::string("-") : value);
    }
    return values;
}

} // namespace

TEST(StatLog, FinishedRunsKeepTheBestAndWorstAndCountPlays) {
    TempFolder dir;
    const StatLog log(dir / "stat.ini");
    const auto clicks = {"minclicks", "maxclicks", "SPELL1_min", "SPELL1_max", "played", "SPELL0_min"};

    LevelTally run = Tally(12, {0, 2, 0, 0, 0, 0});
    log.WriteStat(7, false, true, run);
    EXPECT_EQ(run.LevelClicks, 0);
    EXPECT_EQ(run.SpellClicks[1], 0);
    EXPECT_EQ(Keys(log, 7, clicks), "12 12 2 2 1 -");   // unused spells create no keys

    run = Tally(9, {0, 5, 0, 0, 0, 0});
    log.WriteStat(7, false, true, run);
    EXPECT_EQ(Keys(log, 7, clicks), "9 12 2 5 2 -");
    EXPECT_EQ(log.ClickTarget(7), 9);
    EXPECT_EQ(log.ClickTarget(8), std::nullopt);

    // A run of no clicks writes a minimum of 0, which the next run then overwrites.
    run = Tally(0);
    log.WriteStat(7, false, true, run);
    EXPECT_EQ(Keys(log, 7, {"minclicks"}), "0");
    run = Tally(15);
    log.WriteStat(7, false, true, run);
    EXPECT_EQ(Keys(log, 7, {"MINCLICKS", "MAXCLICKS", "PLAYED"}), "15 15 4");
}

TEST(StatLog, OtherSetsLogNothingAndDamagedValuesStopTheLog) {
    TempFolder dir;
    const StatLog log(dir / "stat.ini");
    LevelTally run = Tally(4, {0, 0, 3, 0, 0, 0});
    log.WriteStat(1, false, false, run);
    EXPECT_FALSE(tolva::FileExists(log.File()));
    EXPECT_EQ(run.LevelClicks, 0);
    EXPECT_EQ(run.SpellClicks[2], 3);   // only the clicks are cleared

    // A count at the top of the range is not pushed past it, and the counters stay.
    dir.Write("stat.ini", "[LEVEL2]\r\nplayed=32767\r\nmaxclicks=99999\r\n");
    run = Tally(6);
    log.WriteStat(2, true, true, run);
    EXPECT_EQ(Keys(log, 2, {"played", "gameover"}), "32767 1");
    EXPECT_EQ(run.LevelClicks, 6);
    // An out-of-range stored maximum stops a finished run before anything of it is written.
    log.WriteStat(2, false, true, run);
    EXPECT_EQ(Keys(log, 2, {"minclicks"}), "-");
    EXPECT_EQ(run.LevelClicks, 6);
    // Words where numbers belong read as 0.
    dir.Write("stat.ini", "[LEVEL5]\r\nminclicks=lots\r\n");
    EXPECT_EQ(log.ClickTarget(5), 0);
}

TEST(StatLog, TheFirstAndLastSpellAndTheCapOfTheCounters) {
    TempFolder dir;
    const StatLog log(dir / "stat.ini");
    LevelTally run = Tally(4, {2, 0, 0, 0, 0, 3});
    log.WriteStat(3, false, true, run);
    EXPECT_EQ(Keys(log, 3, {"SPELL0_min", "SPELL0_max", "SPELL5_min", "SPELL5_max"}), "2 2 3 3");

    // GAMEOVER stops at 32767: the log ends there, PLAYED is not counted and the
    // counters of the level are left as they are. Below it a lost run counts only
    // GAMEOVER and PLAYED, writes no clicks, and clears its counters.
    tolva::WriteIni(log.File(), "LEVEL4", "GAMEOVER", "32767");
    tolva::WriteIni(log.File(), "LEVEL4", "PLAYED", "40");
    LevelTally lost = Tally(6, {1, 0, 0, 0, 0, 0});
    log.WriteStat(4, true, true, lost);
    EXPECT_EQ(Keys(log, 4, {"gameover", "played"}), "32767 40");
    EXPECT_EQ(lost.LevelClicks, 6);
    tolva::WriteIni(log.File(), "LEVEL4", "GAMEOVER", "32766");
    log.WriteStat(4, true, true, lost);
    EXPECT_EQ(Keys(log, 4, {"gameover", "played", "minclicks", "SPELL0_min"}), "32767 41 - -");
    EXPECT_EQ(lost.LevelClicks, 0);
    EXPECT_EQ(lost.SpellClicks[0], 0);
}
