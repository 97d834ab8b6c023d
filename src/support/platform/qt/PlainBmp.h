#pragma once
// The game's own pictures are all plain BMP files: 24 bits a pixel, uncompressed, with
// the usual 40-byte header. Qt reads those through a general decoder that handles every
// kind of BMP one pixel at a time; this reader handles only the plain kind and converts a
// row at a time, straight into the picture the game shows, several times faster. Every
// other kind of file is left to Qt.
#include <QImage>
#include <QRect>

#include <vector>

namespace tolva {

// Reads a plain 24-bit BMP from the start of the regular file `fd` into a Format_RGB32
// image, at most `maxSide` pixels a side. A null image, with the file's position back at
// its start, when the file is not of that kind or is cut short, so that the caller can
// hand it to Qt's decoder instead.
QImage ReadPlainBmp(int fd, int maxSide);

// Reads only the given rectangles of such a picture, each clipped to the picture, one
// image each in the order given (a null image for a rectangle outside it); the rest of
// the picture is never converted. An empty list, with the file back at its start, where
// ReadPlainBmp would hand the file back.
std::vector<QImage> ReadPlainBmpParts(int fd, int maxSide, const std::vector<QRect>& parts);

} // namespace tolva
