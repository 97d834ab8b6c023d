// A new game (F2) or the end of a game (F12) asked for while an effect still runs: the
// bonus count between two levels, or the bouncing saw. The effect is cut short and the
// level flow it belonged to is dropped, so that the new game starts clean at its level,
// an ended game stays ended, and nothing of the old flow reaches the score, the spell
// stock or stat.ini afterwards.
#include "session/SessionFixture.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

using namespace tolva;
using namespace tolva::testing;

namespace {

constexpr std::int16_t F2 = 113;
constexpr std::int16_t F12 = 123;

// Presses a key on the main window `ms` milliseconds of game time from now, from inside
// whatever wait the game is in then.
std::unique_ptr<Timer> PressLater(SessionFixture& f, std::int32_t ms, std::int16_t key) {
    auto timer = f.Host.Loop.CreateTimer(true);
    Timer* raw = timer.get();
    timer->SetInterval(ms);
    timer->OnTick = [&f, raw, key] {
        raw->SetEnabled(false);
        f.Session.Form_KeyDown(key);
    };
    timer->SetEnabled(true);
    return timer;
}

// Level 1 ends with two steps of the level bonus, which count up on the bonus screen.
void LevelWithBonus(SessionFixture& f) {
    f.SetLevel(1, {"11", "22"});
    f.SetLevel(2, {"33", "44"});
    f.Session.NewGame(1);
    f.Click(0, 0);
}

// A board of no pairs with the saw armed; a click sets it running for four seconds.
void ArmSaw(SessionFixture& f) {
    f.SetLevel(1, {"1212", "2121", "1212", "2121"});
    f.Session.NewGame(1);
    f.Session.SpellStock[SpellSaw] = 1;
    f.Session.sp_Click(SpellSaw);
}

} // namespace

TEST(InterruptedFlow, NewGameDuringTheBonusCountStartsCleanAtLevelOne) {
    SessionFixture f;
    LevelWithBonus(f);
    const double before = f.Session.Score;
    f.Host.Dialog.QueueMessageAnswer(MessageResult::Ok);   // "Restart game?"
    auto press = PressLater(f, 200, F2);                   // the count has paid one step
    f.Click(0, 1);                                          // clears level 1: the bonus counts
    f.Host.Loop.Advance(5000);

    EXPECT_TRUE(f.Session.GameRunning);
    EXPECT_EQ(f.Game->CurLevelNo, 1);
    EXPECT_EQ(f.Label(SessionLabel::Level), "1");
    EXPECT_EQ(f.Session.Score, 0) << "the old count went on paying after " << before;
    EXPECT_FALSE(f.Board.BonusPic().Visible());
    EXPECT_EQ(f.Board.Bricks(0, 0), 1);                    // level 1 as stored, not level 2
    // The broken-off level is not logged, and no level 2 started to log it with no clicks.
    EXPECT_EQ(f.Stat("LEVEL1", "minclicks"), "");
    EXPECT_EQ(f.Stat("LEVEL1", "played"), "");
    // The new game plays: its first click counts.
    f.Click(0, 0);
    EXPECT_EQ(f.Session.Score, 4);
}

TEST(InterruptedFlow, EndedGameDuringTheBonusCountStaysEnded) {
    SessionFixture f;
    LevelWithBonus(f);
    f.Host.Dialog.QueueMessageAnswer(MessageResult::Ok);   // "Are you sure you want to end this game ?"
    auto press = PressLater(f, 200, F12);
    f.Click(0, 1);
    const double atTheEnd = f.Session.Score;
    f.Host.Loop.Advance(5000);

    EXPECT_FALSE(f.Session.GameRunning);
    EXPECT_TRUE(f.Board.GameIsOver);
    EXPECT_EQ(f.Session.Score, atTheEnd);
    EXPECT_EQ(f.Game->CurLevelNo, 1);                      // no next level behind the message
    EXPECT_EQ(f.Host.Dialog.ShownBoxes().back().Text, "G A M E   O V E R !");
    EXPECT_EQ(f.Stat("LEVEL1", "gameover"), "1");
    EXPECT_EQ(f.Stat("LEVEL2", "played"), "");
    // Clicks on the board do nothing any more.
    f.Click(0, 1);
    EXPECT_EQ(f.Session.Score, atTheEnd);
}

TEST(InterruptedFlow, NewGameDuringTheSawDropsTheSawAndItsPoints) {
    SessionFixture f;
    ArmSaw(f);
    ASSERT_EQ(f.Game->ActiveSpell, SpellSaw);
    f.Host.Dialog.QueueMessageAnswer(MessageResult::Ok);
    auto press = PressLater(f, 1000, F2);
    f.Click(1, 1);                                          // the saw runs four seconds
    f.Host.Loop.Advance(10000);

    EXPECT_TRUE(f.Session.GameRunning);
    EXPECT_EQ(f.Session.Score, 0);
    EXPECT_EQ(f.Session.SpellStock[SpellSaw], 0);           // the new game's stock is untouched
    EXPECT_FALSE(f.Game->SpellRunning);
    EXPECT_FALSE(f.Board.SpellClickPending);
    EXPECT_FALSE(f.Board.BounceTimer().Enabled());
    EXPECT_FALSE(f.Board.Bounce().Visible());
    for (int x = 0; x < 4; ++x)
        for (int y = 0; y < 4; ++y)
            EXPECT_EQ(f.Board.Bricks(x, y), f.Game->Levels[0].BrickGrid(x, y)) << x << "," << y;
    // The new game plays on.
    f.Click(0, 0);
    EXPECT_EQ(f.Session.Score, 0);                          // a lone brick: nothing
    EXPECT_FALSE(f.Board.GameIsOver);
}

TEST(InterruptedFlow, EndedGameDuringTheSawStaysEnded) {
    SessionFixture f;
    ArmSaw(f);
    f.Host.Dialog.QueueMessageAnswer(MessageResult::Ok);
    auto press = PressLater(f, 1000, F12);
    f.Click(1, 1);
    f.Host.Loop.Advance(10000);

    EXPECT_FALSE(f.Session.GameRunning);
    EXPECT_TRUE(f.Board.GameIsOver);
    EXPECT_EQ(f.Session.Score, 0);                          // the saw's points never came
    EXPECT_TRUE(f.Board.BoardReady);                        // the board repaints again
    EXPECT_EQ(f.Host.Dialog.ShownBoxes().back().Text, "G A M E   O V E R !");
}
