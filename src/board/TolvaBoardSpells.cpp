// The spells. The session arms a spell (its stock and its buttons); the board fires it,
// when a click lands on an occupied cell while a spell is armed: UserControl_MouseUp hands
// such a click to SpellClickPath.
//
// A spell goes through these states:
//   idle      ActiveSpell -1, SpellClickPending and SpellRunning false
//   armed     ActiveSpell set by a spell button; a click on a hole leaves it armed
//   marked    the "TEST TUBE" only: its first cell is chosen, the marker flashes, and
//             SpellClickPending and SpellRunning stay true until the second click
//   running   UseSpell is under way; it ends with SpellUsed, at which the session takes
//             the spell from its stock and disarms it
// The effects let events run (the strips, the saw's wait, the umbrella's deals), so a
// click or a spell button can come in the middle of a spell. SpellClickPending turns the
// board's clicks away, except the test tube's second click, which comes while TestTubeX is
// set; SpellRunning turns the spell buttons away. Nothing guards the menus, so a level
// start puts all of this back to idle.
//
// A spell scores like a click: whatever it counted into RemovedBricks is squared as one
// lump when its click ends. It is no click of the level (no RemoveClick) and never earns a
// step of the level bonus. The saw is the one spell that closes the board up itself, so
// for it the end of a level comes before its points.
#include "board/TolvaBoard.h"

#include "support/ZenkorModule.h"

#include <algorithm>

namespace tolva {

namespace {

// Where the pointer of the test tube points: the tip of the pipette at its left edge.
constexpr int PipetteHotX = 0;
constexpr int PipetteHotY = 15;

// The bomb's neighbours, clockwise from the top left.
constexpr int BombAround[8][2] = {{-1, -1}, {0, -1}, {1, -1}, {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}};

} // namespace

void TolvaBoard::SpellClickPath(int x, int y) {
    // The test tube's second click is part of the same spell and raises no SpellClick.
    if (!SpellClickPending) listener_.SpellClick(game_.ActiveSpell, game_.CurLevelNo);
    SpellClickPending = true;
    game_.SpellRunning = true;
    const std::uint64_t start = levelStarts_;
    if (game_.ActiveSpell == SpellTestTube) {
        if (TestTubeX == -1) {
            MarkTestTubeCell(x, y);
            return;
        }
        PourTestTube(x, y);
    } else {
        UseSpell(game_.ActiveSpell, x, y);
    }
    // The effects let events run: a new game or an ended one takes over, and the rest of
    // this click (its points, the closing up, the next move) belonged to the old flow.
    if (FlowDropped(start)) return;
    game_.SpellRunning = false;
    SpellClickPending = false;
    SetScoreEvents();
    if (AniDraw) {
        DrawBoard(-1, -1, true);
        timer1_->SetEnabled(true);
    } else {
        CleanArray();
        DrawBoard(-1, -1, true);
    }
    listener_.CanDoNextMove();
}

void TolvaBoard::MarkTestTubeCell(int x, int y) {
    FlashX = TestTubeX = static_cast<std::int16_t>(x);
    FlashY = TestTubeY = static_cast<std::int16_t>(y);
    flashTimer_->SetEnabled(true);
    platform_.Surface.SetMousePointer(pipette_.get(), PipetteHotX, PipetteHotY);
    if (testTubeAnimation_ != nullptr) {
        testTubeAnimation_->SetVisible(true);
        testTubeAnimation_->Play(-1);
    }
}

void TolvaBoard::PourTestTube(int x, int y) {
    TestTubeColor = GetBrick(x, y);
    UseSpell(SpellTestTube, TestTubeX, TestTubeY);
    TestTubeColor = -1;
    TestTubeX = -1;
    if (testTubeAnimation_ != nullptr) {
        testTubeAnimation_->SetVisible(false);
        testTubeAnimation_->StopPlay();
    }
    flashTimer_->SetEnabled(false);
    DrawBoard(FlashX, FlashY, false);   // paints the marker away
    platform_.Surface.SetMousePointer(nullptr, 0, 0);
}

void TolvaBoard::ReturnSpellsToIdle() {
    SpellClickPending = false;
    game_.SpellRunning = false;
    TestTubeX = -1;
    TestTubeColor = -1;
    flashTimer_->SetEnabled(false);
    if (testTubeAnimation_ != nullptr) {
        testTubeAnimation_->SetVisible(false);
        if (testTubeAnimation_->IsPlaying()) testTubeAnimation_->StopPlay();
    }
    platform_.Surface.SetMousePointer(nullptr, 0, 0);
}

void TolvaBoard::UseSpell(std::int16_t SpellNo, int X, int Y) {
    const std::uint64_t start = levelStarts_;
    listener_.SpellInUse(true);
    // A cell off the board takes no spell; the spell is spent all the same.
    const bool onBoard = X >= 0 && X < xBricks_ && Y >= 0 && Y < xBricks_;
    if (onBoard) {
        switch (SpellNo) {
        case SpellSaw: MakeBounce(X, Y); break;
        case SpellRainbow: Rainbow(X, Y); break;
        case SpellGun: Gun(X, Y); break;
        case SpellTestTube:
            // The same colour changes nothing, and the tube is spent all the same.
            if (GetBrick(X, Y) != TestTubeColor) HuntAndSetColor(X, Y, TestTubeColor);
            break;
        case SpellBomb: Bomb(X, Y); break;
        case SpellUmbrella: Umbrella(); break;
        default: break;
        }
    }
    listener_.SpellInUse(false);
    // A spell cut short by a new game is not taken from the new game's stock.
    if (!FlowDropped(start)) listener_.SpellUsed(SpellNo);
}

void TolvaBoard::SpellBrick(int X, int Y) {
    if (X < 0 || X >= MaxBricks || Y < 0 || Y >= MaxBricks) return;
    // Spell numbers outside 0..5 hide nothing, as in a plain removal.
    const std::int16_t hidden = Spells(X, Y);
    if (Bricks(X, Y) < 0 || hidden < 0 || hidden >= SpellCount) {
        Bricks(X, Y) = CellEmpty;
        return;
    }
    Bricks(X, Y) = static_cast<std::int16_t>(FirstSpellCell + hidden);
    Spells(X, Y) = NoSpell;
}

void TolvaBoard::Rainbow(int x, int y) {
    const std::int16_t old = Bricks(x, y);
    std::int16_t fresh = 0;
    for (int picks = 1;; ++picks) {
        const double r = Floor(platform_.Rng.Next() * 9 - 1) + 1;
        fresh = static_cast<std::int16_t>(std::clamp(r, 0.0, 8.0));
        if (picks > RainbowMaxPicks) {
            // The last pick stands: the walk below then changes nothing.
            platform_.Dialog.MessageBox("INTERNAL ERROR! LEVEL MAY BE CORRUPTED !", "TOLVA II", MessageIcon::Stop,
                                        MessageButtons::Ok);
            break;
        }
        if (fresh != old) break;
    }
    // Every cell of that value, spells lying on the board included; Spells stays.
    for (int i = 0; i < xBricks_; ++i)
        for (int j = 0; j < xBricks_; ++j)
            if (Bricks(i, j) == old) Bricks(i, j) = fresh;
}

void TolvaBoard::Gun(int x, int y) {
    // The shot runs right from the clicked cell, then left of it, each way up to the
    // first hole. A brick that turns into its spell stays in the row and is passed.
    SizeToCell(*animation_);
    for (int i = x; i <= xBricks_ - 1; ++i) {
        if (Bricks(i, y) < 0) break;
        if (!GunShot(i, y)) return;
    }
    for (int i = 1; i <= x; ++i) {
        if (Bricks(x - i, y) < 0) break;
        if (!GunShot(x - i, y)) return;
    }
    animation_->SetVisible(false);
}

bool TolvaBoard::GunShot(int x, int y) {
    ++RemovedBricks;
    const SurfaceRect cell = animation_->Bounds();
    if (!AnimationEffect(x * cell.Width, y * cell.Height)) return false;
    SpellBrick(x, y);
    return true;
}

void TolvaBoard::Bomb(int x, int y) {
    SizeToCell(*animation_);
    SizeToCell(*bom_);
    const double w = bom_->Bounds().Width;
    const double h = bom_->Bounds().Height;
    if (!BomEffect(x * w, y * h)) return;
    bom_->SetVisible(false);
    // The centre is emptied before SpellBrick looks at it, so a spell hidden there is not
    // freed: it goes with the next compaction.
    if (Bricks(x, y) >= 0) {
        if (!AnimationEffect(x * w, y * h)) return;
        ++RemovedBricks;
        Bricks(x, y) = CellEmpty;
        SpellBrick(x, y);
    }
    for (const auto& step : BombAround) {
        const int nx = x + step[0];
        const int ny = y + step[1];
        if (nx < 0 || nx >= xBricks_ || ny < 0 || ny >= xBricks_ || Bricks(nx, ny) < 0) continue;
        ++RemovedBricks;
        if (!AnimationEffect(nx * w, ny * h)) return;
        SpellBrick(nx, ny);
    }
    animation_->SetVisible(false);
}

void TolvaBoard::Umbrella() {
    // New colours for every colour brick; holes, spells lying on the board and Spells stay.
    if (!settings_.PlayAnimations) {
        RandomizeBricks(true);
        return;
    }
    const std::uint64_t start = levelStarts_;
    for (int deal = 0; deal < UmbrellaDeals; ++deal) {
        RandomizeBricks(true);
        platform_.Loop.DoEvents();
        if (FlowDropped(start)) return;
    }
}

double TolvaBoard::CellWidth() const { return platform_.Surface.ScaleWidth() / xBricks_; }

double TolvaBoard::CellHeight() const { return platform_.Surface.ScaleHeight() / xBricks_; }

void TolvaBoard::SizeToCell(PictureStrip& strip) {
    SurfaceRect bounds = strip.Bounds();
    bounds.Width = CellWidth();
    bounds.Height = CellHeight();
    strip.SetBounds(bounds);
}

void TolvaBoard::PlayDataWave(const std::string& name) {
    if (settings_.PlaySounds) platform_.Sound.PlayWave(AppPath() + "data\\" + name);
}

} // namespace tolva
