#pragma once
// BoardFeatures: what the solver's search looks at in a board, measured in one pass.
//
// A full clear fails on a brick that is left alone in its colour, so the measure is
// mostly about lone bricks (singles) and how far each is from help:
//  - a single with a brick of its colour further up or down its own column can be
//    joined by clearing what lies between them: the cheapest kind;
//  - one whose colour stands in a neighbouring column may meet it when the heights
//    of the two columns line up;
//  - one with no brick of its colour in its own or the neighbouring columns needs
//    whole columns to go before anything of its colour comes near: the costliest.
// Every group also still needs a click. A colour with exactly one brick left can never
// be cleared, so such a board is dead. Spells lying on the board are not counted: they
// fall and are collected on their own.
#include "PlayBoard.h"

#include <array>
#include <cstdint>

namespace tolva::levelgen {

// The estimate's weights. The defaults were tuned on the shipped sets: every group still
// needs a click; a single costs twice that and one more for each brick in the way of
// its colour, which gives the search a slope towards bringing far colours together
// (a plain count of far singles gave none, and the search kept a few of them to the
// end, where they stranded); every colour still on the board costs several groups, so
// that of two boards the one that finished a colour goes first; cells still on the
// board count a little, so that of two boards at the same depth the one that took
// larger groups goes first.
struct Weights {
    double group = 1.0;
    double inColumn = 2.0;
    double beside = 2.0;
    double far = 2.0;
    double cell = 0.3;
    double colour = 6.0;
    double distance = 1.0;
};

struct BoardFeatures {
    int occupied = 0;          // cells holding a value of 0 or more
    int groups = 0;            // groups of two or more of a clickable value
    int singlesInColumn = 0;   // singles with their colour elsewhere in the column
    int singlesBeside = 0;     // ... or else in a neighbouring column
    int singlesFar = 0;        // ... or else nowhere near
    int singleDistance = 0;    // summed over singles: bricks in the way of their colour
    int coloursLeft = 0;       // clickable values with any cell left
    bool dead = false;         // some clickable value has exactly one cell left

    // Lower is closer to a clear.
    double Estimate(const Weights& weights = Weights{}) const;
};

// How far, in columns, a single looks for its colour, and what it costs when none is that
// near. Sparse levels of short columns far apart need the look to reach well past a few
// columns (at 4 some of them were no longer solved); it is bounded so that a click
// changes the shares of only the columns near it (in practice a look stops within a
// column or two, and each column keeps how far its looks went).
inline constexpr int LookColumns = 10;
inline constexpr int FarthestLook = 100;

// One column's share of the features, kept per board so that a click's child is measured
// by the columns it changed.
struct ColumnPart {
    int cells = 0;
    int paired = 0;     // cells with a side neighbour of their value
    int joins = 0;      // such pairs to the right and below
    int squares = 0;    // 2 x 2 squares of one value, by their top left cell
    int inColumn = 0;
    int beside = 0;
    int far = 0;
    int distance = 0;
    int reachLeft = 0;  // how many columns away its singles looked for their colour
    int reachRight = 0;
    unsigned values = 0;   // the values 0..10 standing in the column, a bit each
};

struct ColumnParts {
    std::array<ColumnPart, MaxBricks> parts{};
    int columns = 0;
    std::array<int, 11> counts{};   // cells of each clickable value
};

BoardFeatures MeasureBoard(const PlayBoard& board);
BoardFeatures MeasureBoard(const PlayBoard& board, ColumnParts& parts);
// The same measure for `child`, made by taking `taken` on `parent` whose parts are
// given: only the columns near those the click changed are looked at again.
BoardFeatures MeasureChild(const PlayBoard& parent, const ColumnParts& parentParts, const PlayBoard& child,
                           const Group& taken, ColumnParts& parts);

} // namespace tolva::levelgen
