// The multiplier of the level bonus. The score of a removal and the ends of a level and of
// a game are in the events that the click, compaction and spell tests expect.
#include "BoardFixture.h"

using tolva::testing::BoardFixture;
using tolva::testing::Rows;

TEST(LevelEnd, MultiplierRisesFromOneLessThanTheSideAndStopsAtNine) {
    BoardFixture f;
    f.Start({"111111111.",
             "22222222.3",
             "4545454545",
             "5454545454",
             "4545454545",
             "5454545454",
             "4545454545",
             "5454545454",
             "4545454545",
             "5454545454"});
    f.Click(0, 1);   // 8 bricks on a side of 10: no step
    f.Click(0, 0);   // 9 bricks: one step
    EXPECT_EQ(f.Events.Take(), (Rows{"BonusTimes(0)", "NewScore(64)", "BricksRemoved(8)", "RemoveClick(1)",
                                     "BonusTimes(1)", "NewScore(81)", "BricksRemoved(9)", "RemoveClick(1)"}));
    EXPECT_EQ(f.Game->BonusTimes, 1);

    // At 9 a qualifying click leaves it at 9, and the event carries 9 again.
    f.Start({"11", "23"});
    f.Game->BonusTimes = 9;
    f.Click(0, 0);
    EXPECT_EQ(f.Events.Take().front(), "BonusTimes(9)");
    EXPECT_EQ(f.Game->BonusTimes, 9);
}
