// Level start: which level starts, what is copied, which pictures change, and the
// recolouring of RandomizeBricks.
#include "BmpWriter.h"
#include "BoardFixture.h"
#include "support/TempFolder.h"
#include "support/platform/HeadlessPicture.h"

#include <array>
#include <cmath>

using tolva::testing::BoardFixture;
using tolva::testing::SolidBmp;
using tolva::testing::TempFolder;
using tolva::testing::Rows;

namespace {

// A set of `count` levels of a 2 x 2 board each.
void MakeSet(BoardFixture& f, int count) {
    for (int i = 1; i <= count; ++i) f.SetLevel(i, {"12", "21"});
}

std::int16_t Start(BoardFixture& f, std::int16_t level) {
    f.Board.NewGame(level);
    return level;
}

const std::string& Source(tolva::PictureHolder& holder) {
    return dynamic_cast<tolva::HeadlessPicture&>(holder).Source();
}

} // namespace

TEST(LevelStart, NewGameStartsTheAskedOrNextLevelAndWrapsToLevelOne) {
    BoardFixture f;
    MakeSet(f, 12);
    EXPECT_EQ(Start(f, 5), 5);
    EXPECT_EQ(f.Game->CurLevelNo, 5);
    EXPECT_EQ(Start(f, -1), 6);
    // After the last used slot of the set: level 1. NewLevel only for the level started.
    f.Game->CurLevelNo = 12;
    f.Events.Take();
    EXPECT_EQ(Start(f, -1), 1);
    EXPECT_EQ(f.Game->CurLevelNo, 1);
    EXPECT_EQ(f.Events.Take(), (Rows{"NewLevel(1)"}));
    for (std::int16_t refused : {0, -5, 101, 13}) EXPECT_EQ(Start(f, refused), 1) << refused;

    // Past level 100 of a full table.
    MakeSet(f, 100);
    f.Game->CurLevelNo = 100;
    EXPECT_EQ(Start(f, -1), 1);
    f.Game->CurLevelNo = 32767;   // even a counter at its limit goes back to 1
    EXPECT_EQ(Start(f, -1), 1);

    // A jump beyond the set lands on level 1 too.
    BoardFixture g;
    MakeSet(g, 3);
    g.Board.JumpToLevel(50);
    EXPECT_EQ(g.Game->CurLevelNo, 1);
    EXPECT_EQ(g.Events.Take(), (Rows{"NewLevel(1)"}));
    g.Board.JumpToLevel(3);
    EXPECT_EQ(g.Board.CurLevel(), 3);

    // An empty table even at level 1: its free slot is played as it stands, an empty
    // board, rather than restarting for ever.
    BoardFixture empty;
    EXPECT_EQ(Start(empty, 7), 1);
    EXPECT_EQ(empty.Events.Take(), (Rows{"NewLevel(1)"}));
    EXPECT_TRUE(empty.Board.CheckIfFinished());
}

TEST(LevelStart, NewGameResetsTheLevelAndCopiesBothGridsWhole) {
    BoardFixture f;
    f.SetLevel(2, {"1.", ".2"}, {"4.", ".."});
    auto& record = f.Game->Levels[1];
    record.BrickGrid(30, 30) = 5;    // beyond the side in use: copied all the same
    record.SpellGrid(39, 0) = 2;
    f.Game->BonusTimes = 7;
    f.Game->ActiveSpell = tolva::SpellBomb;
    f.Board.SetGameIsOverToTrue();
    // The board is not ready while the level is set up: a repaint asked from the NewLevel
    // handler paints nothing.
    f.Events.OnEvent = [&](const std::string&) {
        EXPECT_FALSE(f.Board.BoardReady);
        const auto painted = f.Host.Surface.Records().size();
        f.Board.UserControl_Paint();
        EXPECT_EQ(f.Host.Surface.Records().size(), painted);
    };
    std::int16_t level = 2;
    f.Board.NewGame(level);
    EXPECT_EQ(f.Events.Take(), (Rows{"NewLevel(2)"}));
    f.Events.OnEvent = nullptr;
    EXPECT_EQ(f.Game->BonusTimes, 0);
    EXPECT_EQ(f.Game->ActiveSpell, tolva::NoSpell);
    EXPECT_FALSE(f.Board.GameIsOver);
    EXPECT_TRUE(f.Board.BoardReady);
    EXPECT_EQ(f.Board.xBricks(), 2);
    EXPECT_EQ(f.Rows(), (Rows{"1.", ".2"}));
    EXPECT_EQ(f.Board.Bricks(30, 30), 5);
    EXPECT_EQ(f.Board.Spells(39, 0), 2);
    EXPECT_EQ(f.Board.Spells(0, 0), 4);
    EXPECT_EQ(f.Board.DrawnBricks(30, 30), 5.0f);
    EXPECT_EQ(f.Board.DrawnBricks(1, 0), -1.0f);
    // Play never touches the table: the level starts as stored next time too.
    f.Board.Bricks(0, 0) = 9;
    EXPECT_EQ(record.BrickGrid(0, 0), 1);

    // Level sides out of range are kept within the grids.
    f.Game->Levels[1].levelbricks = 55;
    f.Board.NewGame(level);
    EXPECT_EQ(f.Board.xBricks(), 40);
    f.Game->Levels[1].levelbricks = -3;
    f.Board.NewGame(level);
    EXPECT_EQ(f.Board.xBricks(), 1);

    f.Board.SetDefaultLevel();
    EXPECT_EQ(f.Game->Levels[0].LevelName, "DEF-LEVEL");
    EXPECT_EQ(f.Game->Levels[0].levelbricks, 10);
    EXPECT_EQ(f.Game->Levels[0].levelgfxfolder, "");
}

TEST(LevelStart, LevelPicturesChangeOnlyWhereTheFolderHasThem) {
    TempFolder root;
    std::filesystem::create_directory(root / "lev1");
    std::filesystem::create_directory(root / "lev2");
    root.Write("lev1/0.bmp", SolidBmp(25, 25));
    root.Write("lev1/3.bmp", SolidBmp(25, 25));
    root.Write("lev1/9.bmp", SolidBmp(25, 25));
    root.Write("lev1/5.bmp", "BM this is no picture");
    root.Write("lev1/background.bmp", SolidBmp(600, 400));
    root.Write("7.bmp", SolidBmp(25, 25));
    root.Write("old5.bmp", SolidBmp(25, 25));
    const std::string stored = root.Path() + "\\";

    BoardFixture f;
    f.Board.LevelRoot(stored);
    f.Board.SetBrickPicture(5, stored + "old5.bmp");
    f.Board.SetBrickPicture(12, stored + "old5.bmp");   // no such colour: nothing
    f.SetLevel(1, {"11", "22"});
    f.SetLevel(2, {"11", "22"});
    f.SetLevel(3, {"11", "22"});
    f.Game->Levels[0].levelgfxfolder = "Lev1";    // another case than on disk: still found
    f.Game->Levels[1].levelgfxfolder = "lev2\\";  // holds nothing
    f.Game->Levels[2].levelgfxfolder = "";        // the set's own folder

    Start(f, 1);
    EXPECT_EQ(f.Game->Levels[0].levelgfxfolder, "Lev1\\");   // the record keeps the backslash
    EXPECT_EQ(Source(f.Board.Gfx(3)), stored + "Lev1\\3.bmp");
    EXPECT_EQ(Source(f.Board.Gfx(5)), stored + "old5.bmp");  // unreadable: the old one stays
    // The first and the last colour are layered like the others.
    EXPECT_EQ(Source(f.Board.Gfx(0)), stored + "Lev1\\0.bmp");
    EXPECT_EQ(Source(f.Board.Gfx(9)), stored + "Lev1\\9.bmp");
    EXPECT_FALSE(f.Board.Gfx(1).HasPicture());
    EXPECT_EQ(Source(f.Board.TmpBack()), stored + "Lev1\\background.bmp");
    // The board takes the size of a new background.
    EXPECT_EQ(f.Host.Surface.ScaleWidth(), 600);
    EXPECT_EQ(f.Host.Surface.ScaleHeight(), 400);
    EXPECT_EQ(f.Host.Surface.BackPicture(), "TmpBack");

    Start(f, 2);
    EXPECT_EQ(f.Game->Levels[1].levelgfxfolder, "lev2\\");
    EXPECT_EQ(Source(f.Board.Gfx(3)), stored + "Lev1\\3.bmp");
    EXPECT_EQ(Source(f.Board.TmpBack()), stored + "Lev1\\background.bmp");

    Start(f, 3);
    EXPECT_EQ(f.Game->Levels[2].levelgfxfolder, "\\");
    EXPECT_EQ(Source(f.Board.Gfx(7)), stored + "\\7.bmp");
    EXPECT_EQ(f.Host.Surface.Resizes(), 1);
}

TEST(LevelStart, RandomizeBricksDealsNineColoursEvenlyAndKeepsHolesAndSpells) {
    // Two empty rows, four 1s and the 10, every value once, the six spells, then colours.
    Rows rows(10, "4567890123");
    rows[0] = rows[1] = "..........";
    rows[2] = ".....1111X";
    rows[3] = "0123456789";
    rows[4] = "abcdef0123";
    for (std::uint64_t seed = 1; seed <= 25; ++seed) {
        BoardFixture f;
        f.Host.Rng.Seed(seed);
        f.Start(rows, {"", "", "", "", "0123450123"});
        const auto spellsBefore = f.SpellRows();
        f.Board.RandomizeBricks(true);
        const auto after = f.Rows();
        std::array<int, 10> count{};
        for (int y = 0; y < 10; ++y) {
            for (int x = 0; x < 10; ++x) {
                const char was = rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
                const char now = after[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
                if (was == '.' || was == 'X' || (was >= 'a' && was <= 'f')) {
                    EXPECT_EQ(now, was) << x << "," << y;   // holes, 10 and spells stay
                } else {
                    ASSERT_TRUE(now >= '0' && now <= '8') << now;   // colour 9 is never dealt
                    ++count[static_cast<std::size_t>(now - '0')];
                }
            }
        }
        // 75 cells draw (the spells and the 10 use up shares): no colour above ceil(75 / 9).
        for (int c = 0; c < 9; ++c) EXPECT_LE(count[static_cast<std::size_t>(c)], 9) << "seed " << seed;
        EXPECT_EQ(f.SpellRows(), spellsBefore);
        EXPECT_TRUE(f.Events.Take().empty());
    }

    // Without avoiding holes, every hole gets a colour, and the board is repainted.
    BoardFixture f;
    f.Start({"...", ".1.", "..."});
    f.Board.RandomizeBricks(false);
    for (const auto& row : f.Rows())
        for (char c : row) EXPECT_TRUE(c >= '0' && c <= '8');
    EXPECT_EQ(f.Host.Surface.Records().size(), 9u - (f.Board.Bricks(1, 1) == 1 ? 1u : 0u));
}
