#pragma once
// A four-channel ProTracker module ("M.K.") in memory, and its file form.
//
// The form: a 20-byte title; 31 sample headers of 30 bytes (22-byte name, length in
// words, finetune, volume 0-64, loop start and loop length in words, a loop length of one
// word meaning no loop); the order length, a restart byte, 128 order entries and the tag
// "M.K."; then the patterns, each 64 rows of four 4-byte cells; then the signed 8-bit
// sample data. All numbers are big-endian. A cell packs the sample number's high nibble
// and a 12-bit Amiga period, then the sample's low nibble, the effect and its parameter.
#include <array>
#include <cstdint>
#include <string>
#include <vector>

struct ModSample {
    std::string name;
    std::vector<int8_t> data;   // even length; the first two bytes are zero by custom
    int volume = 64;
    int loopStart = 0;          // in samples, even
    int loopLength = 0;         // in samples, even; 0 for no loop
};

struct ModCell {
    int period = 0;     // 0: no note
    int sample = 0;     // 1-31, 0: none
    int effect = 0;     // 0x0-0xF
    int param = 0;      // 0x00-0xFF
};

class ModModule {
public:
    static constexpr int Channels = 4;
    static constexpr int Rows = 64;
    using Pattern = std::array<ModCell, Rows * Channels>;

    std::string title;
    std::vector<ModSample> samples;   // up to 31
    std::vector<Pattern> patterns;
    std::vector<int> order;           // up to 128 pattern numbers

    // The Amiga period of note `index` from C-1 (0) to B-3 (35), finetune 0.
    static int Period(int index);
    // Converts to the file form; throws std::invalid_argument if something can't fit.
    std::vector<uint8_t> Encode() const;
};
