#include "BoardFeatures.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace tolva::levelgen {

double BoardFeatures::Estimate(const Weights& w) const {
    return w.group * groups + w.inColumn * singlesInColumn + w.beside * singlesBeside + w.far * singlesFar +
           w.cell * occupied + w.colour * coloursLeft + w.distance * singleDistance;
}

namespace {

// The rows each value stands at in a column, a bit each, made the first time a look
// reaches the column and kept for the rest of one measure: a look then finds the
// nearest brick of a colour in a column with a shift and a bit count instead of a walk.
class ColourRows {
public:
    ColourRows(const PlayBoard& b, const std::array<int, MaxBricks>& t) : board(b), top(t) {}
    std::uint64_t Of(int x, int v) {
        const std::uint64_t bit = std::uint64_t{1} << x;
        if (!(ready & bit)) {
            auto& column = rows[static_cast<std::size_t>(x)];
            column.fill(0);
            for (int y = top[static_cast<std::size_t>(x)]; y < board.Side(); ++y) {
                const auto value = board.Brick(x, y);
                if (value <= 10) column[static_cast<std::size_t>(value)] |= std::uint64_t{1} << y;
            }
            ready |= bit;
        }
        return rows[static_cast<std::size_t>(x)][static_cast<std::size_t>(v)];
    }

private:
    const PlayBoard& board;
    const std::array<int, MaxBricks>& top;
    std::array<std::array<std::uint64_t, 11>, MaxBricks> rows;   // only the columns in `ready` are filled
    std::uint64_t ready = 0;
};

// Rows between y and the nearest set bit of `at` above it (-1 when none), and the
// same below it: the cells that stand between, not counting either end.
int GapAbove(std::uint64_t at, int y) {
    const std::uint64_t above = at & ((std::uint64_t{1} << y) - 1);
    return above ? y - (63 - std::countl_zero(above)) - 1 : -1;
}
int GapBelow(std::uint64_t at, int y) {
    const std::uint64_t below = at >> (y + 1);
    return below ? std::countr_zero(below) : -1;
}

// How many bricks must go, at the least, before the single at (x, y) meets a brick of
// its colour: those between them in its own column, or for a brick in another column,
// every brick of the columns between (they must all go for the two columns to stand
// side by side) and the difference of their heights (the higher one must come down).
// Looked for up to LookColumns columns away and counted up to FarthestLook; a colour
// not found that near costs FarthestLook. `reach` grows to the farthest column looked
// at on either side: the answer holds while those columns stay as they are. (A look
// that ran into the board's right end has looked at the last column, so a click that
// empties columns there changes one it looked at.)
// `values` holds each column's values (ColumnPart::values): a column without the colour
// is passed over whole, and so is the single's own column when it holds no other brick
// of its colour (`alone`).
int DistanceToColour(const PlayBoard& board, int x, int y, int columns, const std::array<int, MaxBricks>& top,
                     const std::array<unsigned, MaxBricks>& values, bool alone, ColourRows& rows,
                     std::array<int, 2>& reach) {
    const int side = board.Side();
    const auto v = board.Brick(x, y);
    int best = FarthestLook;
    if (!alone) {
        const std::uint64_t own = rows.Of(x, v);
        for (const int gap : {GapAbove(own, y), GapBelow(own, y)})
            if (gap >= 0) best = std::min(best, gap);
    }
    const int from = std::max(0, x - LookColumns), to = std::min(columns - 1, x + LookColumns);
    for (int dir : {-1, 1}) {
        int between = 0;
        int& far = reach[dir < 0 ? 0 : 1];
        for (int xx = x + dir; xx >= from && xx <= to && between < best; xx += dir) {
            far = std::max(far, (xx - x) * dir);
            const int colTop = top[static_cast<std::size_t>(xx)];
            if (values[static_cast<std::size_t>(xx)] >> v & 1u) {
                // The nearest brick of the colour to the single's own row, either way.
                const std::uint64_t at = rows.Of(xx, v);
                if (at >> y & 1u) {
                    best = std::min(best, between);
                } else {
                    const int up = GapAbove(at, y), down = GapBelow(at, y);
                    if (up >= 0) best = std::min(best, between + up + 1);
                    if (down >= 0) best = std::min(best, between + down + 1);
                }
            }
            between += side - colTop;
        }
    }
    return best;
}

// The values 0..10 that stand in column x, a bit each (none off the board's columns).
unsigned ColumnValues(const PlayBoard& board, int x, int columns, const std::array<int, MaxBricks>& top) {
    unsigned mask = 0;
    if (x < 0 || x >= columns) return mask;
    for (int y = top[static_cast<std::size_t>(x)]; y < board.Side(); ++y) {
        const auto v = board.Brick(x, y);
        if (v <= 10) mask |= 1u << v;
    }
    return mask;
}

// Column x's share of the features. It looks at the columns up to LookColumns away on
// either side and no further, which is what lets a click be measured by its columns.
// Groups are counted without a flood fill: in a set of cells joined side to side,
// components = cells - joins + filled 2 x 2 squares, less one for each hole the set
// rings round. The joins and squares of a column are those to its right and below. A
// ring of one colour round other bricks is rare and only makes the count one low,
// which a search estimate can bear.
ColumnPart MeasureColumn(const PlayBoard& board, int x, int columns, const std::array<int, MaxBricks>& top,
                         const std::array<unsigned, MaxBricks>& values, ColourRows& rows) {
    ColumnPart p;
    const int side = board.Side();
    const int colTop = top[static_cast<std::size_t>(x)];
    p.cells = side - colTop;
    const bool hasRight = x + 1 < columns;
    std::array<std::uint8_t, 11> own{};
    for (int y = colTop; y < side; ++y)
        if (board.Brick(x, y) <= 10) ++own[static_cast<std::size_t>(board.Brick(x, y))];
    const unsigned besideValues = (x > 0 ? values[static_cast<std::size_t>(x - 1)] : 0u) |
                                  (hasRight ? values[static_cast<std::size_t>(x + 1)] : 0u);
    std::array<int, 2> reach{};
    for (int y = colTop; y < side; ++y) {
        const auto v = board.Brick(x, y);
        if (v > 10) continue;
        const bool right = hasRight && board.Brick(x + 1, y) == v;
        const bool down = y + 1 < side && board.Brick(x, y + 1) == v;
        const bool left = x > 0 && board.Brick(x - 1, y) == v;
        const bool up = y > 0 && board.Brick(x, y - 1) == v;
        if (right || down || left || up) {
            ++p.paired;
            p.joins += right + down;
            p.squares += right && down && board.Brick(x + 1, y + 1) == v;
            continue;
        }
        const bool alone = own[static_cast<std::size_t>(v)] == 1;
        p.distance += DistanceToColour(board, x, y, columns, top, values, alone, rows, reach);
        if (!alone) {
            ++p.inColumn;
            continue;
        }
        if (besideValues >> v & 1u) ++p.beside;
        else ++p.far;
    }
    p.reachLeft = reach[0];
    p.reachRight = reach[1];
    p.values = values[static_cast<std::size_t>(x)];
    return p;
}

// The columns in use (a compacted board has them on the left, each standing on the
// bottom row) and the top cell of each.
int FindColumns(const PlayBoard& board, std::array<int, MaxBricks>& top) {
    const int side = board.Side();
    int columns = 0;
    while (columns < side && board.Brick(columns, side - 1) >= 0) ++columns;
    for (int x = 0; x < columns; ++x) {
        int y = side - 1;
        while (y >= 0 && board.Brick(x, y) >= 0) --y;
        top[static_cast<std::size_t>(x)] = y + 1;
    }
    return columns;
}

BoardFeatures Total(const ColumnParts& parts) {
    BoardFeatures f;
    int paired = 0, joins = 0, squares = 0;
    for (int x = 0; x < parts.columns; ++x) {
        const ColumnPart& p = parts.parts[static_cast<std::size_t>(x)];
        f.occupied += p.cells;
        paired += p.paired;
        joins += p.joins;
        squares += p.squares;
        f.singlesInColumn += p.inColumn;
        f.singlesBeside += p.beside;
        f.singlesFar += p.far;
        f.singleDistance += p.distance;
    }
    f.groups = paired - joins + squares;
    for (int c : parts.counts) {
        if (c == 1) f.dead = true;
        if (c > 0) ++f.coloursLeft;
    }
    return f;
}

bool SameColumn(const PlayBoard& a, int ax, const PlayBoard& b, int bx) {
    return std::memcmp(a.Column(ax), b.Column(bx), sizeof(std::int16_t) * static_cast<std::size_t>(a.Side())) == 0;
}

} // namespace

BoardFeatures MeasureBoard(const PlayBoard& board, ColumnParts& parts) {
    std::array<int, MaxBricks> top{};
    parts.columns = FindColumns(board, top);
    parts.counts.fill(0);
    std::array<unsigned, MaxBricks> values{};
    for (int x = 0; x < parts.columns; ++x) values[static_cast<std::size_t>(x)] = ColumnValues(board, x, parts.columns, top);
    ColourRows rows(board, top);
    for (int x = 0; x < parts.columns; ++x) {
        parts.parts[static_cast<std::size_t>(x)] = MeasureColumn(board, x, parts.columns, top, values, rows);
        for (int y = top[static_cast<std::size_t>(x)]; y < board.Side(); ++y) {
            const auto v = board.Brick(x, y);
            if (v <= 10) ++parts.counts[static_cast<std::size_t>(v)];
        }
    }
    return Total(parts);
}

BoardFeatures MeasureBoard(const PlayBoard& board) {
    ColumnParts parts;
    return MeasureBoard(board, parts);
}

BoardFeatures MeasureChild(const PlayBoard& parent, const ColumnParts& parentParts, const PlayBoard& child,
                           const Group& taken, ColumnParts& parts) {
    // The columns the click changed: those from the first that differs from the left
    // up to the last that differs from the right; the ones right of it only moved left
    // by the columns that emptied.
    std::array<int, MaxBricks> top{};
    const int side = child.Side();
    int columns = 0;
    while (columns < side && child.Brick(columns, side - 1) >= 0) ++columns;
    const int oldColumns = parentParts.columns;
    const int shift = oldColumns - columns;
    int first = 0;
    while (first < columns && SameColumn(parent, first, child, first)) ++first;
    int lastNew = columns - 1;   // in the child's columns; the parent's is lastNew + shift
    while (lastNew >= first && SameColumn(parent, lastNew + shift, child, lastNew)) --lastNew;
    std::array<unsigned, MaxBricks> values{};
    for (int x = 0; x < columns; ++x) {
        if (x < first || x > lastNew) {
            const int old = x < first ? x : x + shift;
            top[static_cast<std::size_t>(x)] = side - parentParts.parts[static_cast<std::size_t>(old)].cells;
            values[static_cast<std::size_t>(x)] = parentParts.parts[static_cast<std::size_t>(old)].values;
        } else {
            int y = side - 1;
            while (y >= 0 && child.Brick(x, y) >= 0) --y;
            top[static_cast<std::size_t>(x)] = y + 1;
            values[static_cast<std::size_t>(x)] = ColumnValues(child, x, columns, top);
        }
    }
    parts.columns = columns;
    parts.counts = parentParts.counts;
    const auto colour = static_cast<std::size_t>(taken.value);
    parts.counts[colour] = std::max(0, parts.counts[colour] - taken.size);
    // The changed columns and their neighbours are measured again, and so is every
    // column whose singles looked as far as a changed one; the rest are copied.
    ColourRows rows(child, top);
    for (int x = 0; x < columns; ++x) {
        const int old = x < first ? x : x + shift;
        const ColumnPart& was = parentParts.parts[static_cast<std::size_t>(old)];
        const bool redo = (x >= first - 1 && x <= lastNew + 1) || (x < first && x + was.reachRight >= first) ||
                          (x > lastNew && x - was.reachLeft <= lastNew);
        if (redo) {
            parts.parts[static_cast<std::size_t>(x)] = MeasureColumn(child, x, columns, top, values, rows);
        } else {
            parts.parts[static_cast<std::size_t>(x)] = was;
        }
    }
    return Total(parts);
}

} // namespace tolva::levelgen
