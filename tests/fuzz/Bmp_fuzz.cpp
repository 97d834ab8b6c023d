// Fuzz target of the bitmap reader. Any bytes are a .bmp file. The reader must end,
// refuse or give a picture of 1 to 16384 pixels a side whose every pixel is a colour
// 0xRRGGBB, with -1 outside, and leave the object as it was when it refuses.
#include "fuzz/FuzzCheck.h"
#include "support/platform/BmpFile.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace {

constexpr const char* Target = "bmp";

bool IsColour(std::int32_t c) { return c >= 0 && c <= 0xFFFFFF; }

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    tolva::BmpFile picture;
    if (!picture.Parse(bytes)) {
        tolva::fuzz::Check(picture.Width() == 0 && picture.Height() == 0 && picture.Pixel(0, 0) == -1, Target,
                           "a refused file left a picture behind");
        return 0;
    }
    const int w = picture.Width(), h = picture.Height();
    tolva::fuzz::Check(w >= 1 && h >= 1 && w <= 16384 && h <= 16384, Target, "a picture outside 1..16384 pixels");
    // Every pixel of a small picture, the corners and the diagonal of a large one.
    if (static_cast<std::int64_t>(w) * h <= 4096) {
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x)
                tolva::fuzz::Check(IsColour(picture.Pixel(x, y)), Target, "a pixel inside the picture is no colour");
    } else {
        for (int i = 0; i < w && i < h; ++i)
            tolva::fuzz::Check(IsColour(picture.Pixel(i, i)), Target, "a pixel inside the picture is no colour");
        for (const auto& [x, y] : {std::pair{w - 1, 0}, std::pair{0, h - 1}, std::pair{w - 1, h - 1}})
            tolva::fuzz::Check(IsColour(picture.Pixel(x, y)), Target, "a corner of the picture is no colour");
    }
    for (const auto& [x, y] : {std::pair{-1, 0}, std::pair{0, -1}, std::pair{w, 0}, std::pair{0, h}})
        tolva::fuzz::Check(picture.Pixel(x, y) == -1, Target, "a pixel outside the picture is not -1");
    // Parsing the same bytes again gives the same picture.
    tolva::BmpFile again;
    tolva::fuzz::Check(again.Parse(bytes) && again.Width() == w && again.Height() == h &&
                           again.Pixel(w - 1, h - 1) == picture.Pixel(w - 1, h - 1),
                       Target, "the same bytes read twice differ");
    return 0;
}
