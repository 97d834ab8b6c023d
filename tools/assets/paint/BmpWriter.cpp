#include "BmpWriter.h"

#include <QFile>
#include <QSaveFile>

namespace {

void PutLe(QByteArray& out, quint32 value, int bytes)
{
    for (int i = 0; i < bytes; ++i) {
        out.append(static_cast<char>((value >> (8 * i)) & 0xFF));
    }
}

} // namespace

QByteArray BmpWriter::Encode(const QImage& image)
{
    const QImage rgb = image.convertToFormat(QImage::Format_RGB32);
    const int width = rgb.width();
    const int height = rgb.height();
    const int rowBytes = (width * 3 + 3) & ~3;
    const quint32 pixelBytes = static_cast<quint32>(rowBytes) * static_cast<quint32>(height);
    const quint32 headerBytes = 14 + 40;

    QByteArray out;
    out.reserve(static_cast<int>(headerBytes + pixelBytes));
    out.append("BM", 2);
    PutLe(out, headerBytes + pixelBytes, 4);
    PutLe(out, 0, 4);                 // reserved
    PutLe(out, headerBytes, 4);       // offset of the pixels
    PutLe(out, 40, 4);                // BITMAPINFOHEADER
    PutLe(out, static_cast<quint32>(width), 4);
    PutLe(out, static_cast<quint32>(height), 4); // positive: bottom-up rows
    PutLe(out, 1, 2);                 // planes
    PutLe(out, 24, 2);                // bits per pixel
    PutLe(out, 0, 4);                 // BI_RGB, no compression
    PutLe(out, pixelBytes, 4);
    PutLe(out, 2835, 4);              // 72 dpi
    PutLe(out, 2835, 4);
    PutLe(out, 0, 4);
    PutLe(out, 0, 4);

    for (int y = height - 1; y >= 0; --y) {
        const auto* line = reinterpret_cast<const QRgb*>(rgb.constScanLine(y));
        for (int x = 0; x < width; ++x) {
            out.append(static_cast<char>(qBlue(line[x])));
            out.append(static_cast<char>(qGreen(line[x])));
            out.append(static_cast<char>(qRed(line[x])));
        }
        for (int pad = width * 3; pad < rowBytes; ++pad) {
            out.append('\0');
        }
    }
    return out;
}

bool BmpWriter::Write(const QImage& image, const QString& path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    const QByteArray bytes = Encode(image);
    if (file.write(bytes) != bytes.size()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}
