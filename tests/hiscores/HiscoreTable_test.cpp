// The search of the table: which place a score takes and how the entries make room.
#include "hiscores/Hiscores.h"

#include <gtest/gtest.h>

using tolva::HiscoreEntry;
using tolva::Hiscores;

namespace {

// Scores 1000, 900, ..., 100 with names "P1" .. "P10".
Hiscores Full() {
    Hiscores table;
    for (int i = 0; i < Hiscores::Places; ++i)
        table[i] = HiscoreEntry{"P" + std::to_string(i + 1), static_cast<std::int16_t>(i + 1), 1000.0 - 100 * i};
    return table;
}

} // namespace

TEST(HiscoreTable, ScoresBelowOneNeverEnter) {
    Hiscores empty;
    for (const double score : {0.0, 0.99, -5.0}) {
        std::int16_t place = 7;
        empty.CheckAndSetHiscore(score, place);
        EXPECT_EQ(place, -1);
        EXPECT_EQ(empty.CheckHiscorePlace(score), -1);
    }
    EXPECT_EQ(empty.Entries, Hiscores{}.Entries);
}

TEST(HiscoreTable, AScoreOfOneTakesTheFirstPlaceOfAnEmptyTable) {
    Hiscores table;
    table[9].Name = "LST";
    EXPECT_EQ(table.CheckHiscorePlace(1), 1);
    std::int16_t place = -1;
    table.CheckAndSetHiscore(1, place);
    EXPECT_EQ(place, 0);
    EXPECT_EQ(table[1], (HiscoreEntry{"...", 0, 0}));
    for (int i = 0; i < Hiscores::Places; ++i) EXPECT_NE(table[i].Name, "LST") << i;  // entry 9 dropped off
}

TEST(HiscoreTable, ATieGoesToTheNewScoreAndTheRestMoveDown) {
    Hiscores table = Full();
    const Hiscores before = table;
    EXPECT_EQ(table.CheckHiscorePlace(800), 3);
    EXPECT_EQ(table.CheckHiscorePlace(850), 3);
    EXPECT_EQ(table.Entries, before.Entries);  // asking changes nothing

    std::int16_t place = -1;
    table.CheckAndSetHiscore(800, place);
    EXPECT_EQ(place, 2);
    EXPECT_EQ(table[0], before[0]);
    EXPECT_EQ(table[1], before[1]);
    EXPECT_EQ(table[2], before[2]);  // stays until the caller fills it
    for (int i = 3; i < Hiscores::Places; ++i) EXPECT_EQ(table[i], before[i - 1]) << i;
}

TEST(HiscoreTable, TheLastPlaceMovesNothingAndBelowAllTakesNone) {
    Hiscores table = Full();
    const Hiscores before = table;
    std::int16_t place = -1;
    table.CheckAndSetHiscore(99, place);
    EXPECT_EQ(place, -1);
    EXPECT_EQ(table.CheckHiscorePlace(99), -1);

    table.CheckAndSetHiscore(100, place);
    EXPECT_EQ(place, 9);
    EXPECT_EQ(table.Entries, before.Entries);

    table.CheckAndSetHiscore(5000, place);
    EXPECT_EQ(place, 0);
    for (int i = 1; i < Hiscores::Places; ++i) EXPECT_EQ(table[i], before[i - 1]) << i;
}
