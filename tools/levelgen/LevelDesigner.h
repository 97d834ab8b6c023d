#pragma once
// LevelDesigner: makes a level that is clearable by construction.
//
// The designer plays the level before it has colours. It starts from the layout (the
// cells of the shape, holes and cells in the air included, exactly as the level will be
// stored) and repeatedly picks a connected set of at least two cells, takes it away and
// lets the rest fall and close up by the game's rules, until nothing is left. Each set
// becomes one group of the solution. Colours come last: a group only has to be a group
// of its own when it is clicked, so its colour must differ from every cell touching it
// at that moment. That is a graph colouring with one edge per such contact, solved with
// DSatur and backtracking. Groups that do not touch at their click may share a colour
// and then merge on the board: they make the larger, tempting groups that lure a player
// away from the order that works.
//
// Hidden spells go only under bricks that have nothing but their own group below them
// when the group is clicked: such a spell falls straight into the bottom row and is
// collected in the same move, so it changes nothing in the solution. Every design is
// replayed on PlayBoard before it is given out.
#include "PlayBoard.h"

#include <cstdint>
#include <optional>
#include <random>
#include <vector>

namespace tolva::levelgen {

// Which cells of the side x side square hold a brick at the start, indexed (x, y).
using Mask = Grid<bool>;

struct DesignRequest {
    int side = 10;
    Mask mask;                    // cells outside it are empty
    std::vector<int> palette;     // the colour values used; their count is the colour count
    int minGroup = 2;             // size of the sets taken, drawn evenly from min to max
    int maxGroup = 4;
    std::vector<int> spells;      // spell numbers to hide, one brick each
};

struct DesignedLevel {
    LevelRecord record;           // name and folder left empty
    std::vector<Cell> solution;   // one cell of each group, in click order
};

// One attempt; empty when the colouring or the spells could not be placed.
std::optional<DesignedLevel> DesignLevel(const DesignRequest& request, std::mt19937_64& rng);

} // namespace tolva::levelgen
