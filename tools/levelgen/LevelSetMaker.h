#pragma once
// LevelSetMaker: turns a SetPlan into levels with their solutions. Every level is made
// from its own seed (the set's seed and its number), so that a set is the same on every
// run and a level can be remade alone. For each level several candidates are designed
// and judged by the naive players of LevelJudge, and the plan's mood picks one; with
// MakeOptions::proveStates, the nearest to that pick which the solver clears on its own.
#include "LevelJudge.h"
#include "LevelPlan.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tolva::levelgen {

struct MadeLevel {
    LevelRecord record;
    std::vector<Cell> solution;
    Judgement judgement;
    int candidatesMade = 0;
};

struct MakeOptions {
    std::uint64_t seed = 1;
    int randomPlayers = 40;
    int jobs = 1;                                           // levels made side by side
    std::function<void(int level, const MadeLevel&)> progress; // called as each level is done
    // When above 0, a level is shipped only if the solver clears it within this many
    // boards (see ProvenBySolver); 0 leaves the solver out.
    std::uint64_t proveStates = 0;
};

// True when SolveLevel, seeded with the level's `number` as `tolva2-cli levels solve`
// seeds it, clears the level within `states` boards looked at, its clicks replayed.
bool ProvenBySolver(const LevelRecord& level, int number, std::uint64_t states);

// One level of the plan (index from 0). Throws std::runtime_error if no design works.
MadeLevel MakeLevel(const SetPlan& plan, int index, const MakeOptions& options);
std::vector<MadeLevel> MakeSet(const SetPlan& plan, const MakeOptions& options);

} // namespace tolva::levelgen
