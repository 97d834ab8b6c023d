// The bouncing saw on the virtual clock: its 22 steps in four seconds, its way over the
// board by the table of headings, its random changes of mind, and where the end of the
// game falls among the events of its click.
#include "BoardFixture.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace tolva;
using namespace tolva::testing;

namespace {

struct Cell {
    int x, y;
    bool operator==(const Cell&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Cell& c) { return out << "(" << c.x << "," << c.y << ")"; }

// The cell the saw's picture stands on.
Cell SawCell(TolvaBoard& board) {
    const SurfaceRect b = board.Bounce().Bounds();
    return {static_cast<int>(std::lround(b.Left / b.Width)), static_cast<int>(std::lround(b.Top / b.Height))};
}

// The saw draws one random number at the start of every step (three when it draws its
// headings anew). This source hands out the numbers it is given (0 when it has none) and
// writes down, at each draw, where the saw stands and what the board looks like then.
class SawWatch final : public Random {
public:
    struct Draw {
        Cell At;
        std::int64_t Time;
        bool Playing;
        bool BoardReady;
        std::size_t Paints;
    };

    TolvaBoard* Board = nullptr;
    HeadlessPlatform* Host = nullptr;
    std::deque<double> Values;
    std::vector<Draw> Draws;

    double Next() override {
        Draws.push_back({SawCell(*Board), Host->Loop.NowMs(), Board->Bounce().IsPlaying(), Board->BoardReady,
                         Host->Surface.Records().size()});
        if (Values.empty()) return 0;
        const double v = Values.front();
        Values.pop_front();
        return v;
    }
    void Seed(std::uint64_t) override {}

    std::vector<Cell> Places() const {
        std::vector<Cell> out;
        for (const auto& d : Draws) out.push_back(d.At);
        return out;
    }
};

struct SawFixture {
    SawWatch Watch;
    BoardFixture F{&Watch};

    SawFixture() {
        Watch.Board = &F.Board;
        Watch.Host = &F.Host;
    }
    // Starts level 1 with these cells and fires a saw at (x, y).
    void Saw(const Rows& rows, int x, int y, const Rows& spells = {}) {
        F.Start(rows, spells);
        Fire(x, y);
    }
    void Fire(int x, int y) {
        F.Game->ActiveSpell = SpellSaw;
        F.Host.Surface.ClearRecords();
        F.Host.Sound.ClearCalls();
        Watch.Draws.clear();
        F.Click(x, y);
    }
};

const Rows Full5{"11111", "11111", "11111", "11111", "11111"};

} // namespace

TEST(BouncingSaw, OnALoneBrickItTakesItThenStandsStillForTwentyTwoCountedSteps) {
    SawFixture s;
    s.Saw({"1....",
           ".....",
           "..2..",
           ".....",
           "....3"},
          2, 2);
    // Four seconds, a step every 180 ms: 22 steps, at 180, 360, ... 3960 ms.
    EXPECT_EQ(s.F.Host.Loop.NowMs(), 4000);
    ASSERT_EQ(s.Watch.Draws.size(), 22u);
    for (std::size_t i = 0; i < 22; ++i) {
        EXPECT_EQ(s.Watch.Draws[i].Time, static_cast<std::int64_t>(180 * (i + 1)));
        EXPECT_EQ(s.Watch.Draws[i].At, (Cell{2, 2}));
        EXPECT_TRUE(s.Watch.Draws[i].Playing);
        EXPECT_FALSE(s.Watch.Draws[i].BoardReady);
        EXPECT_EQ(s.Watch.Draws[i].Paints, 0u);   // the saw paints nothing on the board
    }
    // Every step turned both headings: 22 turns bring them back to up and left.
    EXPECT_FALSE(s.F.Board.BounceRight);
    EXPECT_FALSE(s.F.Board.BounceDown);
    // Each step counted one brick; the board closed up inside the spell, and with no
    // move left the game ended before the saw's points came.
    EXPECT_EQ(s.F.Events.Take(), (Rows{"SpellClick(0,1)", "SpellInUse(true)", "GameOver", "SpellInUse(false)",
                                       "SpellUsed(0)", "NewScore(484)", "BricksRemoved(22)", "CanDoNextMove"}));
    EXPECT_EQ(s.F.Rows()[4], "13...");
    EXPECT_EQ(s.F.Host.Sound.Calls().size(), 1u);
    EXPECT_EQ(s.F.Host.Sound.Calls()[0].File, AppPath() + "data\\15.wav");
    // At rest again: the strip stopped and hidden, both timers off.
    EXPECT_FALSE(s.F.Board.Bounce().Visible());
    EXPECT_FALSE(s.F.Board.Bounce().IsPlaying());
    EXPECT_FALSE(s.F.Board.BounceTimer().Enabled());
    EXPECT_FALSE(s.F.Board.BounceOn().Enabled());
    EXPECT_TRUE(s.F.Board.BoardReady);

    // Without animations the same steps run as a still picture, and the sound still plays.
    // The start cell turns into its hidden spell, and the saw, standing on it, takes that
    // too: it never reaches the stock.
    s.F.Settings.PlayAnimations = false;
    s.Saw({"....", ".1..", "....", "...2"}, 1, 1, {"....", ".3..", "....", "...."});
    ASSERT_EQ(s.Watch.Draws.size(), 22u);
    for (const auto& d : s.Watch.Draws) EXPECT_FALSE(d.Playing);
    EXPECT_EQ(s.F.Host.Sound.Calls().size(), 1u);
    const auto events = s.F.Events.Take();
    EXPECT_EQ(std::count(events.begin(), events.end(), "NewSpell(3)"), 0);
    EXPECT_EQ(s.F.Rows(), (Rows{"....", "....", "....", "2..."}));
}

TEST(BouncingSaw, WalksDiagonallyAndTurnsAtWallsAndHolesKeepingItsHeadingForTheNextSaw) {
    SawFixture s;
    s.F.SetLevel(1, Full5);
    // Stored cells beyond the side of the board: the saw must never reach them.
    for (int i = 0; i < 6; ++i) {
        s.F.Game->Levels[0].BrickGrid(5, i) = 4;
        s.F.Game->Levels[0].BrickGrid(i, 5) = 4;
    }
    std::int16_t level = 1;
    s.F.Board.NewGame(level);
    s.Fire(2, 2);
    // Up and left at first. At the top left corner it turns right at once onto (1,0),
    // while the hole below keeps it heading up; at the top wall it turns down onto
    // (2,1); at the right and bottom walls likewise; a hole ahead turns it round in place.
    const std::vector<Cell> expected{{2, 2}, {1, 1}, {0, 0}, {1, 0}, {2, 1}, {3, 2}, {4, 3}, {3, 4},
                                     {2, 3}, {1, 2}, {0, 1}, {0, 1}, {0, 2}, {0, 3}, {1, 4}, {2, 4},
                                     {2, 4}, {2, 4}, {2, 4}, {2, 4}, {2, 4}, {2, 4}};
    EXPECT_EQ(s.Watch.Places(), expected);
    EXPECT_EQ(SawCell(s.F.Board), (Cell{2, 4}));
    // Boxed in at (2,4), it turned left and right each step, and it still heads down.
    EXPECT_FALSE(s.F.Board.BounceRight);
    EXPECT_TRUE(s.F.Board.BounceDown);
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(s.F.Board.Bricks(5, i), 4) << i;
        EXPECT_EQ(s.F.Board.Bricks(i, 5), 4) << i;
    }

    // The next saw sets off with that heading: left and down.
    s.F.Start(Full5);
    s.Fire(2, 2);
    ASSERT_GE(s.Watch.Draws.size(), 2u);
    EXPECT_EQ(s.Watch.Draws[1].At, (Cell{1, 3}));
}

TEST(BouncingSaw, OneStepInFourDrawsBothHeadingsAnew) {
    // 0.75 of 2000 is 1500: no new headings, so up and left.
    SawFixture keep;
    keep.Watch.Values = {0.75};
    keep.Saw(Full5, 2, 2);
    EXPECT_EQ(keep.Watch.Draws[1].At, (Cell{1, 1}));

    // Above 1500 both are drawn: down first, then right, each true when its number rounds
    // to 1 (a half rounds to the even 0).
    SawFixture turn;
    turn.Watch.Values = {0.7503, 0.5, 0.51};
    turn.Saw(Full5, 2, 2);
    EXPECT_EQ(turn.Watch.Draws[3].At, (Cell{3, 1}));   // right and up
    EXPECT_EQ(turn.Watch.Draws.size(), 24u);            // 22 steps, two of them extra draws
}
