// The hidden test mode seen from the main window: the key word and the game's keys, the
// frozen score, and the test menu's entries other than autoplay.
#include "session/SessionFixture.h"

#include <gtest/gtest.h>

using namespace tolva;
using namespace tolva::testing;

namespace {

constexpr std::int16_t F1 = 112, F4 = 115, F5 = 116, KeyH = 72;

bool Played(const SessionFixture& f, const std::string& wave) {
    for (const auto& call : f.Host.Sound.Calls())
        if (call.File == AppPath() + "data\\" + wave) return true;
    return false;
}

} // namespace

TEST(CheatMode, KeyWordInAnyCaseTogglesAndAWrongKeySpoilsIt) {
    SessionFixture f;
    f.StartGame({"1111", "2222", "3333", "4444"});
    f.Click(0, 0);
    ASSERT_EQ(f.Session.Score, 16);

    f.Type("orangekettle");
    f.Type("x");   // wrong: the text empties
    f.Type("s");
    EXPECT_FALSE(f.Game->CheatMode);
    f.Type("oorangekettles");   // the wrong "o" is no new first letter
    EXPECT_FALSE(f.Game->CheatMode);
    EXPECT_EQ(f.Session.TypedKeys, "");

    // Capital codes as the window sends them, and lower-case codes, count alike.
    f.Type("ORANGEKETTL");
    f.Session.Form_KeyDown('e');
    f.Session.Form_KeyDown('s');
    EXPECT_TRUE(f.Game->CheatMode);
    EXPECT_TRUE(f.View.CheatLabel);
    EXPECT_TRUE(Played(f, "1.wav"));
    EXPECT_EQ(f.Session.Score, 0);
    EXPECT_EQ(f.Label(SessionLabel::Score), "000.000.000");
    EXPECT_EQ(f.Services.Calls.back(), "PrintHiScore(-1,0,0)");
    EXPECT_EQ(f.Session.TypedKeys, "");

    // Each function key opens its window through the session's window opener; the
    // composition root registers them. F4 has the code of "s": it acts first (the
    // settings window opens while the mode is still on), then finishes the word and
    // leaves the mode, which takes the autoplay mark away.
    std::vector<std::string> opened;
    auto record = [&](const char* name) { return [&opened, &f, name] {
        opened.push_back(std::string(name) + (f.Game->CheatMode ? "+cheat" : ""));
    }; };
    f.Windows.Register(GameWindow::Help, record("help"));
    f.Windows.Register(GameWindow::Settings, record("settings"));
    f.Windows.Register(GameWindow::Statistics, record("statistics"));
    f.Session.AutoplayChecked = true;
    f.Type("orangekettle");
    f.Session.Form_KeyDown(F4);
    EXPECT_EQ(opened, (std::vector<std::string>{"settings+cheat"}));
    EXPECT_FALSE(f.Game->CheatMode);
    EXPECT_FALSE(f.View.CheatLabel);
    EXPECT_FALSE(f.Session.AutoplayChecked);
    EXPECT_FALSE(f.View.AutoplayMark);

    f.Session.Form_KeyDown(F1);
    f.Session.Form_KeyDown(F5);
    f.Session.Form_KeyDown('A');
    f.Session.Form_KeyDown(-5);
    f.Session.Form_KeyDown(300);
    EXPECT_EQ(opened, (std::vector<std::string>{"settings+cheat", "help", "statistics"}));

    // A key with no code (a punctuation mark, Home, the number block's plus) breaks a
    // word typed half-way, as any wrong key does.
    f.Type("orange");
    f.Session.Form_KeyDown(-1);
    f.Type("kettles");
    EXPECT_FALSE(f.Game->CheatMode);
    EXPECT_EQ(f.Session.TypedKeys, "");
}

TEST(CheatMode, HintKeyWorksOnlyWhileAGameRuns) {
    SessionFixture f;
    f.SetLevel(1, {"123", "455", "678"});
    f.Session.Form_KeyDown(KeyH);
    EXPECT_TRUE(f.Host.Sound.Calls().empty());
    EXPECT_FALSE(f.Board.AniHint().Visible());

    f.StartGame({"123", "455", "678"});
    f.Session.Form_KeyDown(KeyH);   // where the hint shows is the move finders' test
    EXPECT_TRUE(Played(f, "8.wav"));
    EXPECT_TRUE(f.Board.AniHint().Visible());
}

TEST(CheatMode, ScoreFreezesUntilANewGameOutsideTheMode) {
    SessionFixture f;
    f.StartGame({"11111", "22222", "33333", "44444", "55555"});
    f.Session.NewScore(5000);
    f.Session.ChangeCheatMode();
    EXPECT_EQ(f.Session.Score, 0);
    f.Click(0, 0);
    EXPECT_EQ(f.Session.Score, 0);
    f.Session.ChangeCheatMode();   // off in the middle of the game: still frozen
    f.Click(0, 4);
    EXPECT_EQ(f.Session.Score, 0);
    EXPECT_TRUE(f.Session.ScoreFrozen);

    f.Host.Dialog.QueueMessageAnswer(MessageResult::Ok);
    f.Session.NewGame(1);          // a new game outside the mode thaws it
    f.Click(0, 0);
    EXPECT_EQ(f.Session.Score, 25);

    // On, a new game, off: that whole game stays frozen; the next one counts again.
    f.Session.ChangeCheatMode();
    f.Host.Dialog.QueueMessageAnswer(MessageResult::Ok);
    f.Session.NewGame(1);
    f.Session.ChangeCheatMode();
    f.Click(0, 0);
    EXPECT_EQ(f.Session.Score, 0);
    f.Host.Dialog.QueueMessageAnswer(MessageResult::Ok);
    f.Session.NewGame(1);
    f.Click(0, 0);
    EXPECT_EQ(f.Session.Score, 25);

    // With the start-up word the mode neither clears the score nor stops it.
    SessionFixture kept;
    kept.SetLevel(1, {"11111", "22222", "33333", "44444", "55555"});
    kept.Session.KeepScoreInCheat = true;
    kept.Session.NewGame(1);
    kept.Session.NewScore(5000);
    kept.Session.ChangeCheatMode();
    EXPECT_EQ(kept.Session.Score, 5000);
    kept.Click(0, 0);
    EXPECT_EQ(kept.Session.Score, 5025);
    EXPECT_EQ(kept.Label(SessionLabel::Score), "000.005.025");
}

TEST(CheatMode, GiveBonusKeepsItsLimitsAndCountsUpThroughTheScore) {
    SessionFixture f;
    f.SetLevel(1, {"111", "222", "333"});
    f.Session.KeepScoreInCheat = true;
    f.Session.NewGame(1);
    f.Session.ChangeCheatMode();
    for (const char* answer : {"100001", "100000", "100", "99"}) f.Host.Dialog.QueueInputAnswer(answer);
    const auto start = f.Host.Loop.NowMs();
    f.Session.GiveBonus_Click();

    // An answer beyond its limit is refused with a warning, and the same box asks again.
    const auto& boxes = f.Host.Dialog.ShownBoxes();
    ASSERT_EQ(boxes.size(), 6u);
    for (std::size_t refused : {1u, 4u}) EXPECT_EQ(boxes[refused].Icon, MessageIcon::Exclamation) << refused;
    EXPECT_EQ(boxes[2].Text, boxes[0].Text);
    EXPECT_EQ(boxes[5].Text, boxes[3].Text);
    // 99 steps of 130 ms and the tick that ends the count; the screen stays a second more.
    EXPECT_EQ(f.Host.Loop.NowMs() - start, 100 * 130);
    EXPECT_EQ(f.Session.Score, 99 * 100000.0);
    EXPECT_EQ(ShownDigits(f.Board, f.Board.picBonus()), "990.000.0");
    EXPECT_EQ(ShownDigits(f.Board, f.Board.picTimes()), "99");
    EXPECT_TRUE(f.Board.BonusPic().Visible());
    f.Host.Loop.Advance(1000);
    EXPECT_FALSE(f.Board.BonusPic().Visible());
    EXPECT_EQ(f.Events.Levels, std::vector<std::int16_t>{1});   // no level ended
    EXPECT_EQ(f.Board.Bricks(0, 0), 1);

    // No steps: the screen shows, and pays nothing. A text that is no number reads 0.
    f.Host.Dialog.QueueInputAnswer("abc");
    f.Host.Dialog.QueueInputAnswer("0");
    f.Session.GiveBonus_Click();
    EXPECT_EQ(f.Session.Score, 99 * 100000.0);
    EXPECT_TRUE(f.Board.BonusPic().Visible());
    EXPECT_EQ(ShownDigits(f.Board, f.Board.LevBonus()), "0");

    // An empty answer ends it at either box; a fraction of steps rounds to even.
    const auto shown = f.Host.Dialog.ShownBoxes().size();
    f.Session.GiveBonus_Click();
    f.Host.Dialog.QueueInputAnswer("10");
    f.Session.GiveBonus_Click();
    EXPECT_EQ(f.Host.Dialog.ShownBoxes().size(), shown + 3);
    EXPECT_EQ(f.Session.Score, 99 * 100000.0);
    f.Host.Dialog.QueueInputAnswer("10");
    f.Host.Dialog.QueueInputAnswer("2.5");
    f.Session.GiveBonus_Click();
    EXPECT_EQ(f.Session.Score, 99 * 100000.0 + 20);
}

TEST(CheatMode, JumpToLevelStartsAGameAndKeepsScoreSpellsAndFreezing) {
    SessionFixture f;
    // Level n: a side of n + 2, a top row of 1s over rows of 2s.
    for (int n = 1; n <= 5; ++n) {
        const auto side = static_cast<std::size_t>(n + 2);
        std::vector<std::string> rows(side, std::string(side, '2'));
        rows[0] = std::string(side, '1');
        f.SetLevel(n, rows);
    }
    f.Session.mnuLevList_Click(4);
    EXPECT_TRUE(f.Session.GameRunning);
    EXPECT_EQ(f.Game->CurLevelNo, 5);
    EXPECT_EQ(f.Board.xBricks(), 7);
    EXPECT_EQ(f.Label(SessionLabel::Level), "5");

    f.Session.ChangeCheatMode();
    f.Session.KeepScoreInCheat = true;
    f.Click(0, 0);
    f.Session.NewSpell(2);
    const double score = f.Session.Score;
    ASSERT_GT(score, 0);
    f.Session.mnuLevList_Click(1);
    EXPECT_EQ(f.Game->CurLevelNo, 2);
    EXPECT_EQ(f.Session.Score, score);
    EXPECT_EQ(f.Session.SpellStock[2], 1);
    EXPECT_TRUE(f.Session.ScoreFrozen);

    f.Session.mnuLevList_Click(100);   // the list has no such entry
    f.Session.mnuLevList_Click(-1);
    EXPECT_EQ(f.Game->CurLevelNo, 2);
}

TEST(CheatMode, PlaySoundPlaysAnyNumberAndTheSpeakerEntryFlips) {
    SessionFixture f;
    f.Settings.PlaySounds = 0;   // the entry plays whatever the setting says
    for (const char* answer : {"7", "7.5", "abc"}) f.Host.Dialog.QueueInputAnswer(answer);
    for (int i = 0; i < 4; ++i) f.Session.mnuPlaySound_Click();   // the last one cancelled
    const std::string data = AppPath() + "data\\";
    EXPECT_EQ(f.Host.Sound.Calls(), (std::vector<RecordingSoundEffects::Call>{
                                        {data + "7.wav", false}, {data + "7.5.wav", false},
                                        {data + "0.wav", false}, {data + "0.wav", false}}));
    EXPECT_EQ(f.Host.Dialog.ShownBoxes().front().Text, "SOUND:");

    EXPECT_TRUE(f.Session.SpeakerEnabled);
    EXPECT_FALSE(f.Session.PCSPEAKERENABLED_Click());
    EXPECT_TRUE(f.Session.PCSPEAKERENABLED_Click());
}
