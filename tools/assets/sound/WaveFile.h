#pragma once
// Writes 16-bit mono PCM wave files: the plain RIFF form every player reads.
#include <cstdint>
#include <string>
#include <vector>

class WaveFile {
public:
    static bool Write(const std::string& path, const std::vector<int16_t>& samples, int sampleRate);
};
