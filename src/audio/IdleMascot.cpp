#include "audio/IdleMascot.h"

#include "support/ZenkorModule.h"

#include <string>

namespace tolva {

IdleMascot::IdleMascot(PictureStrip& kedelig, SoundEffects& sound, EventLoop& loop, Random& random,
                       const GameSettings& settings, std::function<bool()> noSpellBusy)
    : kedelig_(kedelig), sound_(sound), random_(random), settings_(settings),
      noSpellBusy_(std::move(noSpellBusy)), timer2_(loop.CreateTimer(false)) {
    timer2_->OnTick = [this] { Timer2_Tick(); };
    kedelig_.OnFinish = [this] { Kedelig_Finish(); };
    timer2_->SetInterval(FirstDelayMs);
    timer2_->SetEnabled(true);
}

IdleMascot::~IdleMascot() {
    // The strip may outlive the mascot (it stands on the window): it must not call back.
    kedelig_.OnFinish = nullptr;
}

void IdleMascot::PlayKedelig() {
    if ((!noSpellBusy_ || noSpellBusy_()) && settings_.PlaySounds != 0) {
        // 2 or 3, each half of the time: the draw rounds to the even number on a tie.
        const int number = 2 + CInt(random_.Next());
        sound_.PlayWave(AppPath() + "data\\" + std::to_string(number) + ".wav", false);
    }
    kedelig_.Play(1);
}

void IdleMascot::RestartIdle() {
    timer2_->SetEnabled(false);
    timer2_->SetInterval(1);
    timer2_->SetInterval(FirstDelayMs);
    timer2_->SetEnabled(true);
}

void IdleMascot::Timer2_Tick() {
    timer2_->SetEnabled(false);
    if (settings_.PlayAnimations) PlayKedelig();
}

void IdleMascot::Kedelig_Finish() {
    timer2_->SetInterval(RepeatDelayMs);
    timer2_->SetEnabled(true);
}

} // namespace tolva
