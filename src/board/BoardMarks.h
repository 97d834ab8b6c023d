#pragma once
// BoardMarks: what is drawn over the bricks to show the player where a click would land,
// before it lands: the outline of the group a left click would take away, and the
// keyboard's cursor. The marks are no part of the board's state: the rules never read
// them, and a surface that draws none plays exactly the same game.
//
// GroupOfCell finds the group without touching the grids, by the same flood as the
// removal (four neighbours, one value, within the board's side), so the outline always
// covers exactly the bricks the click would take.
#include "shared/LevelModule.h"

#include <bitset>
#include <cstdint>
#include <optional>
#include <vector>

namespace tolva {

class TolvaBoard;

struct BoardCell {
    std::int16_t X = 0;
    std::int16_t Y = 0;
    bool operator==(const BoardCell&) const = default;
};

struct BoardMarks {
    // The board's side when the marks were made, so that a surface maps cells to pixels
    // as the board does.
    std::int16_t Side = 0;
    // The cells of the outlined group; empty when nothing is outlined.
    std::vector<BoardCell> Group;
    // The keyboard's cursor, while it is shown.
    std::optional<BoardCell> Cursor;

    // The points a click on the outlined group would score: the square of its size.
    double Points() const { return static_cast<double>(Group.size()) * static_cast<double>(Group.size()); }
    bool operator==(const BoardMarks&) const = default;
};

// Where the marks are drawn: the board's surface on screen.
class BoardMarksView {
public:
    virtual ~BoardMarksView() = default;
    virtual void ShowMarks(const BoardMarks& marks) = 0;
};

// Who makes the marks, as the surface sees it: told where the pointer is, and asked to
// look at the board again after every paint, since any paint may follow a change.
class BoardMarksSource {
public:
    virtual ~BoardMarksSource() = default;
    // The pointer is over the board at a pixel of its surface.
    virtual void PointerAtPixel(float X, float Y) = 0;
    virtual void PointerLeft() = 0;
    virtual void Refresh() = 0;
};

// The colour bricks a plain left click on (x, y) would take away now: the group of two or
// more of the cell's colour, in the order the flood meets them. Empty for a lone brick, a
// spell or the reserved cell, a hole, or a cell outside the board's side.
std::vector<BoardCell> GroupOfCell(const TolvaBoard& board, int x, int y);

} // namespace tolva
