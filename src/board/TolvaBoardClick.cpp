// The mouse on the board. A click acts when the button comes up. UserControl_MouseUp
// runs its refusals in a fixed order, and each one ends the click silently (only the
// refusal of a spell cell to the "TEST TUBE" makes a sound): a spell being carried out,
// a game that is over, a click off the board, the test tube on a spell cell. What is left
// is the single-cell removal of the right button, a spell click, or the plain removal.
//
// Automatic play and the cheat menu click through ClickOnBrick, which aims at the middle
// of a cell and hands the pixel to the same handler, so every refusal holds for them too.
//
// With AniDraw on, a removal leaves its holes on the board and Timer1 closes the board up
// UpdateDelay milliseconds later. Nothing refuses a click meanwhile: a second removal acts
// on the board with its holes still open, and the one tick closes up after both.
#include "board/TolvaBoard.h"

#include "support/ZenkorModule.h"

namespace tolva {

void TolvaBoard::UserControl_MouseUp(std::int16_t Button, std::int16_t /*Shift*/, float X, float Y) {
    const float x = GetX(X);
    const float y = GetY(Y);
    if (SpellClickPending && TestTubeX == -1) return;   // a spell is being carried out
    if (GameIsOver) return;
    const float last = static_cast<float>(xBricks_ - 1);
    if (!(x >= 0 && x <= last && y >= 0 && y <= last)) return;

    const int cx = static_cast<int>(x);
    const int cy = static_cast<int>(y);
    const std::int16_t b = GetBrick(x, y);
    // The "TEST TUBE" takes no spell lying on the board, on either of its clicks.
    if (b > ReservedCell && game_.ActiveSpell == SpellTestTube) {
        PlayRefusalSound();
        return;
    }
    // The right button takes one cell away: any cell in cheat mode, otherwise only a spell
    // lying on the board. Nothing is uncovered, counted or scored.
    if (Button == 2 && (game_.CheatMode || b > 9)) {
        if (Bricks(cx, cy) != CellEmpty) BeforeMove();
        Bricks(cx, cy) = CellEmpty;
        const std::uint64_t start = levelStarts_;
        CleanArray();
        if (FlowDropped(start)) return;
        DrawBoard(-1, -1, true);
        listener_.CanDoNextMove();
        return;
    }
    if (Bricks(cx, cy) >= 0 && game_.ActiveSpell > NoSpell) {
        if (!SpellClickPending) BeforeMove();
        SpellClickPath(cx, cy);
        return;
    }
    if (Button != 1) return;
    if (IsValid(cx, cy)) BeforeMove();
    BoardClick(cx, cy);
}

void TolvaBoard::UserControl_MouseMove(std::int16_t /*Button*/, std::int16_t /*Shift*/, float X, float Y) {
    listener_.MouseMove(CInt(GetX(X)), CInt(GetY(Y)));
}

void TolvaBoard::ClickOnBrick(float& X, float& Y, std::int16_t Button) {
    const float h = static_cast<float>(platform_.Surface.ScaleHeight() / xBricks_);
    const float w = static_cast<float>(platform_.Surface.ScaleWidth() / xBricks_);
    X += 1;
    Y += 1;
    UserControl_MouseUp(Button, 0, X * w - w / 2, Y * h - h / 2);
}

void TolvaBoard::Timer1_Timer() {
    timer1_->SetEnabled(false);
    const std::uint64_t start = levelStarts_;
    CleanArray();
    if (FlowDropped(start)) return;
    DrawBoard(-1, -1, true);
    listener_.CanDoNextMove();
}

void TolvaBoard::PlayRefusalSound() {
    if (settings_.PlaySounds) platform_.Sound.PlayWave(AppPath() + "data\\8.wav");
}

} // namespace tolva
