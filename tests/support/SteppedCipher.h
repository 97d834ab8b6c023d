#pragma once
// The game's cipher one step at a time, as it was first defined: each code moved `key`
// steps up (enciphering) or down (deciphering) through 32..255. The library computes the
// rotation in one go; the Crypter test and its fuzz target hold it to this loop.
#include <cstdint>
#include <string>

namespace tolva::testing {

inline std::string SteppedCipher(const std::string& text, std::int32_t key, bool up) {
    std::string out;
    for (const char ch : text) {
        int c = static_cast<unsigned char>(ch);
        for (std::int32_t i = 0; i < key; ++i) {
            if (up) {
                if (++c > 255) c = 32;
            } else if (--c < 32) {
                c = 255;
            }
        }
        out += static_cast<char>(c);
    }
    return out;
}

} // namespace tolva::testing
