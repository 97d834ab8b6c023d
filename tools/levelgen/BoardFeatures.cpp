#include "BoardFeatures.h"

namespace tolva::levelgen {

double BoardFeatures::Estimate(const Weights& w) const {
    return w.group * groups + w.inColumn * singlesInColumn + w.beside * singlesBeside + w.far * singlesFar +
           w.cell * occupied + w.colour * coloursLeft +
           w.distance * singleDistance;
}

namespace {

constexpr int FarthestLook = 100;

// How many bricks must go, at the least, before the single at (x, y) meets a brick of
// its colour: those between them in its own column, or for a brick in another column,
// every brick of the columns between (they must all go for the two columns to stand
// side by side) and the difference of their heights (the higher one must come down).
// Counted up to FarthestLook; a colour not found that near costs FarthestLook.
int DistanceToColour(const PlayBoard& board, int x, int y, int columns, const std::array<int, MaxBricks>& top) {
    const int side = board.Side();
    const auto v = board.Brick(x, y);
    int best = FarthestLook;
    for (int yy = y - 2; yy >= top[static_cast<std::size_t>(x)] && y - yy - 1 < best; --yy)
        if (board.Brick(x, yy) == v) best = y - yy - 1;
    for (int yy = y + 2; yy < side && yy - y - 1 < best; ++yy)
        if (board.Brick(x, yy) == v) best = yy - y - 1;
    for (int dir : {-1, 1}) {
        int between = 0;
        for (int xx = x + dir; xx >= 0 && xx < columns && between < best; xx += dir) {
            const int colTop = top[static_cast<std::size_t>(xx)];
            // Outward from the single's own row, as far as the best so far allows.
            for (int d = 0; between + d < best; ++d) {
                const int up = y - d, down = y + d;
                if (up < colTop && down >= side) break;
                if ((up >= colTop && board.Brick(xx, up) == v) || (down < side && board.Brick(xx, down) == v)) {
                    best = between + d;
                    break;
                }
            }
            between += side - colTop;
        }
    }
    return best;
}

} // namespace

// One pass down the columns in use. The groups are counted without a flood fill: in a
// set of cells joined side to side, components = cells - joins + filled 2 x 2 squares,
// less one for each hole the set rings round. A ring of one colour round other bricks is
// rare and only makes the count one low, which a search estimate can bear.
BoardFeatures MeasureBoard(const PlayBoard& board) {
    BoardFeatures f;
    const int side = board.Side();
    // A compacted board has its columns on the left, each standing on the bottom row.
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
    for (int c : counts) {
        if (c == 1) f.dead = true;
        if (c > 0) ++f.coloursLeft;
    }
    int paired = 0, joins = 0, squares = 0;
    for (int x = 0; x < columns; ++x) {
        const bool hasRight = x + 1 < columns;
        for (int y = top[static_cast<std::size_t>(x)]; y < side; ++y) {
            const auto v = board.Brick(x, y);
            if (v > 10) continue;
            const bool right = hasRight && board.Brick(x + 1, y) == v;
            const bool down = y + 1 < side && board.Brick(x, y + 1) == v;
            const bool left = x > 0 && board.Brick(x - 1, y) == v;
            const bool up = y > 0 && board.Brick(x, y - 1) == v;
            if (right || down || left || up) {
                ++paired;
                joins += right + down;
                squares += right && down && board.Brick(x + 1, y + 1) == v;
                continue;
            }
            f.singleDistance += DistanceToColour(board, x, y, columns, top);
            const auto c = static_cast<std::size_t>(v);
            if (inColumn[static_cast<std::size_t>(x + 1)][c] > 1) ++f.singlesInColumn;
            else if (inColumn[static_cast<std::size_t>(x)][c] + inColumn[static_cast<std::size_t>(x + 2)][c] > 0)
                ++f.singlesBeside;
            else ++f.singlesFar;
        }
    }
    f.groups = paired - joins + squares;
    return f;
}

} // namespace tolva::levelgen
