#pragma once
// Small level-set texts shared by the level tests, with their sums worked out by hand, and
// the sets shipped with the game, loaded as the game loads them.
#include "levels/LevelSetReader.h"
#include "support/ZenkorModule.h"

#include <memory>
#include <string>

namespace tolva::testing {

// Two levels, set name in capitals, odd row keys, an empty field and a trailing comma.
// Level 1 rows: "1,,3" (y 0), "2,2," (y 1), "0,1,2,3" (y 2): 6 + 6 + 26.
// Level 2 rows: "5" (y 0), "6,7" (y 1), "8" (y 2): 0 + 20 + 16. The sum is 74.
inline std::string TinyPairSet() {
    return "[main]\n"
           "LEVELSET=Tiny Pair\n"
           "[level7]\n"
           "levelbricks=4\n"
           "levelgfxfolder=crystal\n"
           "LevelName=One\n"
           "R99=1,,3\n"
           "r=2,2,\n"
           "r5=0,1,2,3\n"
           "[LEVEL3]\n"
           "levelbricks=25\n"
           "levelgfxfolder=\n"
           "LevelName=Two\n"
           "r0=5\n"
           "r1=6,7\n"
           "r2=8\n";
}
inline constexpr double TinyPairSum = 74;

// One of the sets in the source tree's game folder, read from levels\<folder>\.
struct ShippedSet {
    std::unique_ptr<LevelModule> game = std::make_unique<LevelModule>();
    LevelSetLoad load;
    explicit ShippedSet(const std::string& folder) {
        SetAppPath(std::string(TOLVA_SOURCE_DIR) + "/game");
        LevelSetReader reader(*game);
        reader.LevelSetPath = "levels\\" + folder + "\\";
        load = reader.InitLevels();
    }
    const LevelRecord& Level(int n) const { return game->Levels[static_cast<std::size_t>(n - 1)]; }
};

} // namespace tolva::testing
