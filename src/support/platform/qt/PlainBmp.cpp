#include "support/platform/qt/PlainBmp.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace tolva {
namespace {

constexpr std::size_t FileHeadBytes = 14;
constexpr std::size_t InfoHeadBytes = 40;
constexpr std::size_t ChunkBytes = 32 * 1024;

std::uint32_t U32(const unsigned char* at) {
    return static_cast<std::uint32_t>(at[0]) | static_cast<std::uint32_t>(at[1]) << 8 |
           static_cast<std::uint32_t>(at[2]) << 16 | static_cast<std::uint32_t>(at[3]) << 24;
}

std::uint16_t U16(const unsigned char* at) { return static_cast<std::uint16_t>(at[0] | at[1] << 8); }

// Reads exactly `size` bytes unless the file ends first; the count read.
std::size_t ReadFully(int fd, unsigned char* into, std::size_t size) {
    std::size_t done = 0;
    while (done < size) {
        const ssize_t got = ::read(fd, into + done, size - done);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

// One row of blue-green-red triples as 0xFFRRGGBB. Read as a little-endian word, a
// triple already is 0x..RRGGBB, so four pixels come out of three words.
void ConvertRow(const unsigned char* in, QRgb* out, std::int32_t width) {
    std::int32_t x = 0;
    for (; x + 4 <= width; x += 4, in += 12) {
        std::uint32_t w[3];
        std::memcpy(w, in, sizeof w);
        if constexpr (std::endian::native == std::endian::little) {
            out[x] = 0xFF000000u | (w[0] & 0xFFFFFFu);
            out[x + 1] = 0xFF000000u | (w[0] >> 24) | ((w[1] & 0xFFFFu) << 8);
            out[x + 2] = 0xFF000000u | (w[1] >> 16) | ((w[2] & 0xFFu) << 16);
            out[x + 3] = 0xFF000000u | (w[2] >> 8);
        } else {
            for (int i = 0; i < 4; ++i)
                out[x + i] = 0xFF000000u | static_cast<QRgb>(in[3 * i + 2]) << 16 | static_cast<QRgb>(in[3 * i + 1]) << 8 | in[3 * i];
        }
    }
    for (; x < width; ++x, in += 3)
        out[x] = 0xFF000000u | static_cast<QRgb>(in[2]) << 16 | static_cast<QRgb>(in[1]) << 8 | in[0];
}

// Puts the file back at its start for Qt's decoder; false, for the callers to return.
bool Rewind(int fd) {
    ::lseek(fd, 0, SEEK_SET);
    return false;
}

QImage Decline(int fd) {
    Rewind(fd);
    return {};
}

struct PlainHead {
    std::int32_t width = 0;
    std::int32_t height = 0;
    bool topDown = false;
    std::size_t rowBytes = 0;
};

// Reads and checks the header and leaves the file at the first row of pixels; false,
// with the file back at its start, when the file is not a plain picture.
bool ReadHead(int fd, int maxSide, PlainHead& plainHead) {
    std::array<unsigned char, FileHeadBytes + InfoHeadBytes> head{};
    if (ReadFully(fd, head.data(), head.size()) != head.size()) return Rewind(fd);
    const unsigned char* info = head.data() + FileHeadBytes;
    const std::uint32_t pixelsAt = U32(head.data() + 10);
    const std::uint32_t infoSize = U32(info);
    const auto width = static_cast<std::int32_t>(U32(info + 4));
    const auto rawHeight = static_cast<std::int32_t>(U32(info + 8));
    const bool plain = head[0] == 'B' && head[1] == 'M' && infoSize >= InfoHeadBytes && infoSize <= 124 &&
                       U16(info + 12) == 1 && U16(info + 14) == 24 && U32(info + 16) == 0;
    if (!plain || width <= 0 || rawHeight == 0 || rawHeight == INT32_MIN) return Rewind(fd);
    const bool topDown = rawHeight < 0;
    const std::int32_t height = topDown ? -rawHeight : rawHeight;
    if (width > maxSide || height > maxSide || pixelsAt < FileHeadBytes + infoSize) return Rewind(fd);
    // Rows are padded to four bytes. A file too short for the rows its header promises is
    // no plain picture; checked before the picture's memory is taken, so that a damaged
    // header cannot claim a gigabyte.
    const std::size_t rowBytes = (static_cast<std::size_t>(width) * 3 + 3) & ~std::size_t{3};
    struct stat file {};
    if (::fstat(fd, &file) != 0 ||
        static_cast<std::uint64_t>(file.st_size) < pixelsAt + static_cast<std::uint64_t>(rowBytes) * static_cast<std::uint64_t>(height))
        return Rewind(fd);
    if (::lseek(fd, static_cast<off_t>(pixelsAt), SEEK_SET) != static_cast<off_t>(pixelsAt)) return Rewind(fd);
    plainHead = {width, height, topDown, rowBytes};
    return true;
}

// Reads every row, a chunk of whole rows at a time, and hands each to `row` with its
// place counted from the top (the file holds the bottom row first unless the height is
// negative). False when the file ends early.
template <class RowSink>
bool ReadRows(int fd, const PlainHead& head, RowSink&& row) {
    const std::size_t rowsPerChunk = std::max<std::size_t>(1, ChunkBytes / head.rowBytes);
    std::vector<unsigned char> chunk(rowsPerChunk * head.rowBytes);
    for (std::int32_t done = 0; done < head.height;) {
        const auto rows = static_cast<std::int32_t>(std::min<std::size_t>(rowsPerChunk, static_cast<std::size_t>(head.height - done)));
        const std::size_t bytes = static_cast<std::size_t>(rows) * head.rowBytes;
        if (ReadFully(fd, chunk.data(), bytes) != bytes) return false;
        for (std::int32_t i = 0; i < rows; ++i, ++done)
            row(head.topDown ? done : head.height - 1 - done, chunk.data() + static_cast<std::size_t>(i) * head.rowBytes);
    }
    return true;
}

} // namespace

QImage ReadPlainBmp(int fd, int maxSide) {
    PlainHead head;
    if (!ReadHead(fd, maxSide, head)) return {};
    QImage image(head.width, head.height, QImage::Format_RGB32);
    if (image.isNull()) return Decline(fd);
    const bool whole = ReadRows(fd, head, [&](std::int32_t y, const unsigned char* in) {
        ConvertRow(in, reinterpret_cast<QRgb*>(image.scanLine(y)), head.width);
    });
    return whole ? image : Decline(fd);
}

std::vector<QImage> ReadPlainBmpParts(int fd, int maxSide, const std::vector<QRect>& parts) {
    PlainHead head;
    if (!ReadHead(fd, maxSide, head)) return {};
    const QRect all(0, 0, head.width, head.height);
    std::vector<QRect> areas;
    std::vector<QImage> images;
    for (const QRect& part : parts) {
        areas.push_back(part.intersected(all));
        images.emplace_back(areas.back().size(), QImage::Format_RGB32);
        if (!areas.back().isEmpty() && images.back().isNull()) {
            Rewind(fd);
            return {};
        }
    }
    const bool whole = ReadRows(fd, head, [&](std::int32_t y, const unsigned char* in) {
        for (std::size_t i = 0; i < areas.size(); ++i) {
            const QRect& area = areas[i];
            if (area.isEmpty() || y < area.top() || y > area.bottom()) continue;
            ConvertRow(in + 3 * static_cast<std::size_t>(area.left()),
                       reinterpret_cast<QRgb*>(images[i].scanLine(y - area.top())), area.width());
        }
    });
    if (!whole) Rewind(fd);
    return whole ? images : std::vector<QImage>{};
}

} // namespace tolva
