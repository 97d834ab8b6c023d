#pragma once
// LevelModule: the level table and the public game variables that the board and the
// session window share. One object, handed to both by reference, so that a test can
// make a fresh one instead of resetting globals.
#include <array>
#include <cstdint>
#include <string>

namespace tolva {

inline constexpr int MaxLevels = 100;
inline constexpr int MaxBricks = 40;   // grids are always 40 x 40 in memory

// A 40 x 40 grid indexed (x, y): x the column from the left, y the row from the top.
template <typename T>
struct Grid {
    std::array<T, MaxBricks * MaxBricks> cells{};
    T& operator()(int x, int y) { return cells[static_cast<std::size_t>(x * MaxBricks + y)]; }
    const T& operator()(int x, int y) const { return cells[static_cast<std::size_t>(x * MaxBricks + y)]; }
    void Fill(T value) { cells.fill(value); }
};

using CellGrid = Grid<std::int16_t>;

// Cell values of a board.
inline constexpr std::int16_t CellEmpty = -1;
inline constexpr std::int16_t ReservedCell = 10;   // no colour, no spell, no picture
inline constexpr std::int16_t FirstSpellCell = 11; // 11 + spell number: a spell lying on the board

// Spell numbers.
inline constexpr std::int16_t NoSpell = -1;
inline constexpr std::int16_t SpellSaw = 0;        // "BOUNCING SAW"
inline constexpr std::int16_t SpellRainbow = 1;    // "RAINBOW"
inline constexpr std::int16_t SpellGun = 2;        // "GUN"
inline constexpr std::int16_t SpellTestTube = 3;   // "TEST TUBE"
inline constexpr std::int16_t SpellBomb = 4;       // "BOMB"
inline constexpr std::int16_t SpellUmbrella = 5;   // "UMBRELLA"
inline constexpr int SpellCount = 6;

// One level of the loaded set. The reader fills it; play only reads it, so that a level
// always starts as stored.
struct LevelRecord {
    std::string LevelName;          // empty: a free slot, the end of the set
    std::int16_t levelbricks = 10;  // board side, 10 to 40
    CellGrid BrickGrid;             // starting cell values
    std::string levelgfxfolder;     // the level's picture folder under the set, may be empty
    CellGrid SpellGrid;             // hidden spell under each brick, -1 for none

    LevelRecord() { BrickGrid.Fill(CellEmpty); SpellGrid.Fill(NoSpell); }
};

struct LevelModule {
    std::string HiscoreUrl;
    bool SubmitHiscore = false;
    std::int16_t ShowBonusCounter = 1;
    bool SpellRunning = false;
    std::int16_t HuntDelaySetting = 0;
    std::string EnteredInitials;
    std::string DefaultMusicFile;
    std::int16_t PlaySounds = 1;
    std::int16_t PlayMusic = 1;
    std::int16_t ActiveSpell = NoSpell;
    bool CheatMode = false;
    std::int16_t BonusTimes = 0;
    bool MakeStat = true;
    bool SupplyStatFile = true;
    bool DrawUsingBackBuffer = true;
    bool PlayAnimations = true;
    std::string ExtMusicFile;
    bool UseExternalMusicFile = false;
    std::string ExtMusicPath;
    std::int16_t CurLevelNo = 1;
    std::array<LevelRecord, MaxLevels> Levels;
};

} // namespace tolva
