#pragma once
// The sound effects of a game without a screen (tolva2-cli): no speaker plays a wave; a beep
// of the PC speaker takes its length on the game's clock, as the blocking beep takes it on
// screen, so that a game plays with the same timing. Autoplay's summary counts the beeps.
#include "support/platform/EventLoop.h"
#include "support/platform/SoundEffects.h"

namespace tolva {

class HeadlessSoundEffects final : public SoundEffects {
public:
    explicit HeadlessSoundEffects(EventLoop& loop) : loop_(loop) {}

    void PlayWave(const std::string&, bool) override {}
    void SpeakerBeep(std::int32_t, std::int32_t milliseconds) override {
        ++Beeps;
        loop_.Pause(milliseconds);
    }

    long Beeps = 0;

private:
    EventLoop& loop_;
};

} // namespace tolva
