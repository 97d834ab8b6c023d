#pragma once
// The sound routine of the headless platform: it plays nothing and writes down each call,
// so that a test can see which wave files a move asked for, and in which order.
#include "support/platform/SoundPlayer.h"

#include <string>
#include <vector>

namespace tolva {

class RecordingSoundPlayer final : public SoundPlayer {
public:
    struct Call {
        std::string File;
        bool Wait = false;
        bool operator==(const Call&) const = default;
    };

    void PlayWave(const std::string& storedPath, bool wait = false) override;

    const std::vector<Call>& Calls() const { return calls_; }
    void ClearCalls() { calls_.clear(); }

private:
    std::vector<Call> calls_;
};

} // namespace tolva
