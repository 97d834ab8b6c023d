#include "WaveFile.h"

#include <cstdio>
#include <filesystem>

namespace {

void Put(std::vector<uint8_t>& out, uint32_t value, int bytes)
{
    for (int i = 0; i < bytes; ++i) {
        out.push_back(static_cast<uint8_t>((value >> (8 * i)) & 0xFF));
    }
}

} // namespace

bool WaveFile::Write(const std::string& path, const std::vector<int16_t>& samples, int sampleRate)
{
    const uint32_t dataBytes = static_cast<uint32_t>(samples.size() * 2);
    std::vector<uint8_t> out;
    out.reserve(44 + dataBytes);
    out.insert(out.end(), {'R', 'I', 'F', 'F'});
    Put(out, 36 + dataBytes, 4);
    out.insert(out.end(), {'W', 'A', 'V', 'E', 'f', 'm', 't', ' '});
    Put(out, 16, 4);
    Put(out, 1, 2); // PCM
    Put(out, 1, 2); // mono
    Put(out, static_cast<uint32_t>(sampleRate), 4);
    Put(out, static_cast<uint32_t>(sampleRate) * 2, 4);
    Put(out, 2, 2);
    Put(out, 16, 2);
    out.insert(out.end(), {'d', 'a', 't', 'a'});
    Put(out, dataBytes, 4);
    for (int16_t s : samples) {
        Put(out, static_cast<uint16_t>(s), 2);
    }
    // Written beside the target and renamed, so that a failed run leaves no half file.
    const std::string temp = path + ".part";
    std::FILE* f = std::fopen(temp.c_str(), "wb");
    if (!f) {
        return false;
    }
    const bool ok = std::fwrite(out.data(), 1, out.size(), f) == out.size();
    if (std::fclose(f) != 0 || !ok) {
        std::remove(temp.c_str());
        return false;
    }
    std::error_code error;
    std::filesystem::rename(temp, path, error);
    return !error;
}
