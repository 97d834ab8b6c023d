// savegame.sav: what is written reads back the same, and a file that the game could not
// have written (well sealed or not) resumes nothing.
#include "session/LevelCodes.h"
#include "session/SavedGame.h"

#include <gtest/gtest.h>

using namespace tolva;

namespace {

SavedGame AGame() {
    SavedGame game;
    game.LevelSetPath = "levels\\default\\";
    game.LevelCode = LevelCodes::CodeOf(12);
    PlayState& p = game.Play;
    p.Level = 12;
    p.Side = 15;
    p.Bricks.Fill(CellEmpty);
    p.Spells.Fill(NoSpell);
    for (int x = 0; x < 15; ++x)
        for (int y = 3; y < 15; ++y) p.Bricks(x, y) = static_cast<std::int16_t>((x * 3 + y) % 5);
    p.Bricks(4, 2) = FirstSpellCell + SpellBomb;
    p.Spells(7, 9) = SpellRainbow;
    p.Score = 123456789;
    p.SpellStock = {1, 0, 2, 0, 0, 3, 0};
    p.SpellClicks = {0, 1, 0, 0, 2, 0};
    p.LevelClicks = 17;
    p.LastClickCount = 17;
    p.BonusTimes = 4;
    p.Practice = true;
    return game;
}

} // namespace

TEST(SavedGame, ReadsBackWhatItWroteAndNothingTheGameCouldNotHaveWritten) {
    const SavedGame game = AGame();
    const auto back = SavedGame::FromBytes(game.FileBytes());
    ASSERT_TRUE(back);
    EXPECT_EQ(back->LevelSetPath, game.LevelSetPath);
    EXPECT_EQ(back->LevelCode, game.LevelCode);
    EXPECT_EQ(back->Play, game.Play);

    // Sealed with a right checksum, but holding what no game holds.
    auto forged = [](auto change) {
        SavedGame g = AGame();
        change(g);
        return SavedGame::FromBytes(g.FileBytes()).has_value();
    };
    EXPECT_FALSE(forged([](SavedGame& g) { g.Play.Bricks(0, 14) = 40; }));
    EXPECT_FALSE(forged([](SavedGame& g) { g.Play.Spells(0, 14) = 6; }));
    EXPECT_FALSE(forged([](SavedGame& g) { g.LevelCode = LevelCodes::CodeOf(13); }));
    EXPECT_FALSE(forged([](SavedGame& g) { g.Play.BonusTimes = 10; }));
    EXPECT_FALSE(forged([](SavedGame& g) { g.Play.Side = 41; }));
    EXPECT_FALSE(forged([](SavedGame& g) { g.Play.Score = -1; }));
    EXPECT_FALSE(forged([](SavedGame& g) { g.LevelSetPath.clear(); }));

    // Bytes changed, cut or added: the checksum or the form gives it away.
    const std::string bytes = game.FileBytes();
    EXPECT_FALSE(SavedGame::FromBytes(bytes.substr(0, bytes.size() / 2)));
    EXPECT_FALSE(SavedGame::FromBytes(""));
    EXPECT_FALSE(SavedGame::FromBytes(std::string(5000, 'x')));
    std::string swapped = bytes;
    std::swap(swapped[60], swapped[61]);
    EXPECT_FALSE(SavedGame::FromBytes(swapped));
}
