// The sound without any output device: every wave asks and tells the player, a beep is a
// pause of its length, the music stays silent, and the game goes on. The program points
// PulseAudio at a server that does not exist before any sound is asked for.
#include "audio/qt/QtSoundEffects.h"
#include "audio/qt/ModuleStream.h"
#include "audio/qt/ZenkorPlayer.h"
#include "support/ZenkorModule.h"
#include "testsupport/ScriptedDialogs.h"

#include <QAudioDevice>
#include <QElapsedTimer>
#include <QMediaDevices>
#include <gtest/gtest.h>

#include <vector>

using namespace tolva;

namespace {

const std::string GameData = std::string(TOLVA_GAME_DIR) + "/data/";

void NoServer() { qputenv("PULSE_SERVER", "unix:/nonexistent/tolva2-no-sound-server"); }

} // namespace

TEST(AudioNoDevice, EveryWaveTellsThePlayerAndABeepIsAPause) {
    NoServer();
    ScriptedDialogs dialogs;
    QtSoundEffects effects(dialogs);
    ASSERT_TRUE(QMediaDevices::audioOutputs().isEmpty()) << "a sound device was found after all";

    effects.PlayWave(GameData + "8.wav");
    effects.PlayWave(GameData + "8.wav", true);
    effects.PlayWave(GameData + "missing.wav");   // the device is asked before the file
    ASSERT_EQ(dialogs.ShownBoxes().size(), 3u);
    for (const auto& box : dialogs.ShownBoxes()) {
        EXPECT_EQ(box.Text, "Unable to init SOUND-DECVICE");
        EXPECT_EQ(box.Title, "TOLVA II");
        EXPECT_EQ(box.Icon, MessageIcon::Exclamation);
        EXPECT_EQ(box.Buttons, MessageButtons::Ok);
    }
    EXPECT_FALSE(effects.Playing());

    QElapsedTimer clock;
    clock.start();
    effects.SpeakerBeep(440, 150);
    EXPECT_GE(clock.elapsed(), 150);
    EXPECT_EQ(dialogs.ShownBoxes().size(), 3u);
}

TEST(AudioNoDevice, MusicStaysSilentAndKeepsItsState) {
    NoServer();
    ZenkorPlayer player;
    player.SetVolume(100);
    player.PlayMod(GameData + "0.mod", true, 0);
    EXPECT_EQ(player.State(), MusicPlayer::StateNone);
    EXPECT_FALSE(player.ModuleSounding());
    EXPECT_EQ(player.GetVuMeter(), 0);
    EXPECT_EQ(player.ModFileName(), GameData + "0.mod");
    EXPECT_FALSE(player.PauseMod());
    EXPECT_EQ(player.State(), MusicPlayer::StateNone);
    player.StopMod();
    EXPECT_EQ(player.State(), MusicPlayer::StateStopped);
    player.PlayMod(GameData + "0.mod", true, 0);
    EXPECT_EQ(player.State(), MusicPlayer::StateStopped);
    // Any other file, with nothing to play it, leaves the state as StopMod left it.
    ZenkorPlayer other;
    other.PlayAnyFile(GameData + "9.wav");
    EXPECT_EQ(other.State(), MusicPlayer::StateStopped);
    EXPECT_EQ(other.ModFileName(), GameData + "9.wav");
}

TEST(AudioNoDevice, TheModuleIsMixedAt41000HzWithTheGamesQuality) {
    // The stream alone, as the sink would pull it: one second of sound is 41000 frames.
    std::string bytes;
    ASSERT_TRUE(ReadWholeFile(GameData + "0.mod", bytes));
    ModuleStream stream;
    ASSERT_TRUE(stream.Load(bytes, true));
    ASSERT_TRUE(stream.open(QIODevice::ReadOnly));
    std::vector<char> second(41000 * ModuleStream::BytesPerFrame);
    qint64 got = 0;
    while (got < static_cast<qint64>(second.size())) {
        const qint64 n = stream.read(second.data() + got, static_cast<qint64>(second.size()) - got);
        ASSERT_GT(n, 0);
        got += n;
    }
    EXPECT_NEAR(stream.RenderedPositionMs() - stream.BufferedMs(), 1000, 30);
}
