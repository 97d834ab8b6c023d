#pragma once
// A reader of Windows bitmap files for the headless platform: enough of the format to
// know a picture's size and the colour of each pixel without any graphics library.
//
// Read: the file header, the core header (12 bytes) and the info headers of 40 to 124
// bytes; 1, 4 and 8 bits with a palette, 16, 24 and 32 bits, uncompressed or with bit
// fields; bottom-up and top-down rows. Anything else (run-length or embedded JPEG/PNG
// data, a header that lies about the sizes, a file cut short) is unreadable: Read gives
// false and the object is left as it was. A picture may be at most 16384 pixels a side.
#include <cstdint>
#include <string>
#include <vector>

namespace tolva {

class BmpFile {
public:
    // Reads the file at a real path of this system.
    bool Read(const std::string& nativePath);
    // Reads a file held in memory.
    bool Parse(const std::string& bytes);

    int Width() const { return width_; }
    int Height() const { return height_; }
    // 0xRRGGBB of pixel (x, y), y from the top; -1 outside the picture.
    std::int32_t Pixel(int x, int y) const;

private:
    int width_ = 0;
    int height_ = 0;
    std::vector<std::int32_t> pixels_;   // row by row from the top
};

} // namespace tolva
