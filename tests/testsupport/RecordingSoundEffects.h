#pragma once
// Sound effects for tests: nothing is played; each wave and each beep is written down,
// so that a test can see which wave files a move asked for, and in which order.
#include "support/platform/SoundEffects.h"

#include <string>
#include <vector>

namespace tolva {

class RecordingSoundEffects final : public SoundEffects {
public:
    struct Call {
        std::string File;
        bool Wait = false;
        bool operator==(const Call&) const = default;
    };
    struct Beep {
        std::int32_t Frequency = 0;
        std::int32_t Milliseconds = 0;
        bool operator==(const Beep&) const = default;
    };

    void PlayWave(const std::string& storedPath, bool wait = false) override { calls_.push_back({storedPath, wait}); }
    void SpeakerBeep(std::int32_t frequency, std::int32_t milliseconds) override {
        beeps_.push_back({frequency, milliseconds});
    }

    const std::vector<Call>& Calls() const { return calls_; }
    const std::vector<Beep>& Beeps() const { return beeps_; }
    void ClearCalls() { calls_.clear(); beeps_.clear(); }

private:
    std::vector<Call> calls_;
    std::vector<Beep> beeps_;
};

} // namespace tolva
