#pragma once
// The game's wave effects, one recipe each. Numbers are the file numbers under data/:
//   1 cheat mode on      2, 3 the mascot      4 goodbye          5 bonus count tick
//   6 explosion          7 bomb               8 refused / hint   9 new spell
//   10 grand fanfare (bonus of nine)          11, 12, 13 level bonus fanfares
//   15 the bouncing saw
// Each is short, starts at once (no silent lead-in), peaks below full scale and ends in
// a little silence, since some players cut the last moment of a sample.
#include <cstdint>
#include <vector>

class SoundEffects {
public:
    static constexpr int SampleRate = 44100;
    static constexpr double TailSilence = 0.12;
    // The numbers of all effects, in order.
    static std::vector<int> Numbers();
    // The samples of effect `number`; empty for a number that is no effect.
    static std::vector<int16_t> Render(int number);

private:
    static std::vector<int16_t> CheatOn();
    static std::vector<int16_t> MascotHop();
    static std::vector<int16_t> MascotWhistle();
    static std::vector<int16_t> Goodbye();
    static std::vector<int16_t> BonusTick();
    static std::vector<int16_t> Explosion();
    static std::vector<int16_t> Bomb();
    static std::vector<int16_t> Refused();
    static std::vector<int16_t> NewSpell();
    static std::vector<int16_t> Fanfare(int variant);
    static std::vector<int16_t> Saw();
};
