#pragma once
// PlayBoard: a fast, screenless model of plain clicks, for the level tools.
//
// The level generator, the solver behind `tolva2-cli levels solve` and the difficulty
// measures all need to play a level many thousand times. TolvaBoard is the game's own
// engine and carries events, timers and pictures; this class keeps only what a plain
// left click does to the grids, with the same rules to the cell:
//  - a click is refused unless the cell has a side neighbour of the same value;
//  - the whole 4-connected group goes; a colour brick with a hidden spell turns into
//    the spell lying on the board (11 + spell number) instead of going empty;
//  - every column falls, empty columns close towards the left, and while a spell
//    (value above 10) lies in the bottom row the leftmost one is collected and the
//    board compacts again;
//  - the level is cleared when no cell of the square holds a value of 0 or more.
// Everything stays inside the side x side square, exactly as the engine does; cells
// beyond it are never looked at. The stored solutions are still proven on TolvaBoard:
// this model is the search's fast copy of those rules, not their authority.
#include "shared/LevelModule.h"

#include <array>
#include <cstdint>
#include <vector>

namespace tolva::levelgen {

struct Cell {
    int x = 0;
    int y = 0;
    bool operator==(const Cell&) const = default;
};

// A clickable group: one of its cells, its value and its size.
struct Group {
    Cell at;
    std::int16_t value = 0;
    int size = 0;
};

class PlayBoard {
public:
    PlayBoard();
    // The level as stored: side from levelbricks (bounded to 10..40), both grids whole.
    explicit PlayBoard(const LevelRecord& level);

    int Side() const { return side; }
    std::int16_t Brick(int x, int y) const { return bricks[Index(x, y)]; }
    std::int16_t Spell(int x, int y) const { return spells[Index(x, y)]; }
    // Column x's bricks, top row first: Side() values in a row, for quick comparisons.
    const std::int16_t* Column(int x) const { return &bricks[Index(x, 0)]; }

    bool OnBoard(int x, int y) const { return x >= 0 && y >= 0 && x < side && y < side; }
    // True when (x, y) starts a group of at least two, as the engine's IsValid.
    bool IsValid(int x, int y) const;
    // A plain click with no spell armed. Gives the size of the group taken, 0 when the
    // click is refused. Spells collected on the way are appended to `collected`.
    int Click(int x, int y, std::vector<int>* collected = nullptr);

    bool Cleared() const;
    bool HasMoves() const;
    // Cells that still hold a value of 0 or more.
    int Occupied() const;

    // Every group of at least two cells whose value is a colour brick or 10 (spells
    // lying on the board are left to fall and be collected). `singles` counts the
    // clickable-valued cells that have no same neighbour.
    void FindGroups(std::vector<Group>& out, int* singles = nullptr) const;
    // How many cells hold each brick value 0..10; index 11 counts the rest above 10.
    std::array<int, 12> ValueCounts() const;
    std::uint64_t Hash() const;

private:
    static int Index(int x, int y) { return x * MaxBricks + y; }
    // Takes the group at (x, y); `touched` gets a bit for each column it had cells in.
    int FloodRemove(int x, int y, std::uint64_t& touched);
    void Compact(std::uint64_t touched);
    void CleanArray(std::uint64_t touched, std::vector<int>* collected);

    int side = 10;
    std::array<std::int16_t, MaxBricks * MaxBricks> bricks{};
    std::array<std::int16_t, MaxBricks * MaxBricks> spells{};
    // Once the board has fallen, its columns in use are the first `used` ones: a click
    // then needs to let fall only the columns it touched, and to move those right of an
    // emptied one.
    bool compact = false;
    int used = 0;
};

} // namespace tolva::levelgen
