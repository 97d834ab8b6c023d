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

struct BoardFeatures {
    int occupied = 0;          // cells holding a value of 0 or more
    int groups = 0;            // groups of two or more of a clickable value
    int singlesInColumn = 0;   // singles with their colour elsewhere in the column
    int singlesBeside = 0;     // ... or else in a neighbouring column
    int singlesFar = 0;        // ... or else nowhere near
    int largestGroup = 0;
    bool dead = false;         // some clickable value has exactly one cell left

    // Lower is closer to a clear.
    double Estimate() const;
};

// Reusable buffers, so that measuring allocates nothing.
struct FeatureScratch {
    std::array<std::uint8_t, MaxBricks * MaxBricks> seen{};
    std::array<std::int16_t, MaxBricks * MaxBricks> stack{};
};

BoardFeatures MeasureBoard(const PlayBoard& board, FeatureScratch& scratch);

} // namespace tolva::levelgen
