#include "LevelDesigner.h"

#include <algorithm>
#include <set>

namespace tolva::levelgen {
namespace {

constexpr int NoId = -1;

// The uncoloured board: each cell holds the id of the cell it started in (x * 40 + y).
class IdBoard {
public:
    IdBoard(int boardSide, const Mask& mask) : side(boardSide) {
        ids.fill(NoId);
        for (int x = 0; x < side; ++x)
            for (int y = 0; y < side; ++y)
                if (mask(x, y)) ids[Index(x, y)] = Index(x, y);
    }
    int Side() const { return side; }
    int At(int x, int y) const { return ids[Index(x, y)]; }
    bool Occupied(int x, int y) const { return x >= 0 && y >= 0 && x < side && y < side && At(x, y) != NoId; }
    int Count() const {
        return static_cast<int>(std::count_if(ids.begin(), ids.end(), [](int v) { return v != NoId; }));
    }
    void Remove(const std::vector<Cell>& cells) {
        for (const auto& c : cells) ids[Index(c.x, c.y)] = NoId;
        Compact();
    }

private:
    static int Index(int x, int y) { return x * MaxBricks + y; }
    void Compact() {
        std::array<int, MaxBricks * MaxBricks> out;
        out.fill(NoId);
        int target = 0;
        for (int x = 0; x < side; ++x) {
            int row = side - 1;
            for (int y = side - 1; y >= 0; --y)
                if (At(x, y) != NoId) out[Index(target, row--)] = At(x, y);
            if (row < side - 1) ++target;
        }
        ids = out;
    }
    int side;
    std::array<int, MaxBricks * MaxBricks> ids{};
};

const int Steps[4][2] = {{1, 0}, {-1, 0}, {0, -1}, {0, 1}};

// What the play knows of each cell (by start id) while it runs: the colours it may no
// longer take because a group of that colour touched it when that group was clicked.
struct Constraints {
    std::array<std::uint16_t, MaxBricks * MaxBricks> forbidden{};   // bit per palette index
    std::uint16_t all = 0;                                            // every palette index
    bool Allows(int id, int colour) const { return !(forbidden[static_cast<std::size_t>(id)] >> colour & 1u); }
    int Count(int id) const { return __builtin_popcount(forbidden[static_cast<std::size_t>(id)]); }
};

// Grows a connected set of cells that may all take `colour`, from `seed` by random
// frontier cells up to `target` cells.
std::vector<Cell> Grow(const IdBoard& board, const Constraints& rules, int colour, Cell seed, int target,
                       std::mt19937_64& rng) {
    std::vector<Cell> set{seed}, frontier;
    std::set<std::pair<int, int>> inSet{{seed.x, seed.y}}, inFrontier;
    auto addFrontier = [&](Cell c) {
        for (const auto& s : Steps) {
            Cell n{c.x + s[0], c.y + s[1]};
            if (!board.Occupied(n.x, n.y) || inSet.count({n.x, n.y}) || inFrontier.count({n.x, n.y})) continue;
            if (!rules.Allows(board.At(n.x, n.y), colour)) continue;
            inFrontier.insert({n.x, n.y});
            frontier.push_back(n);
        }
    };
    addFrontier(seed);
    while (static_cast<int>(set.size()) < target && !frontier.empty()) {
        std::uniform_int_distribution<std::size_t> pick(0, frontier.size() - 1);
        const std::size_t i = pick(rng);
        const Cell c = frontier[i];
        frontier[i] = frontier.back();
        frontier.pop_back();
        inFrontier.erase({c.x, c.y});
        inSet.insert({c.x, c.y});
        set.push_back(c);
        addFrontier(c);
    }
    return set;
}

// Takes into the set every neighbour for which `colour` is the last one left: the click
// would forbid it that colour too, and it could never go.
void Absorb(const IdBoard& board, const Constraints& rules, int colour, std::vector<Cell>& cells) {
    std::set<std::pair<int, int>> inSet;
    for (const auto& c : cells) inSet.insert({c.x, c.y});
    for (std::size_t i = 0; i < cells.size(); ++i) {
        for (const auto& s : Steps) {
            Cell n{cells[i].x + s[0], cells[i].y + s[1]};
            if (!board.Occupied(n.x, n.y) || inSet.count({n.x, n.y})) continue;
            const int id = board.At(n.x, n.y);
            if (rules.Allows(id, colour) && rules.forbidden[static_cast<std::size_t>(id)] == static_cast<std::uint16_t>(rules.all & ~(1u << colour))) {
                inSet.insert({n.x, n.y});
                cells.push_back(n);
            }
        }
    }
}

struct Choice {
    std::vector<Cell> cells;
    int colour = 0;
};

// Colours that both `a` and a side neighbour of it may take.
std::vector<int> PairColours(const IdBoard& board, const Constraints& rules, Cell a, int colours) {
    std::vector<int> out;
    for (int c = 0; c < colours; ++c) {
        if (!rules.Allows(board.At(a.x, a.y), c)) continue;
        for (const auto& s : Steps) {
            Cell n{a.x + s[0], a.y + s[1]};
            if (board.Occupied(n.x, n.y) && rules.Allows(board.At(n.x, n.y), c)) {
                out.push_back(c);
                break;
            }
        }
    }
    return out;
}

// The next group: seeded most often at the cell with the fewest colours left, so that
// no cell is boxed in by its neighbours' colours, with a colour the seed and a
// neighbour share, the least used such colour being likelier.
bool ChooseGroup(const IdBoard& board, const Constraints& rules, const DesignRequest& request,
                 const std::vector<int>& used, std::mt19937_64& rng, Choice& out) {
    const int colours = static_cast<int>(request.palette.size());
    std::vector<Cell> seeds;
    int most = -1;
    for (int x = 0; x < board.Side(); ++x)
        for (int y = 0; y < board.Side(); ++y) {
            if (!board.Occupied(x, y) || PairColours(board, rules, Cell{x, y}, colours).empty()) continue;
            const int n = rules.Count(board.At(x, y));
            if (n > most) { most = n; seeds.clear(); }
            if (n == most) seeds.push_back(Cell{x, y});
        }
    if (seeds.empty()) return false;
    const int total = board.Count();
    std::uniform_int_distribution<int> pickSize(request.minGroup, request.maxGroup);
    for (int attempt = 0; attempt < 40; ++attempt) {
        const Cell seed = seeds[std::uniform_int_distribution<std::size_t>(0, seeds.size() - 1)(rng)];
        auto options = PairColours(board, rules, seed, colours);
        std::shuffle(options.begin(), options.end(), rng);
        std::stable_sort(options.begin(), options.end(), [&](int a, int b) { return used[a] < used[b]; });
        const int colour = (options.size() > 1 && rng() % 3 == 0) ? options[1] : options[0];
        auto cells = Grow(board, rules, colour, seed, std::max(2, pickSize(rng)), rng);
        Absorb(board, rules, colour, cells);
        const int left = total - static_cast<int>(cells.size());
        if (cells.size() < 2) continue;
        if (left == 1) {   // take the last cell along if it may, else try another group
            auto all = Grow(board, rules, colour, seed, total, rng);
            if (static_cast<int>(all.size()) != total) continue;
            cells = all;
        }
        out = Choice{cells, colour};
        return true;
    }
    return false;
}

struct Play {
    std::vector<std::vector<int>> groups;          // start ids of each group, in click order
    std::vector<int> colours;                      // palette index of each group
    std::vector<Cell> clicks;
    std::vector<int> spellSafe;                    // ids whose hidden spell would drop straight out
};

std::optional<Play> PlayLevel(const DesignRequest& request, std::mt19937_64& rng) {
    IdBoard board(request.side, request.mask);
    Constraints rules;
    rules.all = static_cast<std::uint16_t>((1u << request.palette.size()) - 1);
    std::vector<int> used(request.palette.size(), 0);
    Play play;
    while (board.Count() > 0) {
        Choice choice;
        if (!ChooseGroup(board, rules, request, used, rng, choice)) return std::nullopt;
        std::set<std::pair<int, int>> inSet;
        for (const auto& c : choice.cells) inSet.insert({c.x, c.y});
        std::vector<int> ids;
        for (const auto& c : choice.cells) {
            ids.push_back(board.At(c.x, c.y));
            for (const auto& s : Steps) {
                Cell n{c.x + s[0], c.y + s[1]};
                if (board.Occupied(n.x, n.y) && !inSet.count({n.x, n.y}))
                    rules.forbidden[static_cast<std::size_t>(board.At(n.x, n.y))] |= static_cast<std::uint16_t>(1u << choice.colour);
            }
            bool clearBelow = true;
            for (int y = c.y + 1; y < board.Side() && clearBelow; ++y)
                if (board.Occupied(c.x, y) && !inSet.count({c.x, y})) clearBelow = false;
            if (clearBelow) play.spellSafe.push_back(board.At(c.x, c.y));
        }
        used[static_cast<std::size_t>(choice.colour)] += static_cast<int>(ids.size());
        play.groups.push_back(ids);
        play.colours.push_back(choice.colour);
        play.clicks.push_back(choice.cells.front());
        board.Remove(choice.cells);
    }
    return play;
}

} // namespace

std::optional<DesignedLevel> DesignLevel(const DesignRequest& request, std::mt19937_64& rng) {
    auto play = PlayLevel(request, rng);
    if (!play) return std::nullopt;
    std::vector<int> safe = play->spellSafe;
    if (safe.size() < request.spells.size()) return std::nullopt;
    std::shuffle(safe.begin(), safe.end(), rng);

    DesignedLevel out;
    out.record.levelbricks = static_cast<std::int16_t>(request.side);
    for (std::size_t g = 0; g < play->groups.size(); ++g)
        for (int id : play->groups[g])
            out.record.BrickGrid(id / MaxBricks, id % MaxBricks) =
                static_cast<std::int16_t>(request.palette[static_cast<std::size_t>(play->colours[g])]);
    for (std::size_t i = 0; i < request.spells.size(); ++i)
        out.record.SpellGrid(safe[i] / MaxBricks, safe[i] % MaxBricks) = static_cast<std::int16_t>(request.spells[i]);
    out.solution = play->clicks;

    PlayBoard board(out.record);
    for (std::size_t g = 0; g < out.solution.size(); ++g)
        if (board.Click(out.solution[g].x, out.solution[g].y) != static_cast<int>(play->groups[g].size()))
            return std::nullopt;
    if (!board.Cleared()) return std::nullopt;
    return out;
}

} // namespace tolva::levelgen
