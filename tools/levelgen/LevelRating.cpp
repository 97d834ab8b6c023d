#include "LevelRating.h"

#include <cstdio>
#include <random>
#include <vector>

namespace tolva::levelgen {
namespace {

// Every group of two or more, any value 0 and up, as the game's IsValid sees them.
void RemovableGroups(const PlayBoard& board, std::vector<Cell>& out) {
    out.clear();
    const int side = board.Side();
    std::array<bool, MaxBricks * MaxBricks> seen{};
    std::vector<Cell> stack;
    for (int x = 0; x < side; ++x)
        for (int y = 0; y < side; ++y) {
            const auto v = board.Brick(x, y);
            if (v < 0 || seen[static_cast<std::size_t>(x * MaxBricks + y)] || !board.IsValid(x, y)) continue;
            out.push_back(Cell{x, y});
            stack.assign(1, Cell{x, y});
            seen[static_cast<std::size_t>(x * MaxBricks + y)] = true;
            while (!stack.empty()) {
                const Cell c = stack.back();
                stack.pop_back();
                const Cell next[4] = {{c.x + 1, c.y}, {c.x - 1, c.y}, {c.x, c.y - 1}, {c.x, c.y + 1}};
                for (const Cell& n : next) {
                    if (!board.OnBoard(n.x, n.y) || board.Brick(n.x, n.y) != v) continue;
                    auto& mark = seen[static_cast<std::size_t>(n.x * MaxBricks + n.y)];
                    if (!mark) {
                        mark = true;
                        stack.push_back(n);
                    }
                }
            }
        }
}

} // namespace

int RandomPlayLeaves(const PlayBoard& start, std::uint64_t streamSeed) {
    std::mt19937_64 rng(streamSeed);
    PlayBoard board = start;
    std::vector<Cell> groups;
    for (;;) {
        RemovableGroups(board, groups);
        if (groups.empty()) return board.Occupied();
        std::uniform_int_distribution<std::size_t> pick(0, groups.size() - 1);
        const Cell c = groups[pick(rng)];
        board.Click(c.x, c.y);
    }
}

LevelRating RateLevel(const PlayBoard& start, int level, int tries, std::uint64_t seed) {
    LevelRating r;
    r.level = level;
    r.side = start.Side();
    r.tries = tries < 0 ? 0 : tries;
    const auto counts = start.ValueCounts();
    for (int v = 0; v <= 10; ++v) {
        r.bricks += counts[static_cast<std::size_t>(v)];
        if (counts[static_cast<std::size_t>(v)] > 0) ++r.colours;
    }
    for (int x = 0; x < r.side; ++x)
        for (int y = 0; y < r.side; ++y)
            if (start.Brick(x, y) > 10 || (start.Brick(x, y) >= 0 && start.Brick(x, y) <= 9 && start.Spell(x, y) >= 0))
                ++r.spells;
    // A stream per try, spread by a large odd multiplier so that neighbouring seeds and
    // levels share no stream.
    const std::uint64_t base = seed * 0x9E3779B97F4A7C15ull + static_cast<std::uint64_t>(level) * 1000003ull;
    r.startCells = start.Occupied();
    for (int t = 0; t < r.tries; ++t) {
        const int left = RandomPlayLeaves(start, base + static_cast<std::uint64_t>(t));
        if (left == 0) ++r.cleared;
        r.cellsLeft += left;
    }
    return r;
}

std::string RatingHeader() { return "level\tside\tbricks\tcolours\tspells\tcleared\ttries\trate\tleft%"; }

std::string FormatRating(const LevelRating& r) {
    char rate[32], left[32];
    std::snprintf(rate, sizeof rate, "%.3f", r.Rate());
    std::snprintf(left, sizeof left, "%.1f", 100.0 * r.LeftShare());
    return std::to_string(r.level) + '\t' + std::to_string(r.side) + '\t' + std::to_string(r.bricks) + '\t' +
           std::to_string(r.colours) + '\t' + std::to_string(r.spells) + '\t' + std::to_string(r.cleared) + '\t' +
           std::to_string(r.tries) + '\t' + rate + '\t' + left;
}

} // namespace tolva::levelgen
