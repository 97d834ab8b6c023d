// The recolouring flood of the "TEST TUBE", its flashing marker, and the clearing of the
// rest of the board that automatic play asks for.
#include "BoardFixture.h"

#include <gtest/gtest.h>

using namespace tolva;
using namespace tolva::testing;

TEST(Recolouring, TheFloodFillsTheWholeGroupCellByCellWithinTheWalls) {
    BoardFixture f;
    f.SetLevel(1, {"2111", "21.1", "2111", "2111"}, {"....", ".4..", "....", "...."});
    // Cells of the same colour beyond the right wall and the bottom row are stored too.
    for (int i = 0; i < 5; ++i) {
        f.Game->Levels[0].BrickGrid(4, i) = 1;
        f.Game->Levels[0].BrickGrid(i, 4) = 1;
    }
    std::int16_t level = 1;
    f.Board.NewGame(level);
    f.Events.Take();
    f.Host.Surface.ClearRecords();
    f.Board.SetHuntDelay(7);
    const std::int64_t start = f.Host.Loop.NowMs();

    // The group wraps round a hole; the flood takes all of it, behind the hole too, and
    // paints each cell as it goes: right before left before up before down.
    f.Board.HuntAndSetColor(1, 0, 5);
    EXPECT_EQ(f.Rows(), (Rows{"2555", "25.5", "2555", "2555"}));
    EXPECT_EQ(f.PaintedCells(), (Rows{"1,0:Gfx(5)", "2,0:Gfx(5)", "3,0:Gfx(5)", "3,1:Gfx(5)", "3,2:Gfx(5)",
                                      "2,2:Gfx(5)", "1,2:Gfx(5)", "1,1:Gfx(5)", "1,3:Gfx(5)", "2,3:Gfx(5)",
                                      "3,3:Gfx(5)"}));
    EXPECT_EQ(f.Host.Loop.NowMs() - start, 11 * 7);   // the pause of each cell blocks the game
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(f.Board.Bricks(4, i), 1) << i;
        EXPECT_EQ(f.Board.Bricks(i, 4), 1) << i;
    }
    EXPECT_EQ(f.Board.RemovedBricks, 0);
    EXPECT_EQ(f.Board.Spells(1, 1), 4);
    EXPECT_TRUE(f.Events.Take().empty());
    // The colour a cell has already changes nothing (and does not recurse for ever).
    f.Board.HuntAndSetColor(1, 0, 5);
    EXPECT_EQ(f.Rows(), (Rows{"2555", "25.5", "2555", "2555"}));
}

TEST(Recolouring, TheMarkerFlashesFromBlackToWhiteAndBackAndGoesOnWhereItStopped) {
    BoardFixture f;
    Rows board(10, "0123456789");
    f.Start(board);
    f.Game->ActiveSpell = SpellTestTube;
    f.Click(2, 3);
    ASSERT_TRUE(f.Board.FlashTimer().Enabled());
    f.Host.Surface.ClearRecords();

    // A plus sign over four fifths of the cell (50 x 50 here), one tick every 30 ms.
    f.Host.Loop.Advance(19 * 30);
    const auto& lines = f.Host.Surface.Records();
    ASSERT_EQ(lines.size(), 38u);
    EXPECT_EQ(lines[0].What, PaintRecord::Kind::Line);
    EXPECT_EQ(lines[0].Target, (SurfaceRect{105, 175, 40, 0}));
    EXPECT_EQ(lines[1].Target, (SurfaceRect{125, 155, 0, 40}));
    // 0, 30, ... 240, then 270, which shows as white; down again to 0 in 18 ticks.
    const std::vector<int> greys{0, 30, 60, 90, 120, 150, 180, 210, 240, 255, 240, 210, 180, 150, 120, 90, 60, 30, 0};
    for (std::size_t tick = 0; tick < greys.size(); ++tick) {
        const std::int32_t grey = greys[tick] * 0x010101;
        EXPECT_EQ(lines[2 * tick].Colour, grey) << tick;
        EXPECT_EQ(lines[2 * tick + 1].Colour, grey) << tick;
    }

    // After the second click the next use of the tube goes on with the next colour.
    f.Click(2, 4);
    f.Game->ActiveSpell = SpellTestTube;
    f.Click(5, 5);
    f.Host.Surface.ClearRecords();
    f.Host.Loop.Advance(30);
    ASSERT_EQ(f.Host.Surface.Records().size(), 2u);
    EXPECT_EQ(f.Host.Surface.Records()[0].Colour, 30 * 0x010101);
    EXPECT_FALSE(f.Board.TestTubeFlash.Falling);
}

TEST(Recolouring, ClearingTheRestTakesTheColourBricksAndLetsTheSpellsReachTheStock) {
    BoardFixture f;
    // Colour bricks go, without points; the reserved value and spells stay, and the
    // spells fall into the bottom row and are collected.
    f.SetLevel(1, {"1X2", "a34", "5b6"});
    f.Game->Levels[0].BrickGrid(5, 0) = 3;   // beyond the side: cleared with the rest
    std::int16_t level = 1;
    f.Board.NewGame(level);
    f.Events.Take();
    f.Board.ClearRestOfBoardNow();
    EXPECT_EQ(f.Rows(), (Rows{"...", "...", "X.."}));
    EXPECT_EQ(f.Board.Bricks(5, 0), CellEmpty);
    EXPECT_EQ(f.Events.Take(), (Rows{"NewSpell(0)", "NewSpell(1)", "GameOver"}));

    // Only reserved cells and spells: none of them goes before the compaction.
    f.Start({"XX", "ab"});
    f.Board.ClearRestOfBoardNow();
    EXPECT_EQ(f.Rows(), (Rows{"..", "XX"}));
    EXPECT_EQ(f.Events.Take(), (Rows{"NewSpell(0)", "NewSpell(1)"}));

    // A board with nothing left ends the level with its bonus as usual.
    f.SetLevel(2, {"77", "88"});
    f.Start({"12", "a3"});
    f.Game->BonusTimes = 2;
    f.Board.ClearRestOfBoardNow();
    EXPECT_EQ(f.Events.Take(), (Rows{"NewSpell(0)", "BonusScore(100000,2)", "NewLevel(2)"}));
}
