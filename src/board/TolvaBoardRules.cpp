// Group search and compaction: how a pixel becomes a cell, what counts as a group, how a
// group is taken off (Hunt), and how the board closes up and judges the end of a move
// (CleanArray). BoardClick strings them together into the plain removal.
//
// Hunt is a depth-first flood by recursion with a fixed order (right, left, up, down).
// The order is visible: with HuntDelay set, the bricks disappear one by one in exactly
// this order. The recursion is at most as deep as the group, 1600 cells.
//
// CleanArray copies the columns into the work grids and back before it raises any event,
// so that no handler ever sees a half-copied board. It collects one spell per pass and
// calls itself for the next; handlers of NewSpell may let events run, so the pass may be
// re-entered from a click, which is why a collected cell is cleared before the event.
#include "board/TolvaBoard.h"

#include "support/ZenkorModule.h"

#include <cmath>

namespace tolva {

namespace {

constexpr int LastCell = MaxBricks - 1;

bool OnGrid(int x, int y) { return x >= 0 && x <= LastCell && y >= 0 && y <= LastCell; }

// A spell lying on the board: 11 + a spell number 0..5. Higher values have no spell
// behind them and lie on the board like the reserved value 10.
bool IsSpellCell(std::int16_t v) { return v >= FirstSpellCell && v < FirstSpellCell + SpellCount; }

// Pixel to cell: a cell owns the pixels X with x * w < X <= (x + 1) * w. Computed as
// X * side / size rather than X / (size / side), so that a pixel on a cell edge is judged
// exactly and does not slip into the next cell by a rounding error.
float PixelToCell(float pixel, double size, int side) {
    if (!(size > 0) || !std::isfinite(pixel)) return -1;
    double cells = static_cast<double>(pixel) * side / size;
    // Far off the board is off the board; keep the value small enough for whole numbers.
    cells = std::fmax(-1e6, std::fmin(1e6, cells));
    return static_cast<float>(Ceil(cells) - 1);
}

} // namespace

float TolvaBoard::GetX(float X) const { return PixelToCell(X, platform_.Surface.ScaleWidth(), xBricks_); }

float TolvaBoard::GetY(float Y) const { return PixelToCell(Y, platform_.Surface.ScaleHeight(), xBricks_); }

std::int16_t TolvaBoard::GetBrick(double x, double y) const {
    if (!(x >= 0 && x <= LastCell && y >= 0 && y <= LastCell)) return 0;
    return Bricks(CInt(x), CInt(y));
}

bool TolvaBoard::IsValid(int x, int y) const {
    if (!OnGrid(x, y)) return false;
    const std::int16_t v = Bricks(x, y);
    if (v == CellEmpty) return false;
    const int n = xBricks_;
    return (x < n - 1 && Bricks(x + 1, y) == v) || (x > 0 && Bricks(x - 1, y) == v) ||
           (y < n - 1 && Bricks(x, y + 1) == v) || (y > 0 && Bricks(x, y - 1) == v);
}

void TolvaBoard::Hunt(int x, int y) {
    if (!OnGrid(x, y)) return;
    const std::int16_t c = Bricks(x, y);
    Bricks(x, y) = CellEmpty;
    // A colour brick uncovers the spell hidden under it; the number stays in Spells.
    const std::int16_t hidden = Spells(x, y);
    if (hidden >= 0 && hidden < SpellCount && c <= 9) Bricks(x, y) = static_cast<std::int16_t>(FirstSpellCell + hidden);
    if (HuntDelay > 0) {
        platform_.Loop.Pause(HuntDelay);
        DrawBoard(static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), false);
    }
    ++RemovedBricks;

    // Each walk tests its next cell afresh after the recursion before it: a neighbour the
    // recursion has taken no longer holds c, and the walk stops there.
    const int n = xBricks_;
    for (int i = x + 1; i <= n - 1 && i <= LastCell; ++i) {
        if (Bricks(i, y) != c) break;
        Hunt(i, y);
    }
    for (int i = 1; i <= x; ++i) {
        if (Bricks(x - i, y) != c) break;
        Hunt(x - i, y);
    }
    for (int i = 1; i <= n - 1 && y - i >= 0; ++i) {
        if (Bricks(x, y - i) != c) break;
        Hunt(x, y - i);
    }
    for (int i = y + 1; i <= n - 1 && i <= LastCell; ++i) {
        if (Bricks(x, i) != c) break;
        Hunt(x, i);
    }
}

bool TolvaBoard::IsColEmpty(int Col) const {
    if (Col < 0 || Col > LastCell) return true;
    for (int y = 0; y < xBricks_; ++y)
        if (Bricks(Col, y) != CellEmpty) return false;
    return true;
}

bool TolvaBoard::CheckIfFinished() const {
    for (int x = 0; x < xBricks_; ++x)
        for (int y = 0; y < xBricks_; ++y)
            if (Bricks(x, y) >= 0) return false;
    return true;
}

bool TolvaBoard::HasMoves() const {
    const int n = xBricks_;
    for (int x = 0; x < n; ++x) {
        for (int y = 0; y < n; ++y) {
            const std::int16_t v = Bricks(x, y);
            if (v < 0) continue;
            if ((x + 1 < n && Bricks(x + 1, y) == v) || (y + 1 < n && Bricks(x, y + 1) == v)) return true;
        }
    }
    return false;
}

void TolvaBoard::CleanArray() {
    const int n = xBricks_;
    // Each column falls onto the bottom row keeping its order; each column that holds
    // anything goes to the next free place from the left. A number in Spells over an
    // empty cell is not copied: it is gone.
    for (int x = 0; x < n; ++x)
        for (int y = 0; y < n; ++y) {
            WorkBricks(x, y) = CellEmpty;
            WorkSpells(x, y) = NoSpell;
        }
    int c = -1;
    for (int x = 0; x < n; ++x) {
        if (IsColEmpty(x)) continue;
        ++c;
        int r = -1;
        for (int k = 0; k < n; ++k) {
            const int y = n - 1 - k;
            if (Bricks(x, y) == CellEmpty) continue;
            ++r;
            WorkBricks(c, n - 1 - r) = Bricks(x, y);
            WorkSpells(c, n - 1 - r) = Spells(x, y);
        }
    }
    for (int x = 0; x < n; ++x)
        for (int y = 0; y < n; ++y) {
            Bricks(x, y) = WorkBricks(x, y);
            Spells(x, y) = WorkSpells(x, y);
        }

    // One spell per pass, the leftmost of the bottom row; the inner pass brings the next
    // one down and collects it. The cell is cleared before the event so that a pass
    // re-entered from the handler cannot collect the same spell twice.
    for (int x = 0; x < n; ++x) {
        const std::int16_t v = Bricks(x, n - 1);
        if (!IsSpellCell(v)) continue;
        Spells(x, n - 1) = NoSpell;
        Bricks(x, n - 1) = CellEmpty;
        const std::uint64_t start = levelStarts_;
        listener_.NewSpell(static_cast<std::int16_t>(v - FirstSpellCell));
        // The handler lets events run: a new game may have taken the board meanwhile.
        if (FlowDropped(start)) return;
        CleanArray();
        break;
    }

    if (CheckIfFinished()) {
        DrawBoard(-1, -1, true);
        if (game_.BonusTimes > MaxBonusTimes) game_.BonusTimes = MaxBonusTimes;
        const std::uint64_t start = levelStarts_;
        listener_.BonusScore(LevelBonus, game_.BonusTimes);
        game_.BonusTimes = 0;
        // The bonus display, if the owner shows one, hides BonusPic when its count is done.
        platform_.Loop.WaitUntil([this] { return !bonusPic_->Visible(); });
        // A new game or an ended one during the count: its next level is not ours to start.
        if (FlowDropped(start)) return;
        std::int16_t next = -1;
        NewGame(next);
    } else if (!HasMoves() && !GameIsOver) {
        DrawBoard(-1, -1, true);
        GameIsOver = true;
        listener_.GameOver();
    }
}

void TolvaBoard::BoardClick(int x, int y) {
    if (!IsValid(x, y)) return;
    RemovedBricks = 0;
    Hunt(x, y);
    // A group of at least one less than the side earns a step of the level bonus.
    if (RemovedBricks >= xBricks_ - 1) ++game_.BonusTimes;
    if (game_.BonusTimes > MaxBonusTimes) game_.BonusTimes = MaxBonusTimes;
    listener_.BonusTimes(game_.BonusTimes);
    SetScoreEvents();
    listener_.RemoveClick(game_.CurLevelNo);
    DrawBoard(-1, -1, true);
    if (AniDraw) {
        // Timer1 closes the board up later; a timer that already runs keeps its period.
        timer1_->SetEnabled(true);
        return;
    }
    const std::uint64_t start = levelStarts_;
    CleanArray();
    if (FlowDropped(start)) return;
    DrawBoard(-1, -1, true);
    platform_.Loop.DoEvents();
    listener_.CanDoNextMove();
}

} // namespace tolva
