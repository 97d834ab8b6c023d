#include "audio/Music.h"

#include "support/ZenkorModule.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

namespace tolva {

namespace {

// The extensions the module renderer plays; any other file goes to the media player.
bool IsTrackerModule(const std::string& fileName) {
    std::string extension = GetFileExtension(fileName, false);
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    constexpr std::array<std::string_view, 5> modules{"mod", "xm", "it", "s3m", "669"};
    return std::find(modules.begin(), modules.end(), extension) != modules.end();
}

} // namespace

void StartMusic(const GameSettings& settings, MusicPlayer& player, const std::string& defaultMusicFile) {
    player.SetVolume(100);
    const std::string path = settings.ExtMusicPath + settings.ExtMusicFile;
    if (settings.UseExternalMusicFile && FileExists(path)) {
        if (IsTrackerModule(settings.ExtMusicFile)) {
            player.PlayMod(path, true, 0);
        } else {
            player.PlayAnyFile(path);
        }
        return;
    }
    player.StopMod();
    if (FileExists(defaultMusicFile)) player.PlayMod(defaultMusicFile, true, 0);
}

void MusicAfterSettings(const GameSettings& settings, MusicPlayer& player, const std::string& defaultMusicFile) {
    if (settings.PlayMusic == 1) {
        StartMusic(settings, player, defaultMusicFile);
    } else if (player.State() != MusicPlayer::StateStopped) {
        player.StopMod();
    }
}

} // namespace tolva
