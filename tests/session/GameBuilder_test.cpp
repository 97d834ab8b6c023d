// The game as the builder puts it together: the board's events reach the session through
// the relay and the undo history sees every move. The board without a relay is the headless
// game's, which the tolva2-cli session tests play; the focus is the builder's own in the
// board focus tests.
#include "session/GameBuilder.h"
#include "session/UndoHistory.h"

#include "session/SessionFixture.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace tolva;
using namespace tolva::testing;

TEST(GameBuilder, WiresTheBoardTheSessionTheUndoAndTheFocus) {
    SessionFixture f;
    f.SetLevel(1, {"112", "332", "444"});
    ASSERT_TRUE(f.Session.NewGame(1));
    EXPECT_EQ(&f.Built.Board(), &f.Board);
    EXPECT_EQ(&f.Built.Session(), &f.Session);

    // A removal: the relay counted it, the session scored it, the history kept the move.
    EXPECT_EQ(f.Built.Undo().Steps(), 0u);
    f.Click(0, 0);
    EXPECT_EQ(f.Events.Moves, 1);
    EXPECT_GT(f.Session.Score, 0);
    EXPECT_EQ(f.Session.Score, f.Events.Points);
    EXPECT_EQ(f.Built.Undo().Steps(), 1u);
    ASSERT_TRUE(f.Built.Undo().Undo());
    EXPECT_EQ(f.Session.Score, 0);

    // The board is made once: a second one would leave the session driving the first.
    EXPECT_THROW(f.Built.BuildBoard(), std::logic_error);
}
