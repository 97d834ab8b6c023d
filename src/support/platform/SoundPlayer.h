#pragma once
// The sound routine as the rules call it: play one wave file by its stored path (the
// game folder plus "data\8.wav"). Every caller tests PlaySounds itself; the player does
// not. With `wait` false the call returns at once and a new sound cuts off the one that
// is running; with `wait` true it returns when the sound has ended.
#include <string>

namespace tolva {

class SoundPlayer {
public:
    virtual ~SoundPlayer() = default;
    virtual void PlayWave(const std::string& storedPath, bool wait = false) = 0;
};

} // namespace tolva
