#pragma once
// The parts of the game the session calls into that live in subsystems of their own:
// the hiscore table of the current set, the idle mascot and the PC speaker. The main
// window hands the session one object that reaches all of them.
#include <cstdint>

namespace tolva {

class SessionServices {
public:
    virtual ~SessionServices() = default;

    // The end-of-game entry into the hiscore table (initials and all).
    virtual void CheckIfHiScore() = 0;
    // Draws the table; place 1-based or -1 for no highlight, colours 0xBBGGRR.
    virtual void PrintHiScore(std::int16_t highlightPlace, std::int32_t highlightColor,
                              std::int32_t highlightTextColor) = 0;
    // The place the running score would take in the table, or -1.
    virtual std::int16_t CheckHiscorePlace() = 0;
    // Plays the idle mascot.
    virtual void PlayKedelig() = 0;
    // One beep of the PC speaker; blocks for its length.
    virtual void SpeakerBeep(std::int32_t frequency, std::int32_t milliseconds) = 0;
};

} // namespace tolva
