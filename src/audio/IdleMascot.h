#pragma once
// The idle mascot (Kedelig): a small picture strip in the corner of the main window that
// comes to life when the player has not scored for a while.
//
// Timer2 runs from the start with 20 seconds. Its tick switches it off and, with
// animations on, plays the mascot: a sound of its own (data\2.wav or data\3.wav, at
// random) unless a spell is busy or sounds are off, then one pass of the strip. The end
// of the pass starts Timer2 again with 10 seconds. So the mascot plays 20 seconds after
// the last score, then every 10 seconds plus its own length. With animations off the
// tick does nothing more and the mascot stays quiet until the next score restarts the
// timer. A press on the mascot plays it whatever the settings say.
//
// The strip, the sound and the timer come from the platform, so that all of this runs
// on the virtual clock in a test exactly as on screen.
#include "audio/IdleAnimation.h"
#include "settings/GameSettings.h"
#include "support/platform/EventLoop.h"
#include "support/platform/PictureStrip.h"
#include "support/platform/Random.h"
#include "support/platform/SoundEffects.h"

#include <functional>
#include <memory>

namespace tolva {

class IdleMascot final : public IdleAnimation {
public:
    static constexpr std::int32_t FirstDelayMs = 20000;
    static constexpr std::int32_t RepeatDelayMs = 10000;

    // `noSpellBusy` tells whether no spell is at work (the session's NoSpellBusy). Timer2
    // starts at once.
    IdleMascot(PictureStrip& kedelig, SoundEffects& sound, EventLoop& loop, Random& random,
               const GameSettings& settings, std::function<bool()> noSpellBusy);
    ~IdleMascot() override;
    IdleMascot(const IdleMascot&) = delete;
    IdleMascot& operator=(const IdleMascot&) = delete;

    // Plays the mascot once, with its sound if allowed. Also what a press on it does.
    void PlayKedelig();
    void Kedelig_MouseDown() { PlayKedelig(); }

    // A new score: the twenty seconds start again.
    void RestartIdle() override;

    const Timer& Timer2() const { return *timer2_; }

private:
    void Timer2_Tick();
    void Kedelig_Finish();

    PictureStrip& kedelig_;
    SoundEffects& sound_;
    Random& random_;
    const GameSettings& settings_;
    std::function<bool()> noSpellBusy_;
    std::unique_ptr<Timer> timer2_;
};

} // namespace tolva
