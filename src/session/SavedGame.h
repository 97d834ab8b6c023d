#pragma once
// SavedGame: savegame.sav, a game put away to be resumed later. It holds the level set and
// level in play, the level code, and the whole PlayState: both grids of the board, score,
// spell stock, click counters, the level bonus steps, and the cheat and practice flags.
//
// The file is written like hiscore.hi: an ini file whose every line has gone through
// Crypter, with a checksum section. The checksum here covers every byte of every value in
// order (a hash, not a sum), so that a hand-changed file is told from a saved one. A read
// checks every value against what the game can have made (cells, levels, counts, the code
// of the level); a file that fails any check is damaged and resumes nothing.
#include "session/PlayState.h"

#include <optional>
#include <string>

namespace tolva {

struct SavedGame {
    // The set's folder as the game stores it ("levels\default\").
    std::string LevelSetPath;
    // The code of the level in play in the default set; empty elsewhere.
    std::string LevelCode;
    PlayState Play;

    // The file's bytes.
    std::string FileBytes() const;
    // Reads the bytes of a file; nullopt when they are damaged or changed by hand.
    static std::optional<SavedGame> FromBytes(const std::string& bytes);

    // Writes the file in one atomic replace; false if it could not be written.
    bool Write(const std::string& path) const;
    enum class ReadResult { Read, Missing, Damaged };
    static ReadResult Read(const std::string& path, SavedGame& game);
};

} // namespace tolva
