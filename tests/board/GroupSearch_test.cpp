// Pixel to cell, what makes a group, and how Hunt takes a group off the board.
#include "BoardFixture.h"

#include <cmath>
#include <limits>

using tolva::testing::BoardFixture;
using tolva::testing::Rows;

TEST(GroupSearch, PixelToCellGivesRightAndLowerEdgeToTheCell) {
    BoardFixture f;
    f.Host.Surface.Resize(500, 300);   // GetY must use the height, GetX the width
    f.Board.SetxBricks(20);            // cells of 25 x 15
    auto& b = f.Board;
    EXPECT_EQ(b.GetX(0), -1);          // the left edge belongs to the neighbour: off the board
    EXPECT_EQ(b.GetX(0.01f), 0);
    EXPECT_EQ(b.GetX(25), 0);
    EXPECT_EQ(b.GetX(25.01f), 1);
    EXPECT_EQ(b.GetX(500), 19);        // the right edge of the surface is the last cell
    EXPECT_EQ(b.GetX(500.5f), 20);
    EXPECT_EQ(b.GetX(-30), -2);
    EXPECT_EQ(b.GetY(0), -1);
    EXPECT_EQ(b.GetY(15), 0);
    EXPECT_EQ(b.GetY(15.5f), 1);
    EXPECT_EQ(b.GetY(300), 19);

    // On sides whose cell width is no exact number, a pixel on an edge still belongs to
    // the cell on its left, and the far edge to the last cell.
    f.Host.Surface.Resize(500, 500);
    for (int side : {7, 9, 15, 29, 30, 39}) {
        b.SetxBricks(static_cast<std::int16_t>(side));
        for (int k = 1; k <= side; ++k) {
            if ((500 * k) % side != 0) continue;   // only edges that fall on a whole pixel
            EXPECT_EQ(b.GetX(static_cast<float>(500 * k / side)), k - 1) << side << " " << k;
        }
        EXPECT_EQ(b.GetX(500), side - 1) << side;
    }

    // A surface with no size, and pixels that are no numbers, are off the board.
    f.Host.Surface.Resize(0, 0);
    EXPECT_EQ(b.GetX(10), -1);
    f.Host.Surface.Resize(500, 500);
    EXPECT_EQ(b.GetX(std::numeric_limits<float>::quiet_NaN()), -1);
    EXPECT_EQ(b.GetX(std::numeric_limits<float>::infinity()), -1);
    EXPECT_GT(b.GetX(1e30f), 39);
}

TEST(GroupSearch, GetBrickReadsTheWholeGridAndGivesZeroOutside) {
    BoardFixture f;
    f.Start({"12", "34"});
    f.Board.Bricks(30, 39) = 7;
    EXPECT_EQ(f.Board.GetBrick(1, 1), 4);
    EXPECT_EQ(f.Board.GetBrick(30, 39), 7);        // beyond the side in use: still read
    EXPECT_EQ(f.Board.GetBrick(-1, 0), 0);
    EXPECT_EQ(f.Board.GetBrick(0, 40), 0);
    EXPECT_EQ(f.Board.GetBrick(0.5, 0), 1);        // a fraction rounds, ties to even
    EXPECT_EQ(f.Board.GetBrick(0.4, 1.4), 3);
    EXPECT_EQ(f.Board.GetBrick(1.5, 0), -1);       // 1.5 goes to 2, beyond the pair
    EXPECT_EQ(f.Board.GetBrick(std::nan(""), 0), 0);
}

TEST(GroupSearch, IsValidNeedsASameNeighbourOnTheBoardWithoutWrap) {
    BoardFixture f;
    f.Start({"1..1",
             "2.aa",
             "XX.3",
             "3.5."});
    auto& b = f.Board;
    EXPECT_FALSE(b.IsValid(0, 0));   // lone brick; the same colour in the last column is no neighbour
    EXPECT_FALSE(b.IsValid(3, 0));
    EXPECT_FALSE(b.IsValid(1, 0));   // an empty cell next to an empty cell
    EXPECT_TRUE(b.IsValid(2, 1));    // two of the same spell
    EXPECT_TRUE(b.IsValid(3, 1));
    EXPECT_TRUE(b.IsValid(0, 2));    // a pair of the reserved value
    EXPECT_FALSE(b.IsValid(0, 3));   // no wrap from the last column to the first
    EXPECT_FALSE(b.IsValid(3, 2));   // nor from the bottom row to the top
    EXPECT_FALSE(b.IsValid(-1, 0));
    EXPECT_FALSE(b.IsValid(0, 40));

    // A same neighbour beyond the side in use does not count.
    b.Bricks(3, 3) = 6;
    b.Bricks(4, 3) = 6;
    EXPECT_FALSE(b.IsValid(3, 3));
}

TEST(GroupSearch, HuntTakesTheConnectedGroupAndUncoversHiddenSpells) {
    BoardFixture f;
    // A U whose arms meet only through the bottom row; three of its bricks hide spells.
    f.Start({"1.12",
             "1.12",
             "1112",
             "2222"},
            {"3...",
             "....",
             ".5.0",
             "..1."});
    f.Board.RemovedBricks = 0;
    f.Board.Hunt(0, 0);
    EXPECT_EQ(f.Rows(), (Rows{"d..2",
                              "...2",
                              ".f.2",
                              "2222"}));
    EXPECT_EQ(f.Board.RemovedBricks, 7);
    // Spells keep their numbers under the uncovered cells.
    EXPECT_EQ(f.Board.Spells(0, 0), 3);
    EXPECT_EQ(f.Board.Spells(1, 2), 5);

    // The colour-2 group: the hidden spells under it come up, counted with the group.
    f.Board.RemovedBricks = 0;
    f.Board.Hunt(3, 3);
    EXPECT_EQ(f.Rows(), (Rows{"d...",
                              "....",
                              ".f.a",
                              "..b."}));
    EXPECT_EQ(f.Board.RemovedBricks, 7);

    // A pair of spells goes like a pair of bricks and uncovers nothing.
    f.Start({"bb", "1."}, {"23", ".."});
    f.Board.RemovedBricks = 0;
    f.Board.Hunt(1, 0);
    EXPECT_EQ(f.Rows(), (Rows{"..", "1."}));
    EXPECT_EQ(f.Board.RemovedBricks, 2);

    // Outside the grids nothing happens and nothing is counted.
    f.Board.Hunt(-1, 0);
    f.Board.Hunt(0, 40);
    EXPECT_EQ(f.Board.RemovedBricks, 2);
}

TEST(GroupSearch, HuntDelayShowsTheBricksGoInSearchOrder) {
    BoardFixture f;
    f.Start({"1.1",
             "1.1",
             "111"});
    f.Board.SetHuntDelay(10);
    const auto before = f.Host.Loop.NowMs();
    f.Board.RemovedBricks = 0;
    f.Board.Hunt(0, 0);
    // Down the left arm, along the bottom, up the right arm: depth first, right before
    // left before up before down. One Pause of HuntDelay per brick.
    EXPECT_EQ(f.PaintedCells(), (Rows{"0,0:TmpBack", "0,1:TmpBack", "0,2:TmpBack", "1,2:TmpBack", "2,2:TmpBack",
                                      "2,1:TmpBack", "2,0:TmpBack"}));
    EXPECT_EQ(f.Host.Loop.NowMs() - before, 70);

    // A plus: the right arm, the left, the top, the bottom.
    f.Start({".1.",
             "111",
             ".1."});
    f.Board.SetHuntDelay(1);
    f.Board.Hunt(1, 1);
    EXPECT_EQ(f.PaintedCells(), (Rows{"1,1:TmpBack", "2,1:TmpBack", "0,1:TmpBack", "1,0:TmpBack", "1,2:TmpBack"}));

    // Without HuntDelay: no pause and no drawing inside the search.
    f.Start({"11"});
    f.Board.SetHuntDelay(0);
    const auto still = f.Host.Loop.NowMs();
    f.Board.Hunt(0, 0);
    EXPECT_TRUE(f.PaintedCells().empty());
    EXPECT_EQ(f.Host.Loop.NowMs(), still);
}
