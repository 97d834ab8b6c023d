#include "board/TolvaBoard.h"

#include <algorithm>
#include <string>

namespace tolva {

TolvaBoard::TolvaBoard(LevelModule& game, const BoardPlatform& platform, BoardListener& listener)
    : game_(game), platform_(platform), listener_(listener) {
    Bricks.Fill(CellEmpty);
    Spells.Fill(NoSpell);
    WorkBricks.Fill(CellEmpty);
    WorkSpells.Fill(NoSpell);
    DrawnBricks.Fill(CellEmpty);
    game_.ActiveSpell = NoSpell;
    CreateParts();
}

TolvaBoard::~TolvaBoard() = default;

void TolvaBoard::CreateParts() {
    auto& store = platform_.Pictures;
    for (std::size_t i = 0; i < gfx_.size(); ++i) gfx_[i] = store.CreateHolder("Gfx(" + std::to_string(i) + ")");
    for (std::size_t i = 0; i < ss_.size(); ++i) ss_[i] = store.CreateHolder("ss(" + std::to_string(i) + ")");
    tmpBack_ = store.CreateHolder("TmpBack");
    bonusPic_ = store.CreateHolder("BonusPic");

    // The hint plays its strip once over one cell and hides itself when done.
    aniHint_ = store.CreateStrip("AniHint");
    aniHint_->SetInterval(20);
    aniHint_->SetMoveHeight(32);
    aniHint_->OnFinish = [this] { aniHint_->SetVisible(false); };

    timer1_ = platform_.Loop.CreateTimer(false);
    timer1_->SetInterval(DefaultUpdateDelay);
    timer1_->OnTick = [this] { Timer1_Timer(); };

    // A one-shot timer of the board that switches itself off; nothing in the rules starts it.
    soundTimer_ = platform_.Loop.CreateTimer(false);
    soundTimer_->SetInterval(1000);
    soundTimer_->OnTick = [this] { soundTimer_->SetEnabled(false); };
}

void TolvaBoard::SetxBricks(std::int16_t side) {
    xBricks_ = std::clamp<std::int16_t>(side, 1, MaxBricks);
}

std::int32_t TolvaBoard::UpdateDelay() const { return timer1_->Interval(); }

void TolvaBoard::SetUpdateDelay(std::int32_t ms) { timer1_->SetInterval(ms); }

void TolvaBoard::SetAutoSize(bool autoSize) {
    autoSize_ = autoSize;
    UserControl_Resize();
}

// ---- score and level end -----------------------------------------------------------------

void TolvaBoard::SetScoreEvents() {
    // Points go with the square of what one click (or one spell) took, as one lump.
    const std::int16_t counted = RemovedBricks;
    if (counted > 0) {
        const double points = static_cast<double>(counted) * static_cast<double>(counted);
        listener_.NewScore(points);
        listener_.BricksRemoved(counted);
    }
    RemovedBricks = 0;
}

void TolvaBoard::SetGameOver() {
    if (GameIsOver) return;
    GameIsOver = true;
    listener_.GameOver();
}

void TolvaBoard::JumpToLevel(std::int16_t Level) {
    game_.CurLevelNo = Level;
    NewGame(Level);
}

} // namespace tolva
