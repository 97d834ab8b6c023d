#include "board/BmpWriter.h"
#include "board/BoardFixture.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"

#include <algorithm>
#include <filesystem>

using namespace tolva;
using namespace tolva::testing;

TEST(Resources, LeftForTheirFirstShowingTheyLoadOnceJustBeforeIt) {
    TempFolder dir;
    std::filesystem::create_directories(dir / "data");
    // A bonus background whose colour differs at each number line's top left corner.
    dir.Write("data/12.bmp", MakeBmp(500, 500, 24, [](int, int y) -> std::uint32_t {
                  return y < 200 ? 0x102030u : y < 400 ? 0x405060u : 0x708090u;
              }));
    dir.Write("data/n3.bmp", MakeBmp(44, 60, 24, [](int, int) { return 0xFFFFFFu; }));
    dir.Write("data/13.bmp", MakeBmp(50, 150, 24, [](int, int) { return 0xFF0000u; }));
    dir.Write("data/14.bmp", MakeBmp(50, 150, 24, [](int, int) { return 0x00FF00u; }));
    SetAppPath(dir.Path());

    // Loaded all at once, every picture is reported, missing ones too.
    BoardFixture all;
    all.Board.LoadResources();
    const auto events = all.Events.Take();
    ASSERT_EQ(events.size(), 22u);
    EXPECT_EQ(events.front(), "ResourceLoaded(Bonus background)");
    EXPECT_EQ(events.back(), "ResourceLoaded(Hint animation gfx)");
    EXPECT_EQ(all.Board.picBonus().Holder().BackColor(), 0x708090);

    BoardFixture f;
    f.Board.LoadResources(/*whenFirstNeeded=*/true);
    const auto atStart = f.Events.Take();
    ASSERT_EQ(atStart.size(), 6u);   // the spells only
    EXPECT_EQ(atStart.front(), "ResourceLoaded(Spell gfx0)");
    EXPECT_FALSE(f.Board.BonusPic().Holder().HasPicture());
    EXPECT_FALSE(f.Board.Animation().HasStrip());
    // The explosion's strip comes with its first explosion, and only then; the bomb's
    // waits for a bomb.
    f.Start({"11", "22"});
    f.Events.Take();
    f.Board.AnimationEffect(0, 0);
    EXPECT_TRUE(f.Board.Animation().HasStrip());
    EXPECT_FALSE(f.Board.BOM().HasStrip());
    f.Board.AnimationEffect(0, 0);
    f.Board.BomEffect(0, 0);
    EXPECT_TRUE(f.Board.BOM().HasStrip());
    const auto effects = f.Events.Take();
    EXPECT_EQ(std::count(effects.begin(), effects.end(), "ResourceLoaded(Explotion gfx)"), 1);
    EXPECT_EQ(std::count(effects.begin(), effects.end(), "ResourceLoaded(Bomb gfx)"), 1);

    // The bonus screen brings its background and digits, and the number lines still take
    // their colours from where they stand before the first count moves them.
    f.Board.ShowBonusMovie(100, 0);
    EXPECT_TRUE(f.Board.BonusPic().Holder().HasPicture());
    EXPECT_TRUE(f.Board.No(3).HasPicture());
    EXPECT_EQ(f.Board.LevBonus().Holder().BackColor(), 0x102030);
    EXPECT_EQ(f.Board.picTimes().Holder().BackColor(), 0x405060);
    EXPECT_EQ(f.Board.picBonus().Holder().BackColor(), 0x708090);
    const auto bonus = f.Events.Take();
    EXPECT_EQ(std::count(bonus.begin(), bonus.end(), "ResourceLoaded(Bonus background)"), 1);
    EXPECT_EQ(std::count(bonus.begin(), bonus.end(), "ResourceLoaded(Number gfx10)"), 1);
    f.Host.Loop.Advance(2000);
    f.Board.ShowBonusMovie(100, 0);
    const auto again = f.Events.Take();
    EXPECT_EQ(std::count(again.begin(), again.end(), "ResourceLoaded(Bonus background)"), 0);
}
