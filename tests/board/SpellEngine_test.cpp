// The spell engine: how a spell is earned, armed, fired and spent, what the "GUN", "BOMB",
// "RAINBOW", "UMBRELLA" and "TEST TUBE" do to the grids, how a spell scores, and the
// guards that keep clicks and spell buttons out while a spell runs.
#include "BoardFixture.h"
#include "session/SessionFixture.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace tolva;
using namespace tolva::testing;

TEST(SpellEngine, ASpellIsCollectedArmedSpentAndTheStockCarriesOver) {
    SessionFixture f;
    f.SetLevel(2, {"11", "22"}, {"..", "4."});
    f.StartGame({"11.", "22.", "33."}, {"...", "...", "2.."});
    f.Board.AniDraw = false;

    // A plain click uncovers the gun in the bottom row; it is collected into the stock. Two
    // of a side of three earn a step of the level bonus.
    f.Click(0, 2);
    EXPECT_EQ(f.Game->BonusTimes, 1);
    EXPECT_EQ(f.Rows(), (Rows{"...", "11.", "22."}));
    EXPECT_EQ(f.Stock(SpellGun), 1);
    EXPECT_EQ(f.View.Panel.Counts[SpellGun], "1");

    // Arming: a second click on the button takes the spell back; an empty stock arms
    // nothing but disarms what was armed.
    f.Session.sp_Click(SpellGun);
    EXPECT_EQ(f.Game->ActiveSpell, SpellGun);
    EXPECT_EQ(f.View.Panel.ActiveName, "GUN");
    f.Session.sp_Click(SpellGun);
    EXPECT_EQ(f.Game->ActiveSpell, NoSpell);
    EXPECT_EQ(f.View.Panel.ActiveName, "");
    f.Session.sp_Click(SpellGun);
    f.Session.sp_Click(SpellBomb);
    EXPECT_EQ(f.Game->ActiveSpell, NoSpell);
    f.Session.sp_Click(SpellGun);
    f.Log.Take();

    // Fired: while its explosion plays the session counts a spell as busy. The shot takes
    // its run, scores as one lump, and the spell is spent and disarmed. It is no click of
    // the level and earns no step of the level bonus.
    bool busyDuringEffect = false;
    auto probe = f.Host.Loop.CreateTimer();
    probe->SetInterval(5);
    probe->OnTick = [&] {
        probe->SetEnabled(false);
        busyDuringEffect = !f.Game->NoSpellBusy;
    };
    probe->SetEnabled(true);
    f.Click(0, 1);
    EXPECT_TRUE(busyDuringEffect);
    EXPECT_EQ(f.Rows(), (Rows{"...", "...", "22."}));
    EXPECT_EQ(f.Log.Take(), (Rows{"SpellClick(2,1)", "SpellInUse(true)", "SpellInUse(false)", "SpellUsed(2)",
                                     "NewScore(4)", "BricksRemoved(2)", "CanDoNextMove"}));
    EXPECT_EQ(f.Stock(SpellGun), 0);
    EXPECT_EQ(f.Game->ActiveSpell, NoSpell);
    EXPECT_EQ(f.View.Panel.Active, NoSpell);
    EXPECT_EQ(f.Session.SpellClicks[SpellGun], 1);
    EXPECT_EQ(f.Session.LevelClicks, 1);
    EXPECT_EQ(f.Session.Score, 8);
    EXPECT_EQ(f.Game->BonusTimes, 1);
    EXPECT_TRUE(f.Game->NoSpellBusy);

    // In cheat mode a spell arms with no stock; spent, the stock goes below 0 and shows
    // 0. The bomb clears the level with the step earned by the plain click, and the stock
    // goes on into the next level, where a collected bomb brings it back to 0.
    f.Game->CheatMode = true;
    f.Session.sp_Click(SpellGun);
    f.Session.sp_Click(SpellBomb);   // another button arms its spell in place of the one armed
    EXPECT_EQ(f.Game->ActiveSpell, SpellBomb);
    f.Click(0, 2);
    EXPECT_EQ(f.Log.Take(), (Rows{"SpellClick(4,1)", "SpellInUse(true)", "SpellInUse(false)", "SpellUsed(4)",
                                     "NewScore(4)", "BricksRemoved(2)", "BonusScore(100000,1)", "NewScore(100000)",
                                     "NewLevel(2)", "CanDoNextMove"}));
    EXPECT_EQ(f.Stock(SpellBomb), -1);
    EXPECT_EQ(f.View.Panel.Counts[SpellBomb], "0");
    f.Click(0, 1);
    EXPECT_EQ(f.Stock(SpellBomb), 0);
    EXPECT_EQ(f.Session.Score, 100016);
}

TEST(SpellEngine, TheGunRunsRightThenLeftAndStopsAtHoles) {
    BoardFixture f;
    const Rows board{"1234",
                     "5.67",
                     "8901",
                     "2345"};
    f.Start(board);
    f.Game->ActiveSpell = SpellGun;
    // From the rightmost column the shot takes its cell, then the whole run to the left.
    f.Click(3, 0);
    EXPECT_EQ(f.Rows()[0], "....");
    EXPECT_EQ(f.Events.Take()[4], "NewScore(16)");
    EXPECT_FALSE(f.Board.Animation().Visible());
    EXPECT_EQ(f.Board.Animation().Bounds(), (SurfaceRect{0, 0, 125, 125}));   // the last cell shot
    EXPECT_EQ(f.Game->BonusTimes, 0);   // four of a side of four, and still no step

    // From column 0 there is no left run; a hole on the right ends the right run at once.
    f.Start(board);
    f.Game->ActiveSpell = SpellGun;
    f.Click(0, 1);
    EXPECT_EQ(f.Rows()[1], "..67");
    f.Start(board);
    f.Game->ActiveSpell = SpellGun;
    f.Click(2, 1);
    EXPECT_EQ(f.Rows()[1], "5...");
    EXPECT_EQ(f.Rows()[2], "8901");
    EXPECT_EQ(f.Events.Take()[4], "NewScore(4)");

    // A brick over a hidden spell turns into that spell and does not stop the shot; a
    // spell lying on the board with no number under it goes for good.
    f.Start({"c1d.", "2222", "3333", "4444"}, {"....", "....", "....", "...."});
    f.Board.Spells(1, 0) = 3;
    f.Game->ActiveSpell = SpellGun;
    f.Click(0, 0);
    EXPECT_EQ(f.Rows()[0], ".d..");
    EXPECT_EQ(f.Board.Spells(1, 0), -1);

    // A spell uncovered by a plain click keeps its number in Spells: the first shot only
    // clears the number, the second takes the cell.
    f.Game->ActiveSpell = NoSpell;
    f.Start({"11", "23"}, {"4.", ".."});
    f.Click(0, 0);
    EXPECT_EQ(f.Rows(), (Rows{"e.", "23"}));
    f.Game->ActiveSpell = SpellGun;
    f.Events.Take();
    f.Click(0, 0);
    EXPECT_EQ(f.Rows(), (Rows{"e.", "23"}));
    EXPECT_EQ(f.Board.Spells(0, 0), -1);
    f.Click(0, 0);
    EXPECT_EQ(f.Rows(), (Rows{"..", "23"}));
}

TEST(SpellEngine, TheBombTakesItsNeighbourhoodLosesTheCentreSpellAndFreesTheOthers) {
    BoardFixture f;
    f.SetLevel(1, {"1234", "5678", "9012", "3356"}, {"52..", "....", "....", "...."});
    // Cells beyond the side of the board are stored too, and must not be touched.
    for (int i = 0; i < 5; ++i) {
        f.Game->Levels[0].BrickGrid(4, i) = 7;
        f.Game->Levels[0].BrickGrid(i, 4) = 7;
    }
    std::int16_t level = 1;
    f.Board.NewGame(level);
    f.Events.Take();
    f.Game->ActiveSpell = SpellBomb;

    f.Click(0, 0);   // a corner: four cells
    EXPECT_EQ(f.Rows(), (Rows{".c34", "..78", "9012", "3356"}));
    EXPECT_EQ(f.Events.Take()[4], "NewScore(16)");
    EXPECT_EQ(SoundFiles(f.Host.Sound),
              (Rows{"data\\7.wav", "data\\6.wav", "data\\6.wav", "data\\6.wav", "data\\6.wav"}));
    EXPECT_FALSE(f.Board.BOM().Visible());
    EXPECT_FALSE(f.Board.Animation().Visible());
    EXPECT_EQ(f.Board.BOM().Bounds(), (SurfaceRect{0, 0, 125, 125}));
    // At the closing up the centre's spell is gone; the freed one falls as a spell cell.
    f.Host.Loop.Advance(f.Board.UpdateDelay());
    EXPECT_EQ(f.Rows(), (Rows{"..34", ".c78", "9012", "3356"}));
    EXPECT_EQ(f.SpellRows(), (Rows{"....", "....", "....", "...."}));

    f.Click(3, 3);   // the far corner, beside the stored cells beyond the side
    EXPECT_EQ(f.Rows()[2], "90..");
    EXPECT_EQ(f.Rows()[3], "33..");
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(f.Board.Bricks(4, i), 7) << i;
        EXPECT_EQ(f.Board.Bricks(i, 4), 7) << i;
    }

    // A lone brick among holes counts one.
    f.Start({"...", ".5.", "..."});
    f.Game->ActiveSpell = SpellBomb;
    f.Click(1, 1);
    EXPECT_EQ(f.Events.Take()[4], "NewScore(1)");
}

TEST(SpellEngine, TheRainbowGivesOneValueANewColourAndNeverColourNine) {
    SequenceRandom rng;
    BoardFixture f(&rng);
    f.Start({"11d", "2X1", "d1c"}, {"3..", "...", "..."});
    f.Game->ActiveSpell = SpellRainbow;
    // 0.15 picks colour 1 again and is drawn anew; 0.5 picks 4.
    rng.Values = {0.15, 0.5};
    f.Click(0, 0);
    EXPECT_EQ(f.Rows(), (Rows{"44d", "2X4", "d4c"}));
    EXPECT_EQ(f.Board.Spells(0, 0), 3);
    EXPECT_TRUE(rng.Values.empty());
    EXPECT_EQ(f.Events.Take(), (Rows{"SpellClick(1,1)", "SpellInUse(true)", "SpellInUse(false)", "SpellUsed(1)",
                                     "CanDoNextMove"}));

    // On a spell lying on the board, every spell of that number becomes a colour brick;
    // other spells stay. The top of the range gives 8, never 9.
    rng.Values = {0.99999};
    f.Click(2, 0);
    EXPECT_EQ(f.Rows(), (Rows{"448", "2X4", "84c"}));
    rng.Values = {0.0};
    f.Click(1, 1);
    EXPECT_EQ(f.Rows()[1], "204");

    // A value that is never left: after 50000 picks the game gives up with a stop
    // message, keeps the last pick (so nothing changes), and the spell is spent.
    rng.Values.assign(50001, 0.5);
    f.Events.Take();
    f.Click(1, 0);
    EXPECT_TRUE(rng.Values.empty());
    ASSERT_EQ(f.Host.Dialog.ShownBoxes().size(), 1u);
    EXPECT_EQ(f.Host.Dialog.ShownBoxes()[0].Text, "INTERNAL ERROR! LEVEL MAY BE CORRUPTED !");
    EXPECT_EQ(f.Host.Dialog.ShownBoxes()[0].Icon, MessageIcon::Stop);
    EXPECT_EQ(f.Rows(), (Rows{"448", "204", "84c"}));
    EXPECT_EQ(f.Events.Take()[3], "SpellUsed(1)");
}

TEST(SpellEngine, TheUmbrellaDealsElevenTimesAndKeepsHolesSpellsAndHiddenSpells) {
    // Nine values, one for each colour: the eight cells that draw get eight different
    // colours, so every deal takes exactly eight draws.
    SequenceRandom rng;
    rng.Cycle = true;
    for (int colour = 0; colour < 9; ++colour) rng.Values.push_back((colour + 0.5) / 9);
    BoardFixture f(&rng);
    const Rows board{"12a", "3.4", "567"};
    const Rows spells{"..1", "2..", "..."};
    f.Start(board, spells);
    f.Game->ActiveSpell = SpellUmbrella;
    f.Click(0, 0);
    EXPECT_EQ(rng.Drawn, 88u);
    const Rows after = f.Rows();
    EXPECT_EQ(after[0][2], 'a');
    EXPECT_EQ(after[1][1], '.');
    EXPECT_EQ(f.SpellRows(), spells);
    for (const auto& row : after)
        for (char c : row) EXPECT_TRUE(c == '.' || c == 'a' || (c >= '0' && c <= '8')) << c;
    EXPECT_EQ(f.Events.Take(), (Rows{"SpellClick(5,1)", "SpellInUse(true)", "SpellInUse(false)", "SpellUsed(5)",
                                     "CanDoNextMove"}));

    // With animations off, one deal.
    f.Settings.PlayAnimations = false;
    f.Start(board, spells);
    rng.Drawn = 0;
    f.Game->ActiveSpell = SpellUmbrella;
    f.Click(0, 0);
    EXPECT_EQ(rng.Drawn, 8u);
}

TEST(SpellEngine, TheTestTubeMarksWithItsFirstClickAndPoursWithItsSecond) {
    SessionFixture f;
    f.StartGame({"1123",
                 "1a45",
                 "6677",
                 "8899"});
    auto tube = f.Host.Pictures.CreateStrip("TestTubeAnimation");
    f.Board.SetTestTubeAnimation(tube.get());
    f.Session.SpellStock[SpellTestTube] = 2;
    f.Session.sp_Click(SpellTestTube);

    // The first click marks the cell (a spell lying on the board it refuses, as the click
    // tests show), and the spell holds the board and the buttons.
    f.Click(0, 0);
    EXPECT_EQ(f.Log.Take(), (Rows{"SpellClick(3,1)"}));
    EXPECT_EQ(f.Board.TestTubeX, 0);
    EXPECT_EQ(f.Board.TestTubeY, 0);
    EXPECT_TRUE(f.Board.SpellClickPending);
    EXPECT_TRUE(f.Game->SpellRunning);
    EXPECT_TRUE(f.Board.FlashTimer().Enabled());
    EXPECT_EQ(f.Host.Surface.Pointer(), "Pipette");
    EXPECT_EQ(f.Host.Surface.PointerHotY(), 15);
    EXPECT_TRUE(tube->Visible());
    EXPECT_TRUE(tube->IsPlaying());
    f.Session.sp_Click(SpellUmbrella);
    f.Session.ActiveSpell_Click();
    EXPECT_EQ(f.Game->ActiveSpell, SpellTestTube);
    // A spell cell is refused as the second cell too, and the tube stays marked.
    f.Click(1, 1);
    EXPECT_EQ(SoundFiles(f.Host.Sound), (Rows{"data\\8.wav"}));
    EXPECT_TRUE(f.Board.SpellClickPending);
    EXPECT_EQ(f.Rows()[0], "1123");

    // The second click picks a value and the marked group takes it (the flood's order and
    // painting are the recolouring tests').
    f.Click(2, 2);
    EXPECT_EQ(f.Rows(), (Rows{"7723", "7a45", "6677", "8899"}));
    EXPECT_EQ(f.Log.Take(), (Rows{"SpellInUse(true)", "SpellInUse(false)", "SpellUsed(3)", "CanDoNextMove"}));
    EXPECT_EQ(f.Stock(SpellTestTube), 1);
    EXPECT_EQ(f.Game->ActiveSpell, NoSpell);
    EXPECT_EQ(f.Board.TestTubeX, -1);
    EXPECT_EQ(f.Board.TestTubeColor, -1);
    EXPECT_FALSE(f.Board.SpellClickPending);
    EXPECT_FALSE(f.Game->SpellRunning);
    EXPECT_FALSE(f.Board.FlashTimer().Enabled());
    EXPECT_EQ(f.Host.Surface.Pointer(), "");
    EXPECT_FALSE(tube->Visible());
    EXPECT_FALSE(tube->IsPlaying());
    EXPECT_EQ(f.Session.Score, 0);   // recolouring gives no points
    EXPECT_EQ(f.Session.SpellClicks[SpellTestTube], 1);

    // Two cells of one colour: nothing changes but the marker, which is painted away, and
    // the tube is spent all the same.
    f.Session.sp_Click(SpellTestTube);
    f.Click(3, 2);
    f.Host.Surface.ClearRecords();
    f.Click(2, 2);
    EXPECT_EQ(f.Rows(), (Rows{"7723", "7a45", "6677", "8899"}));
    ASSERT_EQ(f.Host.Surface.Records().size(), 1u);
    EXPECT_EQ(f.Host.Surface.Records()[0].Target, (SurfaceRect{375, 250, 125, 125}));
    EXPECT_EQ(f.Stock(SpellTestTube), 0);
    EXPECT_EQ(f.Log.Take()[3], "SpellUsed(3)");

    // Nothing guards the menus: a jump to another level between the clicks ends it all.
    f.SetLevel(2, {"11", "22"});
    f.Session.SpellStock[SpellTestTube] = 1;
    f.Session.sp_Click(SpellTestTube);
    f.Click(0, 0);
    f.Board.JumpToLevel(2);
    EXPECT_FALSE(f.Board.SpellClickPending);
    EXPECT_EQ(f.Board.TestTubeX, -1);
    EXPECT_FALSE(f.Board.FlashTimer().Enabled());
    EXPECT_FALSE(tube->Visible());
    EXPECT_FALSE(tube->IsPlaying());
    EXPECT_EQ(f.Host.Surface.Pointer(), "");
    EXPECT_FALSE(f.Game->SpellRunning);
}

TEST(SpellEngine, ASpellThatEmptiesTheBoardEndsTheLevelAtTheClosingUp) {
    for (bool aniDraw : {true, false}) {
        BoardFixture f;
        f.SetLevel(2, {"55", "66"});
        f.Start({"..", "12"});
        f.Board.AniDraw = aniDraw;
        f.Game->ActiveSpell = SpellGun;
        f.Click(0, 1);
        Rows expected{"SpellClick(2,1)", "SpellInUse(true)", "SpellInUse(false)", "SpellUsed(2)", "NewScore(4)",
                      "BricksRemoved(2)"};
        if (aniDraw) {
            expected.push_back("CanDoNextMove");
            EXPECT_EQ(f.Events.Take(), expected);
            f.Host.Loop.Advance(f.Board.UpdateDelay());
            expected = {};
        }
        for (const char* e : {"BonusScore(100000,0)", "NewLevel(2)", "CanDoNextMove"}) expected.push_back(e);
        EXPECT_EQ(f.Events.Take(), expected) << aniDraw;
        EXPECT_EQ(f.Rows(), (Rows{"55", "66"}));
    }
}

TEST(SpellEngine, ASpellAimedOffTheBoardIsSpentAllTheSame) {
    SessionFixture f;
    f.StartGame({"11", "22"});
    f.Session.SpellStock[SpellBomb] = 2;
    f.Board.UseSpell(SpellBomb, 5, 0);    // beyond the last column of a 2 x 2 board
    f.Board.UseSpell(SpellBomb, 0, -1);   // above the board
    EXPECT_EQ(f.Stock(SpellBomb), 0);
    EXPECT_EQ(f.Rows(), (std::vector<std::string>{"11", "22"}));
}
