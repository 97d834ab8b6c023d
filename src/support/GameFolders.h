#pragma once
// The two ways the game runs, decided in this one place.
//
//  - Portable: the game folder is one folder, read and written in place: the folder of
//    the executable (the build's game folder), or the folder given with --game-dir DIR.
//  - Installed: the executable sits in <prefix>/games/ and <prefix>/share/games/tolva2/
//    exists. The game's own files (data/, levels/, help/) are read from that folder, which
//    is never written; every file the game writes goes to the player's folder,
//    $XDG_DATA_HOME/tolva2/ (~/.local/share/tolva2/ by default), made on first start, which
//    also holds the player's own level sets. The plug-ins are in
//    <prefix>/lib/games/tolva2/plugins/, where the games policy keeps a game's private
//    libraries.
//
// The prefix is found from the executable itself, not fixed at build time, so that a
// package unpacked into any root runs from there. Whether a folder can be written says
// nothing: root may write anywhere.
#include <string>

namespace tolva {

struct GameFolders {
    bool Installed = false;
    std::string GameFolder;     // native; portable: the game folder; installed: the player's
    std::string DataFolder;     // native; installed: the read-only data folder, else empty
    std::string PluginFolder;   // native; the folder of the audio and browser plug-ins
};

// The decision, from the executable's folder, the --game-dir folder (empty if not given)
// and the environment's XDG_DATA_HOME and HOME. Only looks, makes nothing.
GameFolders DecideGameFolders(const std::string& executableFolder, const std::string& gameDirOption,
                              const std::string& xdgDataHome, const std::string& home);
// The decision for this process, without --game-dir: what the game and tolva2-cli use
// when no game folder is named.
GameFolders DefaultGameFolders();
// Makes `folders` the game's: sets AppPath (layered when installed) and, installed, makes
// the player's folder. Gives false if the player's folder could not be made; the game then
// runs and every write fails as it would in a read-only folder.
bool UseGameFolders(const GameFolders& folders);
// The plug-in folder of the folders in use (the executable's plugins/ until set).
std::string PluginFolder();

} // namespace tolva
