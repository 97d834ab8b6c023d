#pragma once
// The sound effects as the rules and the session call them: one wave file by its stored
// path (the game folder plus "data\8.wav"), and the PC-speaker beeps of the test mode.
//
// Every caller of PlayWave tests PlaySounds itself; the player does not, so that the test
// menu's "Play Sound..." plays whatever the setting says. With `wait` false the call
// returns at once and a new sound cuts off the one that is running (one voice, no queue);
// with `wait` true it returns when the sound has ended. SpeakerBeep sounds a tone of that
// pitch and blocks for its length, as the classic beep did.
//
// The interface sits in the platform seam, below the board and the session that call it;
// audio/ implements it. The game on screen plays through Qt Multimedia (audio/qt/); a game
// without a screen (tolva2-cli) uses HeadlessSoundEffects; tests record the calls.
#include <cstdint>
#include <string>

namespace tolva {

class SoundEffects {
public:
    virtual ~SoundEffects() = default;
    virtual void PlayWave(const std::string& storedPath, bool wait = false) = 0;
    virtual void SpeakerBeep(std::int32_t frequency, std::int32_t milliseconds) = 0;
};

} // namespace tolva
