#include "PlayBoard.h"

#include <algorithm>

namespace tolva::levelgen {

static_assert(MaxBricks <= 64, "a click's columns are kept as bits of a 64-bit word");

PlayBoard::PlayBoard() {
    bricks.fill(CellEmpty);
    spells.fill(NoSpell);
}

PlayBoard::PlayBoard(const LevelRecord& level) {
    side = std::clamp<int>(level.levelbricks, 10, MaxBricks);
    bricks = level.BrickGrid.cells;
    spells = level.SpellGrid.cells;
}

bool PlayBoard::IsValid(int x, int y) const {
    if (!OnBoard(x, y)) return false;
    const auto v = Brick(x, y);
    if (v == CellEmpty) return false;
    return (x < side - 1 && Brick(x + 1, y) == v) || (x > 0 && Brick(x - 1, y) == v) ||
           (y < side - 1 && Brick(x, y + 1) == v) || (y > 0 && Brick(x, y - 1) == v);
}

int PlayBoard::Click(int x, int y, std::vector<int>* collected) {
    if (!IsValid(x, y)) return 0;
    std::uint64_t touched = 0;
    const int removed = FloodRemove(x, y, touched);
    CleanArray(touched, collected);
    return removed;
}

// The group as one 4-connected component of its value. The engine walks it depth first
// in a fixed order; the order only decides how the removal is drawn, the set of cells
// and what each becomes are the same.
int PlayBoard::FloodRemove(int x, int y, std::uint64_t& touched) {
    const std::int16_t c = Brick(x, y);
    std::array<std::int16_t, MaxBricks * MaxBricks> stack;
    int top = 0;
    int removed = 0;
    auto take = [&](int cx, int cy) {
        const int i = Index(cx, cy);
        bricks[i] = (spells[i] >= 0 && c <= 9) ? static_cast<std::int16_t>(spells[i] + FirstSpellCell)
                                                : CellEmpty;
        ++removed;
        touched |= std::uint64_t{1} << cx;
        stack[top++] = static_cast<std::int16_t>(i);
    };
    take(x, y);
    while (top > 0) {
        const int i = stack[--top];
        const int cx = i / MaxBricks, cy = i % MaxBricks;
        if (cx + 1 < side && Brick(cx + 1, cy) == c) take(cx + 1, cy);
        if (cx > 0 && Brick(cx - 1, cy) == c) take(cx - 1, cy);
        if (cy > 0 && Brick(cx, cy - 1) == c) take(cx, cy - 1);
        if (cy + 1 < side && Brick(cx, cy + 1) == c) take(cx, cy + 1);
    }
    return removed;
}

// Columns fall and close up to the left; a spell number over an empty cell is dropped.
// A board that has never fallen (cells in the air at the start) is compacted whole.
// On one that has, only the columns in `touched` can have gaps and the columns from
// `used` on are empty: each touched column falls on its own, and the columns right of
// the first that emptied move left, each as one block of memory (a column is stored
// top row first, in a row of MaxBricks cells).
void PlayBoard::Compact(std::uint64_t touched) {
    if (!compact) {
        touched = 0;
        used = side;
        for (int x = 0; x < side; ++x) touched |= std::uint64_t{1} << x;
    }
    int firstEmpty = used;
    for (int x = 0; x < used; ++x) {
        if (!(touched >> x & 1u)) continue;
        int row = side - 1;
        for (int y = side - 1; y >= 0; --y) {
            const int at = Index(x, y);
            if (bricks[at] == CellEmpty) continue;
            if (y != row) {
                const int to = Index(x, row);
                bricks[to] = bricks[at];
                spells[to] = spells[at];
            }
            --row;
        }
        for (; row >= 0; --row) {
            bricks[Index(x, row)] = CellEmpty;
            spells[Index(x, row)] = NoSpell;
        }
        if (bricks[Index(x, side - 1)] == CellEmpty) firstEmpty = std::min(firstEmpty, x);
    }
    int target = firstEmpty;
    for (int x = firstEmpty; x < used; ++x) {
        if (bricks[Index(x, side - 1)] == CellEmpty) continue;
        std::copy_n(&bricks[Index(x, 0)], side, &bricks[Index(target, 0)]);
        std::copy_n(&spells[Index(x, 0)], side, &spells[Index(target, 0)]);
        ++target;
    }
    for (int x = target; x < used; ++x) {
        std::fill_n(&bricks[Index(x, 0)], side, CellEmpty);
        std::fill_n(&spells[Index(x, 0)], side, NoSpell);
    }
    compact = true;
    used = target;
}

void PlayBoard::CleanArray(std::uint64_t touched, std::vector<int>* collected) {
    Compact(touched);
    for (;;) {
        int found = -1;
        for (int x = 0; x < used && found < 0; ++x)
            if (Brick(x, side - 1) > 10) found = x;
        if (found < 0) return;
        if (collected) collected->push_back(Brick(found, side - 1) - FirstSpellCell);
        bricks[Index(found, side - 1)] = CellEmpty;
        spells[Index(found, side - 1)] = NoSpell;
        Compact(std::uint64_t{1} << found);
    }
}

bool PlayBoard::Cleared() const { return Occupied() == 0; }

int PlayBoard::Occupied() const {
    int n = 0;
    for (int x = 0; x < (compact ? used : side); ++x)
        for (int y = 0; y < side; ++y)
            if (Brick(x, y) >= 0) ++n;
    return n;
}

bool PlayBoard::HasMoves() const {
    for (int x = 0; x < side; ++x)
        for (int y = 0; y < side; ++y) {
            const auto v = Brick(x, y);
            if (v < 0) continue;
            if ((x + 1 < side && Brick(x + 1, y) == v) || (y + 1 < side && Brick(x, y + 1) == v)) return true;
        }
    return false;
}

void PlayBoard::FindGroups(std::vector<Group>& out, int* singles) const {
    out.clear();
    std::array<bool, MaxBricks * MaxBricks> seen{};
    std::array<std::int16_t, MaxBricks * MaxBricks> stack{};
    int lone = 0;
    for (int x = 0; x < side; ++x)
        for (int y = 0; y < side; ++y) {
            const int start = Index(x, y);
            const auto v = bricks[start];
            if (seen[start] || v < 0 || v > 10) continue;
            int top = 0, size = 0;
            stack[top++] = static_cast<std::int16_t>(start);
            seen[start] = true;
            while (top > 0) {
                const int i = stack[--top];
                ++size;
                const int cx = i / MaxBricks, cy = i % MaxBricks;
                const int next[4][2] = {{cx + 1, cy}, {cx - 1, cy}, {cx, cy - 1}, {cx, cy + 1}};
                for (const auto& n : next) {
                    if (!OnBoard(n[0], n[1])) continue;
                    const int j = Index(n[0], n[1]);
                    if (!seen[j] && bricks[j] == v) {
                        seen[j] = true;
                        stack[top++] = static_cast<std::int16_t>(j);
                    }
                }
            }
            if (size >= 2) out.push_back(Group{Cell{x, y}, v, size});
            else ++lone;
        }
    if (singles) *singles = lone;
}

std::array<int, 12> PlayBoard::ValueCounts() const {
    std::array<int, 12> counts{};
    for (int x = 0; x < side; ++x)
        for (int y = 0; y < side; ++y) {
            const auto v = Brick(x, y);
            if (v >= 0) ++counts[static_cast<std::size_t>(std::min<int>(v, 11))];
        }
    return counts;
}

std::uint64_t PlayBoard::Hash() const {
    // The columns from `used` on of a board that has fallen are empty and left out.
    const int columns = compact ? used : side;
    std::uint64_t h = 1469598103934665603ull ^ static_cast<std::uint64_t>(side);
    for (int x = 0; x < columns; ++x)
        for (int y = 0; y < side; ++y) {
            const int i = Index(x, y);
            h = (h ^ static_cast<std::uint16_t>(bricks[i])) * 1099511628211ull;
            h = (h ^ static_cast<std::uint16_t>(spells[i] + 7)) * 1099511628211ull;
        }
    return h;
}

} // namespace tolva::levelgen
