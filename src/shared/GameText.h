#pragma once
// Texts of the game that more than one part uses, defined once: the title of the message
// boxes, the names of the six spells (tool tips of the spell buttons, the caption of the
// armed spell, the level-set load), and the two words of the hidden test mode.
#include <array>
#include <string_view>

namespace tolva {

inline constexpr std::string_view GameTitle = "TOLVA II";

// By spell number: 0 BOUNCING SAW ... 5 UMBRELLA.
inline constexpr std::array<std::string_view, 6> SpellNameList = {
    "BOUNCING SAW", "RAINBOW", "GUN", "TEST TUBE", "BOMB", "UMBRELLA"};

// Typed on the main window (any case), or anywhere on the command line: cheat mode.
inline constexpr std::string_view CheatKeyWord = "orangekettles";
// Anywhere on the command line: the score keeps counting in cheat mode.
inline constexpr std::string_view KeepScoreWord = "quietlanternshade";

} // namespace tolva
