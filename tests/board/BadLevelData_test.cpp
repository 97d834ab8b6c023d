// A level set can hold anything: cell values outside -1..16, spell numbers above 5,
// sides out of range. The board must play such a level without a single access outside
// its grids, and never report a spell that does not exist.
#include "BoardFixture.h"

#include <random>
#include <set>

using tolva::testing::BoardFixture;
using tolva::testing::Rows;

TEST(BadLevelData, SpellNumbersAboveFiveHideNothing) {
    BoardFixture f;
    f.SetLevel(1, {"11", "23"});
    f.Game->Levels[0].SpellGrid(0, 0) = 6;
    f.Game->Levels[0].SpellGrid(1, 0) = 32767;   // 11 + this would not even fit the cell
    std::int16_t level = 1;
    f.Board.NewGame(level);
    f.Board.RemovedBricks = 0;
    f.Board.Hunt(0, 0);
    EXPECT_EQ(f.Rows(), (Rows{"..", "23"}));
    EXPECT_EQ(f.Board.RemovedBricks, 2);
}

TEST(BadLevelData, AnyValuesAndSidesPlayWithinTheGrids) {
    std::mt19937 gen(7);
    std::uniform_int_distribution<int> any(-32768, 32767);
    std::uniform_int_distribution<int> near(-3, 19);
    const std::set<std::string> pictures = {"Gfx(0)", "Gfx(1)", "Gfx(2)", "Gfx(3)", "Gfx(4)", "Gfx(5)", "Gfx(6)",
                                            "Gfx(7)", "Gfx(8)", "Gfx(9)", "ss(0)",  "ss(1)",  "ss(2)",  "ss(3)",
                                            "ss(4)",  "ss(5)",  "TmpBack"};
    for (int side : {-5, 0, 1, 2, 7, 40, 41, 32767}) {
        BoardFixture f;
        f.Game->CheatMode = side % 2 != 0;
        auto& level = f.Game->Levels[0];
        level.LevelName = "BAD";
        level.levelbricks = static_cast<std::int16_t>(side);
        for (int x = 0; x < 40; ++x)
            for (int y = 0; y < 40; ++y) {
                // Mostly values near the legal range, so that groups and spells happen.
                level.BrickGrid(x, y) = static_cast<std::int16_t>(gen() % 8 == 0 ? any(gen) : near(gen));
                level.SpellGrid(x, y) = static_cast<std::int16_t>(gen() % 4 == 0 ? any(gen) : near(gen) % 8);
            }
        f.Events.OnEvent = [&](const std::string& e) {
            if (e.rfind("NewSpell(", 0) == 0) {
                const int n = std::stoi(e.substr(9));
                EXPECT_TRUE(n >= 0 && n <= 5) << e;
            }
        };
        std::int16_t start = 1;
        f.Board.NewGame(start);
        const int n = f.Board.xBricks();
        EXPECT_TRUE(n >= 1 && n <= 40);
        for (int round = 0; round < 3; ++round) {
            for (int x = -1; x <= n; ++x)
                for (int y = -1; y <= n; ++y) {
                    f.Click(x, y, static_cast<std::int16_t>(1 + (x + y) % 2));
                    f.Host.Loop.Advance(f.Board.UpdateDelay());
                    if (f.Board.GameIsOver) {
                        std::int16_t again = 1;
                        f.Board.NewGame(again);
                    }
                }
            f.Board.ShowHint();
            float fx = 0, fy = 0;
            f.Board.GetRandomMoveableBrick(fx, fy);
            f.Board.GetRandomBrick(fx, fy);
            f.Board.RandomizeBricks(true);
            f.Board.CleanArray();
            f.Board.DrawBoard(-1, -1, false);
        }
        for (const auto& r : f.Host.Surface.Records()) EXPECT_TRUE(pictures.count(r.Picture)) << r.Picture;
    }
}
