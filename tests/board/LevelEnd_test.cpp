// The score of a removal, the multiplier of the level bonus, and the ends of a level and
// of a game.
#include "BoardFixture.h"

using tolva::testing::BoardFixture;
using Rows = std::vector<std::string>;

TEST(LevelEnd, ScoreEventsSquareTheCountOnce) {
    BoardFixture f;
    f.Board.SetScoreEvents();                 // nothing counted: no event
    f.Board.RemovedBricks = 10;
    f.Board.SetScoreEvents();
    f.Board.SetScoreEvents();                 // the second has nothing left to report
    EXPECT_EQ(f.Events.Take(), (Rows{"NewScore(100)", "BricksRemoved(10)"}));
    EXPECT_EQ(f.Board.RemovedBricks, 0);
    f.Board.RemovedBricks = 100;
    f.Board.SetScoreEvents();
    EXPECT_EQ(f.Events.Take(), (Rows{"NewScore(10000)", "BricksRemoved(100)"}));
}

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

TEST(LevelEnd, ClearingTheLastLevelPaysTheBonusAndWrapsToLevelOne) {
    BoardFixture f;
    f.SetLevel(1, {"12", "21"});
    f.SetLevel(2, {"..", "11"});
    std::int16_t level = 2;
    f.Board.NewGame(level);
    f.Events.Take();
    f.Click(0, 1);
    f.Host.Loop.Advance(f.Board.UpdateDelay());
    // The caller's end of the move comes on the level that has just started.
    EXPECT_EQ(f.Events.Take(), (Rows{"BonusTimes(1)", "NewScore(4)", "BricksRemoved(2)", "RemoveClick(2)",
                                     "BonusScore(100000,1)", "NewLevel(1)", "CanDoNextMove"}));
    EXPECT_EQ(f.Game->CurLevelNo, 1);
    EXPECT_EQ(f.Game->BonusTimes, 0);
    EXPECT_EQ(f.Rows(), (Rows{"12", "21"}));
    EXPECT_FALSE(f.Board.GameIsOver);   // level 1 has no move, yet nothing has judged it

    // A level cleared without a step still reports its bonus, with 0 steps.
    f.SetLevel(2, {"....", "....", "....", "11.."});
    f.Board.JumpToLevel(2);
    f.Events.Take();
    f.Click(0, 3);
    f.Host.Loop.Advance(f.Board.UpdateDelay());
    EXPECT_EQ(f.Events.Take(), (Rows{"BonusTimes(0)", "NewScore(4)", "BricksRemoved(2)", "RemoveClick(2)",
                                     "BonusScore(100000,0)", "NewLevel(1)", "CanDoNextMove"}));
}

TEST(LevelEnd, GameOverComesOnceFromEitherEnd) {
    BoardFixture f;
    f.Start({"11", "23"});
    f.Board.SetGameOver();
    f.Board.SetGameOver();
    EXPECT_EQ(f.Events.Take(), (Rows{"GameOver"}));
    EXPECT_TRUE(f.Board.GameIsOver);

    // Ended silently: no event, and no click is taken any more.
    f.Start({"11", "23"});
    f.Board.SetGameIsOverToTrue();
    f.Click(0, 0);
    f.Board.SetGameOver();
    EXPECT_TRUE(f.Events.Take().empty());
    EXPECT_EQ(f.Rows(), (Rows{"11", "23"}));
}
