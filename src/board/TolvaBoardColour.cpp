// Three operations that work on the cells without taking a group away in the usual way:
// the recolouring flood of the "TEST TUBE", the flashing marker that shows the tube's
// first cell until its second click, and the clearing of the rest of the board that
// automatic play asks for at a dead end.
//
// HuntAndSetColor has the shape of Hunt: a depth-first flood by recursion, right before
// left before up before down, painting each cell as it changes so that the colour is seen
// to spread (slowed by HuntDelay like a removal). It stops because every cell it visits
// changes to a value the flood does not follow; called with a colour the cell already
// has, it would never stop, so it does nothing then. It counts nothing and leaves Spells
// alone: a hidden spell stays under its recoloured brick.
//
// The marker's colour runs from black to white and back in steps of 30, and is kept from
// one use of the tube to the next.
#include "board/TolvaBoard.h"

#include <algorithm>

namespace tolva {

namespace {

std::int32_t Grey(std::int16_t red, std::int16_t green, std::int16_t blue) {
    auto channel = [](std::int16_t v) { return static_cast<std::int32_t>(std::clamp<int>(v, 0, 255)); };
    return channel(red) << 16 | channel(green) << 8 | channel(blue);
}

} // namespace

void TolvaBoard::HuntAndSetColor(int x, int y, std::int16_t SetColor) {
    if (x < 0 || x >= MaxBricks || y < 0 || y >= MaxBricks) return;
    const std::int16_t old = Bricks(x, y);
    if (old == SetColor) return;
    Bricks(x, y) = SetColor;
    DrawBoard(static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), false);
    if (HuntDelay > 0) platform_.Loop.Pause(HuntDelay);

    // Each walk tests its next cell afresh after the recursion before it; the recursion
    // has recoloured the reachable part, so the walk stops there.
    const int n = xBricks_;
    for (int i = x + 1; i <= n - 1 && i < MaxBricks; ++i) {
        if (Bricks(i, y) != old) break;
        HuntAndSetColor(i, y, SetColor);
    }
    for (int i = 1; i <= x; ++i) {
        if (Bricks(x - i, y) != old) break;
        HuntAndSetColor(x - i, y, SetColor);
    }
    for (int i = 1; i <= n - 1 && y - i >= 0; ++i) {
        if (Bricks(x, y - i) != old) break;
        HuntAndSetColor(x, y - i, SetColor);
    }
    for (int i = y + 1; i <= n - 1 && i < MaxBricks; ++i) {
        if (Bricks(x, i) != old) break;
        HuntAndSetColor(x, i, SetColor);
    }
}

void TolvaBoard::FlashTimer_Timer() {
    // A plus sign over four fifths of the cell, drawn straight onto the surface. The cell
    // is square, so both lines are measured with its width.
    const double w = platform_.Surface.ScaleWidth() / xBricks_;
    const double left = TestTubeX * w;
    const double top = TestTubeY * w;
    const std::int32_t colour = Grey(TestTubeFlash.Red, TestTubeFlash.Green, TestTubeFlash.Blue);
    platform_.Surface.DrawLine(left + w / 10, top + w / 2, left + w - w / 10, top + w / 2, colour);
    platform_.Surface.DrawLine(left + w / 2, top + w / 10, left + w / 2, top + w - w / 10, colour);

    const std::int16_t step = TestTubeFlash.Falling ? static_cast<std::int16_t>(-FlashStep) : FlashStep;
    TestTubeFlash.Red = static_cast<std::int16_t>(TestTubeFlash.Red + step);
    TestTubeFlash.Green = static_cast<std::int16_t>(TestTubeFlash.Green + step);
    TestTubeFlash.Blue = static_cast<std::int16_t>(TestTubeFlash.Blue + step);
    if (TestTubeFlash.Red >= 255) TestTubeFlash.Falling = true;
    if (TestTubeFlash.Red < 1) TestTubeFlash.Falling = false;
}

void TolvaBoard::ClearRestOfBoardNow() {
    // Colour bricks go without points; holes, reserved cells and spells lying on the board
    // stay, and the compaction collects those spells and judges the board as usual.
    for (int x = 0; x < MaxBricks; ++x)
        for (int y = 0; y < MaxBricks; ++y)
            if (Bricks(x, y) < ReservedCell) Bricks(x, y) = CellEmpty;
    CleanArray();
}

} // namespace tolva
