// The game playing itself: the moves autoplay makes and the random numbers it draws for
// them, its rare spell and the test tube's two clicks, the clearing of dead ends that
// carries play on through the set, and the chain that stops on a refused click. The long
// runs over the shipped default set, with the board closing up at once and after its
// pause, are tolva2-cli autoplay's test.
#include "session/SessionFixture.h"

#include <gtest/gtest.h>

using namespace tolva;
using namespace tolva::testing;

namespace {

int Count(const std::vector<std::string>& calls, const std::string& call) {
    return static_cast<int>(std::count(calls.begin(), calls.end(), call));
}

// Unchecks autoplay, as the tester would, when the n-th level has started.
void StopAtLevelStart(SessionFixture& f, std::size_t n) {
    f.Events.AfterNewLevel = [&f, n](std::int16_t) {
        if (f.Events.Levels.size() == n) f.Session.mnuAutoplay_Click();
    };
}

void StartAutoplay(SessionFixture& f) {
    f.Session.NewGame(1);
    f.Session.ChangeCheatMode();
    f.Session.mnuAutoplay_Click();
}

} // namespace

TEST(Autoplay, NeedsARunningGame) {
    SessionFixture f;
    f.SetLevel(1, {"11", "22"});
    f.Game->CheatMode = true;
    f.Session.mnuAutoplay_Click();
    EXPECT_FALSE(f.Session.AutoplayChecked);
    EXPECT_FALSE(f.View.AutoplayMark);
    EXPECT_EQ(f.Events.Clicks, 0);
}

TEST(Autoplay, DrawsASpellRarelyAndUsesOnlyOneInStock) {
    // A 2 x 2 level of two pairs. Each move draws whether to try a spell (above 2990 of
    // 3000) and which (0..6); the spell is not in stock, so the move is a plain one.
    SequenceRandom rng;
    SessionFixture f(&rng);
    f.SetLevel(1, {"11", "22"});
    f.SetLevel(2, {"11", "22"});
    StopAtLevelStart(f, 2);
    rng.Values = {0.9999, 0.99, 0.0,   // spell 6, which is never in stock; the first move of two
                  0.9999, 0.34, 0.0,   // the GUN, not in stock; the only move left
                  0.0};                // the fanfare of the level bonus
    StartAutoplay(f);
    EXPECT_TRUE(rng.Values.empty());
    EXPECT_EQ(f.Events.Clicks, 2);
    EXPECT_EQ(f.Events.Used, (std::array<int, SpellCount>{}));
    EXPECT_EQ(f.Events.Levels, (std::vector<std::int16_t>{1, 2}));

    // The "TEST TUBE" in stock: its first click marks a cell, a second later the second
    // pours that cell's colour; then the new pair of 4s is the one move, and the board
    // is left with no move, which autoplay clears to reach the next level.
    SequenceRandom tubeRng;
    SessionFixture t(&tubeRng);
    t.SetLevel(1, {"123", "456", "789"});
    t.SetLevel(2, {"11", "22"});
    StopAtLevelStart(t, 2);
    t.Session.NewGame(1);
    t.Session.NewSpell(3);
    t.Session.ChangeCheatMode();
    tubeRng.Values = {0.9999, 0.5,    // a spell: the TEST TUBE
                      0.0, 0.5,       // its cells: (0, 0), then (0, 1) of colour 4
                      0.0, 0.0,       // a plain move: the first cell that can move
                      0.5};           // the fanfare
    std::int64_t pouredAt = -1;
    t.Events.BeforeNextMove = [&] {
        if (pouredAt < 0) pouredAt = t.Host.Loop.NowMs();
    };
    t.Session.mnuAutoplay_Click();
    EXPECT_TRUE(tubeRng.Values.empty());
    EXPECT_EQ(pouredAt, 1000);
    EXPECT_EQ(t.Events.Used[3], 1);
    EXPECT_EQ(t.Session.SpellStock[3], 0);
    EXPECT_EQ(t.Events.Clicks, 1);
    EXPECT_EQ(t.Events.GameOvers, 1);
    EXPECT_EQ(t.Events.Levels, (std::vector<std::int16_t>{1, 2}));
    EXPECT_TRUE(t.Session.GameRunning);
    EXPECT_TRUE(t.Host.Dialog.ShownBoxes().empty());
}

TEST(Autoplay, ClearsDeadEndsAndSoundsTheSpeakerSignals) {
    for (const bool speaker : {true, false}) {
        SessionFixture f;
        f.SetLevel(1, {"11", "22"});                  // cleared: more clicks than the target
        f.SetLevel(2, {"113", "245", "678"});         // one move, then a dead end
        f.SetLevel(3, {"11", "22"});
        StopAtLevelStart(f, 3);
        f.Events.ScoreCounts = false;                 // the mode freezes the score at 0
        if (!speaker) f.Session.PCSPEAKERENABLED_Click();
        StartAutoplay(f);

        EXPECT_EQ(f.Events.Levels, (std::vector<std::int16_t>{1, 2, 3}));
        EXPECT_EQ(f.Events.GameOvers, 1);
        EXPECT_EQ(f.Events.Bonuses, 2);               // the dead end pays its bonus too
        EXPECT_TRUE(f.Session.GameRunning);
        EXPECT_TRUE(f.Host.Dialog.ShownBoxes().empty());
        EXPECT_EQ(f.Session.Score, 0);
        EXPECT_EQ(f.Events.MaxMoveDepth, 1);
        EXPECT_TRUE(f.Events.Disagreements.empty()) << f.Events.Disagreements.front();
        // Level 1: signal 1 (1500, 2000, 2000). The dead end: signal 0 (1000, 500), and
        // none for the bonus of a level cleared by autoplay.
        const auto calls = f.BeepCalls();
        EXPECT_EQ(Count(calls, "Beep(1500,200)"), speaker ? 1 : 0);
        EXPECT_EQ(Count(calls, "Beep(2000,200)"), speaker ? 2 : 0);
        EXPECT_EQ(Count(calls, "Beep(1000,200)"), speaker ? 1 : 0);
        EXPECT_EQ(Count(calls, "Beep(500,200)"), speaker ? 1 : 0);
        EXPECT_EQ(f.Stat("LEVEL2", "played"), "1");
    }
}

TEST(Autoplay, ARefusedTestTubeStopsTheChainUntilTheMenuIsUsedAgain) {
    SequenceRandom rng;
    SessionFixture f(&rng);
    f.SetLevel(1, {"a12", "344", "355"});   // a saw lies at (0, 0)
    f.Session.NewGame(1);
    f.Session.NewSpell(3);
    f.Session.ChangeCheatMode();
    // The tube marks (0, 1), then its second click lands on the saw and is refused.
    rng.Values = {0.9999, 0.5, 0.5, 0.0};
    f.Host.Sound.ClearCalls();
    f.Session.mnuAutoplay_Click();
    EXPECT_TRUE(rng.Values.empty());
    EXPECT_TRUE(f.Session.AutoplayChecked);
    EXPECT_EQ(f.Events.Moves, 0);
    EXPECT_EQ(f.Board.TestTubeX, 0);
    EXPECT_EQ(f.Board.TestTubeY, 1);
    ASSERT_EQ(f.Host.Sound.Calls().size(), 1u);
    EXPECT_EQ(f.Host.Sound.Calls()[0].File, AppPath() + "data\\8.wav");

    // Off and on again: a plain move, (2, 1) of colour 4, is the tube's second click.
    f.Events.BeforeNextMove = [&] { f.Session.mnuAutoplay_Click(); };
    rng.Values = {0.0, 0.5};
    f.Session.mnuAutoplay_Click();
    f.Session.mnuAutoplay_Click();
    EXPECT_TRUE(rng.Values.empty());
    EXPECT_EQ(f.Events.Used[3], 1);
    EXPECT_EQ(f.Board.Bricks(0, 1), 4);
    EXPECT_EQ(f.Board.Bricks(0, 2), 4);
    EXPECT_FALSE(f.Session.AutoplayChecked);
}
