#pragma once
// Small helpers shared by the asset tests: where the generated files are, loading a
// picture, and reading the raw header of a bitmap.
#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QString>
#include <cstdint>

#include "support/platform/qt/RawPicture.h"

namespace assets_test {

inline QString GamePath(const QString& relative)
{
    return QStringLiteral(TOLVA_GAME_DIR) + QLatin1Char('/') + relative;
}

inline QString GeneratedPath(const QString& relative)
{
    return QStringLiteral(TOLVA_GENERATED_DIR) + QLatin1Char('/') + relative;
}

inline QByteArray ReadAll(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

inline uint32_t Le(const QByteArray& b, int at, int bytes)
{
    uint32_t v = 0;
    for (int i = bytes - 1; i >= 0; --i) {
        v = (v << 8) | static_cast<uint8_t>(b.at(at + i));
    }
    return v;
}

// A picture as 32-bit pixels: a bitmap, or one of the raw pictures (.rgb32) the game
// shows without decoding.
inline QImage Load(const QString& path)
{
    if (path.endsWith(QLatin1String(".rgb32"))) {
        const QByteArray bytes = ReadAll(path);
        return tolva::RawPictureView(reinterpret_cast<const uchar*>(bytes.constData()), bytes.size()).copy();
    }
    return QImage(path).convertToFormat(QImage::Format_RGB32);
}

struct BmpHeader {
    bool valid = false;
    int width = 0;
    int height = 0;
    int bitsPerPixel = 0;
    int compression = -1;
};

inline BmpHeader ReadBmpHeader(const QByteArray& b)
{
    BmpHeader h;
    if (b.size() < 54 || !b.startsWith("BM")) {
        return h;
    }
    h.valid = Le(b, 2, 4) == static_cast<uint32_t>(b.size());
    h.width = static_cast<int32_t>(Le(b, 18, 4));
    h.height = static_cast<int32_t>(Le(b, 22, 4));
    h.bitsPerPixel = static_cast<int>(Le(b, 28, 2));
    h.compression = static_cast<int>(Le(b, 30, 4));
    return h;
}

} // namespace assets_test
