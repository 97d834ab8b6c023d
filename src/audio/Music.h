#pragma once
// What background music plays, decided from the settings: the player's own file when the
// settings ask for one and it is there, otherwise the game's default module. The player
// (MusicPlayer) does the playing; these two functions only choose.
#include "audio/MusicPlayer.h"
#include "settings/GameSettings.h"

#include <string>

namespace tolva {

// Starts the music from its beginning: the external file (a tracker module by its
// extension, any other file through the media player) if UseExternalMusicFile is on and
// the file exists, else the default module if that exists, else silence.
void StartMusic(const GameSettings& settings, MusicPlayer& player, const std::string& defaultMusicFile);

// What closing the settings window does to the music: with music on it starts anew, even
// if nothing changed; with music off it stops, unless the player is stopped already.
void MusicAfterSettings(const GameSettings& settings, MusicPlayer& player, const std::string& defaultMusicFile);

} // namespace tolva
