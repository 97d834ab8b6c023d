// Taking moves back: only the moves of the level being played, never across a new game or
// a new level, whose start would otherwise come back with the old board.
#include "SessionFixture.h"
#include "session/UndoHistory.h"

#include <stdexcept>

using tolva::testing::SessionFixture;
using Rows = std::vector<std::string>;

TEST(UndoHistory, TakesBackOnlyTheMovesOfTheLevelBeingPlayed) {
    SessionFixture f;
    tolva::UndoHistory& undo = f.Built.Undo();
    f.StartGame({"112", "334", "556"});
    f.Click(0, 0);
    f.Host.Loop.Advance(f.Board.UpdateDelay());
    EXPECT_EQ(undo.Steps(), 1u);

    // A new game on the same level: the old game's move is not this one's to take back.
    ASSERT_TRUE(f.Session.NewGame(1));
    const Rows start = f.Rows();
    EXPECT_FALSE(undo.CanUndo());
    f.Click(0, 1);
    f.Host.Loop.Advance(f.Board.UpdateDelay());
    const Rows afterMove = f.Rows();
    ASSERT_NE(afterMove, start);
    EXPECT_EQ(undo.Steps(), 1u);
    ASSERT_TRUE(undo.Undo());
    EXPECT_EQ(f.Rows(), start);
    EXPECT_FALSE(undo.CanUndo());
    EXPECT_FALSE(undo.Undo());
    EXPECT_EQ(f.Rows(), start);

    // The builder makes the board once: a second one would leave the session driving the first.
    EXPECT_THROW(f.Built.BuildBoard(), std::logic_error);
}
