#include "LevelJudge.h"

#include <random>
#include <vector>

namespace tolva::levelgen {

bool GreedyClears(const PlayBoard& start) {
    PlayBoard board = start;
    std::vector<Group> groups;
    for (;;) {
        board.FindGroups(groups);
        if (groups.empty()) return board.Cleared();
        const Group* best = &groups.front();
        for (const auto& g : groups)
            if (g.size > best->size) best = &g;
        board.Click(best->at.x, best->at.y);
    }
}

double RandomClearRate(const PlayBoard& start, int players, std::uint64_t seed) {
    if (players <= 0) return 0.0;
    int cleared = 0;
    std::vector<Group> groups;
    for (int p = 0; p < players; ++p) {
        std::mt19937_64 rng(seed * 1000003u + static_cast<std::uint64_t>(p));
        PlayBoard board = start;
        for (;;) {
            board.FindGroups(groups);
            if (groups.empty()) break;
            std::uniform_int_distribution<std::size_t> pick(0, groups.size() - 1);
            const Group& g = groups[pick(rng)];
            board.Click(g.at.x, g.at.y);
        }
        if (board.Cleared()) ++cleared;
    }
    return static_cast<double>(cleared) / players;
}

Judgement JudgeLevel(const PlayBoard& start, int players, std::uint64_t seed) {
    Judgement j;
    std::vector<Group> groups;
    start.FindGroups(groups);
    j.groupsAtStart = static_cast<int>(groups.size());
    j.greedyClears = GreedyClears(start);
    j.randomClearRate = RandomClearRate(start, players, seed);
    return j;
}

} // namespace tolva::levelgen
