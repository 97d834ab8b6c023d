#include "support/platform/BmpFile.h"

#include "support/ZenkorDetail.h"

#include <array>
#include <bit>
#include <cstdlib>

namespace tolva {

namespace {

constexpr int MaxSide = 16384;
constexpr std::uint32_t BiRgb = 0;
constexpr std::uint32_t BiBitfields = 3;

std::uint32_t U16(const std::string& b, std::size_t at) {
    return static_cast<std::uint32_t>(static_cast<unsigned char>(b[at])) |
           static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 1])) << 8;
}

std::uint32_t U32(const std::string& b, std::size_t at) { return U16(b, at) | U16(b, at + 2) << 16; }

// One channel out of a packed pixel, scaled to 0..255 whatever the width of its mask.
std::uint32_t Channel(std::uint32_t value, std::uint32_t mask) {
    if (mask == 0) return 0;
    const int shift = std::countr_zero(mask);
    const std::uint32_t max = mask >> shift;
    return ((value & mask) >> shift) * 255u / max;
}

struct Layout {
    std::uint32_t headerSize = 0, bits = 0, compression = BiRgb, paletteCount = 0;
    std::int64_t width = 0, height = 0;
    std::array<std::uint32_t, 3> masks{};   // red, green, blue
};

bool ReadLayout(const std::string& b, Layout& l) {
    if (b.size() < 26 || b[0] != 'B' || b[1] != 'M') return false;
    l.headerSize = U32(b, 14);
    if (l.headerSize == 12) {
        l.width = U16(b, 18);
        l.height = U16(b, 20);
        l.bits = U16(b, 24);
        return true;
    }
    if (l.headerSize < 40 || l.headerSize > 124 || b.size() < 14 + std::size_t{l.headerSize}) return false;
    l.width = static_cast<std::int32_t>(U32(b, 18));
    l.height = static_cast<std::int32_t>(U32(b, 22));
    l.bits = U16(b, 28);
    l.compression = U32(b, 30);
    l.paletteCount = U32(b, 46);
    if (l.compression == BiBitfields) {
        // The masks follow a 40-byte header, or stand inside a longer one.
        if (b.size() < 14 + 40 + 12) return false;
        l.masks = {U32(b, 54), U32(b, 58), U32(b, 62)};
    } else if (l.bits == 16) {
        l.masks = {0x7C00, 0x03E0, 0x001F};
    } else {
        l.masks = {0xFF0000, 0x00FF00, 0x0000FF};
    }
    return true;
}

bool Supported(const Layout& l) {
    const bool paletted = l.bits == 1 || l.bits == 4 || l.bits == 8;
    if (l.compression == BiRgb) return paletted || l.bits == 16 || l.bits == 24 || l.bits == 32;
    return l.compression == BiBitfields && (l.bits == 16 || l.bits == 32);
}

} // namespace

bool BmpFile::Read(const std::string& nativePath) {
    std::string bytes;
    if (detail::ReadFileBytes(nativePath, bytes, MaxPictureBytes) != FileRead::Ok) return false;
    return Parse(bytes);
}

bool BmpFile::Parse(const std::string& b) {
    Layout l;
    if (!ReadLayout(b, l) || !Supported(l)) return false;
    const bool topDown = l.height < 0;
    const std::int64_t w = l.width, h = std::llabs(l.height);
    if (w < 1 || h < 1 || w > MaxSide || h > MaxSide) return false;

    // The palette follows the header (and the masks of a 40-byte bit-field header).
    std::vector<std::int32_t> palette;
    if (l.bits <= 8) {
        const std::size_t entrySize = l.headerSize == 12 ? 3 : 4;
        std::size_t count = l.paletteCount == 0 || l.paletteCount > (1u << l.bits) ? (1u << l.bits) : l.paletteCount;
        const std::size_t at = 14 + l.headerSize;
        if (b.size() < at + count * entrySize) return false;
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t p = at + i * entrySize;
            palette.push_back(static_cast<std::int32_t>(static_cast<unsigned char>(b[p + 2])) << 16 |
                              static_cast<std::int32_t>(static_cast<unsigned char>(b[p + 1])) << 8 |
                              static_cast<std::int32_t>(static_cast<unsigned char>(b[p])));
        }
    }

    const std::size_t offset = U32(b, 10);
    const std::size_t stride = static_cast<std::size_t>((l.bits * w + 31) / 32 * 4);
    if (offset > b.size() || (b.size() - offset) / stride < static_cast<std::size_t>(h)) return false;

    std::vector<std::int32_t> pixels(static_cast<std::size_t>(w * h));
    for (std::int64_t row = 0; row < h; ++row) {
        const std::size_t line = offset + stride * static_cast<std::size_t>(topDown ? row : h - 1 - row);
        for (std::int64_t x = 0; x < w; ++x) {
            std::int32_t colour = 0;
            if (l.bits <= 8) {
                const std::size_t bit = static_cast<std::size_t>(x) * l.bits;
                const auto byte = static_cast<unsigned char>(b[line + bit / 8]);
                const unsigned index = (byte >> (8 - l.bits - bit % 8)) & ((1u << l.bits) - 1);
                colour = index < palette.size() ? palette[index] : 0;
            } else {
                const std::size_t at = line + static_cast<std::size_t>(x) * (l.bits / 8);
                const std::uint32_t v = l.bits == 16 ? U16(b, at)
                                        : l.bits == 24 ? U16(b, at) | static_cast<std::uint32_t>(
                                                             static_cast<unsigned char>(b[at + 2])) << 16
                                                       : U32(b, at);
                colour = static_cast<std::int32_t>(Channel(v, l.masks[0]) << 16 | Channel(v, l.masks[1]) << 8 |
                                                   Channel(v, l.masks[2]));
            }
            pixels[static_cast<std::size_t>(row * w + x)] = colour;
        }
    }
    width_ = static_cast<int>(w);
    height_ = static_cast<int>(h);
    pixels_ = std::move(pixels);
    return true;
}

std::int32_t BmpFile::Pixel(int x, int y) const {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return -1;
    return pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x)];
}

} // namespace tolva
