// The level tools' plain-click model, solver and rating, on small boards: the model
// keeps to the game's rules cell for cell, what the solver finds clears the level on
// the game's own board, and the rating counts what careless players manage.
#include "BoardFeatures.h"
#include "EngineReplay.h"
#include "LevelRating.h"
#include "LevelSetTestFiles.h"
#include "LevelSolver.h"
#include "board/BoardFixture.h"
#include "levels/LevelSetReader.h"
#include "support/ZenkorModule.h"
#include "testsupport/HeadlessPlatform.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <tuple>
#include <vector>

using namespace tolva;
using namespace tolva::levelgen;

namespace {

// A level from board text (see BoardFixture.h) whose rows stand at the bottom of a side x
// side square; `spells` hides spell numbers under bricks, by cell.
LevelRecord MakeLevel(int side, std::vector<std::string> rows, const std::vector<std::pair<Cell, int>>& spells = {}) {
    rows.insert(rows.begin(), static_cast<std::size_t>(side) - rows.size(), "");
    LevelRecord level;
    tolva::testing::FillLevel(level, "Test", rows);
    for (const auto& [cell, spell] : spells) level.SpellGrid(cell.x, cell.y) = static_cast<std::int16_t>(spell);
    return level;
}

// True when `clicks` clear `level` on TolvaBoard, as level 1 of a fresh game.
bool EngineClears(const LevelRecord& level, const std::vector<Cell>& clicks) {
    auto game = std::make_unique<LevelModule>();
    game->Levels[0] = level;
    HeadlessPlatform host;
    return levelgen::EngineClears(*game, 1, clicks, host.Platform());
}

SolveOptions Budget(double seconds) {
    SolveOptions o;
    o.seconds = seconds;
    return o;
}

} // namespace

TEST(PlayBoard, RandomClicksLeaveTheSameGridsAsTheEngine) {
    // Random boards of three colours with hidden spells, a spell lying on the board and
    // holes in the air; each click is made on both and every cell compared after it.
    // The last rounds play the largest board, where a click lets only the columns it
    // touched fall and moves the ones right of an emptied column as a block.
    std::mt19937_64 rng(7);
    for (int round = 0; round < 44; ++round) {
        const int side = round < 40 ? 10 + round % 3 : MaxBricks;
        LevelRecord level;
        level.levelbricks = static_cast<std::int16_t>(side);
        level.LevelName = "Random";
        for (int x = 0; x < side; ++x)
            for (int y = 0; y < side; ++y) {
                const int roll = static_cast<int>(rng() % 40);
                level.BrickGrid(x, y) = roll < 2 ? CellEmpty : roll < 3 ? std::int16_t{12} : static_cast<std::int16_t>(roll % 3);
                if (roll % 11 == 5) level.SpellGrid(x, y) = static_cast<std::int16_t>(roll % 6);
            }
        tolva::testing::BoardFixture f;
        TolvaBoard& engine = f.Board;
        f.Game->Levels[0] = level;
        engine.AniDraw = false;
        bool cleared = false;   // the level's bonus is the engine's word that it is cleared
        f.Events.OnEvent = [&](const std::string& e) { cleared = cleared || e.rfind("BonusScore", 0) == 0; };
        std::int16_t number = 1;
        engine.NewGame(number);
        PlayBoard model(level);
        std::vector<Group> groups;
        for (int move = 0; move < (side == MaxBricks ? 300 : 60); ++move) {
            model.FindGroups(groups);
            if (groups.empty() || cleared) break;
            const Group g = groups[rng() % groups.size()];
            ASSERT_GT(model.Click(g.at.x, g.at.y), 0);
            engine.BoardClick(g.at.x, g.at.y);
            if (cleared) {
                EXPECT_TRUE(model.Cleared());
                break;
            }
            for (int x = 0; x < side; ++x)
                for (int y = 0; y < side; ++y)
                    ASSERT_EQ(model.Brick(x, y), engine.Bricks(x, y)) << "round " << round << " move " << move << " at " << x << "," << y;
        }
    }
}

TEST(LevelSolver, AMendedLineClearsOnTheEngine) {
    // A board of four colours whose first, one-board-wide pass ends short of a clear;
    // with no time for widening and all of the rest for mending, the clear must come
    // from a pass started part way along that line, and replayed from the start it
    // must clear the game's own board.
    const LevelRecord level = MakeLevel(10, {"30010031", "00332331", "22332213", "22213023",
                                             "33003232", "21231310", "10002321", "03123312"});
    const PlayBoard board(level);
    SolveOptions o = Budget(10);
    o.wideningShare = 0;
    o.mendingShare = 1;
    std::vector<PassReport> passes;
    o.onPass = [&](const PassReport& r) { passes.push_back(r); };
    const SolveResult r = SolveLevel(board, o);
    ASSERT_TRUE(r.solved);
    ASSERT_FALSE(passes.empty());
    EXPECT_EQ(passes.front().from, 0);
    EXPECT_EQ(passes.front().width, 1);
    EXPECT_GT(passes.front().fewestCells, 0);
    EXPECT_GT(r.from, 0);
    EXPECT_LT(r.from, static_cast<int>(r.clicks.size()));
    for (std::size_t i = 1; i < passes.size(); ++i) EXPECT_GT(passes[i].from, 0) << "pass " << i;
    EXPECT_TRUE(ReplayClears(board, r.clicks));
    EXPECT_TRUE(EngineClears(level, r.clicks));
    // Mending draws its cut points and weights from the seed alone.
    EXPECT_EQ(SolveLevel(board, o).clicks, r.clicks);
}

TEST(LevelSolver, AColourLeftAloneIsNoClear) {
    const PlayBoard lone(MakeLevel(10, {"0", "1", "1"}));
    EXPECT_TRUE(HasStrandedBrick(lone));
    SolveResult r = SolveLevel(lone, Budget(10));
    EXPECT_FALSE(r.solved);
    EXPECT_TRUE(r.clicks.empty());

    // Every colour has two, but the 1s are walled in by 0s that can only go in a way
    // that leaves one 1 behind: the search runs out of boards, not out of time.
    const PlayBoard walled(MakeLevel(10, {"1", "0", "1", "00"}));
    EXPECT_FALSE(HasStrandedBrick(walled));
    r = SolveLevel(walled, Budget(1e6));
    EXPECT_FALSE(r.solved);

    const PlayBoard empty(MakeLevel(10, {}));
    r = SolveLevel(empty, Budget(1));
    EXPECT_TRUE(r.solved);
    EXPECT_TRUE(r.clicks.empty());
}

TEST(LevelSolver, AnyBudgetAboveZeroLeavesTimeToSearch) {
    // A budget beyond the clock's range used to wrap into the past and end the search
    // before it began; it is cut to a long one now. A budget of nothing gives no search.
    // The 1s meet only once the columns between them close up; the spell under the top
    // left 3 is uncovered by the last click, falls into the bottom row and is collected.
    const LevelRecord level = MakeLevel(10, {"3..3", "1221", "3113"}, {{Cell{0, 7}, 4}});
    for (double seconds : {1e10, 1e300}) {
        const SolveResult r = SolveLevel(PlayBoard(level), Budget(seconds));
        EXPECT_TRUE(r.solved) << seconds;
        EXPECT_TRUE(EngineClears(level, r.clicks));
    }
    EXPECT_FALSE(SolveLevel(PlayBoard(level), Budget(0)).solved);
}

TEST(LevelSolver, ACapOnBoardsEndsTheSearchTheSameWayOnEveryMachine) {
    // A miniature the first passes clear only at a width of a few boards, so that the
    // cap falls in the middle of a search of several passes.
    const tolva::testing::ShippedSet set("miniatures");
    ASSERT_GE(set.load.LevelsStored(), 8);
    const PlayBoard board(set.Level(8));
    SolveOptions timed = Budget(60);
    timed.seed = 8;
    const SolveResult free = SolveLevel(board, timed);
    ASSERT_TRUE(free.solved);
    ASSERT_GT(free.states, 2000u) << "the miniature is too easy to cut its search short";

    // Capped where the timed search found its clear: the same clear, with all the time
    // in the world.
    SolveOptions capped = timed;
    capped.seconds = MaxSolveSeconds;
    capped.maxStates = free.states;
    const SolveResult same = SolveLevel(board, capped);
    ASSERT_TRUE(same.solved);
    EXPECT_EQ(same.clicks, free.clicks);
    EXPECT_EQ(same.states, free.states);

    // Capped at half of that: no clear, and the search stops soon after the cap, however
    // much time is left, at the same count every time.
    capped.maxStates = free.states / 2;
    const SolveResult half = SolveLevel(board, capped);
    EXPECT_FALSE(half.solved);
    EXPECT_GE(half.states, capped.maxStates);
    EXPECT_LT(half.states, free.states);
    EXPECT_EQ(SolveLevel(board, capped).states, half.states);
}

TEST(BoardFeatures, SinglesAreSortedByHowFarTheirColourIs) {
    // Columns from the left: 0 over 2 over 0 (each 0 has the other one brick away in its
    // column); 1 beside the 1-column; 3 with no 3 near; a pair of 4s.
    const PlayBoard board(MakeLevel(10, {"0....3", "21.4.3", "01144c"}));
    const BoardFeatures f = MeasureBoard(board);
    EXPECT_EQ(f.occupied, 12);
    EXPECT_EQ(f.groups, 3);            // the three 1s, the three 4s, the two 3s
    EXPECT_EQ(f.singlesInColumn, 2);   // both 0s of column 0
    EXPECT_EQ(f.singlesBeside, 0);
    EXPECT_EQ(f.singlesFar, 1);        // the 2
    EXPECT_EQ(f.coloursLeft, 5);       // the spell lying on the board is no colour
    EXPECT_EQ(f.singleDistance, 1 + 1 + 100);   // the lone 2 costs the most there is
    EXPECT_TRUE(f.dead);               // the 2 is the only one of its colour
    const BoardFeatures threeGroups{.groups = 3};
    const BoardFeatures twoGroupsAndAFarSingle{.groups = 2, .singlesFar = 1};
    EXPECT_LT(threeGroups.Estimate(), twoGroupsAndAFarSingle.Estimate());

    // Groups are counted without a flood fill: a block, an L and a column of one colour
    // each count once, a ring with its hole once less (the count's known blind spot).
    EXPECT_EQ(MeasureBoard(PlayBoard(MakeLevel(10, {"11.3", "112333"}))).groups, 2);
    EXPECT_EQ(MeasureBoard(PlayBoard(MakeLevel(10, {"1", "1", "12", "22"}))).groups, 2);
    EXPECT_EQ(MeasureBoard(PlayBoard(MakeLevel(10, {"111", "121", "111"}))).groups, 0);

    // A single whose colour stands in the next column but one, three rows up: the one
    // column between (two bricks) must go and the rows must come level.
    const BoardFeatures apart = MeasureBoard(PlayBoard(MakeLevel(10, {"..1", "..2", "..3", "123"})));
    EXPECT_EQ(apart.singlesFar, 2);    // the 1s have no 1 in or beside their columns
    EXPECT_EQ(apart.singleDistance, 2 * (1 + 3) + 1 + 1 + 1 + 1);
}

TEST(BoardFeatures, AChildMeasuredByItsChangedColumnsMatchesAWholeMeasure) {
    // Random boards of up to 24 columns, four colours, hidden spells and holes; every
    // click's child is measured both ways, along games that empty whole columns.
    std::mt19937_64 rng(11);
    std::vector<Group> groups;
    for (int round = 0; round < 30; ++round) {
        const int side = 12 + round % 13;
        LevelRecord level;
        level.levelbricks = static_cast<std::int16_t>(side);
        for (int x = 0; x < side; ++x)
            for (int y = 0; y < side; ++y) {
                const int roll = static_cast<int>(rng() % 50);
                level.BrickGrid(x, y) = roll < 4 ? CellEmpty : static_cast<std::int16_t>(roll % 4);
                if (roll % 13 == 7) level.SpellGrid(x, y) = static_cast<std::int16_t>(roll % 6);
            }
        PlayBoard board(level);
        board.FindGroups(groups);
        if (groups.empty()) continue;
        board.Click(groups.front().at.x, groups.front().at.y);   // the start board has not fallen
        ColumnParts parts, childParts, wholeParts;
        MeasureBoard(board, parts);
        for (int move = 0; move < 400; ++move) {
            board.FindGroups(groups);
            if (groups.empty()) break;
            const Group g = groups[rng() % groups.size()];
            PlayBoard child = board;
            child.Click(g.at.x, g.at.y);
            const BoardFeatures part = MeasureChild(board, parts, child, g, childParts);
            const BoardFeatures whole = MeasureBoard(child, wholeParts);
            auto totals = [](const BoardFeatures& b) {
                return std::tuple(b.occupied, b.groups, b.singlesInColumn, b.singlesBeside, b.singlesFar,
                                  b.singleDistance, b.coloursLeft, b.dead);
            };
            ASSERT_EQ(totals(part), totals(whole)) << round << "/" << move;
            ASSERT_EQ(part.occupied, child.Occupied());
            // Column by column too: a share copied from the parent that should have
            // been measured again may still add up to the right totals by chance.
            ASSERT_EQ(childParts.columns, wholeParts.columns);
            for (int x = 0; x < wholeParts.columns; ++x) {
                const ColumnPart& c = childParts.parts[static_cast<std::size_t>(x)];
                const ColumnPart& w = wholeParts.parts[static_cast<std::size_t>(x)];
                ASSERT_EQ(c.distance, w.distance) << round << "/" << move << " column " << x;
                ASSERT_EQ(c.paired - c.joins + c.squares, w.paired - w.joins + w.squares) << round << "/" << move;
                ASSERT_EQ(c.inColumn + 2 * c.beside + 3 * c.far, w.inColumn + 2 * w.beside + 3 * w.far) << round << "/" << move;
            }
            board = child;
            parts = childParts;
        }
    }
}

TEST(LevelRating, CountsTheCarelessPlayersWhoClear) {
    // A board every player clears, the lone colour and the printed line are the command
    // line's test.
    // Order matters here: taking the 2s first joins the 1s, taking the 1 pair first
    // strands a 1. Some players but not all clear it, the same ones for the same seed.
    // The hidden spell under the right 1 is collected by the clearing click.
    const LevelRecord level = MakeLevel(10, {"1", "2", "2", "11"}, {{Cell{1, 9}, 3}});
    const LevelRating r = RateLevel(PlayBoard(level), 1, 200, 5);
    EXPECT_GT(r.cleared, 0);
    EXPECT_LT(r.cleared, 200);
    // Those who fail leave the lone 1 once the 2s went: one cell of the five.
    EXPECT_DOUBLE_EQ(r.LeftShare(), (200 - r.cleared) / 200.0 / 5.0);
    EXPECT_EQ(r.spells, 1);
    EXPECT_EQ(r.colours, 2);
    EXPECT_EQ(RateLevel(PlayBoard(level), 1, 200, 5).cleared, r.cleared);
    EXPECT_EQ(RateLevel(PlayBoard(level), 1, 0, 5).Rate(), 0.0);
}
