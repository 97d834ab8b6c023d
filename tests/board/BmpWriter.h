#pragma once
// Writes small bitmap files for the tests: pictures of a given size whose pixels come
// from a function, in the bit depths the game's files use.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tolva::testing {

inline void PutU16(std::string& b, std::uint32_t v) {
    b.push_back(static_cast<char>(v & 0xFF));
    b.push_back(static_cast<char>((v >> 8) & 0xFF));
}
inline void PutU32(std::string& b, std::uint32_t v) {
    PutU16(b, v & 0xFFFF);
    PutU16(b, v >> 16);
}

// `pixel(x, y)` (y from the top) gives 0xRRGGBB for 24 and 32 bits, and a palette index
// for 1, 4 and 8 bits, whose palette is `palette`. Rows are stored bottom-up unless
// `topDown`.
inline std::string MakeBmp(int width, int height, int bits, const std::function<std::uint32_t(int, int)>& pixel,
                           const std::vector<std::uint32_t>& palette = {}, bool topDown = false) {
    const std::uint32_t stride = static_cast<std::uint32_t>((bits * width + 31) / 32 * 4);
    const std::uint32_t paletteBytes = static_cast<std::uint32_t>(palette.size() * 4);
    const std::uint32_t offset = 14 + 40 + paletteBytes;
    std::string b = "BM";
    PutU32(b, offset + stride * static_cast<std::uint32_t>(height));
    PutU32(b, 0);
    PutU32(b, offset);
    PutU32(b, 40);
    PutU32(b, static_cast<std::uint32_t>(width));
    PutU32(b, static_cast<std::uint32_t>(topDown ? -height : height));
    PutU16(b, 1);
    PutU16(b, static_cast<std::uint32_t>(bits));
    PutU32(b, 0);                 // uncompressed
    PutU32(b, stride * static_cast<std::uint32_t>(height));
    PutU32(b, 2835);
    PutU32(b, 2835);
    PutU32(b, static_cast<std::uint32_t>(palette.size()));
    PutU32(b, 0);
    for (std::uint32_t c : palette) PutU32(b, c);
    for (int row = 0; row < height; ++row) {
        const int y = topDown ? row : height - 1 - row;
        std::string line(stride, '\0');
        for (int x = 0; x < width; ++x) {
            const std::uint32_t v = pixel(x, y);
            if (bits <= 8) {
                const int bit = x * bits;
                line[static_cast<std::size_t>(bit / 8)] |= static_cast<char>(v << (8 - bits - bit % 8));
            } else {
                const std::size_t at = static_cast<std::size_t>(x * (bits / 8));
                line[at] = static_cast<char>(v & 0xFF);
                line[at + 1] = static_cast<char>((v >> 8) & 0xFF);
                line[at + 2] = static_cast<char>((v >> 16) & 0xFF);
            }
        }
        b += line;
    }
    return b;
}

// A plain picture of one colour.
inline std::string SolidBmp(int width, int height, std::uint32_t colour = 0x336699) {
    return MakeBmp(width, height, 24, [colour](int, int) { return colour; });
}

} // namespace tolva::testing
