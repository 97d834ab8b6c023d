#include "support/platform/RecordingSoundPlayer.h"

namespace tolva {

void RecordingSoundPlayer::PlayWave(const std::string& storedPath, bool wait) {
    calls_.push_back({storedPath, wait});
}

} // namespace tolva
