#pragma once
// The sound routine of the game on screen until the wave player is built: it plays
// nothing. Every caller already tests PlaySounds, so the game's sound logic runs as it
// will with a real player; only the speakers stay quiet.
#include "support/platform/SoundPlayer.h"

namespace tolva {

class SilentSoundPlayer final : public SoundPlayer {
public:
    void PlayWave(const std::string&, bool) override {}
};

} // namespace tolva
