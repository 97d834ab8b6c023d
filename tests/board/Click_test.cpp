// The mouse handler: its refusals in their order, the single-cell removal of the right
// button, the plain removal with its step of the level bonus, and the closing up on Timer1.
#include "BoardFixture.h"

#include "support/ZenkorModule.h"

using tolva::testing::BoardFixture;
using tolva::testing::Rows;

namespace {

const Rows Board4 = {"11a2",
                     "3a45",
                     "6677",
                     "8899"};

// The pixel in the middle of a cell of a 4 x 4 board on the 500 x 500 surface.
float Mid(int cell) { return static_cast<float>(cell * 125 + 62.5); }

} // namespace

TEST(Click, RefusalsComeInTheirOrderAndAreSilent) {
    BoardFixture f;
    auto& b = f.Board;
    // A board that no game has started takes no click.
    b.UserControl_MouseUp(1, 0, Mid(0), Mid(0));
    EXPECT_TRUE(f.Events.Take().empty());

    f.Start(Board4);
    // 1. A spell being carried out turns every click away...
    b.SpellClickPending = true;
    b.UserControl_MouseUp(1, 0, Mid(0), Mid(0));
    EXPECT_EQ(f.Rows(), Board4);
    // ...except while the test tube waits for its second click.
    b.TestTubeX = 3;
    b.UserControl_MouseUp(1, 0, Mid(0), Mid(2));
    EXPECT_EQ(f.Rows()[2], "..77");
    b.SpellClickPending = false;
    b.TestTubeX = -1;
    f.Start(Board4);

    // 2. A game that is over.
    b.SetGameIsOverToTrue();
    b.UserControl_MouseUp(1, 0, Mid(0), Mid(0));
    EXPECT_EQ(f.Rows(), Board4);
    f.Start(Board4);

    // 3. Off the board: the left and top edges belong to no cell, the right and lower
    // edges of the surface to the last one.
    b.UserControl_MouseUp(1, 0, 0, Mid(0));
    b.UserControl_MouseUp(1, 0, Mid(0), 0);
    b.UserControl_MouseUp(1, 0, 500.5f, Mid(3));
    b.UserControl_MouseUp(1, 0, Mid(0), 501);
    EXPECT_EQ(f.Rows(), Board4);
    EXPECT_TRUE(f.Events.Take().empty());
    b.UserControl_MouseUp(1, 0, 500, 500);
    EXPECT_EQ(f.Rows()[3], "88..");

    // 4. The test tube takes no spell lying on the board, with either button: only the
    // refusal sound, and only if sounds are on.
    f.Start(Board4);
    f.Game->ActiveSpell = tolva::SpellTestTube;
    b.UserControl_MouseUp(1, 0, Mid(2), Mid(0));
    b.UserControl_MouseUp(2, 0, Mid(1), Mid(1));
    f.Settings.PlaySounds = 0;
    b.UserControl_MouseUp(1, 0, Mid(2), Mid(0));
    const auto refusal = tolva::RecordingSoundEffects::Call{tolva::AppPath() + "data\\8.wav", false};
    EXPECT_EQ(f.Host.Sound.Calls(), (std::vector<tolva::RecordingSoundEffects::Call>{refusal, refusal}));
    EXPECT_EQ(f.Rows(), Board4);
    EXPECT_EQ(f.Game->ActiveSpell, tolva::SpellTestTube);
    EXPECT_TRUE(f.Events.Take().empty());
}

TEST(Click, RightButtonTakesOneCellOnlyFromSpellsOrInCheatMode) {
    BoardFixture f;
    auto& b = f.Board;
    f.Start(Board4, {"....", ".2..", "....", "...."});
    // A colour brick, no cheat mode, no spell armed: nothing at all.
    f.Click(0, 0, 2);
    EXPECT_EQ(f.Rows(), Board4);
    EXPECT_TRUE(f.Events.Take().empty());

    // A spell lying on the board is thrown away: the board closes up at once, even with
    // AniDraw on, the move ends, and the spell never reaches the stock.
    f.Click(1, 1, 2);
    EXPECT_EQ(f.Rows(), (Rows{"1.a2",
                              "3145",
                              "6677",
                              "8899"}));
    EXPECT_EQ(f.Board.Spells(1, 1), -1);
    EXPECT_EQ(f.Events.Take(), (Rows{"CanDoNextMove"}));
    EXPECT_FALSE(b.Timer1().Enabled());

    // In cheat mode any one cell goes, and a hole compacts the board and judges the move.
    f.Game->CheatMode = true;
    f.Click(3, 3, 2);
    EXPECT_EQ(f.Rows()[3], "8897");
    f.Start({"1.", "2."});
    f.Board.Bricks(0, 1) = -1;   // 1 stands in the air over a hole
    f.Click(1, 1, 2);
    EXPECT_EQ(f.Rows(), (Rows{"..", "1."}));
    EXPECT_EQ(f.Events.Take(), (Rows{"GameOver", "CanDoNextMove"}));
}

TEST(Click, ArmedSpellTakesTheClickFromThePlainRemoval) {
    BoardFixture f;
    f.Start({"11.", "22.", "33."});
    f.Game->ActiveSpell = tolva::SpellGun;
    // A hole with a spell armed: nothing, and the spell stays armed.
    f.Click(2, 0, 1);
    EXPECT_EQ(f.Rows(), (Rows{"11.", "22.", "33."}));
    EXPECT_TRUE(f.Events.Take().empty());
    EXPECT_EQ(f.Game->ActiveSpell, tolva::SpellGun);
    // Any button on an occupied cell goes to the spell, never to a plain removal: the right
    // button on a colour brick fires it, and no click of the level is counted.
    f.Click(0, 1, 2);
    EXPECT_EQ(f.Rows(), (Rows{"11.", "...", "33."}));
    EXPECT_EQ(f.Events.Take(), (Rows{"SpellClick(2,1)", "SpellInUse(true)", "SpellInUse(false)", "SpellUsed(2)",
                                     "NewScore(4)", "BricksRemoved(2)", "CanDoNextMove"}));
    f.Host.Sound.ClearCalls();

    // Without a spell: the middle button does nothing, a lone brick does nothing.
    f.Game->ActiveSpell = tolva::NoSpell;
    f.Start({"12.", "21.", "..."});
    f.Click(0, 0, 3);
    f.Click(0, 0, 1);
    EXPECT_EQ(f.Rows(), (Rows{"12.", "21.", "..."}));
    EXPECT_TRUE(f.Events.Take().empty());
    EXPECT_TRUE(f.Host.Sound.Calls().empty());
}

TEST(Click, HolesStayUntilTimer1AndTwoQuickClicksCloseUpOnce) {
    BoardFixture f;
    f.Start({"33.",
             "11.",
             "22."});
    f.Board.SetUpdateDelay(200);
    f.Click(0, 1);
    EXPECT_EQ(f.Rows(), (Rows{"33.", "...", "22."}));
    // The second click, inside the delay, acts on the board with its holes still open:
    // the 3s have not fallen yet.
    f.Host.Loop.Advance(100);
    f.Click(0, 0);
    EXPECT_EQ(f.Rows(), (Rows{"...", "...", "22."}));
    EXPECT_EQ(f.Events.Take(), (Rows{"BonusTimes(1)", "NewScore(4)", "BricksRemoved(2)", "RemoveClick(1)",
                                     "BonusTimes(2)", "NewScore(4)", "BricksRemoved(2)", "RemoveClick(1)"}));
    // The timer of the first click keeps its period: one closing up, at 200 ms.
    f.Host.Loop.Advance(99);
    EXPECT_TRUE(f.Events.Take().empty());
    f.Host.Loop.Advance(1);
    EXPECT_EQ(f.Events.Take(), (Rows{"CanDoNextMove"}));
    f.Host.Loop.Advance(1000);
    EXPECT_TRUE(f.Events.Take().empty());
    EXPECT_FALSE(f.Board.Timer1().Enabled());

    // The closing up really compacts.
    f.Start({"4.",
             "11"});
    f.Click(1, 1);
    EXPECT_EQ(f.Rows(), (Rows{"4.", ".."}));
    f.Host.Loop.Advance(200);
    EXPECT_EQ(f.Rows(), (Rows{"..", "4."}));
    EXPECT_EQ(f.Events.Take(), (Rows{"BonusTimes(1)", "NewScore(4)", "BricksRemoved(2)", "RemoveClick(1)",
                                     "GameOver", "CanDoNextMove"}));
}

TEST(Click, WithoutAniDrawTheBoardClosesUpAtOnceAndLetsEventsRunBeforeTheEnd) {
    BoardFixture f;
    f.Board.AniDraw = false;
    f.Start({"4.5",
             "115",
             "223"});
    f.Host.Loop.Post([&] { f.Events.Log.push_back("posted event"); });
    f.Click(1, 1);
    EXPECT_EQ(f.Rows(), (Rows{"..5",
                              "4.5",
                              "223"}));
    EXPECT_EQ(f.Events.Take(), (Rows{"BonusTimes(1)", "NewScore(4)", "BricksRemoved(2)", "RemoveClick(1)",
                                     "posted event", "CanDoNextMove"}));
    EXPECT_FALSE(f.Board.Timer1().Enabled());
}

TEST(Click, ClickOnBrickAimsAtTheMiddleAndMovesTheCallersCell) {
    BoardFixture f;
    f.Start({"1122",
             "3344",
             "5566",
             "7788"});
    float x = 2, y = 1;
    f.Board.ClickOnBrick(x, y, 1);
    EXPECT_EQ(x, 3);
    EXPECT_EQ(y, 2);
    EXPECT_EQ(f.Rows()[1], "33..");   // by the mouse's own road, refusals and all

    // The pointer reports its cell, on or off the board, whatever the button.
    f.Board.UserControl_MouseMove(0, 0, 0, 0);
    f.Board.UserControl_MouseMove(2, 0, 499, 250);
    f.Board.UserControl_MouseMove(1, 0, 700, 130);
    EXPECT_EQ(f.Events.Take(), (Rows{"BonusTimes(0)", "NewScore(4)", "BricksRemoved(2)", "RemoveClick(1)",
                                     "MouseMove(-1,-1)", "MouseMove(3,1)", "MouseMove(5,1)"}));
}

