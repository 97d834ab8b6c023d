// The choice of background music: the player's own file, the default module, or silence.
#include "audio/Music.h"
#include "audio/RecordingMusicPlayer.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <utility>

using namespace tolva;
using tolva::testing::RecordingMusicPlayer;
using tolva::testing::TempFolder;
using Calls = std::vector<std::string>;

namespace {

struct MusicFolder {
    TempFolder Folder;
    GameSettings Settings;
    RecordingMusicPlayer Player;
    std::string Default;   // the default module, stored form

    MusicFolder() {
        Folder.Write("0.mod", "module");
        Default = Folder.Path() + "\\0.mod";
        Settings.ExtMusicPath = Folder.Path() + "\\";
    }
    std::string Stored(const std::string& name) const { return Settings.ExtMusicPath + name; }
};

} // namespace

TEST(StartMusic, ExternalFileGoesToTheRendererOrTheMediaPlayerByItsExtension) {
    MusicFolder f;
    f.Settings.UseExternalMusicFile = true;
    // The modules the renderer plays, and what else the media player takes.
    const std::vector<std::pair<std::string, bool>> files = {
        {"song.MOD", true}, {"tune.xm", true}, {"a.It", true}, {"b.s3m", true}, {"c.669", true},
        {"voice.wav", false}, {"radio.MP3", false}, {"noextension", false}};
    for (const auto& [name, module] : files) {
        f.Folder.Write(name, "x");
        f.Settings.ExtMusicFile = name;
        f.Player.Calls.clear();
        StartMusic(f.Settings, f.Player, f.Default);
        const std::string play = module ? "PlayMod " + f.Stored(name) + " loop 0" : "PlayAnyFile " + f.Stored(name);
        EXPECT_EQ(f.Player.Calls, (Calls{"SetVolume 100", play})) << name;
    }
}

TEST(StartMusic, FallsBackToTheDefaultModuleAndThenToSilence) {
    MusicFolder f;
    // The external file is switched off, or gone: the default module plays, and the
    // setting stays as it was.
    f.Folder.Write("song.xm", "x");
    f.Settings.ExtMusicFile = "song.xm";
    StartMusic(f.Settings, f.Player, f.Default);
    EXPECT_EQ(f.Player.Calls, (Calls{"SetVolume 100", "StopMod", "PlayMod " + f.Default + " loop 0"}));

    f.Settings.UseExternalMusicFile = true;
    f.Settings.ExtMusicFile = "gone.xm";
    f.Player.Calls.clear();
    StartMusic(f.Settings, f.Player, f.Default);
    EXPECT_EQ(f.Player.Calls, (Calls{"SetVolume 100", "StopMod", "PlayMod " + f.Default + " loop 0"}));
    EXPECT_TRUE(f.Settings.UseExternalMusicFile);

    // No file name at all names the folder, which is no file.
    f.Settings.ExtMusicFile.clear();
    f.Player.Calls.clear();
    StartMusic(f.Settings, f.Player, f.Default);
    EXPECT_EQ(f.Player.Calls.back(), "PlayMod " + f.Default + " loop 0");

    // Without the default module there is only the stop.
    f.Player.Calls.clear();
    StartMusic(f.Settings, f.Player, f.Folder.Path() + "\\missing.mod");
    EXPECT_EQ(f.Player.Calls, (Calls{"SetVolume 100", "StopMod"}));
}

TEST(MusicAfterSettings, RestartsWithMusicOnAndStopsOnceWithMusicOff) {
    MusicFolder f;
    StartMusic(f.Settings, f.Player, f.Default);

    // Closing with music on starts the piece again, although nothing changed.
    f.Player.Calls.clear();
    MusicAfterSettings(f.Settings, f.Player, f.Default);
    EXPECT_EQ(f.Player.Calls, (Calls{"SetVolume 100", "StopMod", "PlayMod " + f.Default + " loop 0"}));

    // Music off: one stop, and a second closing finds the player stopped.
    f.Settings.PlayMusic = 0;
    f.Player.Calls.clear();
    MusicAfterSettings(f.Settings, f.Player, f.Default);
    MusicAfterSettings(f.Settings, f.Player, f.Default);
    EXPECT_EQ(f.Player.Calls, (Calls{"StopMod"}));

    // Only 1 means on: 2 stops nothing more either, since the player is stopped.
    f.Settings.PlayMusic = 2;
    MusicAfterSettings(f.Settings, f.Player, f.Default);
    EXPECT_EQ(f.Player.Calls, (Calls{"StopMod"}));

    // A player that never played (state 0) is stopped when music is off.
    RecordingMusicPlayer fresh;
    MusicAfterSettings(f.Settings, fresh, f.Default);
    EXPECT_EQ(fresh.Calls, (Calls{"StopMod"}));
}
