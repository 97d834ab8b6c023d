#pragma once
// Writing a level set: the text of levels.set for a list of levels, and the seal, the
// enciphered checksum line that makes a set pass the default set's integrity test.
#include "shared/LevelModule.h"

#include <string>
#include <vector>

namespace tolva::levelgen {

// "[main]", "levelset=NAME", then each level: head, the three positional lines and
// side rows of bricks, each followed by its spell row. Lines end with LF; no checksum.
std::string FormatLevelSet(const std::string& setName, const std::vector<LevelRecord>& levels);

struct SealResult {
    std::string text;       // the file with its checksum line written or replaced
    double checksum = 0;    // the sum the game will compute for it
};

// Replaces a checksum line that stands last, or adds one. The sum is taken from the
// file as it will be after sealing, read the way the game reads it, and enciphered
// with the default set's key.
SealResult SealLevelSet(const std::string& fileText);

} // namespace tolva::levelgen
