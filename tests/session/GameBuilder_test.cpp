// The game as the builder puts it together: the board's events reach the session through
// the relay, the undo history sees every move, and the focus looks at the same board. The
// board without a relay is the headless game's, which the tolva2-cli session tests play.
#include "session/BoardFocus.h"
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

    // The focus outlines on this board what a click here would take.
    f.Built.Focus().PointerAt(0, 0);
    f.Built.Focus().Refresh();
    EXPECT_EQ(f.Built.Focus().Marks().Group.size(), 2u);

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
