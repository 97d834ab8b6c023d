#pragma once
// Writes pictures as uncompressed 24-bit Windows bitmaps, bottom-up, rows padded to four
// bytes. The game's picture loader and the old tools of level makers both read this one
// form, so the generator never lets Qt pick a depth or a compression of its own.
#include <QImage>
#include <QString>

class BmpWriter {
public:
    // Returns false, and leaves no half-written file behind, if the file can't be written.
    static bool Write(const QImage& image, const QString& path);
    // The bytes of the file, for writing or checking.
    static QByteArray Encode(const QImage& image);
};
