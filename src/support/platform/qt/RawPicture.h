#pragma once
// The form of the pictures compiled into the program: a 16-byte head ("TLVRGB32", then
// width and height as 32-bit little-endian numbers) and the rows, top first, of 32-bit
// pixels 0xFFRRGGBB in the machine's order, exactly as a QImage of Format_RGB32 holds
// them. The program shows such a picture straight from its own read-only pages, without
// decoding it or copying it, so the pictures of the first screen cost nothing to load.
// The asset generator writes them with RawPictureBytes.
#include <QByteArray>
#include <QImage>

#include <cstdint>
#include <cstring>

namespace tolva {

inline constexpr char RawPictureMagic[8] = {'T', 'L', 'V', 'R', 'G', 'B', '3', '2'};
inline constexpr qsizetype RawPictureHead = 16;

inline QByteArray RawPictureBytes(const QImage& picture) {
    const QImage image = picture.convertToFormat(QImage::Format_RGB32);
    QByteArray bytes(RawPictureMagic, sizeof RawPictureMagic);
    for (const int side : {image.width(), image.height()})
        for (int shift = 0; shift < 32; shift += 8) bytes.append(static_cast<char>((side >> shift) & 0xFF));
    for (int y = 0; y < image.height(); ++y)
        bytes.append(reinterpret_cast<const char*>(image.constScanLine(y)), qsizetype{image.width()} * 4);
    return bytes;
}

// A view of the picture in `data`, which must outlive it; a copy where the pixels are not
// aligned for a QImage; a null image if the bytes are not such a picture.
inline QImage RawPictureView(const uchar* data, qsizetype size) {
    if (data == nullptr || size < RawPictureHead || std::memcmp(data, RawPictureMagic, sizeof RawPictureMagic) != 0)
        return {};
    auto side = [data](int at) {
        std::uint32_t value = 0;
        for (int i = 3; i >= 0; --i) value = (value << 8) | data[at + i];
        return value;
    };
    const std::uint32_t width = side(8);
    const std::uint32_t height = side(12);
    if (width == 0 || height == 0 || width > 16384 || height > 16384) return {};
    if (size != RawPictureHead + static_cast<qsizetype>(width) * height * 4) return {};
    const uchar* pixels = data + RawPictureHead;
    const QImage view(pixels, static_cast<int>(width), static_cast<int>(height), static_cast<qsizetype>(width) * 4,
                      QImage::Format_RGB32);
    return reinterpret_cast<std::uintptr_t>(pixels) % 4 == 0 ? view : view.copy();
}

} // namespace tolva
