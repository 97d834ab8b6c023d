#include "BoardFeatures.h"


namespace tolva::levelgen {

// The weights were tuned on the shipped sets: a single far from its colour costs as much
// as sixteen groups, and cells still on the board count a little, so that of two boards
// at the same depth the one that took larger groups goes first.
double BoardFeatures::Estimate() const {
    return 1.0 * groups + 2.0 * singlesInColumn + 4.0 * singlesBeside + 16.0 * singlesFar + 0.3 * occupied;
}

BoardFeatures MeasureBoard(const PlayBoard& board, FeatureScratch& scratch) {
    BoardFeatures f;
    const int side = board.Side();
    // The columns in use: a compacted board has them all on the left, standing on the
    // bottom row. How many of each value every column holds, for the singles below.
    int columns = 0;
    while (columns < side && board.Brick(columns, side - 1) >= 0) ++columns;
    std::array<std::array<std::uint8_t, 11>, MaxBricks + 2> inColumn{};
    std::array<int, 11> counts{};
    std::array<int, MaxBricks> top{};
    for (int x = 0; x < columns; ++x) {
        int y = side - 1;
        for (; y >= 0; --y) {
            const auto v = board.Brick(x, y);
            if (v < 0) break;
            ++f.occupied;
            if (v <= 10) {
                ++inColumn[static_cast<std::size_t>(x + 1)][static_cast<std::size_t>(v)];
                ++counts[static_cast<std::size_t>(v)];
            }
        }
        top[static_cast<std::size_t>(x)] = y + 1;
    }
    for (int c : counts)
        if (c == 1) f.dead = true;
    for (int x = 0; x < columns; ++x)
        for (int y = top[static_cast<std::size_t>(x)]; y < side; ++y) scratch.seen[static_cast<std::size_t>(x * MaxBricks + y)] = 0;
    for (int x = 0; x < columns; ++x)
        for (int y = top[static_cast<std::size_t>(x)]; y < side; ++y) {
            const auto v = board.Brick(x, y);
            const int start = x * MaxBricks + y;
            if (v > 10 || scratch.seen[static_cast<std::size_t>(start)]) continue;
            const bool paired = (x + 1 < side && board.Brick(x + 1, y) == v) || (x > 0 && board.Brick(x - 1, y) == v) ||
                                (y > 0 && board.Brick(x, y - 1) == v) || (y + 1 < side && board.Brick(x, y + 1) == v);
            if (!paired) {
                const auto c = static_cast<std::size_t>(v);
                if (inColumn[static_cast<std::size_t>(x + 1)][c] > 1) ++f.singlesInColumn;
                else if (inColumn[static_cast<std::size_t>(x)][c] + inColumn[static_cast<std::size_t>(x + 2)][c] > 0)
                    ++f.singlesBeside;
                else ++f.singlesFar;
                continue;
            }
            int depth = 0, size = 0;
            scratch.stack[static_cast<std::size_t>(depth++)] = static_cast<std::int16_t>(start);
            scratch.seen[static_cast<std::size_t>(start)] = 1;
            while (depth > 0) {
                const int i = scratch.stack[static_cast<std::size_t>(--depth)];
                ++size;
                const int cx = i / MaxBricks, cy = i % MaxBricks;
                auto visit = [&](int nx, int ny) {
                    const int j = nx * MaxBricks + ny;
                    if (board.Brick(nx, ny) == v && !scratch.seen[static_cast<std::size_t>(j)]) {
                        scratch.seen[static_cast<std::size_t>(j)] = 1;
                        scratch.stack[static_cast<std::size_t>(depth++)] = static_cast<std::int16_t>(j);
                    }
                };
                if (cx + 1 < side) visit(cx + 1, cy);
                if (cx > 0) visit(cx - 1, cy);
                if (cy > 0) visit(cx, cy - 1);
                if (cy + 1 < side) visit(cx, cy + 1);
            }
            ++f.groups;
            if (size > f.largestGroup) f.largestGroup = size;
        }
    return f;
}

} // namespace tolva::levelgen
