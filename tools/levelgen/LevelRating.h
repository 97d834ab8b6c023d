#pragma once
// LevelRating: a level's difficulty as the share of careless players who clear it.
//
// The careless player looks at the board, takes any group the game would take (two or
// more side-touching cells of one value, a pair of like spells lying on the board
// included) with equal chance, and goes on until no group is left. Over a fixed number
// of tries, each from its own seeded random stream, the share that ends with an empty
// board says how forgiving the level is: near 1 a level clears itself, near 0 it has to
// be planned. On large boards nearly every careless player fails, so the rating also
// gives how much of the board they leave, on average, as a share of the cells it starts
// with: that share still grows with a level's difficulty where the clear rate is 0 for
// all. The tries of a level depend only on the seed and the level's number, so
// that rating one level gives the same line as rating the whole set.
#include "PlayBoard.h"

#include <cstdint>
#include <string>

namespace tolva::levelgen {

struct LevelRating {
    int level = 0;
    int side = 0;
    int bricks = 0;        // cells holding a brick colour or 10 at the start
    int colours = 0;       // distinct brick values among them
    int spells = 0;        // hidden spells and spells lying on the board
    int tries = 0;
    int cleared = 0;       // tries that ended with an empty board
    int startCells = 0;    // cells holding a value 0 and up at the start
    long long cellsLeft = 0;   // summed over the tries: such cells left when no group was
    double Rate() const { return tries > 0 ? static_cast<double>(cleared) / tries : 0.0; }
    // The mean share of the starting cells that a try leaves, 0..1.
    double LeftShare() const {
        return tries > 0 && startCells > 0 ? static_cast<double>(cellsLeft) / (static_cast<double>(tries) * startCells) : 0.0;
    }
};

// One careless game from `start`: the cells left when no group is, 0 for a clear.
int RandomPlayLeaves(const PlayBoard& start, std::uint64_t streamSeed);

LevelRating RateLevel(const PlayBoard& start, int level, int tries, std::uint64_t seed);

// The tab-separated header and lines of `tolva2-cli levels rate`.
std::string RatingHeader();
std::string FormatRating(const LevelRating& rating);

} // namespace tolva::levelgen
