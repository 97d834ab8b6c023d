// The idle mascot on the virtual clock: when it plays, with which sound, and what holds it
// off.
#include "audio/IdleMascot.h"
#include "board/BmpWriter.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"
#include "support/platform/HeadlessEventLoop.h"
#include "support/platform/HeadlessPictureStrip.h"
#include "testsupport/RecordingSoundEffects.h"

#include <gtest/gtest.h>

#include <deque>

using namespace tolva;
using tolva::testing::TempFolder;

namespace {

// Random numbers from a list, so that each sound choice is known.
class ListedRandom final : public Random {
public:
    double Next() override {
        if (values.empty()) return 0.25;
        const double value = values.front();
        values.pop_front();
        return value;
    }
    void Seed(std::uint64_t) override {}
    std::deque<double> values;
};

constexpr int FrameMs = 25;
constexpr int Frames = 8;

struct Mascot {
    TempFolder Folder;
    HeadlessEventLoop Loop;
    HeadlessPictureStrip Strip{"Kedelig", Loop};
    RecordingSoundEffects Sound;
    ListedRandom Rng;
    GameSettings Settings;
    bool NoSpellBusy = true;
    std::unique_ptr<IdleMascot> Idle;

    Mascot() {
        // A strip of eight frames of 32 x 32, as the mascot's picture is laid out.
        Folder.Write("9.bmp", tolva::testing::MakeBmp(32, 32 * Frames, 24, [](int, int y) { return y * 0x10101u; }));
        Strip.SetInterval(FrameMs);
        Strip.SetMoveHeight(32);
        EXPECT_TRUE(Strip.LoadStrip(Folder.Path() + "\\9.bmp"));
        Idle = std::make_unique<IdleMascot>(Strip, Sound, Loop, Rng, Settings, [this] { return NoSpellBusy; });
    }
    std::string Wave(int number) const { return AppPath() + "data\\" + std::to_string(number) + ".wav"; }
    std::size_t Plays() const { return Sound.Calls().size(); }
    // Moves the clock to the virtual time `ms`.
    void At(std::int64_t ms) { Loop.Advance(ms - Loop.NowMs()); }
};

} // namespace

TEST(IdleMascot, PlaysAfterTwentySecondsThenEveryTenPlusItsLength) {
    Mascot m;
    m.Rng.values = {0.5, 0.7, 0.4999, 0.5000001};
    const std::int64_t length = FrameMs * Frames;

    m.At(IdleMascot::FirstDelayMs - 1);
    EXPECT_EQ(m.Plays(), 0u);
    EXPECT_FALSE(m.Strip.IsPlaying());
    m.At(IdleMascot::FirstDelayMs);
    EXPECT_TRUE(m.Strip.IsPlaying());
    EXPECT_FALSE(m.Idle->Timer2().Enabled());   // off while the strip runs
    ASSERT_EQ(m.Plays(), 1u);
    EXPECT_EQ(m.Sound.Calls()[0], (RecordingSoundEffects::Call{m.Wave(2), false}));   // 0.5 rounds to 0

    m.At(IdleMascot::FirstDelayMs + length - 1);
    EXPECT_TRUE(m.Strip.IsPlaying());
    m.At(IdleMascot::FirstDelayMs + length);
    EXPECT_FALSE(m.Strip.IsPlaying());
    EXPECT_EQ(m.Idle->Timer2().Interval(), IdleMascot::RepeatDelayMs);

    // Each further play comes ten seconds after the end of the one before.
    std::int64_t next = IdleMascot::FirstDelayMs + length + IdleMascot::RepeatDelayMs;
    m.At(next - 1);
    EXPECT_EQ(m.Plays(), 1u);
    m.At(next);
    EXPECT_EQ(m.Plays(), 2u);
    next += length + IdleMascot::RepeatDelayMs;
    m.At(next);
    next += length + IdleMascot::RepeatDelayMs;
    m.At(next);
    ASSERT_EQ(m.Plays(), 4u);
    EXPECT_EQ(m.Sound.Calls()[1].File, m.Wave(3));
    EXPECT_EQ(m.Sound.Calls()[2].File, m.Wave(2));
    EXPECT_EQ(m.Sound.Calls()[3].File, m.Wave(3));
}

TEST(IdleMascot, EveryScoreHoldsItOffForTwentySecondsAgain) {
    Mascot m;
    const int framesAtLoad = m.Strip.FramesShown();
    m.At(15000);
    m.Idle->RestartIdle();
    m.At(34999);
    m.Idle->RestartIdle();
    m.At(54998);
    EXPECT_EQ(m.Plays(), 0u);
    EXPECT_EQ(m.Strip.FramesShown(), framesAtLoad);
    m.At(54999);
    EXPECT_EQ(m.Plays(), 1u);

    // A score while the strip runs: the strip plays on, and its end starts the shorter wait.
    m.Idle->RestartIdle();
    m.At(54999 + FrameMs * Frames);
    EXPECT_FALSE(m.Strip.IsPlaying());
    m.At(54999 + FrameMs * Frames + IdleMascot::RepeatDelayMs);
    EXPECT_EQ(m.Plays(), 2u);
}

TEST(IdleMascot, SoundNeedsSoundsOnAndNoSpellAtWork) {
    Mascot m;
    m.NoSpellBusy = false;
    m.At(IdleMascot::FirstDelayMs);
    EXPECT_TRUE(m.Strip.IsPlaying());   // the strip plays all the same
    EXPECT_EQ(m.Plays(), 0u);

    m.NoSpellBusy = true;
    m.Settings.PlaySounds = 0;
    m.Idle->PlayKedelig();
    EXPECT_EQ(m.Plays(), 0u);

    // Any number but 0 means on; the mascot has no rate limit of its own, so two presses
    // in quick succession give two sounds, the second cutting the first.
    m.Settings.PlaySounds = 2;
    m.Idle->Kedelig_MouseDown();
    m.At(m.Loop.NowMs() + 100);
    m.Idle->Kedelig_MouseDown();
    EXPECT_EQ(m.Plays(), 2u);

    // The mascot that goes while its strip runs leaves the strip quiet.
    EXPECT_TRUE(m.Strip.IsPlaying());
    m.Idle.reset();
    m.At(m.Loop.NowMs() + 1000);
    EXPECT_FALSE(m.Strip.IsPlaying());
    EXPECT_EQ(m.Loop.RunningTimers(), 0);
}

TEST(IdleMascot, WithAnimationsOffOnlyAPressPlaysUntilTheNextScore) {
    Mascot m;
    const int framesAtLoad = m.Strip.FramesShown();
    m.Settings.PlayAnimations = false;
    m.At(IdleMascot::FirstDelayMs);
    EXPECT_FALSE(m.Idle->Timer2().Enabled());
    m.At(200000);
    EXPECT_EQ(m.Plays(), 0u);
    EXPECT_EQ(m.Strip.FramesShown(), framesAtLoad);

    // A press plays whatever the setting says, and the end of that play starts the timer,
    // whose tick again does nothing.
    m.Idle->Kedelig_MouseDown();
    EXPECT_EQ(m.Plays(), 1u);
    m.At(200000 + FrameMs * Frames + IdleMascot::RepeatDelayMs);
    EXPECT_EQ(m.Plays(), 1u);
    EXPECT_FALSE(m.Idle->Timer2().Enabled());

    // Animations back on: nothing until a score starts the wait again.
    m.Settings.PlayAnimations = true;
    m.At(300000);
    EXPECT_EQ(m.Plays(), 1u);
    m.Idle->RestartIdle();
    m.At(300000 + IdleMascot::FirstDelayMs);
    EXPECT_EQ(m.Plays(), 2u);
}
