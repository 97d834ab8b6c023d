// The bonus count-up of a cleared level on the virtual clock, the digit display, and the
// two effect strips that the spells wait for.
#include "BmpWriter.h"
#include "BoardFixture.h"
#include "session/SessionFixture.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>

using namespace tolva;
using namespace tolva::testing;

namespace {

// Digit pictures of different widths: "n" is 10 + n wide, the point 4.
void LoadDigits(TolvaBoard& board, const TempFolder& folder) {
    for (int i = 0; i <= 10; ++i) {
        const std::string name = "n" + std::to_string(i) + ".bmp";
        folder.Write(name, SolidBmp(i == 10 ? 4 : 10 + i, 20));
        ASSERT_TRUE(board.No(i).LoadFile(folder.Path() + "\\" + name));
    }
}

} // namespace

TEST(BonusSequence, ACleanedLevelCountsItsStepsUpOneTickEachAndLingersASecond) {
    SessionFixture f;
    LoadDigits(f.Board, f.Folder);
    f.SetLevel(2, {"55", "66"});
    f.StartGame({"..", "11"});
    f.Board.AniDraw = false;
    f.Game->BonusTimes = 2;

    // Each event with the virtual time at which it came; at every step's points, what
    // the steps line shows and whether the screen is up.
    std::vector<std::string> timeline;
    std::vector<std::string> stepsShown;
    f.Log.OnEvent = [&](const std::string& e) {
        timeline.push_back(e + "@" + std::to_string(f.Host.Loop.NowMs()));
        if (e == "NewScore(100000)") {
            stepsShown.push_back(ShownDigits(f.Board, f.Board.picTimes()));
            EXPECT_TRUE(f.Board.BonusPic().Visible());
        }
    };
    f.Click(0, 1);   // a pair on a side of two earns the third step and clears the level
    EXPECT_EQ(timeline, (Rows{"BonusTimes(3)@0", "NewScore(4)@0", "BricksRemoved(2)@0", "RemoveClick(1)@0",
                              "BonusScore(100000,3)@0", "NewScore(100000)@130", "NewScore(100000)@260",
                              "NewScore(100000)@390", "NewLevel(2)@1520", "CanDoNextMove@1520"}));
    EXPECT_EQ(stepsShown, (Rows{"1", "2", "3"}));
    EXPECT_EQ(f.Session.Score, 300004);
    const auto sounds = SoundFiles(f.Host.Sound);
    ASSERT_EQ(sounds.size(), 4u);
    EXPECT_TRUE(sounds[0] == "data\\11.wav" || sounds[0] == "data\\12.wav" || sounds[0] == "data\\13.wav") << sounds[0];
    EXPECT_EQ(Rows(sounds.begin() + 1, sounds.end()), (Rows{"data\\5.wav", "data\\5.wav", "data\\5.wav"}));

    // The screen covered the board, and each line was centred on it at its own height.
    EXPECT_FALSE(f.Board.BonusPic().Visible());
    EXPECT_EQ(f.Board.BonusPic().Bounds(), (SurfaceRect{0, 0, 500, 500}));
    EXPECT_EQ(ShownDigits(f.Board, f.Board.LevBonus()), "100000");
    EXPECT_EQ(f.Board.LevBonus().Bounds(), (SurfaceRect{219.5, 133, 61, 60}));
    EXPECT_EQ(ShownDigits(f.Board, f.Board.picTimes()), "3");
    EXPECT_EQ(f.Board.picTimes().Bounds(), (SurfaceRect{243.5, 281, 13, 60}));
    EXPECT_EQ(ShownDigits(f.Board, f.Board.picBonus()), "300.000");
    EXPECT_EQ(f.Board.picBonus().Bounds(), (SurfaceRect{216.5, 411, 67, 60}));
    EXPECT_EQ(f.Board.GetWidthOfPictures("300.000"), 67);
    EXPECT_EQ(f.Board.GetWidthOfPictures("1-2"), 23);   // no picture, no room
    EXPECT_FALSE(f.Board.BonusTimer().Enabled());
    EXPECT_FALSE(f.Board.RemoveBonusTimer().Enabled());
}

TEST(BonusSequence, NineStepsPayNineHundredThousandWithTheirOwnSound) {
    SessionFixture f;
    LoadDigits(f.Board, f.Folder);
    f.StartGame({"11", "22"});
    f.Session.BonusScore(100000, 9);
    EXPECT_EQ(f.Host.Loop.NowMs(), 10 * 130);
    EXPECT_EQ(f.Session.Score, 900000);
    EXPECT_EQ(SoundFiles(f.Host.Sound)[0], "data\\10.wav");
    EXPECT_EQ(ShownDigits(f.Board, f.Board.picBonus()), "900.000");
    EXPECT_EQ(f.Label(SessionLabel::Bonus), "0");
}

TEST(BonusSequence, NoStepsMeansNoPointsAndACountedBonusCanBeSwitchedOff) {
    BoardFixture f;
    tolva::testing::TempFolder folder;
    LoadDigits(f.Board, folder);
    // Called with no steps, the first tick ends the count and shows a total of nothing.
    f.Board.ShowBonusMovie(100000, 0);
    EXPECT_EQ(f.Host.Loop.NowMs(), 130);
    EXPECT_TRUE(f.Events.Take().empty());
    EXPECT_EQ(ShownDigits(f.Board, f.Board.picBonus()), "000.00");
    EXPECT_EQ(ShownDigits(f.Board, f.Board.picTimes()), "");
    f.Host.Loop.Advance(999);
    EXPECT_TRUE(f.Board.BonusPic().Visible());
    f.Host.Loop.Advance(1);
    EXPECT_FALSE(f.Board.BonusPic().Visible());

    // With the counter off the session pays the whole bonus at once: no screen, no wait.
    SessionFixture s;
    s.Settings.ShowBonusCounter = 0;
    s.SetLevel(2, {"55", "66"});
    s.StartGame({"..", "11"});
    s.Board.AniDraw = false;
    s.Game->BonusTimes = 2;
    s.Click(0, 1);
    EXPECT_EQ(s.Host.Loop.NowMs(), 0);
    const auto events = s.Log.Take();
    EXPECT_EQ(Rows(events.begin() + 4, events.end()), (Rows{"BonusScore(100000,3)", "NewLevel(2)", "CanDoNextMove"}));
    EXPECT_EQ(s.Session.Score, 300004);
    EXPECT_FALSE(s.Board.BonusPic().Visible());
    EXPECT_TRUE(s.Host.Sound.Calls().empty());
}

TEST(BonusSequence, EffectsPlayTheirStripOnceAndHoldTheBoardUntilTheFinish) {
    BoardFixture f;
    tolva::testing::TempFolder folder;
    folder.Write("strip.bmp", SolidBmp(50, 150));   // three frames of 50
    ASSERT_TRUE(f.Board.Animation().LoadStrip(folder.Path() + "\\strip.bmp"));
    ASSERT_TRUE(f.Board.BOM().LoadStrip(folder.Path() + "\\strip.bmp"));
    f.Start({"11", "22"});
    f.Board.Animation().SetBounds({0, 0, 250, 250});

    bool readyDuringEffect = true;
    auto probe = f.Host.Loop.CreateTimer();
    probe->SetInterval(10);
    probe->OnTick = [&] {
        probe->SetEnabled(false);
        readyDuringEffect = f.Board.BoardReady;
    };
    probe->SetEnabled(true);
    // The first frame shows at once and again at the end: three frames at 20 ms.
    f.Board.AnimationEffect(250, 0);
    EXPECT_EQ(f.Host.Loop.NowMs(), 60);
    EXPECT_FALSE(readyDuringEffect);
    EXPECT_TRUE(f.Board.BoardReady);
    EXPECT_FALSE(f.Board.EffectPlaying);
    EXPECT_EQ(f.Board.Animation().Bounds(), (SurfaceRect{250, 0, 250, 250}));
    EXPECT_TRUE(f.Board.Animation().Visible());   // the spell hides it at its end
    f.Board.BomEffect(0, 250);
    EXPECT_EQ(f.Host.Loop.NowMs(), 60 + 3 * 120);

    // Without animations the strip is only put in place: no sound, no wait.
    f.Settings.PlayAnimations = false;
    f.Board.AnimationEffect(0, 0);
    EXPECT_EQ(f.Host.Loop.NowMs(), 420);
    EXPECT_EQ(f.Host.Sound.Calls().size(), 2u);
    EXPECT_EQ(f.Board.Animation().Bounds(), (SurfaceRect{0, 0, 250, 250}));
    EXPECT_FALSE(f.Board.Animation().IsPlaying());
}
