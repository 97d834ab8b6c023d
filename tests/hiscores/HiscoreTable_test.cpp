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

TEST(HiscoreTable, ScoresBelowOneNeverEnterAndOneTakesTheTopOfAnEmptyTable) {
    Hiscores table;
    for (const double score : {0.0, 0.99, -5.0}) {
        std::int16_t place = 7;
        table.CheckAndSetHiscore(score, place);
        EXPECT_EQ(place, -1) << score;
        EXPECT_EQ(table.CheckHiscorePlace(score), -1) << score;
    }
    EXPECT_EQ(table.Entries, Hiscores{}.Entries);

    table[9].Name = "LST";
    EXPECT_EQ(table.CheckHiscorePlace(1), 1);
    std::int16_t place = -1;
    table.CheckAndSetHiscore(1, place);
    EXPECT_EQ(place, 0);
    EXPECT_EQ(table[1], (HiscoreEntry{"...", 0, 0}));
    for (int i = 0; i < Hiscores::Places; ++i) EXPECT_NE(table[i].Name, "LST") << i;  // entry 9 dropped off
}

TEST(HiscoreTable, ATieGoesToTheNewScoreTheRestMoveDownAndBelowAllTakesNone) {
    const Hiscores before = Full();
    Hiscores table = before;
    EXPECT_EQ(table.CheckHiscorePlace(800), 3);
    EXPECT_EQ(table.CheckHiscorePlace(850), 3);
    EXPECT_EQ(table.CheckHiscorePlace(99), -1);
    EXPECT_EQ(table.Entries, before.Entries);  // asking changes nothing

    // Score, place taken, and the first place that moved down (Places: none).
    const struct {
        double score;
        int place;
        int movedFrom;
    } cases[] = {{99, -1, Hiscores::Places}, {100, 9, Hiscores::Places}, {800, 2, 3}, {5000, 0, 1}};
    for (const auto& c : cases) {
        table = before;
        std::int16_t place = -1;
        table.CheckAndSetHiscore(c.score, place);
        EXPECT_EQ(place, c.place) << c.score;
        for (int i = 0; i < c.movedFrom; ++i) EXPECT_EQ(table[i], before[i]) << c.score << " place " << i;
        for (int i = c.movedFrom; i < Hiscores::Places; ++i) EXPECT_EQ(table[i], before[i - 1]) << c.score << " place " << i;
    }
}
