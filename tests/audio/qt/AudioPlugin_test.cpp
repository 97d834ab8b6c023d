// The audio plug-in as the game loads it: the stand-ins find the built plug-in and hand
// their calls to the players it makes; without it, sounds say there is no sound device
// and the music stays silent, as with a machine that has none.
#include "audio/qt/DeferredAudio.h"
#include "support/TempFolder.h"
#include "testsupport/ScriptedDialogs.h"

#include <gtest/gtest.h>

using namespace tolva;
using tolva::testing::TempFolder;

TEST(AudioPlugin, TheBuiltPlugInIsLoadedAtTheFirstTuneAndNotBefore) {
    TempFolder empty;
    AudioPluginLoader loader({QString::fromStdString(empty.Path()), QString(TOLVA_GAME_DIR) + "/plugins"});
    DeferredMusicPlayer music(loader);
    bool finished = false;
    music.Finished = [&] { finished = true; };

    // Nothing is loaded by what a stopped player answers.
    music.SetVolume(40);
    music.StopMod();
    EXPECT_EQ(music.State(), MusicPlayer::StateNone);
    EXPECT_FALSE(loader.Tried());
    EXPECT_EQ(music.Loaded(), nullptr);

    // A tune loads it, from the second folder; a file that does not load leaves the
    // player as it was.
    music.PlayMod((empty / "missing.mod"), true, 0);
    EXPECT_TRUE(loader.Tried());
    ASSERT_NE(music.Loaded(), nullptr) << loader.Error().toStdString();
    EXPECT_EQ(music.State(), MusicPlayer::StateNone);
    EXPECT_EQ(music.ModFileName(), music.Loaded()->ModFileName());

    // The real player's end-of-module signal reaches the stand-in's owner.
    music.Loaded()->Finished();
    EXPECT_TRUE(finished);

    // The sound effects come from the same plug-in, loaded once.
    ScriptedDialogs boxes;
    DeferredSoundEffects sound(loader, boxes);
    sound.SpeakerBeep(440, 0);
    EXPECT_NE(sound.Loaded(), nullptr);
}

TEST(AudioPlugin, WithoutThePlugInSoundsSayThereIsNoDeviceAndTheGameGoesOn) {
    TempFolder empty;
    AudioPluginLoader loader({QString::fromStdString(empty.Path())});
    ScriptedDialogs boxes;
    DeferredSoundEffects sound(loader, boxes);
    DeferredMusicPlayer music(loader);

    sound.PlayWave("data\\8.wav");
    sound.PlayWave("data\\8.wav");
    ASSERT_EQ(boxes.ShownBoxes().size(), 2u);   // at every attempt, as without a device
    EXPECT_EQ(boxes.ShownBoxes()[0].Text, "Unable to init SOUND-DECVICE");
    EXPECT_EQ(boxes.ShownBoxes()[0].Icon, MessageIcon::Exclamation);
    EXPECT_FALSE(loader.Error().isEmpty());

    music.PlayMod("data\\0.mod", true, 0);
    EXPECT_EQ(music.Loaded(), nullptr);
    EXPECT_EQ(music.State(), MusicPlayer::StateNone);
    EXPECT_FALSE(music.PauseMod());
    EXPECT_EQ(music.GetCurrentPos(), 0);
    EXPECT_EQ(boxes.ShownBoxes().size(), 2u);   // the music says nothing
}
