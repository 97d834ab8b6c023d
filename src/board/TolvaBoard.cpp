#include "board/TolvaBoard.h"

#include <algorithm>
#include <string>

namespace tolva {

TolvaBoard::TolvaBoard(LevelModule& game, const GameSettings& settings, const BoardPlatform& platform,
                       BoardListener& listener)
    : game_(game), settings_(settings), platform_(platform), listener_(listener) {
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

    CreateEffectParts();
}

void TolvaBoard::CreateEffectParts() {
    auto& store = platform_.Pictures;
    auto& loop = platform_.Loop;

    // The bonus screen covers the board while it shows; its three lines stand at fixed
    // heights on it, and each is centred on it whenever it gets a number.
    bonusPic_ = std::make_unique<PicturePanel>(store.CreateHolder("BonusPic"));
    levBonus_ = std::make_unique<PicturePanel>(store.CreateHolder("LevBonus"));
    picTimes_ = std::make_unique<PicturePanel>(store.CreateHolder("picTimes"));
    picBonus_ = std::make_unique<PicturePanel>(store.CreateHolder("picBonus"));
    levBonus_->SetBounds({0, 133, 0, 60});
    picTimes_->SetBounds({0, 281, 0, 60});
    picBonus_->SetBounds({0, 411, 0, 60});
    for (std::size_t i = 0; i < no_.size(); ++i) no_[i] = store.CreateHolder("No(" + std::to_string(i) + ")");
    pipette_ = store.CreateHolder("Pipette");

    // The explosion and the bomb end their wait with their Finish; the saw hides itself.
    animation_ = store.CreateStrip("Animation");
    animation_->SetInterval(20);
    animation_->SetMoveHeight(50);
    animation_->OnFinish = [this] { EffectPlaying = false; };
    bom_ = store.CreateStrip("BOM");
    bom_->SetInterval(120);
    bom_->SetMoveHeight(50);
    bom_->OnFinish = [this] { EffectPlaying = false; };
    bounce_ = store.CreateStrip("Bounce");
    bounce_->SetInterval(40);
    bounce_->SetMoveHeight(50);
    bounce_->OnFinish = [this] { bounce_->SetVisible(false); };

    flashTimer_ = loop.CreateTimer(true);
    flashTimer_->SetInterval(FlashInterval);
    flashTimer_->OnTick = [this] { FlashTimer_Timer(); };
    // The saw's timers start with these periods; MakeBounce gives them theirs.
    bounceTimer_ = loop.CreateTimer(true);
    bounceTimer_->SetInterval(20);
    bounceTimer_->OnTick = [this] { BounceTimer_Timer(); };
    bounceOn_ = loop.CreateTimer(true);
    bounceOn_->SetInterval(1000);
    bounceOn_->OnTick = [this] { bounceOn_->SetEnabled(false); };
    bonusTimer_ = loop.CreateTimer(true);
    bonusTimer_->SetInterval(BonusStepInterval);
    bonusTimer_->OnTick = [this] { BonusTimer_Timer(); };
    removeBonusTimer_ = loop.CreateTimer(true);
    removeBonusTimer_->SetInterval(BonusLingerTime);
    removeBonusTimer_->OnTick = [this] { RemoveBonusTimer_Timer(); };
}

void TolvaBoard::SetxBricks(std::int16_t side) {
    xBricks_ = std::clamp<std::int16_t>(side, 1, MaxBricks);
}

std::int32_t TolvaBoard::UpdateDelay() const { return timer1_->Interval(); }

void TolvaBoard::SetUpdateDelay(std::int32_t ms) { timer1_->SetInterval(ms); }

void TolvaBoard::ApplySettings(const GameSettings& settings) {
    ApplyActionSettings(settings);
    SetHuntDelay(settings.HuntDelay);
}

void TolvaBoard::ApplyActionSettings(const GameSettings& settings) {
    SetUpdateDelay(settings.UpdateDelay < 2 ? 2 : settings.UpdateDelay);
    AniDraw = settings.AniDraw;
}

void TolvaBoard::TakeSettings(GameSettings& settings) const {
    settings.UpdateDelay = UpdateDelay();
    settings.AniDraw = AniDraw;
}

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
    // An ended game stays ended: a bonus still counting or a saw still running would go on
    // paying points and start the next level behind the game-over message.
    DropRunningEffects();
    ReturnSpellsToIdle();
    BoardReady = true;
    listener_.GameOver();
}

void TolvaBoard::DropRunningEffects() {
    ++levelStarts_;
    timer1_->SetEnabled(false);
    bonusTimer_->SetEnabled(false);
    removeBonusTimer_->SetEnabled(false);
    bonusPic_->SetVisible(false);
    bounceTimer_->SetEnabled(false);
    bounceOn_->SetEnabled(false);
    if (bounce_->IsPlaying()) bounce_->StopPlay();
    bounce_->SetVisible(false);
    for (PictureStrip* strip : {animation_.get(), bom_.get()}) {
        if (strip->IsPlaying()) strip->StopPlay();
        strip->SetVisible(false);
    }
    EffectPlaying = false;
    RemovedBricks = 0;
}

bool TolvaBoard::AwaitsClick() const { return EffectsIdle() && game_.ActiveSpell == NoSpell; }

bool TolvaBoard::EffectsIdle() const {
    if (GameIsOver || !BoardReady || SpellClickPending || EffectPlaying || game_.SpellRunning) return false;
    for (const auto* timer : {&timer1_, &bonusTimer_, &removeBonusTimer_, &bounceTimer_, &flashTimer_})
        if ((*timer)->Enabled()) return false;
    return true;
}

void TolvaBoard::JumpToLevel(std::int16_t Level) {
    game_.CurLevelNo = Level;
    NewGame(Level);
}

} // namespace tolva
