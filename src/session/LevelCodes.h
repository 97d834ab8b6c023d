#pragma once
// The level codes of the default set: a player who reached level k (2 or above) is shown
// its code and can start a new game there later by typing it in. Each code is a digit,
// two capitals, a digit and two capitals; they are a fixed table, all different, and
// owe nothing to the level number.
#include <cstdint>
#include <string>

namespace tolva {

class LevelCodes {
public:
    static constexpr int Count = 100;

    // The code of level 1..100; empty for any other number.
    static std::string CodeOf(int level);
    // The level whose code the text is, after upper-casing it (blanks are not trimmed),
    // or -1 if no code matches.
    static std::int16_t Find(const std::string& typed);
    // What "copy to clipboard" puts there for a level.
    static std::string ClipboardText(std::int16_t level);
    // The level whose clipboard text the text is, pasted back whole (any case, with blanks
    // or line ends around it), or -1: so the game takes back what it gave.
    static std::int16_t FindClipboardText(const std::string& pasted);
};

} // namespace tolva
