#pragma once
// The texts of the table as PrintHiScore shows them, row by row: the place right-aligned
// to two characters, the name, the level and the score grouped as the score label
// groups it. The window draws them; the headless view records them.
#include "hiscores/Hiscores.h"

#include <array>
#include <string>

namespace tolva {

struct HiscoreRow {
    std::string Place;  // " 1" .. "10"
    std::string Name;
    std::string Level;
    std::string Score;  // "000.012.345"

    bool operator==(const HiscoreRow&) const = default;
};

std::array<HiscoreRow, Hiscores::Places> HiscoreRows(const Hiscores& table);

} // namespace tolva
