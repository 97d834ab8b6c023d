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

// What cuts in: level 1 ends with two steps of the level bonus, which count up on the
// bonus screen, and a key comes 200 ms into the count; or a saw is fired on a board of no
// pairs, and a key comes a second into its four seconds. `firstClick` is what a click at
// (0, 0) of the fresh level scores.
struct Effect {
    const char* name;
    void (*setUp)(SessionFixture&);
    std::int32_t keyAt;
    int x, y;
    double firstClick;
};

const Effect Effects[] = {
    {"bonus count",
     [](SessionFixture& f) {
         f.SetLevel(1, {"11", "22"});
         f.SetLevel(2, {"33", "44"});
         f.Session.NewGame(1);
         f.Click(0, 0);
     },
     200, 0, 1, 4},
    {"saw",
     [](SessionFixture& f) {
         f.StartGame({"1212", "2121", "1212", "2121"});
         f.Session.SpellStock[SpellSaw] = 1;
         f.Session.sp_Click(SpellSaw);
     },
     1000, 1, 1, 0},
};

} // namespace

TEST(InterruptedFlow, NewGameDuringAnEffectStartsCleanAtLevelOne) {
    for (const Effect& e : Effects) {
        SessionFixture f;
        e.setUp(f);
        f.Host.Dialog.QueueMessageAnswer(MessageResult::Ok);   // "Restart game?"
        auto press = PressLater(f, e.keyAt, F2);
        f.Click(e.x, e.y);
        f.Host.Loop.Advance(10000);

        EXPECT_TRUE(f.Session.GameRunning) << e.name;
        EXPECT_EQ(f.Game->CurLevelNo, 1) << e.name;
        EXPECT_EQ(f.Label(SessionLabel::Level), "1") << e.name;
        EXPECT_EQ(f.Session.Score, 0) << e.name << ": the old flow went on paying";
        EXPECT_EQ(f.Session.SpellStock[SpellSaw], 0) << e.name;   // the new game's stock is untouched
        EXPECT_FALSE(f.Game->SpellRunning) << e.name;
        EXPECT_FALSE(f.Board.SpellClickPending) << e.name;
        EXPECT_FALSE(f.Board.BounceTimer().Enabled()) << e.name;
        EXPECT_FALSE(f.Board.Bounce().Visible()) << e.name;
        EXPECT_FALSE(f.Board.BonusPic().Visible()) << e.name;
        for (int x = 0; x < f.Board.xBricks(); ++x)
            for (int y = 0; y < f.Board.xBricks(); ++y)
                EXPECT_EQ(f.Board.Bricks(x, y), f.Game->Levels[0].BrickGrid(x, y)) << e.name << " " << x << "," << y;
        // The broken-off level is not logged, and no level 2 started to log it with no clicks.
        EXPECT_EQ(f.Stat("LEVEL1", "minclicks"), "") << e.name;
        EXPECT_EQ(f.Stat("LEVEL1", "played"), "") << e.name;
        // The new game plays on.
        f.Click(0, 0);
        EXPECT_EQ(f.Session.Score, e.firstClick) << e.name;
        EXPECT_FALSE(f.Board.GameIsOver) << e.name;
    }
}

TEST(InterruptedFlow, EndedGameDuringAnEffectStaysEnded) {
    for (const Effect& e : Effects) {
        SessionFixture f;
        e.setUp(f);
        f.Host.Dialog.QueueMessageAnswer(MessageResult::Ok);   // "Are you sure you want to end this game ?"
        auto press = PressLater(f, e.keyAt, F12);
        f.Click(e.x, e.y);
        const double atTheEnd = f.Session.Score;   // the saw's points never come
        f.Host.Loop.Advance(10000);

        EXPECT_FALSE(f.Session.GameRunning) << e.name;
        EXPECT_TRUE(f.Board.GameIsOver) << e.name;
        EXPECT_TRUE(f.Board.BoardReady) << e.name;   // the board repaints again
        EXPECT_EQ(f.Session.Score, atTheEnd) << e.name;
        EXPECT_EQ(f.Game->CurLevelNo, 1) << e.name;   // no next level behind the message
        EXPECT_EQ(f.Host.Dialog.ShownBoxes().back().Text, "G A M E   O V E R !") << e.name;
        EXPECT_EQ(f.Stat("LEVEL1", "gameover"), "1") << e.name;
        EXPECT_EQ(f.Stat("LEVEL2", "played"), "") << e.name;
        // Clicks on the board do nothing any more.
        f.Click(0, 1);
        EXPECT_EQ(f.Session.Score, atTheEnd) << e.name;
    }
}
