#pragma once
// LevelJudge: how hard a level is to clear for players who do not plan.
//
// Two naive players stand in for a careless human: the greedy one always takes the
// largest group (the top-left one of equal size), the random one takes any group with
// equal chance. A friendly level is one that most random players clear; a level that
// needs real thought is one that the greedy player fails and random players hardly
// ever clear, while a planned solution exists.
#include "PlayBoard.h"

#include <cstdint>

namespace tolva::levelgen {

struct Judgement {
    bool greedyClears = false;
    double randomClearRate = 0.0;   // share of random players that cleared it
    int groupsAtStart = 0;
};

bool GreedyClears(const PlayBoard& start);
// `players` random players, each from its own seed derived from `seed`.
double RandomClearRate(const PlayBoard& start, int players, std::uint64_t seed);
Judgement JudgeLevel(const PlayBoard& start, int players, std::uint64_t seed);

} // namespace tolva::levelgen
