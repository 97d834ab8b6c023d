// The search of the table at its edges: what never enters, and the top of an empty table.
// A full table's ties and moves are the keeper's test.
#include "hiscores/Hiscores.h"

#include <gtest/gtest.h>

using tolva::HiscoreEntry;
using tolva::Hiscores;

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
