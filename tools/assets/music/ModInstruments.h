#pragma once
// The instruments of the game's tune, synthesized as 8-bit samples.
//
// A tracker plays a sample at 8287 samples a second for the note C-2 (PAL Amiga period
// 428). Each melodic instrument names the pitch it sounds at C-2, its "base". Sustained
// instruments loop over a whole number of periods of an exactly periodic tail, so the loop
// point never clicks; their frequency is nudged (less than a cent) so that the periods
// fit the loop exactly. Drums are one-shots recorded at twice the rate and played at C-3.
#include "ModModule.h"

class ModInstruments {
public:
    static constexpr double BaseRate = 8287.0;
    // MIDI note each instrument sounds at tracker note C-2.
    static constexpr int BassBase = 36;   // C2
    static constexpr int PluckBase = 60;  // C4
    static constexpr int LeadBase = 72;   // C5
    static constexpr int BellBase = 72;   // C5
    static constexpr int PadBase = 60;    // C4

    static ModSample Bass();
    static ModSample Pluck();
    static ModSample Lead();
    static ModSample Bell();
    static ModSample Pad();
    static ModSample Kick();
    static ModSample Snare();
    static ModSample Hat();
    static ModSample Shaker();

private:
    static std::vector<int8_t> Quantize(const std::vector<double>& wave, double peak);
};
