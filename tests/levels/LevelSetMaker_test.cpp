// The level maker's last word on a level: it ships a design the solver clears on its
// own, and changes nothing for a level whose chosen design the solver already clears.
#include "LevelSetMaker.h"
#include "LevelSolver.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace tolva;
using namespace tolva::levelgen;

namespace {

// Boards the solver needs for a level, seeded as `levels solve` seeds it.
std::uint64_t StatesToSolve(const LevelRecord& level, int number) {
    SolveOptions o;
    o.seconds = 60;
    o.seed = static_cast<std::uint64_t>(number);
    const SolveResult r = SolveLevel(PlayBoard(level), o);
    return r.solved ? r.states : 0;
}

bool SameBricks(const LevelRecord& a, const LevelRecord& b) { return a.BrickGrid.cells == b.BrickGrid.cells; }

} // namespace

TEST(LevelSetMaker, ShipsOnlyADesignTheSolverClears) {
    const SetPlan plan = MiniaturesSetPlan();
    const int index = 7;   // a miniature the solver needs a few thousand boards for
    MakeOptions options;
    const MadeLevel chosen = MakeLevel(plan, index, options);
    const std::uint64_t needed = StatesToSolve(chosen.record, index + 1);
    ASSERT_GT(needed, 2000u);

    // Proven within what it needs: the very design the judges chose.
    options.proveStates = needed;
    const MadeLevel proven = MakeLevel(plan, index, options);
    EXPECT_TRUE(SameBricks(proven.record, chosen.record));
    EXPECT_EQ(proven.solution, chosen.solution);

    // Within half of that the chosen design is not proven, so another one is shipped,
    // one the solver clears within the half.
    options.proveStates = needed / 2;
    ASSERT_FALSE(ProvenBySolver(chosen.record, index + 1, options.proveStates));
    const MadeLevel other = MakeLevel(plan, index, options);
    EXPECT_FALSE(SameBricks(other.record, chosen.record));
    EXPECT_TRUE(ProvenBySolver(other.record, index + 1, options.proveStates));
    EXPECT_EQ(other.record.LevelName, chosen.record.LevelName);
    EXPECT_EQ(other.record.levelgfxfolder, chosen.record.levelgfxfolder);
    PlayBoard replay(other.record);
    for (const Cell& c : other.solution) EXPECT_GT(replay.Click(c.x, c.y), 0);
    EXPECT_TRUE(replay.Cleared());

    // A solver given next to nothing proves no design at all: the maker says so rather
    // than ship an unproven one.
    options.proveStates = 1;
    EXPECT_THROW(MakeLevel(plan, index, options), std::runtime_error);
}
