// The bouncing saw. A saw blade starts on the clicked cell and runs over the board for
// four seconds, one step every 180 ms, taking the cell it stands on at each step. It walks
// only on occupied cells, diagonally as a rule, turns round at holes and walls, and now
// and then draws its headings anew.
//
// Two timers drive it: BounceTimer makes the steps, BounceOn marks the end of the run.
// MakeBounce starts both and waits, letting events run, until BounceOn has switched itself
// off; the steps, the strip's frames and whatever else is due run meanwhile. Four seconds
// at 180 ms give 22 steps. Each step counts one brick, whether the saw took one or stood
// on a cell it had already emptied, so a saw scores about 22 squared however much it cut.
//
// The headings BounceRight and BounceDown belong to the board, not to one saw: the next
// saw starts with the heading the last one had. The saw paints nothing on the board; what
// it took stays on the screen until the spell's click redraws the board.
#include "board/TolvaBoard.h"

#include "support/ZenkorModule.h"

namespace tolva {

namespace {

// One axis of a step. The saw looks one cell ahead: an occupied cell there is walked on;
// a hole turns it round for the next step without moving. At the wall it turns at once and
// looks the other way: an occupied cell behind it is walked on in the same step, a hole
// there leaves it standing with its old heading.
template <typename Occupied>
void StepAxis(int& pos, bool& forward, int side, Occupied occupiedAt) {
    const int ahead = forward ? pos + 1 : pos - 1;
    if (ahead >= 0 && ahead <= side - 1) {
        if (occupiedAt(ahead)) pos = ahead;
        else forward = !forward;
        return;
    }
    const int behind = forward ? pos - 1 : pos + 1;
    if (occupiedAt(behind)) {
        forward = !forward;
        pos = behind;
    }
}

} // namespace

void TolvaBoard::MakeBounce(int x, int y) {
    BoardReady = false;
    bounceCol_ = x;
    bounceRow_ = y;
    NeedResource(BoardResource::Saw);
    PlaceBounce();
    SpellBrick(x, y);   // the start cell goes at once and is not counted
    if (settings_.PlayAnimations) bounce_->Play(SawPasses);
    PlayDataWave("15.wav");
    bounce_->SetVisible(true);

    bounceTimer_->SetEnabled(true);
    bounceOn_->SetInterval(SawRunTime);
    bounceOn_->SetEnabled(true);
    bounceTimer_->SetInterval(SawStepInterval);
    const std::uint64_t start = levelStarts_;
    platform_.Loop.WaitUntil([this] { return !bounceOn_->Enabled(); });
    // A new game or an ended one stopped the saw; the board is no longer the saw's.
    if (FlowDropped(start)) return;

    bounceTimer_->SetEnabled(false);
    bounce_->StopPlay();
    bounce_->SetVisible(false);
    CleanArray();
    BoardReady = true;
}

void TolvaBoard::PlaceBounce() {
    const double w = CellWidth();
    const double h = CellHeight();
    bounce_->SetBounds({bounceCol_ * w, bounceRow_ * h, w, h});
}

bool TolvaBoard::SawMayWalkOn(int x, int y) const {
    return x >= 0 && x < xBricks_ && y >= 0 && y < xBricks_ && Bricks(x, y) >= 0;
}

void TolvaBoard::BounceTimer_Timer() {
    // One step in four draws both headings anew, each with a chance of one half.
    if (CInt(platform_.Rng.Next() * 2000) > 1500) {
        BounceDown = CInt(platform_.Rng.Next()) == 1;
        BounceRight = CInt(platform_.Rng.Next()) == 1;
    }
    bounce_->SetVisible(false);
    const int side = xBricks_;
    StepAxis(bounceCol_, BounceRight, side, [this](int col) { return SawMayWalkOn(col, bounceRow_); });
    StepAxis(bounceRow_, BounceDown, side, [this](int row) { return SawMayWalkOn(bounceCol_, row); });
    PlaceBounce();
    ++RemovedBricks;
    bounce_->SetVisible(true);
    SpellBrick(bounceCol_, bounceRow_);
}

} // namespace tolva
