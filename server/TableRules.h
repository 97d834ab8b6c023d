#pragma once
// What a table must look like to have come from the game: the checksum only proves that
// whoever sent it knew the cipher, so the server also checks every place against what
// the game's own rules can produce, and refuses the rest.
#include "hiscores/Hiscores.h"

#include <optional>
#include <string>

namespace tolva::hiscored {

// The highest level number a place can hold: a level set has at most 100 levels.
inline constexpr int MaxLevel = 100;

// The highest score a game can reach. A board is at most 40 x 40 = 1,600 bricks, and a
// removal scores the square of what it takes, so the removals of one level score at
// most 1,600^2 = 2,560,000 (the sum of squares of counts that add up to 1,600 is
// largest when one click takes all of them). A cleared level adds its bonus, 100,000
// for each of at most 9 steps: 900,000. One level is thus worth at most 3,460,000, and
// a full set of 100 levels 346,000,000. A game that goes round the set again could in
// principle pass it, but only by clearing more than a hundred 40 x 40 boards each in
// one click, which no level that starts with more than one colour allows.
inline constexpr double MaxScore = 100.0 * (1600.0 * 1600.0 + 9 * 100000.0);

// None if the ten places are a table the game can make, else one line saying what is
// wrong with which place:
//  - a place that holds a score has a whole score from 1 to MaxScore (points come as
//    squares of brick counts and multiples of the level bonus; below 1 takes no place),
//    a level from 0 to MaxLevel, and a name the initials window can write (at most
//    three characters, capitals, no ',' or '.');
//  - a free place is exactly the game's empty entry, "...", level 0, score 0, and only
//    free places follow it;
//  - scores never rise from one place to the next. Equal scores may stand in any order
//    of level and name: the game puts a new score above an old one of the same value,
//    so their order is the order they were played in, which the table does not keep.
std::optional<std::string> CheckGameTable(const Hiscores::Table& places);

} // namespace tolva::hiscored
