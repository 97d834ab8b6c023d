// What a paint pass draws: which cells, with which picture, where, and the skip of cells
// that have not changed since the last whole-board pass.
#include "BoardFixture.h"

using tolva::testing::BoardFixture;
using tolva::testing::Rows;

TEST(Drawing, EachValuePaintsItsPictureStretchedIntoItsCell) {
    BoardFixture f;
    f.SetLevel(1, {"0.9X",
                   "af5.",
                   "....",
                   "...."});
    f.Game->Levels[0].BrickGrid(0, 3) = 17;   // no spell behind it: no picture, like 10
    std::int16_t level = 1;
    f.Board.NewGame(level);
    // Row by row; the reserved value, and a value with no spell behind it, paint nothing.
    EXPECT_EQ(f.PaintedCells(), (Rows{"0,0:Gfx(0)", "1,0:TmpBack", "2,0:Gfx(9)", "0,1:ss(0)", "1,1:ss(5)",
                                      "2,1:Gfx(5)", "3,1:TmpBack", "0,2:TmpBack", "1,2:TmpBack", "2,2:TmpBack",
                                      "3,2:TmpBack", "1,3:TmpBack", "2,3:TmpBack", "3,3:TmpBack"}));
}

TEST(Drawing, WholePassSkipsUnchangedCellsOnlyWhenFastAndAllowed) {
    BoardFixture f;
    f.SetLevel(1, {"11.", "23.", "45."});
    std::int16_t level = 1;
    f.Board.NewGame(level);
    // The first pass of a level paints every cell, although DrawnBricks already holds
    // the same values.
    EXPECT_EQ(f.Host.Surface.Records().size(), 9u);
    f.Host.Surface.ClearRecords();

    f.Board.DrawBoard(-1, -1, true);
    EXPECT_TRUE(f.PaintedCells().empty());
    f.Settings.DrawUsingBackBuffer = false;   // the player's setting off: every cell, every pass
    f.Board.DrawBoard(-1, -1, true);
    EXPECT_EQ(f.PaintedCells().size(), 9u);
    f.Settings.DrawUsingBackBuffer = true;
    f.Host.Surface.ClearRecords();

    // The single-cell form paints one cell and leaves DrawnBricks alone, so the next
    // whole pass paints that cell again. setX = 0 is a cell, not the whole board.
    f.Board.Bricks(0, 2) = 7;
    f.Board.DrawBoard(0, 2, true);
    EXPECT_EQ(f.PaintedCells(), (Rows{"0,2:Gfx(7)"}));
    EXPECT_EQ(f.Board.DrawnBricks(0, 2), 4.0f);
    f.Host.Surface.ClearRecords();
    f.Board.DrawBoard(-1, -1, true);
    EXPECT_EQ(f.PaintedCells(), (Rows{"0,2:Gfx(7)"}));
    f.Host.Surface.ClearRecords();

    // A move repaints only what it changed: the holes, then what fell.
    f.Board.AniDraw = true;
    f.Click(0, 0);
    EXPECT_EQ(f.PaintedCells(), (Rows{"0,0:TmpBack", "1,0:TmpBack"}));
    f.Host.Surface.ClearRecords();
    f.Host.Loop.Advance(f.Board.UpdateDelay());
    EXPECT_TRUE(f.PaintedCells().empty());   // nothing stood over the holes
}

TEST(Drawing, RepaintOnlyWhenReadyAndTheBoardFollowsItsBackground) {
    BoardFixture f;
    f.Board.UserControl_Paint();             // not ready before the first level
    EXPECT_TRUE(f.Host.Surface.Records().empty());
    f.Start({"12", "34"});
    f.Board.UserControl_Paint();             // a repaint paints all, changed or not
    EXPECT_EQ(f.PaintedCells().size(), 4u);
    f.Host.Surface.ClearRecords();
    f.Board.BoardReady = false;              // as during a spell effect
    f.Board.UserControl_Paint();
    EXPECT_TRUE(f.Host.Surface.Records().empty());

    // With no background the board keeps its size.
    f.Board.UserControl_Resize();
    EXPECT_EQ(f.Host.Surface.Resizes(), 0);
}
