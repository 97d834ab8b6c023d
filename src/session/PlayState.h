#pragma once
// PlayState: everything a move changes, for taking it back and for a saved game: the
// board's two grids and side, and the session's score, spell stock, click counters and
// level bonus steps, with the flags of the game (cheat mode, a frozen score, practice).
#include "shared/LevelModule.h"

#include <array>
#include <cstdint>

namespace tolva {

struct PlayState {
    std::int16_t Level = 1;
    std::int16_t Side = 0;
    CellGrid Bricks;
    CellGrid Spells;
    double Score = 0;
    std::array<std::int16_t, 7> SpellStock{};
    std::array<std::int16_t, 6> SpellClicks{};
    std::int16_t LevelClicks = 0;
    std::int16_t LastClickCount = 0;
    std::int16_t BonusTimes = 0;
    bool CheatMode = false;
    bool ScoreFrozen = false;
    bool Practice = false;

    bool operator==(const PlayState&) const = default;
};

} // namespace tolva
