#include "board/BoardMarks.h"

#include "board/TolvaBoard.h"

#include <algorithm>

namespace tolva {

std::vector<BoardCell> GroupOfCell(const TolvaBoard& board, int x, int y) {
    const int n = board.xBricks();
    std::vector<BoardCell> group;
    if (x < 0 || y < 0 || x >= n || y >= n) return group;
    const std::int16_t colour = board.Bricks(x, y);
    // Only colour bricks make a group worth showing: two spells side by side can be
    // clicked away too, but they are no group of bricks to the eye.
    if (colour < 0 || colour >= ReservedCell) return group;

    std::bitset<MaxBricks * MaxBricks> seen;
    std::vector<BoardCell> open{{static_cast<std::int16_t>(x), static_cast<std::int16_t>(y)}};
    seen.set(static_cast<std::size_t>(x * MaxBricks + y));
    while (!open.empty()) {
        const BoardCell c = open.back();
        open.pop_back();
        group.push_back(c);
        const BoardCell next[] = {{static_cast<std::int16_t>(c.X + 1), c.Y},
                                  {static_cast<std::int16_t>(c.X - 1), c.Y},
                                  {c.X, static_cast<std::int16_t>(c.Y - 1)},
                                  {c.X, static_cast<std::int16_t>(c.Y + 1)}};
        for (const BoardCell& m : next) {
            if (m.X < 0 || m.Y < 0 || m.X >= n || m.Y >= n) continue;
            const auto at = static_cast<std::size_t>(m.X * MaxBricks + m.Y);
            if (seen.test(at) || board.Bricks(m.X, m.Y) != colour) continue;
            seen.set(at);
            open.push_back(m);
        }
    }
    if (group.size() < 2) group.clear();
    return group;
}

} // namespace tolva
