#pragma once
// LevelModule: the level table and the state of play that the board and the session share.
// One object, handed to both by reference, so that a test can make a fresh one instead of
// resetting globals. The player's settings are not here: they have one owner,
// GameSettings (settings/), which every part reads from.
#include <array>
#include <cstdint>
#include <memory>
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
    bool operator==(const Grid&) const = default;
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

    LevelRecord() { Clear(); }
    // Back to a free slot, in place.
    void Clear() {
        LevelName.clear();
        levelbricks = 10;
        BrickGrid.Fill(CellEmpty);
        levelgfxfolder.clear();
        SpellGrid.Fill(NoSpell);
    }
};

// The hundred level slots. Their 640 KB are taken when a slot is first asked for, which
// is when a set is read: the program's start-up builds everything else first, and memory
// touched early is touched twice where the process forks meanwhile (a desktop bus being
// started for the accessibility bridge does).
class LevelTable {
public:
    using Records = std::array<LevelRecord, MaxLevels>;

    LevelRecord& operator[](std::size_t index) { return All()[index]; }
    const LevelRecord& operator[](std::size_t index) const { return All()[index]; }
    static constexpr std::size_t size() { return MaxLevels; }
    Records::iterator begin() { return All().begin(); }
    Records::iterator end() { return All().end(); }
    Records::const_iterator begin() const { return All().begin(); }
    Records::const_iterator end() const { return All().end(); }

private:
    Records& All() const {
        if (!records_) records_ = std::make_unique<Records>();
        return *records_;
    }
    mutable std::unique_ptr<Records> records_;
};

struct LevelModule {
    // The spell armed for the next click, -1 for none.
    std::int16_t ActiveSpell = NoSpell;
    // A spell click is being carried out: the spell buttons do not answer.
    bool SpellRunning = false;
    // No spell effect is running (the idle mascot keeps quiet meanwhile).
    bool NoSpellBusy = true;
    bool CheatMode = false;
    // The multiplier of the level bonus earned so far in this level, 0 to 9.
    std::int16_t BonusTimes = 0;
    // The level in play, 1 to 100.
    std::int16_t CurLevelNo = 1;
    LevelTable Levels;
};

} // namespace tolva
