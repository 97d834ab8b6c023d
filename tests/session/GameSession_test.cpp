#include "session/SessionFixture.h"

#include "session/GameLevelSets.h"
#include "session/GameStartup.h"
#include "session/LevelCodes.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace tolva;
using namespace tolva::testing;

TEST(GameSession, FormatScoreGroupsDigitsInThreesFromTheLeft) {
    EXPECT_EQ(GameSession::FormatScore(0), "000.000.000");
    EXPECT_EQ(GameSession::FormatScore(1234), "000.001.234");
    EXPECT_EQ(GameSession::FormatScore(123456789), "123.456.789");
    EXPECT_EQ(GameSession::FormatScore(1234567890), "123.456.789.0");
    EXPECT_EQ(GameSession::FormatScore(99000000000.0), "990.000.000.00");
}

TEST(GameSession, AGameRunsFromLevelToLevelAndEndsOnADeadBoard) {
    SessionFixture f;
    f.SetLevel(1, {"11", "22"});
    f.SetLevel(2, {"33", "45"});
    ASSERT_TRUE(f.Session.NewGame(1));
    EXPECT_TRUE(f.Session.GameRunning);
    EXPECT_EQ(f.Label(SessionLabel::Score), "000.000.000");
    EXPECT_EQ(f.Label(SessionLabel::LevelName), "LEVEL 1");
    EXPECT_EQ(f.Label(SessionLabel::LevelCode), "");   // level 1 never shows its code
    EXPECT_EQ(f.Label(SessionLabel::Clicks), "CLICKS: 0");
    f.Session.MouseMove(0, 1);
    EXPECT_EQ(f.Label(SessionLabel::Pointer), "X:0,Y:1  TYPE:2");

    f.Click(0, 0);   // the pair of 1s: 4 points
    EXPECT_EQ(f.Session.Score, 4);
    EXPECT_EQ(f.Label(SessionLabel::Score), "000.000.004");
    EXPECT_EQ(f.Label(SessionLabel::Clicks), "CLICKS: 1");

    // On a 2 x 2 board every pair is at least the side less one: two steps of the level
    // bonus, counted up through NewScore (the count's screen and sounds are the bonus
    // sequence's tests).
    f.Click(0, 1);
    EXPECT_EQ(f.Session.Score, 8 + 2 * 100000);
    EXPECT_EQ(f.Label(SessionLabel::Level), "2");
    EXPECT_EQ(f.Label(SessionLabel::LevelCode), "LEVEL-CODE:" + LevelCodes::CodeOf(2));
    // Level 1 was logged as finished when level 2 began.
    EXPECT_EQ(f.Stat("LEVEL1", "minclicks"), "2");
    EXPECT_EQ(f.Stat("LEVEL1", "played"), "1");
    EXPECT_EQ(f.Session.LevelClicks, 0);
    // Its fewest clicks is now the target of level 1, not of level 2.
    EXPECT_EQ(f.Label(SessionLabel::Clicks), "CLICKS: 0");

    // Level 2 has one pair; after it nothing can move: game over, once.
    f.Host.Dialog.QueueMessageAnswer(MessageResult::Ok);
    f.Click(0, 0);
    EXPECT_FALSE(f.Session.GameRunning);
    ASSERT_EQ(f.Host.Dialog.ShownBoxes().size(), 1u);
    EXPECT_EQ(f.Host.Dialog.ShownBoxes()[0].Text, "G A M E   O V E R !");
    EXPECT_EQ(f.Host.Dialog.ShownBoxes()[0].Title, "YOU DID WHAT YOU COULD ?!");
    EXPECT_EQ(f.Host.Dialog.ShownBoxes()[0].Icon, MessageIcon::Information);
    EXPECT_EQ(f.View.StandardBackgrounds, 1);
    EXPECT_EQ(f.Stat("LEVEL2", "gameover"), "1");
    // The score of the game is offered to the table, with the level it reached.
    EXPECT_EQ(std::count(f.Services.Calls.begin(), f.Services.Calls.end(),
                         "CheckIfHiScore(" + NumberText(f.Session.Score) + ",2)"), 1);
}

TEST(GameSession, RestartingAskesFirstAndCancelKeepsTheGame) {
    SessionFixture f;
    f.StartGame({"111", "222", "333"});
    f.Click(0, 0);
    f.Host.Dialog.QueueMessageAnswer(MessageResult::Cancel);
    EXPECT_FALSE(f.Session.NewGame(1));
    EXPECT_EQ(f.Session.Score, 9);
    EXPECT_EQ(f.Host.Dialog.ShownBoxes().back().Title, "Restart game?");
    EXPECT_EQ(f.Host.Dialog.ShownBoxes().back().Icon, MessageIcon::Warning);

    f.Host.Dialog.QueueMessageAnswer(MessageResult::Ok);
    f.Services.Calls.clear();
    EXPECT_TRUE(f.Session.NewGame(1));
    EXPECT_EQ(f.Session.Score, 0);
    EXPECT_EQ(f.Services.Calls.front().rfind("CheckIfHiScore(", 0), 0u);
    // A broken-off level is not logged.
    EXPECT_EQ(f.Stat("LEVEL1", "played"), "");
}

TEST(GameSession, SpellSoundComesAtMostOncePerSecondAndIdleMascotAfterTwentySeconds) {
    SessionFixture f;
    f.StartGame({"111", "222", "333"});
    const std::string sound = AppPath() + "data\\9.wav";
    f.Session.NewSpell(0);
    f.Session.NewSpell(1);
    f.Host.Loop.Advance(999);
    f.Session.NewSpell(2);
    ASSERT_EQ(f.Host.Sound.Calls().size(), 1u);
    EXPECT_EQ(f.Host.Sound.Calls()[0].File, sound);
    f.Host.Loop.Advance(1);                          // the second is over
    f.Session.NewSpell(3);
    EXPECT_EQ(f.Host.Sound.Calls().size(), 2u);
    f.Settings.PlaySounds = 0;
    f.Host.Loop.Advance(1000);
    f.Session.NewSpell(3);
    EXPECT_EQ(f.Host.Sound.Calls().size(), 2u);

    // Every score holds the idle mascot off anew, and a score with a place in the table
    // shows that place highlighted.
    const int restarts = f.Services.IdleRestarts;
    f.Services.Place = 3;
    f.Click(0, 0);
    EXPECT_EQ(f.Services.IdleRestarts, restarts + 1);
    EXPECT_EQ(f.Services.Calls.back(), "PrintHiScore(3,255,0)");
}

TEST(GameSession, TheLogFollowsTheSettingAndLevelHundredIsLoggedOnTheWayRound) {
    // With "Log statistics" off nothing touches the disk, a target or not.
    SessionFixture quiet;
    quiet.Settings.MakeStat = false;
    quiet.SetLevel(1, {"11", "22"});
    quiet.SetLevel(2, {"12", "34"});
    quiet.Session.NewGame(1);
    quiet.Click(0, 0);
    quiet.Click(0, 1);                        // level 2 begins, dead at once
    quiet.Click(0, 0);
    EXPECT_FALSE(std::filesystem::exists(quiet.Folder / "stat.ini"));

    // Clearing level 100 goes round to level 1 and logs level 100 as finished.
    SessionFixture f;
    f.SetLevel(1, {"12", "34"});
    f.SetLevel(100, {"11", "22"});
    f.Session.NewGame(100);
    f.Click(0, 0);
    f.Click(0, 1);
    EXPECT_EQ(f.Game->CurLevelNo, 1);
    EXPECT_EQ(f.Stat("LEVEL100", "played"), "1");
    EXPECT_EQ(f.Stat("LEVEL100", "minclicks"), "2");
}

TEST(GameSession, ClickTargetsShowAndALevelClearedInThemSoundsTheGoodSignal) {
    // The fewest clicks of a level in stat.ini is its target, shown beside the count; a
    // negative number edited in by hand is shown as it stands, but the count after a click
    // compares only with a target of 0 or more. In cheat mode the PC speaker tells how a
    // cleared level compares with its target: more clicks give signal 1, as many or fewer
    // signal 3.
    const struct { const char* target; const char* afterClick; const char* signalStart; } cases[] = {
        {"2", "CLICKS: 1 / 2", "Beep(3000,100)"},
        {"1", "CLICKS: 1 / 1", "Beep(1500,200)"},
        {"-5", "CLICKS: 1", "Beep(1500,200)"},
    };
    for (const auto& c : cases) {
        SessionFixture f;
        f.SetLevel(2, {"12", "34"});
        WriteIni(f.Folder / "stat.ini", "LEVEL1", "minclicks", c.target);
        f.Session.ChangeCheatMode();
        f.StartGame({"11", "22"});
        EXPECT_EQ(f.Label(SessionLabel::Clicks), std::string("CLICKS: 0 / ") + c.target) << c.target;
        f.Click(0, 0);
        EXPECT_EQ(f.Label(SessionLabel::Clicks), c.afterClick) << c.target;
        f.Click(0, 1);
        ASSERT_FALSE(f.BeepCalls().empty()) << c.target;
        EXPECT_EQ(f.BeepCalls().front(), c.signalStart) << c.target;
    }

    // Signal 1 whole: its pause is a wait on the game's clock.
    SessionFixture f;
    const auto before = f.Host.Loop.NowMs();
    f.Session.SpeakerEvent(1);
    EXPECT_EQ(f.BeepCalls(), (std::vector<std::string>{"Beep(1500,200)", "Beep(2000,200)", "Beep(2000,200)"}));
    EXPECT_EQ(f.Host.Loop.NowMs() - before, 200);
}

namespace {

// A host whose screen has the given height; the rest of start-up is never reached here.
class ScreenOfHeight final : public StartupHost {
public:
    explicit ScreenOfHeight(int height) : height_(height) {}
    int ScreenHeight() const override { return height_; }
    void LoadGfx() override {}
    void ShowAboutFirstTime() override {}
    void ShowMainWindow() override {}

private:
    int height_;
};

} // namespace

TEST(GameSession, StartUpTakesAScreenOfSixHundredPixelsAndStopsBelowIt) {
    const std::string tooLow = "TOLVA II REQUIRES A SCREEN RESOLUTION OF 800*600 AND 16BIT COLORS MINIMUM !";
    for (int height : {599, 600}) {
        SessionFixture f;
        GameLevelSets sets(*f.Game, f.Session, f.Board, f.View, f.Host.Dialog, f.Host.Loop);
        ScreenOfHeight screen(height);
        GameStartup startup(StartupParts{*f.Game, f.Settings, f.Session, f.Board, sets, f.View, f.Host.Dialog,
                                         f.Host.Rng, f.Host.Sound, screen, {}, {}, {}});
        // The fixture's folder has no default set: a screen high enough gets as far as
        // looking for it.
        EXPECT_FALSE(startup.Form_Load("", 1));
        ASSERT_EQ(f.Host.Dialog.ShownBoxes().size(), 1u) << height;
        EXPECT_EQ(f.Host.Dialog.ShownBoxes()[0].Text == tooLow, height == 599) << height;
    }
}

TEST(GameSession, EndingTheGameAndCopyingTheLevelCodeAskFirstAndFollowTheSet) {
    SessionFixture f;
    f.SetLevel(1, {"11", "22"});
    EXPECT_FALSE(f.Session.Game_Click().EndGame);
    f.Session.NewGame(1);
    const GameMenuState running = f.Session.Game_Click();
    EXPECT_TRUE(running.EndGame);
    EXPECT_TRUE(running.LevelCode);
    // The level code goes to the clipboard only when the player says so.
    f.Host.Dialog.QueueMessageAnswer(MessageResult::Cancel);
    f.Session.lbLevelCode_Click();
    EXPECT_EQ(f.View.Clipboard, "");
    f.Host.Dialog.QueueMessageAnswer(MessageResult::Ok);
    f.Session.lbLevelCode_Click();
    EXPECT_EQ(f.View.Clipboard, LevelCodes::ClipboardText(1));
    // Cancel keeps the game; OK ends it.
    f.Host.Dialog.QueueMessageAnswer(MessageResult::Cancel);
    f.Session.mnuEndGame_Click();
    EXPECT_TRUE(f.Session.GameRunning);
    f.Host.Dialog.QueueMessageAnswer(MessageResult::Ok);
    f.Session.mnuEndGame_Click();
    EXPECT_FALSE(f.Session.GameRunning);
    EXPECT_FALSE(f.Session.Game_Click().EndGame);

    // Another set has no level codes and no click targets: no entry, no question, nothing
    // copied, whatever stat.ini holds.
    SessionFixture other;
    other.Session.IsDefaultSet = false;
    other.SetLevel(2, {"11", "22"});
    WriteIni(other.Folder / "stat.ini", "LEVEL2", "minclicks", "3");
    other.Session.NewGame(2);
    EXPECT_EQ(other.Session.ClickTarget, -1);
    EXPECT_EQ(other.Label(SessionLabel::Clicks), "CLICKS: 0");
    EXPECT_EQ(other.Label(SessionLabel::LevelCode), "");
    EXPECT_FALSE(other.Session.Game_Click().LevelCode);
    EXPECT_FALSE(other.Session.Game_Click().DefaultSetOnly);
    const std::size_t asked = other.Host.Dialog.ShownBoxes().size();
    other.Session.lbLevelCode_Click();
    EXPECT_EQ(other.Host.Dialog.ShownBoxes().size(), asked);
    EXPECT_EQ(other.View.Clipboard, "");
}
