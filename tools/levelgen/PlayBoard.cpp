#include "PlayBoard.h"

#include <algorithm>

namespace tolva::levelgen {

PlayBoard::PlayBoard() {
    bricks.fill(CellEmpty);
    spells.fill(NoSpell);
}

PlayBoard::PlayBoard(const LevelRecord& level) {
    side = std::clamp<int>(level.levelbricks, 10, MaxBricks);
    bricks = level.BrickGrid.cells;
    spells = level.SpellGrid.cells;
}

void PlayBoard::SetCell(int x, int y, std::int16_t brick, std::int16_t spell) {
    compact = false;
    bricks[Index(x, y)] = brick;
    spells[Index(x, y)] = spell;
}

void PlayBoard::SetSide(int newSide) {
    side = std::clamp(newSide, 1, MaxBricks);
    compact = false;
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
    int leftmost = x;
    const int removed = FloodRemove(x, y, leftmost);
    CleanArray(leftmost, collected);
    return removed;
}

// The group as one 4-connected component of its value. The engine walks it depth first
// in a fixed order; the order only decides how the removal is drawn, the set of cells
// and what each becomes are the same.
int PlayBoard::FloodRemove(int x, int y, int& leftmost) {
    const std::int16_t c = Brick(x, y);
    std::array<std::int16_t, MaxBricks * MaxBricks> stack;
    int top = 0;
    int removed = 0;
    auto take = [&](int cx, int cy) {
        const int i = Index(cx, cy);
        bricks[i] = (spells[i] >= 0 && c <= 9) ? static_cast<std::int16_t>(spells[i] + FirstSpellCell)
                                                : CellEmpty;
        ++removed;
        leftmost = std::min(leftmost, cx);
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
// On a board that has fallen before, the columns left of `fromColumn` are untouched and
// those from `used` on are empty, so only the ones between are looked at.
void PlayBoard::Compact(int fromColumn) {
    const int from = compact ? fromColumn : 0;
    const int limit = compact ? used : side;
    int target = from;
    for (int x = from; x < limit; ++x) {
        int row = side - 1;
        bool any = false;
        for (int y = side - 1; y >= 0; --y) {
            const int at = Index(x, y);
            if (bricks[at] == CellEmpty) continue;
            const int to = Index(target, row);
            const auto b = bricks[at], s = spells[at];
            if (at != to) {
                bricks[at] = CellEmpty;
                spells[at] = NoSpell;
            }
            bricks[to] = b;
            spells[to] = s;
            --row;
            any = true;
        }
        for (; row >= 0; --row) {
            bricks[Index(target, row)] = CellEmpty;
            spells[Index(target, row)] = NoSpell;
        }
        if (any) ++target;
    }
    for (int x = target; x < limit; ++x)
        for (int y = 0; y < side; ++y) {
            bricks[Index(x, y)] = CellEmpty;
            spells[Index(x, y)] = NoSpell;
        }
    compact = true;
    used = target;
}

void PlayBoard::CleanArray(int fromColumn, std::vector<int>* collected) {
    Compact(fromColumn);
    for (;;) {
        int found = -1;
        for (int x = 0; x < side && found < 0; ++x)
            if (Brick(x, side - 1) > 10) found = x;
        if (found < 0) return;
        if (collected) collected->push_back(Brick(found, side - 1) - FirstSpellCell);
        bricks[Index(found, side - 1)] = CellEmpty;
        spells[Index(found, side - 1)] = NoSpell;
        Compact(found);
    }
}

bool PlayBoard::Cleared() const { return Occupied() == 0; }

int PlayBoard::Occupied() const {
    int n = 0;
    for (int x = 0; x < side; ++x)
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
    std::uint64_t h = 1469598103934665603ull ^ static_cast<std::uint64_t>(side);
    for (int x = 0; x < side; ++x)
        for (int y = 0; y < side; ++y) {
            const int i = Index(x, y);
            h = (h ^ static_cast<std::uint16_t>(bricks[i])) * 1099511628211ull;
            h = (h ^ static_cast<std::uint16_t>(spells[i] + 7)) * 1099511628211ull;
        }
    return h;
}

} // namespace tolva::levelgen
