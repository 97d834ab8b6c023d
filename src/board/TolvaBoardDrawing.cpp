// What the board paints. The rules decide which cells a pass paints and with which
// picture; the surface of the platform only carries it out.
//
// A cell is painted with its brick picture Gfx(value), its spell picture ss(value - 11),
// or the piece of the background that lies under it; the reserved value 10, and values
// above 16 that no spell stands behind, have no picture and paint nothing.
//
// The whole-board pass keeps in DrawnBricks what it last painted in each cell, and may
// skip a cell whose value has not changed since: only when the caller asks for it (Fast)
// and the player allows it (DrawUsingBackBuffer). This skip is what keeps a move cheap,
// as a whole pass runs after every move and several times in a spell. The single-cell
// form leaves DrawnBricks alone, so the next whole pass repaints a cell it has touched.
#include "board/TolvaBoard.h"

namespace tolva {

void TolvaBoard::DrawBoard(std::int16_t setX, std::int16_t SetY, bool Fast) {
    if (setX != -1) {
        if (setX >= 0 && setX < MaxBricks && SetY >= 0 && SetY < MaxBricks) PaintCell(setX, SetY);
        return;
    }
    const bool mayskip = Fast && settings_.DrawUsingBackBuffer;
    for (int y = 0; y < xBricks_; ++y) {
        for (int x = 0; x < xBricks_; ++x) {
            const float now = Bricks(x, y);
            if (mayskip && DrawnBricks(x, y) == now) continue;
            DrawnBricks(x, y) = now;
            PaintCell(x, y);
        }
    }
}

void TolvaBoard::PaintCell(int x, int y) {
    // The cells fill the surface whatever the side; pictures are stretched to the cell.
    const double w = platform_.Surface.ScaleWidth() / xBricks_;
    const double h = platform_.Surface.ScaleHeight() / xBricks_;
    const SurfaceRect cell{x * w, y * h, w, h};
    const std::int16_t v = Bricks(x, y);
    if (v < 0) {
        platform_.Surface.PaintPicturePart(*tmpBack_, cell, cell);
    } else if (v < ReservedCell) {
        platform_.Surface.PaintPicture(*gfx_[static_cast<std::size_t>(v)], cell);
    } else if (v >= FirstSpellCell && v < FirstSpellCell + SpellCount) {
        platform_.Surface.PaintPicture(*ss_[static_cast<std::size_t>(v - FirstSpellCell)], cell);
    }
}

void TolvaBoard::UserControl_Paint() {
    if (BoardReady) DrawBoard(-1, -1, false);
}

void TolvaBoard::UserControl_Resize() {
    // The board follows the size of its background; with no background yet it keeps its own.
    if (!autoSize_ || !tmpBack_->HasPicture()) return;
    platform_.Surface.Resize(tmpBack_->ScaleWidth(), tmpBack_->ScaleHeight());
}

void TolvaBoard::SetBackPicture(const PictureHolder& picture) {
    tmpBack_->Assign(picture);
    platform_.Surface.SetBackPicture(*tmpBack_);
    UserControl_Resize();
}

} // namespace tolva
