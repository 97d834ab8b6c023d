// The board looks for moves by itself: the hint key, and the cells that automatic play
// clicks. All finders scan column by column from the top down and share one move test.
//
// The move test looks right and down only up to xBricks - 1, with a strict test, so it
// stops one short of the last column and the last row. A pair lying in the last two
// columns (or rows) therefore passes only from its right (or lower) cell, looking back.
// Every cell that passes starts a group, and every group holds a cell that passes, so the
// finders never miss a move; they only prefer some cells of a group over others.
#include "board/TolvaBoard.h"

#include "support/ZenkorModule.h"

#include <utility>
#include <vector>

namespace tolva {

namespace {

using CellList = std::vector<std::pair<std::int16_t, std::int16_t>>;

} // namespace

bool TolvaBoard::PassesMoveTest(int x, int y) const {
    const std::int16_t v = Bricks(x, y);
    if (v < 0) return false;
    const int n = xBricks_;
    if (x + 1 < n - 1 && Bricks(x + 1, y) == v) return true;
    if (x - 1 >= 0 && Bricks(x - 1, y) == v) return true;
    if (y - 1 >= 0 && Bricks(x, y - 1) == v) return true;
    return y + 1 < n - 1 && Bricks(x, y + 1) == v;
}

void TolvaBoard::ShowHint() {
    float hx = -1, hy = -1;
    GetFirstMoveableBrick(hx, hy);
    if (hx < 0) return;   // no move: no sound, no animation
    const double w = platform_.Surface.ScaleWidth() / xBricks_;
    const double h = platform_.Surface.ScaleHeight() / xBricks_;
    PlayRefusalSound();   // the hint shares its sound with a refused click
    NeedResource(BoardResource::Hint);
    aniHint_->SetBounds({hx * w, hy * h, w, h});
    aniHint_->SetVisible(true);
    aniHint_->Play(1);    // hides itself at its finish
}

void TolvaBoard::GetFirstMoveableBrick(float& x, float& y) const {
    for (int cx = 0; cx < xBricks_; ++cx)
        for (int cy = 0; cy < xBricks_; ++cy)
            if (PassesMoveTest(cx, cy)) {
                x = static_cast<float>(cx);
                y = static_cast<float>(cy);
                return;
            }
}

namespace {

// Entry round(random * k) of k + 1 candidates, ties to the even one: the first and the
// last entry are half as likely as the others. With no candidate x and y stay as they are.
void PickCandidate(const CellList& list, Random& rng, float& x, float& y) {
    if (list.empty()) return;
    const int k = static_cast<int>(list.size()) - 1;
    int i = CInt(rng.Next() * k);
    if (i < 0 || i > k) i = k;   // only a random source outside [0, 1) could get here
    x = list[static_cast<std::size_t>(i)].first;
    y = list[static_cast<std::size_t>(i)].second;
}

} // namespace

void TolvaBoard::GetRandomMoveableBrick(float& x, float& y) {
    CellList list;
    for (int cx = 0; cx < xBricks_; ++cx)
        for (int cy = 0; cy < xBricks_; ++cy)
            if (PassesMoveTest(cx, cy)) list.emplace_back(cx, cy);
    PickCandidate(list, platform_.Rng, x, y);
}

void TolvaBoard::GetRandomBrick(float& x, float& y) {
    // Any occupied cell, needing no neighbour; the last two columns are left out.
    CellList list;
    for (int cx = 0; cx < xBricks_; ++cx)
        for (int cy = 0; cy < xBricks_; ++cy)
            if (Bricks(cx, cy) >= 0 && cx + 1 < xBricks_ - 1) list.emplace_back(cx, cy);
    PickCandidate(list, platform_.Rng, x, y);
}

} // namespace tolva
